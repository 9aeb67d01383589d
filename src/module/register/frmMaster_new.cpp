// frmMaster's New command: a new entry on the entry form.
#include "module/register/frmMaster.h"

#include "forms/Screen.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
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
        // A total count of 1013 is refused while transfers are under way
        // (UnProcessedQuantitiesExist and its dialog); that gate joins with
        // the dialog, and until then New goes straight on in both interfaces.

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

} // namespace tqsv2731
