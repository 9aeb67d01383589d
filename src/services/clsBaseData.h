// BaseServices::clsBaseData: look-ups, next numbers and list filling over the shared connection.
#pragma once

#include "ado/Connection.h"
#include "services/Context.h"
#include "services/ServiceObject.h"
#include "vb/Variant.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace forms {
class ListView;
}

namespace BaseServices {

/// The data service. Its state is a connection and a table expression, set
/// before the calls that use them; both keep their values between calls.
///
/// The table expression is one table ("LOUsers"), a join list ("aItem i, aUnit
/// u") or a table with its own condition ("lousers where userid=1 and
/// GodownID=1"). A call's condition is joined to it with " where ", or with
/// " and " when the expression holds a "where" already, so both conditions hold.
class clsBaseData : public services::ServiceObject {
public:
    static constexpr std::string_view CreationName = "BaseServices.clsBaseData";

    explicit clsBaseData(const services::Context &context);
    std::string_view creationName() const override { return CreationName; }

    /// The shared connection; every statement of the service runs on it, so
    /// it sees the rows of the caller's open transaction.
    ado::Connection adocon;
    /// The table expression of the next selection.
    std::string strTableName;

    /// The value of `field` (any expression: "username", "count(*)",
    /// "min(gsshipmentid)") in the first row of "select {field} from
    /// {strTableName}" under the condition, if one is given (text without the
    /// word where). No row gives Empty; a null value gives Null. A blank
    /// condition selects as none does.
    vb::Variant fnReturnField(std::string_view field);
    vb::Variant fnReturnField(std::string_view field, std::string_view condition);

    /// The next free number of `field` in strTableName (condition included):
    /// the highest value plus one, 1 when there is none. Raises 6 (Overflow)
    /// past the 32-bit range.
    std::int32_t fnGetNextMaxNo(std::string_view field);

    /// Clears the list view and fills it with one row for each row of "select
    /// {expressions} from {tables} where {condition}" (the condition may end in
    /// a group or order clause). The 14 expressions fill the columns in order:
    /// the first is the row's own text, the n-th sub-item n - 1. The expression
    /// "SLNO" (any letter case) is no column of any table: wherever it stands,
    /// the row's running number from 1 goes into that column, and it is not
    /// sent to the database. Null values show as empty text.
    void PopulateListView(forms::ListView &lvw, std::string_view strTables,
                          std::string_view strCondition, std::string_view strField1,
                          std::string_view strField2, std::string_view strField3,
                          std::string_view strField4, std::string_view strField5,
                          std::string_view strField6, std::string_view strField7,
                          std::string_view strField8, std::string_view strField9,
                          std::string_view strField10, std::string_view strField11,
                          std::string_view strField12, std::string_view strField13,
                          std::string_view strField14);

    /// Adds one row to the list view with the values as texts, in column
    /// order: the first is the row's own text, the next ones sub-items 1, 2,
    /// ... The 15-argument form fills 13 columns and leaves the 14th alone; the
    /// 16-argument form fills 14. `intIndex` is where the row goes, as in
    /// ListItems.Add: 0 (what the module always passes) adds it at the end, n
    /// puts it at position n.
    void fnInsertListView(forms::ListView &lvw, int intIndex, const vb::Variant &v1,
                          const vb::Variant &v2, const vb::Variant &v3, const vb::Variant &v4,
                          const vb::Variant &v5, const vb::Variant &v6, const vb::Variant &v7,
                          const vb::Variant &v8, const vb::Variant &v9, const vb::Variant &v10,
                          const vb::Variant &v11, const vb::Variant &v12, const vb::Variant &v13);
    void fnInsertListView(forms::ListView &lvw, int intIndex, const vb::Variant &v1,
                          const vb::Variant &v2, const vb::Variant &v3, const vb::Variant &v4,
                          const vb::Variant &v5, const vb::Variant &v6, const vb::Variant &v7,
                          const vb::Variant &v8, const vb::Variant &v9, const vb::Variant &v10,
                          const vb::Variant &v11, const vb::Variant &v12, const vb::Variant &v13,
                          const vb::Variant &v14);

    /// Sets two fields in every row of strTableName that the condition selects
    /// (the table expression must name one table). Values go into the fields
    /// as values, not as SQL text, so text with an apostrophe is stored as it is.
    void fnUpdateSelectedRecord(std::string_view strCondition, std::string_view strField1,
                                const vb::Variant &varValue1, std::string_view strField2,
                                const vb::Variant &varValue2);

private:
    void insertRow(forms::ListView &lvw, int index, std::span<const vb::Variant> values);
};

/// True for the list expression that stands for the running number ("SLNO",
/// letter case and surrounding blanks ignored).
bool isRunningNumber(std::string_view expression);

} // namespace BaseServices
