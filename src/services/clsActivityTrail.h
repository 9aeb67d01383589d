// StockActivityTrail::clsActivityTrail: the audit trail of entries and the snapshots of forms.
#pragma once

#include "ado/Connection.h"
#include "services/Context.h"
#include "services/FormSnapshot.h"
#include "services/ServiceObject.h"
#include "vb/Date.h"
#include "vb/Variant.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

namespace forms {
class Form;
}

namespace StockActivityTrail {

/// The activity trail: who did what to which entry, and when (the table
/// aActivityTrail), and whether a user changed what a form shows.
class clsActivityTrail : public services::ServiceObject {
public:
    static constexpr std::string_view CreationName = "StockActivityTrail.clsActivityTrail";

    explicit clsActivityTrail(const services::Context &context);
    std::string_view creationName() const override { return CreationName; }

    /// Opens the trail for a session: the connection the trail is written on
    /// (shared with the caller, so rows go inside the caller's transaction),
    /// the company, godown and user, the interface and the time the session
    /// began, which is also the first LoggedTime. The caller's connection is
    /// taken as it is and handed back unchanged, even an empty one: the trail
    /// does not open connections of its own.
    void OpenObject(ado::Connection &adocon, std::int32_t intCompanyID, std::int32_t intGodownID,
                    std::int32_t intUserID, std::int16_t intInterfaceID, vb::Date dtOpened);

    /// When the user began the action that the next row records.
    vb::Date LoggedTime;

    /// Writes one row of the trail for an entry: its key and number as text,
    /// the action letter ("N" new, "E" edit, "D" delete) and the time saved.
    /// With `blnFromLoggedTime` the row also keeps LoggedTime as the moment
    /// the action began. When the form the action was made on is given (an
    /// edit), its snapshot is taken again, since what it shows is now saved.
    /// Raises 91 before OpenObject, 5 for another action letter.
    void SaveUserAuditingInfo(const vb::Variant &varKey, const vb::Variant &varNumber,
                              bool blnFromLoggedTime, std::string_view strAction,
                              const forms::Form *frm = nullptr);

    /// Keeps a snapshot of the form's values (FormSnapshot) in the trail, by
    /// form; the form itself, its Tag included, is left as it is.
    void SaveInToTag(const forms::Form &frm);
    /// True when the form's values differ from its last snapshot. Raises 5
    /// when no snapshot of the form was taken.
    bool DataChanged(const forms::Form &frm) const;
    /// The same question, as the fetch dialog asks it.
    bool fnDataChanged(const forms::Form &frm) const;

private:
    struct Snapshot {
        std::string formName;
        services::FormSnapshot values;
    };

    ado::Connection adocon_;
    bool opened_ = false;
    std::int32_t companyId_ = 0;
    std::int32_t godownId_ = 0;
    std::int32_t userId_ = 0;
    std::int16_t interfaceId_ = 0;
    std::map<const forms::Form *, Snapshot> snapshots_;
};

} // namespace StockActivityTrail
