// frmMaster's Edit command: an existing entry back on the entry form, with its gates.
#include "module/register/frmMaster.h"

#include "ado/Recordset.h"
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

namespace tqsv2731 {

void frmMaster::CmdEdit_Click() {
    try {
        setMousePointer(forms::vbHourglass);
        if (!m_.objActivityTrail) {
            throw vb::Error::standard(vb::err::ObjectNotSet);
        }
        m_.objActivityTrail->LoggedTime = vb::Now();
        m_.strTransactionMode = "E";

        const int row = flexMaster.Row();
        frmStockVerification &entry = m_.frmStockVerification();
        // The date goes over as the grid shows it; the save never writes it back.
        entry.txtno.setText(flexMaster.TextMatrix(row, 1));
        entry.txtdate.setText(flexMaster.TextMatrix(row, 2));
        entry.txtVby.setText(flexMaster.TextMatrix(row, 3));
        entry.txtRemarks.setText(flexMaster.TextMatrix(row, 5));
        m_.lngVerificationId = vb::CLng(vb::Variant(vb::Val(flexMaster.TextMatrix(row, 0))));

        // A confirmed total count has moved the stock: it opens to be seen, not changed.
        if (m_.intInterfaceID == 1013) {
            const bool confirmed =
                Confirmed(m_.lngVerificationId, vb::CInt(vb::Variant(m_.intGodownID)));
            entry.chkConfirm.setValue(confirmed ? forms::vbChecked : forms::vbUnchecked);
            entry.cmdOK.setEnabled(!confirmed);
            entry.chkConfirm.setEnabled(!confirmed);
        }
        // Each lock below only switches OK off: the entry still opens, and
        // several messages may come before it does.
        if (VerifiedAgain()) {
            forms::MsgBox(m_.screen(),
                          "The stock is verified again after this entry. You cannot modify now.",
                          forms::vbExclamation);
            entry.cmdOK.setEnabled(false);
        }
        if (flexMaster.TextMatrix(row, 4) == "Yes") {
            entry.cmdOK.setEnabled(false);
        }
        if (flexMaster.TextMatrix(row, 6) == "Yes") {
            entry.cmdOK.setEnabled(false);
            forms::MsgBox(m_.screen(), "Entry Posted, Cannot Modify", forms::vbInformation,
                          m_.strMsgboxCaption);
        }

        PopulateExistingData();
        entry.Show(forms::vbModal, this);
        setMousePointer(forms::vbDefault);
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "CmdEdit_Click ", e);
        setMousePointer(forms::vbDefault);
    }
}

bool frmMaster::VerifiedAgain() {
    try {
        ado::Recordset rs;
        rs.Open("SELECT svhId FROM loiStockVerificationHeader WHERE svhGodownid = " +
                    std::to_string(m_.intGodownID) + " AND svhid > " +
                    std::to_string(m_.lngVerificationId) + " AND svhCancelled = 0",
                m_.adocon, ado::adOpenForwardOnly, ado::adLockReadOnly);
        const bool later = !rs.Eof();
        rs.Close();
        return later;
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "VerifiedAgain", e);
        return false;
    }
}

bool frmMaster::Confirmed(std::int32_t lngId, std::int16_t intGodown) {
    try {
        ado::Recordset rs;
        rs.Open("SELECT svhFutureVc FROM loiStockVerificationHeader WHERE svhId = " +
                    std::to_string(lngId) + " AND svhGodownId = " + std::to_string(intGodown),
                m_.adocon, ado::adOpenForwardOnly, ado::adLockReadOnly);
        bool confirmed = false;
        if (!rs.Eof()) {
            const vb::Variant marker = rs.Fields("svhFutureVc").Value();
            confirmed = !vb::IsNull(marker) && vb::UCase(vb::Mid(vb::CStr(marker), 2, 1)) == "C";
        }
        rs.Close();
        return confirmed;
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "Confirmed", e);
        return false;
    }
}

void frmMaster::PopulateExistingData() {
    try {
        frmStockVerification &entry = m_.frmStockVerification();
        const std::string godown = std::to_string(m_.intGodownID);
        const std::string id = std::to_string(m_.lngVerificationId);
        if (!objBaseData) {
            throw vb::Error::standard(vb::err::ObjectNotSet);
        }
        if (m_.intInterfaceID == 1005) {
            objBaseData->PopulateListView(
                entry.lvwRequest, "loiStockVerificationDetail, aitem, vwItemdescription, aUnit u",
                "aitem.itemid = svditemid  and vwItemdescription.itemid = aitem.itemid  and "
                "svdgodownid = " +
                    godown + " and svdid = " + id + " and svdgodownid = " + godown +
                    " and aItem.UnitsId = u.UnitId group by svditemid, "
                    "vwItemdescription.itemdescription, itemcode",
                "SLNO", "1", "itemcode", "vwItemdescription.itemdescription",
                "ISNULL(sum(svdavailstock),0)", "isnull(sum(svdVerifiedStock),0)",
                "isnull(sum(svdAvailBadStock),0)", "isnull(sum(svdVerifiedBadStock),0)",
                "svditemid", "SLNO", "MAX(svdLocationId)", "MAX(svdShipmentId)",
                "convert(varchar(24),MAX(svdCostPrice))", "MIN(UnitCode)");
        } else if (m_.intInterfaceID == 1013) {
            // A total count comes back by item and location, and only its lines
            // marked 1 in the bad stock, the mark its edits leave; the sixth
            // column repeats the verified bad stock where the plain list has
            // the verified good stock.
            objBaseData->PopulateListView(
                entry.lvwRequest, "loiStockVerificationDetail, aItem, vwItemDescription, aUnit",
                "aItem.ItemId = svdItemId and vwItemDescription.ItemId = aItem.ItemId  and "
                "aItem.UnitsId = aUnit.UnitId and svdgodownid = " +
                    godown + " and svdid = " + id + " and svdgodownid = " + godown +
                    " and svdAvailBadStock = 1 group by "
                    "svdItemId,svdLocationid,itemcode,vwItemdescription.itemdescription",
                "SLNO", "svdLocationid", "itemcode", "vwItemdescription.itemdescription",
                "ISNULL(sum(svdavailstock), 0)", "isnull(sum(svdVerifiedBadStock), 0)",
                "isnull(sum(svdAvailBadStock), 0)", "isnull(sum(svdVerifiedBadStock), 0)",
                "svdItemId", "SLNO", "max(svdLocationId)", "max(svdShipmentId)",
                "convert(varchar(24),MAX(svdCostPrice))", "MIN(UnitCode)");
        }
        FormatListViewColumns(entry.lvwRequest, {vb::Variant("3:3"), vb::Variant("4:3"),
                                                 vb::Variant("5:3"), vb::Variant("6:3")});
        setEnabled(true);
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "PopulateExistingData", e);
    }
}

} // namespace tqsv2731
