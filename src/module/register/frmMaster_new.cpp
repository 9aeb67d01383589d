// frmMaster's New command: a new entry on the entry form, and the total count's gate.
#include "module/register/frmMaster.h"

#include "forms/Screen.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/register/frmUnProcessedItems.h"
#include "ado/Recordset.h"
#include "services/clsActivityTrail.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"

namespace tqsv2731 {

void frmMaster::cmdnew_Click() {
    try {
        setMousePointer(forms::vbHourglass);
        if (!m_.objActivityTrail) {
            throw vb::Error::standard(vb::err::ObjectNotSet);
        }
        m_.objActivityTrail->LoggedTime = vb::Now();
        // A total count of 1013 is refused while transfers are under way: a
        // confirmed count would overwrite stock that is on its way.
        if (m_.intInterfaceID == 1013 && UnProcessedQuantitiesExist()) {
            setMousePointer(forms::vbDefault);
            return;
        }

        m_.strTransactionMode = "N";
        frmStockVerification &entry = m_.frmStockVerification();
        entry.txtdate.setText(vb::CStr(vb::Variant(m_.dtProcessDate)));
        entry.txtRemarks.setText("");
        entry.Show(forms::vbModal, this);

        flexMaster_SelChange();
        setMousePointer(forms::vbDefault);
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "cmdnew_Click ", e);
        setMousePointer(forms::vbDefault);
    }
}

bool frmMaster::UnProcessedQuantitiesExist() {
    bool exist = false;
    try {
        ado::Recordset rs;
        rs.Open("SELECT vw.*, vi.ItemDescription, u.UnitCode FROM vwQuantityUnProcessed vw,  "
                "vwItemDescription vi, aItem i, aUnit u WHERE vw.ItemId = vi.ItemId AND vi.ItemId "
                "= i.ItemId AND i.UnitsId = u.UnitId AND vw.LocationId = " +
                    std::to_string(m_.intGodownID) + " AND vw.LocationType = 'G'",
                m_.adocon, ado::adOpenForwardOnly, ado::adLockReadOnly);
        if (!rs.Eof()) {
            // The dialog is handed the open rows before it loads, and lists
            // them from where the cursor stands.
            auto &slot = m_.slotOf<tqsv2731::frmUnProcessedItems>(m_.frmUnProcessedItems_);
            slot.unloaded().rsUnProcessed = rs;
            slot.unloaded().Show(forms::vbModal);
            exist = true;
        }
        rs.Close();
    } catch (const vb::Error &e) {
        // A failed look lets the new entry through.
        TrackError(m_, "frmMaster", "UnProcessedQuantitiesExist", e);
    }
    return exist;
}

} // namespace tqsv2731
