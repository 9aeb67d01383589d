#include "services/clsBaseData.h"

#include "ado/Recordset.h"
#include "forms/ListView.h"
#include "services/TableExpression.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Strings.h"

#include <array>
#include <cstdint>
#include <limits>
#include <vector>

namespace BaseServices {

namespace {

constexpr int listColumns = 14;

// The first field of the first row, Empty when the selection has no row.
vb::Variant firstValue(const ado::Connection &connection, const std::string &sql) {
    ado::Recordset rs = connection.Execute(sql);
    vb::Variant value;
    if (!rs.Eof()) {
        value = rs.Fields(0).Value();
    }
    rs.Close();
    return value;
}

} // namespace

bool isRunningNumber(std::string_view expression) {
    return vb::StrComp(vb::Trim(expression), "SLNO", vb::Compare::Text) == 0;
}

clsBaseData::clsBaseData(const services::Context &) {}

vb::Variant clsBaseData::fnReturnField(std::string_view field) {
    return fnReturnField(field, {});
}

vb::Variant clsBaseData::fnReturnField(std::string_view field, std::string_view condition) {
    const std::string sql = "select " + std::string(field) + " from " +
                            services::withCondition(strTableName, condition);
    return firstValue(adocon, sql);
}

std::int32_t clsBaseData::fnGetNextMaxNo(std::string_view field) {
    const std::string sql = "select max(" + std::string(field) + ") from " + strTableName;
    const vb::Variant highest = firstValue(adocon, sql);
    if (highest.isEmpty() || highest.isNull()) {
        return 1;
    }
    const std::int64_t next = std::int64_t{vb::CLng(highest)} + 1;
    if (next > std::numeric_limits<std::int32_t>::max()) {
        throw vb::Error::standard(vb::err::Overflow);
    }
    return static_cast<std::int32_t>(next);
}

void clsBaseData::PopulateListView(forms::ListView &lvw, std::string_view strTables,
                                   std::string_view strCondition, std::string_view strField1,
                                   std::string_view strField2, std::string_view strField3,
                                   std::string_view strField4, std::string_view strField5,
                                   std::string_view strField6, std::string_view strField7,
                                   std::string_view strField8, std::string_view strField9,
                                   std::string_view strField10, std::string_view strField11,
                                   std::string_view strField12, std::string_view strField13,
                                   std::string_view strField14) {
    const std::array<std::string_view, listColumns> fields{
        strField1, strField2, strField3,  strField4,  strField5,  strField6,  strField7,
        strField8, strField9, strField10, strField11, strField12, strField13, strField14};

    // The running number is made here, so only the other expressions are
    // selected; `selected[c]` is the field that fills column c, -1 for SLNO.
    std::array<int, listColumns> selected{};
    std::string list;
    int count = 0;
    for (int c = 0; c < listColumns; ++c) {
        if (isRunningNumber(fields[c])) {
            selected[c] = -1;
            continue;
        }
        list += (count == 0 ? "" : ", ") + std::string(fields[c]);
        selected[c] = count++;
    }
    // Every column a running number: still one row per row of the selection.
    const std::string sql = "select " + (count == 0 ? std::string("1") : list) + " from " +
                            services::withCondition(strTables, strCondition);

    lvw.ListItems().Clear();
    ado::Recordset rs = adocon.Execute(sql);
    for (int row = 1; !rs.Eof(); ++row) {
        std::array<vb::Variant, listColumns> values;
        for (int c = 0; c < listColumns; ++c) {
            values[c] = selected[c] < 0 ? vb::Variant(row) : rs.Fields(selected[c]).Value();
        }
        insertRow(lvw, 0, values);
        rs.MoveNext();
    }
    rs.Close();
}

void clsBaseData::fnInsertListView(forms::ListView &lvw, int intIndex, const vb::Variant &v1,
                                   const vb::Variant &v2, const vb::Variant &v3,
                                   const vb::Variant &v4, const vb::Variant &v5,
                                   const vb::Variant &v6, const vb::Variant &v7,
                                   const vb::Variant &v8, const vb::Variant &v9,
                                   const vb::Variant &v10, const vb::Variant &v11,
                                   const vb::Variant &v12, const vb::Variant &v13) {
    const std::array<vb::Variant, 13> values{v1, v2, v3,  v4,  v5,  v6, v7,
                                             v8, v9, v10, v11, v12, v13};
    insertRow(lvw, intIndex, values);
}

void clsBaseData::fnInsertListView(forms::ListView &lvw, int intIndex, const vb::Variant &v1,
                                   const vb::Variant &v2, const vb::Variant &v3,
                                   const vb::Variant &v4, const vb::Variant &v5,
                                   const vb::Variant &v6, const vb::Variant &v7,
                                   const vb::Variant &v8, const vb::Variant &v9,
                                   const vb::Variant &v10, const vb::Variant &v11,
                                   const vb::Variant &v12, const vb::Variant &v13,
                                   const vb::Variant &v14) {
    const std::array<vb::Variant, 14> values{v1, v2, v3,  v4,  v5,  v6,  v7,
                                             v8, v9, v10, v11, v12, v13, v14};
    insertRow(lvw, intIndex, values);
}

void clsBaseData::insertRow(forms::ListView &lvw, int index, std::span<const vb::Variant> values) {
    forms::ListItem &item = lvw.ListItems().Add(index, {}, vb::TextOf(values[0]));
    for (std::size_t n = 1; n < values.size(); ++n) {
        item.setSubItems(static_cast<int>(n), vb::TextOf(values[n]));
    }
}

void clsBaseData::fnUpdateSelectedRecord(std::string_view strCondition, std::string_view strField1,
                                         const vb::Variant &varValue1, std::string_view strField2,
                                         const vb::Variant &varValue2) {
    ado::Recordset rs;
    rs.Open("select * from " + services::withCondition(strTableName, strCondition), adocon,
            ado::adOpenKeyset, ado::adLockOptimistic);
    while (!rs.Eof()) {
        rs.Fields(strField1).Value(varValue1);
        rs.Fields(strField2).Value(varValue2);
        rs.Update();
        rs.MoveNext();
    }
    rs.Close();
}

} // namespace BaseServices
