#include "services/clsActivityTrail.h"

#include "ado/Recordset.h"
#include "forms/Form.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Strings.h"

namespace StockActivityTrail {

clsActivityTrail::clsActivityTrail(const services::Context &) {}

void clsActivityTrail::OpenObject(ado::Connection &adocon, std::int32_t intCompanyID,
                                  std::int32_t intGodownID, std::int32_t intUserID,
                                  std::int16_t intInterfaceID, vb::Date dtOpened) {
    adocon_ = adocon;
    companyId_ = intCompanyID;
    godownId_ = intGodownID;
    userId_ = intUserID;
    interfaceId_ = intInterfaceID;
    LoggedTime = dtOpened;
    opened_ = true;
}

void clsActivityTrail::SaveUserAuditingInfo(const vb::Variant &varKey, const vb::Variant &varNumber,
                                            bool blnFromLoggedTime, std::string_view strAction,
                                            const forms::Form *frm) {
    if (!opened_) {
        throw vb::Error(vb::err::ObjectNotSet, std::string(CreationName),
                        "The activity trail is not open: OpenObject first");
    }
    const std::string action = vb::UCase(strAction);
    if (action != "N" && action != "E" && action != "D") {
        throw vb::Error(vb::err::InvalidProcedureCall, std::string(CreationName),
                        "Unknown action \"" + std::string(strAction) + "\": N, E or D");
    }
    ado::Recordset rs;
    rs.Open("select * from aActivityTrail", adocon_, ado::adOpenKeyset, ado::adLockOptimistic);
    rs.AddNew();
    rs.Fields("CompanyID").Value(companyId_);
    rs.Fields("GodownID").Value(godownId_);
    rs.Fields("UserID").Value(userId_);
    rs.Fields("InterfaceID").Value(interfaceId_);
    rs.Fields("TransKey").Value(vb::TextOf(varKey));
    rs.Fields("TransNo").Value(vb::TextOf(varNumber));
    rs.Fields("ActionType").Value(action);
    rs.Fields("LoggedTime")
        .Value(blnFromLoggedTime ? vb::Variant(LoggedTime) : vb::Variant::null());
    rs.Fields("SavedTime").Value(vb::Now());
    rs.Update();
    rs.Close();
    if (frm != nullptr) {
        SaveInToTag(*frm);
    }
}

void clsActivityTrail::SaveInToTag(const forms::Form &frm) {
    snapshots_[&frm] = Snapshot{frm.Name(), services::snapshotOf(frm)};
}

bool clsActivityTrail::DataChanged(const forms::Form &frm) const {
    const auto found = snapshots_.find(&frm);
    // A snapshot kept under the same address for another form is no snapshot of this one.
    if (found == snapshots_.end() || found->second.formName != frm.Name()) {
        throw vb::Error(vb::err::InvalidProcedureCall, std::string(CreationName),
                        "No snapshot of " + frm.Name() + ": SaveInToTag first");
    }
    return services::snapshotOf(frm) != found->second.values;
}

bool clsActivityTrail::fnDataChanged(const forms::Form &frm) const {
    return DataChanged(frm);
}

} // namespace StockActivityTrail
