// frmMaster's Print command: the print destinations of the selected entry.
#include "module/register/frmMaster.h"

#include "module/frame/Module.h"
#include "module/frame/TrackError.h"

namespace tqsv2731 {

void frmMaster::cmdPreview_Click() {
    try {
        openPrintDialog();
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "cmdPreview_Click ", e);
    }
}

void frmMaster::openPrintDialog() {
    // The print destinations form joins with the printing work; until then
    // Print fails as an open of a form that cannot load, and says so.
    throw vb::Error(vb::err::InvalidProcedureCall, "frmMaster",
                    "The print destinations are not available in this build");
}

} // namespace tqsv2731
