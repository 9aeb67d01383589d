// frmMaster's Delete command: an entry cancelled with its reason and its stock taken back.
#include "module/register/frmMaster.h"

#include "ado/Command.h"
#include "ado/Recordset.h"
#include "forms/EventLoop.h"
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "module/register/frmcancelreason.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

/// Critical icon, Yes and No, No the default.
constexpr int DeleteQuestionStyle = forms::vbCritical + forms::vbYesNo + forms::vbDefaultButton2;

} // namespace

void frmMaster::CmdDelete_Click() {
    try {
        if (!objBaseData) {
            throw vb::Error::standard(vb::err::ObjectNotSet);
        }
        const std::string godown = std::to_string(m_.intGodownID);
        objBaseData->strTableName = "LOUsers";
        const std::string strUserText = vb::Trim(vb::CStr(objBaseData->fnReturnField(
            "UserName", "GodownID=" + godown + " and Userid=" + std::to_string(m_.intUserID))));

        if (flexMaster.Row() > flexMaster.Rows() || flexMaster.Row() == 0) {
            forms::MsgBox(m_.screen(), "No Verification No Selected ", forms::vbInformation,
                          m_.strMsgboxCaption);
            return;
        }
        // An upper-cased text never equals "Yes": the button gate is what keeps
        // deleted rows away, and this message stays for a row it lets through.
        if (vb::UCase(flexMaster.TextMatrix(flexMaster.Row(), 4)) == "Yes") {
            forms::MsgBox(m_.screen(), "This record is already deleted ", forms::vbInformation,
                          m_.strMsgboxCaption);
            return;
        }
        // Another user may have deleted the entry since the list was read.
        if (m_.intInterfaceID == 1005) {
            objBaseData->strTableName = "loiStockVerificationHeader";
            const vb::Variant deleted = objBaseData->fnReturnField(
                "count(*)", " svhCancelled = 1  and svhId = " +
                                flexMaster.TextMatrix(flexMaster.Row(), 0) +
                                " and svhGodownId = " + godown);
            if (vb::Val(deleted) > 0) {
                forms::MsgBox(m_.screen(), "This entry is already deleted", forms::vbInformation,
                              m_.strMsgboxCaption);
                CmdDelete.setEnabled(false);
                setMousePointer(forms::vbDefault);
                flexMaster.setMousePointer(forms::vbDefault);
                return;
            }
        }

        flexMaster.setMousePointer(forms::vbHourglass);
        setMousePointer(forms::vbHourglass);
        if (!m_.objActivityTrail) {
            throw vb::Error::standard(vb::err::ObjectNotSet);
        }
        m_.objActivityTrail->LoggedTime = vb::Now();

        // The transaction opens before the user is asked and stays open while
        // the question and the reason wait.
        m_.adocon.BeginTrans();
        blnInTransaction = true;
        const std::string id = flexMaster.TextMatrix(flexMaster.Row(), 0);
        if (id.empty()) {
            return;
        }

        // The database is asked, not the grid: the entry may have been posted
        // since the list was read.
        objBaseData->strTableName = "loistockVerificationHeader";
        const vb::Variant posted =
            objBaseData->fnReturnField("svhposted", "svhGodownid=" + godown + " and svhid=" + id);
        if (!vb::IsNull(posted) && vb::CBool(posted)) {
            m_.adocon.RollbackTrans();
            blnInTransaction = false;
            forms::MsgBox(m_.screen(), "Entry Posted,Cannot Delete", forms::vbInformation);
            flexMaster.setMousePointer(forms::vbDefault);
            setMousePointer(forms::vbDefault);
            return;
        }

        if (forms::MsgBox(m_.screen(),
                          "Are you sure you want to Delete the entry of - " +
                              flexMaster.TextMatrix(flexMaster.Row(), 1) + " ?",
                          DeleteQuestionStyle, m_.strMsgboxCaption) != forms::vbYes) {
            m_.adocon.RollbackTrans();
            blnInTransaction = false;
            flexMaster.setMousePointer(forms::vbDefault);
            setMousePointer(forms::vbDefault);
            return;
        }

        m_.frmcancelreason().Show(forms::vbModal, this);
        forms::DoEvents(m_.screen());

        m_.lngVerificationId = vb::CLng(vb::Variant(vb::Val(id)));
        const std::string entryId = std::to_string(m_.lngVerificationId);
        ado::Recordset rs;
        rs.Open("select * from loistockVerificationHeader where svhid=" + entryId +
                    " and svhGodownid=" + godown,
                m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        if (rs.RecordCount() > 0) {
            rs.Fields("svhcancelled") = vb::Variant(1);
            rs.Fields("svhcancelledRemarks") =
                vb::Variant(vb::Left(vb::Trim(strUserText), 20) + ":" +
                            vb::Left(vb::Trim(m_.strCancelReason), 230));
            rs.Update();
            reverseDeletedStock();
        }
        m_.objActivityTrail->SaveUserAuditingInfo(
            vb::Variant(flexMaster.TextMatrix(flexMaster.Row(), 0)),
            vb::Variant(flexMaster.TextMatrix(flexMaster.Row(), 1)), true, "D");
        rs.Close();

        const int intSavedRow = flexMaster.Row();
        m_.strTransactionMode = "E";
        UpdateEditedRow(m_, " svhID=" + entryId, m_.lngVerificationId);
        // The grid is brought up to date from the row as this transaction
        // left it, before the commit.
        GridColor();
        flexMaster.setRow(intSavedRow);
        flexMaster.setTopRow(intSavedRow);
        flexMaster.setCol(0);
        flexMaster.setColSel(flexMaster.Cols() - 1);

        if (blnInTransaction) {
            m_.adocon.CommitTrans();
        }
        flexMaster_SelChange();
        flexMaster.setMousePointer(forms::vbDefault);
        setMousePointer(forms::vbDefault);
    } catch (const vb::Error &e) {
        // Rolled back whether or not a transaction is open: before BeginTrans
        // this second failure leaves the handler for the caller.
        m_.adocon.RollbackTrans();
        TrackError(m_, "frmMaster", "CmdDelete_Click", e);
        flexMaster.setMousePointer(forms::vbDefault);
        setMousePointer(forms::vbDefault);
    }
}

void frmMaster::reverseDeletedStock() {
    ado::Command cmd;
    cmd.ActiveConnection(m_.adocon);
    cmd.CommandType(ado::adCmdStoredProc);
    if (m_.intInterfaceID == 1005) {
        cmd.CommandText("spupdateGodownVerification");
        cmd.Parameters(1) = vb::Variant(m_.lngVerificationId);
        cmd.Parameters(2) = vb::Variant(m_.intGodownID);
        cmd.Parameters(3) = vb::Variant("R");
        cmd.Execute();
    } else if (m_.intInterfaceID == 1013) {
        cmd.CommandText("spReverseGodownTotalStockVerification");
        cmd.Parameters(1) = vb::Variant(m_.lngVerificationId);
        cmd.Parameters(2) = vb::Variant(m_.intGodownID);
        cmd.Execute();
    }
}

} // namespace tqsv2731
