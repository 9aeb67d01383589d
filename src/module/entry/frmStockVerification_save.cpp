// frmStockVerification's save: the checks, the transaction, the new entry's header and lines.
#include "module/entry/frmStockVerification.h"

#include "ado/Command.h"
#include "ado/Recordset.h"
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "module/register/frmMaster.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"
#include "vb/Format.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerification";

/// The total count runs over the whole godown and takes its time.
constexpr int TotalVerificationTimeout = 180;

} // namespace

void frmStockVerification::cmdOK_Click() {
    try {
        bool blnNoItem = false;
        NoItemInList(false, blnNoItem);
        if (blnNoItem) {
            message("Atleast one detail needed", forms::vbInformation);
            cmdOK.SetFocus();
            return;
        }
        if (vb::Trim(txtVby.Text()).empty()) {
            message("Enter verified by", forms::vbInformation);
            txtVby.setEnabled(true);
            txtVby.SetFocus();
            return;
        }
        if (vb::Trim(txtRemarks.Text()).empty()) {
            message("Enter remarks", forms::vbInformation);
            txtRemarks.SetFocus();
            return;
        }

        setMousePointer(forms::vbHourglass);
        m_.adocon.BeginTrans();
        blnInTransaction = true;

        if (m_.strTransactionMode == "E") {
            // The entry may have gone to the journal since the register read it.
            // This exit leaves the transaction open, as it always did.
            frmMaster &master = m_.frmMaster();
            data().strTableName = "loistockVerificationHeader";
            const vb::Variant posted = data().fnReturnField(
                "svhposted", "svhgodownid=" + std::to_string(m_.intGodownID) + " and svhid = " +
                                 master.flexMaster.TextMatrix(master.flexMaster.Row(), 0) + " ");
            if (vb::CBool(posted)) {
                message("The transaction has posted to the journal.Please calcel post to edit.",
                        forms::vbCritical);
                setMousePointer(forms::vbDefault);
                return;
            }
        }

        if (m_.strTransactionMode == "N") {
            InsertRequest();
            if (m_.intInterfaceID == 1005) {
                UpdateStock();
            }
        } else {
            UpdateRequest();
        }

        if (m_.intInterfaceID == 1013 && chkConfirm.Value() == forms::vbChecked) {
            ado::Command cmd;
            cmd.CommandTimeout(TotalVerificationTimeout);
            cmd.ActiveConnection(m_.adocon);
            cmd.CommandType(ado::adCmdStoredProc);
            cmd.CommandText("spGodownTotalStockVerification");
            cmd.Parameters(1) = vb::Variant(m_.lngVerificationId);
            cmd.Parameters(2) = vb::Variant(m_.intGodownID);
            cmd.Execute();
        }

        m_.adocon.CommitTrans();
        blnInTransaction = false;
        UpdateEditedRow(m_, "svhID=" + std::to_string(m_.lngVerificationId), m_.lngVerificationId);
        blnNewEntry = false;
        // An empty Tag keeps Form_QueryUnload from asking again.
        setTag("");
        Unload();
    } catch (const vb::Error &e) {
        if (blnInTransaction) {
            m_.adocon.RollbackTrans();
            blnInTransaction = false;
        }
        TrackError(m_, FormName, "CmdOk_Click", e);
        setMousePointer(forms::vbDefault);
    }
}

void frmStockVerification::InsertRequest() {
    try {
        const std::string godown = std::to_string(m_.intGodownID);
        const std::string strFutureVc =
            std::string(m_.intInterfaceID == 1005 ? "o" : "t") +
            (chkConfirm.Value() == forms::vbChecked ? "c" : "n") +
            vb::Format(vb::Variant(lvwRequest.ListItems().Count()), "00000");
        double dblDepRate = 1;
        double dblConRate = 1;
        headerRates(dblDepRate, dblConRate);

        data().strTableName = "loiStockVerificationHeader where svhgodownid=" + godown;
        lngNewId = data().fnGetNextMaxNo("svhid");
        m_.lngVerificationId = lngNewId;

        // Read as it always was; the name is not stored.
        data().strTableName = "loUsers";
        vb::Trim(vb::CStr(data().fnReturnField(
            "UserName", "GodownID=" + godown + " and Userid=" + std::to_string(m_.intUserID))));

        // Opened on the whole table only to add a row: the recordset reads nothing.
        ado::Recordset rs;
        rs.Open("select * from loistockVerificationHeader", m_.adocon, ado::adOpenKeyset,
                ado::adLockOptimistic);
        rs.AddNew();
        rs.Fields("svhid") = vb::Variant(lngNewId);
        GenerateVerificationNo();
        rs.Fields("svhno") = vb::Variant(vb::Trim(txtno.Text()));
        rs.Fields("svhdate") = vb::Variant(vb::Format(vb::Variant(txtdate.Text()), "yyyy/mm/dd"));
        rs.Fields("svhremarks") = vb::Variant(vb::Trim(txtRemarks.Text()));
        rs.Fields("svhverificationby") = vb::Variant(vb::Trim(txtVby.Text()));
        rs.Fields("svhGodownid") = vb::Variant(m_.intGodownID);
        data().strTableName = "aGodown";
        rs.Fields("svhdepartmentid") =
            data().fnReturnField("departmentid", " godownid = " + godown);
        rs.Fields("svhconexrate") = vb::Variant(dblConRate);
        rs.Fields("svhdepexrate") = vb::Variant(dblDepRate);
        rs.Fields("svhexchangerates") = vb::Variant(m_.strExchangeRates);
        rs.Fields("svhFutureVc") = vb::Variant(strFutureVc);
        rs.Fields("svhcreatedtime") = vb::Variant(vb::Format(vb::Variant(vb::Now()), "hh:mm:ss"));
        rs.Update();
        rs.Close();

        auditTrail().SaveUserAuditingInfo(vb::Variant(lngNewId), vb::Variant(txtno.Text()), true,
                                          "N");
        insertLines();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "InsertRequest", e);
    }
}

void frmStockVerification::headerRates(double &dblDepRate, double &dblConRate) {
    const std::int16_t inventoryCurrency = GetCurrencyId(m_, "A", m_.lngInventoryAccountId);
    const std::int16_t departmentCurrency = GetCurrencyId(m_, "D", m_.lngDepartmentId);
    const std::int16_t companyCurrency = GetCurrencyId(m_, "Z", m_.intCompanyID);
    dblDepRate = GetRateRatio(m_, inventoryCurrency, departmentCurrency);
    dblConRate = GetRateRatio(m_, inventoryCurrency, companyCurrency);
}

void frmStockVerification::insertLines() {
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
            rs.Fields("svdid") = vb::Variant(lngNewId);
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
            // The total count hands the list's text to the database, which
            // converts it or refuses it.
            rs.AddNew();
            rs.Fields("svdid") = vb::Variant(m_.lngVerificationId);
            rs.Fields("svdGodownID") = vb::Variant(m_.intGodownID);
            rs.Fields("svdLocationid") = text(10);
            rs.Fields("svdShipmentID") = text(11);
            rs.Fields("svdItemID") = text(8);
            rs.Fields("svdAvailStock") = text(4);
            rs.Fields("svdVerifiedStock") = text(5);
            rs.Fields("svdavailbadstock") = number(6);
            rs.Fields("svdverifiedbadstock") = number(7);
            rs.Fields("svdcostprice") = text(12);
            rs.Update();
        }
    }
    rs.Close();
}

void frmStockVerification::UpdateStock() {
    try {
        ado::Command cmd;
        cmd.ActiveConnection(m_.adocon);
        cmd.CommandType(ado::adCmdStoredProc);
        cmd.CommandText("spupdateGodownVerification");
        cmd.Parameters(1) = vb::Variant(m_.lngVerificationId);
        cmd.Parameters(2) = vb::Variant(m_.intGodownID);
        cmd.Parameters(3) = vb::Variant("F");
        cmd.Execute();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "UpdateStock", e);
    }
}

} // namespace tqsv2731
