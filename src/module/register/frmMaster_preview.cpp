// frmMaster's Print command: the print destinations of the selected entry.
#include "module/register/frmMaster.h"

#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/printing/frmPrint.h"

namespace tqsv2731 {

void frmMaster::cmdPreview_Click() {
    try {
        openPrintDialog();
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "cmdPreview_Click ", e);
    }
}

void frmMaster::openPrintDialog() {
    m_.frmPrint().Show(forms::vbModal, this);
}

} // namespace tqsv2731
