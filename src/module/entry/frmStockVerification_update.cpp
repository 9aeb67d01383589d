// frmStockVerification's save of an existing entry: header, reversal, lines, re-application.
#include "module/entry/frmStockVerification.h"

#include "ado/Command.h"
#include "ado/Recordset.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/register/frmMaster.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "vb/Conversion.h"
#include "vb/Format.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerification";

/// The plain interface's stock procedure: "F" applies an entry's lines, "R"
/// takes exactly that back.
void runVerificationProcedure(const ado::Connection &con, std::string_view name, std::int32_t id,
                              std::int32_t godown, std::string_view mode) {
    ado::Command cmd;
    cmd.ActiveConnection(con);
    cmd.CommandType(ado::adCmdStoredProc);
    cmd.CommandText(name);
    cmd.Parameters(1) = vb::Variant(id);
    cmd.Parameters(2) = vb::Variant(godown);
    cmd.Parameters(3) = vb::Variant(std::string(mode));
    cmd.Execute();
}

/// The stored marker overwritten in place: letters at 1 and 2, the row count
/// at 3 to 7. The text never grows, so a marker of another length keeps its
/// tail or loses what does not fit.
std::string overwriteMarker(std::string stored, const std::string &letters,
                            const std::string &count) {
    const std::string with = letters + count;
    for (std::size_t i = 0; i < with.size() && i < stored.size(); ++i) {
        stored[i] = with[i];
    }
    return stored;
}

} // namespace

void frmStockVerification::UpdateRequest() {
    try {
        const std::string godown = std::to_string(m_.intGodownID);
        const std::string id = std::to_string(m_.lngVerificationId);
        auto &items = lvwRequest.ListItems();
        const std::string strFutureVc = std::string(m_.intInterfaceID == 1005 ? "o" : "t") +
                                        (chkConfirm.Value() == forms::vbChecked ? "c" : "n");
        const std::string rowCount = vb::Format(vb::Variant(items.Count()), "00000");

        // Read as it always was; the name is not stored.
        data().strTableName = "loUsers";
        vb::Trim(vb::CStr(data().fnReturnField(
            "UserName", "GodownID = " + godown + " and Userid = " + std::to_string(m_.intUserID))));

        // Only three columns of the header change: its number, date and rates
        // stay as the first save wrote them, whatever the form shows.
        ado::Recordset rs;
        rs.Open("select * from loiStockVerificationHeader where svhid=" + id +
                    " and svhgodownid=" + godown,
                m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        rs.Fields("svhverificationby") = vb::Variant(vb::Trim(txtVby.Text()));
        rs.Fields("svhremarks") = vb::Variant(vb::Trim(txtRemarks.Text()));
        const vb::Variant stored = rs.Fields("svhFutureVc").Value();
        rs.Fields("svhFutureVc") =
            vb::IsNull(stored) ? vb::Variant(strFutureVc + rowCount)
                               : vb::Variant(overwriteMarker(vb::CStr(stored), strFutureVc, rowCount));
        rs.Update();
        rs.Close();

        if (m_.strTransactionMode == "E" && m_.intInterfaceID != 1013) {
            m_.adocon.Execute("Update loiStockVerificationHeader " +
                              std::string("set updatetime=getdate() where svhid=") + id +
                              " and svhgodownid=" + godown);
        }
        // The old lines must still stand for the procedure to take them back.
        if (m_.intInterfaceID == 1005) {
            runVerificationProcedure(m_.adocon, "spupdateGodownVerification",
                                     m_.lngVerificationId, m_.intGodownID, "R");
        }
        m_.adocon.Execute("delete loiStockVerificationDetail where svdid = " + id +
                          " and svdGodownID=" + godown);

        data().adocon = m_.adocon;
        data().strTableName = "loiStockVerificationDetail";
        data().adocon = m_.adocon;
        data().strTableName = "loiStockVerificationDetail";
        updateLines();

        if (m_.intInterfaceID == 1005) {
            runVerificationProcedure(m_.adocon, "spUpdateGodownVerification",
                                     m_.lngVerificationId, m_.intGodownID, "F");
        }
        frmMaster &master = m_.frmMaster();
        auditTrail().SaveUserAuditingInfo(
            vb::Variant(master.flexMaster.TextMatrix(master.flexMaster.Row(), 0)),
            vb::Variant(txtno.Text()), true, "E", this);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "UpdateRequest", e);
    }
}

void frmStockVerification::updateLines() {
    ado::Recordset rs;
    rs.Open("select * from loiStockVerificationDetail", m_.adocon, ado::adOpenKeyset,
            ado::adLockOptimistic);
    auto &items = lvwRequest.ListItems();
    for (int i = 1; i <= items.Count(); ++i) {
        const forms::ListItem &row = items(i);
        const auto number = [&row](int n) { return vb::Variant(vb::Val(row.SubItems(n))); };
        const auto text = [&row](int n) { return vb::Variant(row.SubItems(n)); };
        if (m_.intInterfaceID == 1005) {
            rs.AddNew();
            rs.Fields("svdid") = vb::Variant(m_.lngVerificationId);
            rs.Fields("svdGodownID") = vb::Variant(m_.intGodownID);
            rs.Fields("svdLocationid") = number(10);
            rs.Fields("svdShipmentID") = number(11);
            rs.Fields("svdItemID") = number(8);
            rs.Fields("svdAvailStock") = number(4);
            rs.Fields("svdVerifiedStock") = number(5);
            rs.Fields("svdavailbadstock") = number(6);
            rs.Fields("svdverifiedbadstock") = number(7);
            rs.Fields("svdcostprice") = number(12);
            rs.Update();
        } else if (m_.intInterfaceID == 1013) {
            // An edited total count marks every line 1 in its bad stock, the
            // mark by which the register finds its lines again, and leaves
            // the verified bad stock unset.
            rs.AddNew();
            rs.Fields("svdid") = vb::Variant(m_.lngVerificationId);
            rs.Fields("svdGodownID") = vb::Variant(m_.intGodownID);
            rs.Fields("svdLocationid") = text(10);
            rs.Fields("svdShipmentID") = text(11);
            rs.Fields("svdItemID") = text(8);
            rs.Fields("svdAvailStock") = text(4);
            rs.Fields("svdVerifiedStock") = text(5);
            rs.Fields("svdavailbadstock") = vb::Variant(1);
            rs.Fields("svdcostprice") = text(12);
            rs.Update();
        }
    }
    rs.Close();
}

void frmStockVerification::reSetgodownStock(bool blnRestore) {
    try {
        const std::string godown = std::to_string(m_.intGodownID);
        data().strTableName = "moigodownstock";
        ado::Recordset rs;
        rs.Open("select * from loiStockVerificationDetail where svdid=" +
                    std::to_string(m_.lngVerificationId) + " and svdGodownid=" + godown,
                m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        while (!rs.Eof()) {
            data().fnUpdateSelectedRecord(
                " gsGodownId=" + godown +
                    " and gsShipmentId=" + vb::TextOf(rs.Fields("svdShipmentID").Value()) +
                    " and gsitemid=" + vb::TextOf(rs.Fields("svdItemID").Value()),
                "gsStock",
                rs.Fields(blnRestore ? "svdAvailStock" : "svdVerifiedStock").Value(),
                "gsBadStock",
                rs.Fields(blnRestore ? "svdavailbadstock" : "svdverifiedbadstock").Value());
            rs.MoveNext();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "reSetgodownStock", e);
    }
}

} // namespace tqsv2731
