// frmStockVerification's item list: the popup menu, its keys, removing rows and tool tips.
#include "module/entry/frmStockVerification.h"

#include "forms/Keys.h"
#include "forms/MsgBox.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "vb/Conversion.h"
#include "vb/Format.h"

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerification";

/// The list's quantities show in full in their tool tips, wider than the column.
constexpr std::string_view TipFormat = "###,###,##0.000#####";

} // namespace

void frmStockVerification::NoItemInList(bool /*blnFlag*/, bool &blnNoItem) {
    blnNoItem = lvwRequest.ListItems().Count() < 1;
}

void frmStockVerification::mnuadd_Click() {
    try {
        m_.strDetailMode = "N";
        m_.frmStockVerificationDetail().Show(forms::vbModal, this);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "mnuadd_Click", e);
    }
}

void frmStockVerification::mnuEdit_Click() {
    try {
        m_.strDetailMode = "E";
        intSelectedItem = vb::CInt(vb::Variant(lvwRequest.SelectedItem().Index()));
        m_.frmStockVerificationDetail().Show(forms::vbModal, this);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "mnuEdit_Click", e);
    }
}

void frmStockVerification::mnuDelete_Click() {
    try {
        // This one box goes without the session's title.
        const std::string prompt = "Do you want to remove                      \r\n" +
                                   lvwRequest.SelectedItem().SubItems(3) + "?";
        const int answer = forms::MsgBox(
            m_.screen(), prompt, forms::vbYesNo + forms::vbInformation + forms::vbDefaultButton2);
        if (answer != forms::vbYes) {
            return;
        }
        lvwRequest.ListItems().Remove(lvwRequest.SelectedItem().Index());
        auto &items = lvwRequest.ListItems();
        for (int i = 1; i <= items.Count(); ++i) {
            if (!items(i).SubItems(3).empty()) {
                items(i).setText(std::to_string(i));
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "mnuDelete_Click", e);
    }
}

void frmStockVerification::lvwRequest_ItemClick(forms::ListItem & /*Item*/) {
    try {
        forms::ListItem &row = lvwRequest.SelectedItem();
        for (int n = 4; n <= 7; ++n) {
            if (!row.SubItems(n).empty()) {
                row.ListSubItems(n).setToolTipText(
                    vb::Format(vb::Variant(row.SubItems(n)), TipFormat));
            }
        }
        if (!row.SubItems(3).empty()) {
            row.ListSubItems(3).setToolTipText(row.SubItems(3));
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "lvwRequest_ItemClick", e);
    }
}

void frmStockVerification::lvwRequest_DblClick() {
    try {
        if (!cmdOK.Enabled()) {
            return;
        }
        bool blnNoItem = false;
        NoItemInList(false, blnNoItem);
        if (!blnNoItem) {
            mnuEdit_Click();
        } else if (mnuadd.Enabled()) {
            mnuadd_Click();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "lvwRequest_DblClick", e);
    }
}

void frmStockVerification::lvwRequest_KeyPress(int &KeyAscii) {
    try {
        if (!cmdOK.Enabled()) {
            return;
        }
        if (KeyAscii == 13) {
            lvwRequest_DblClick();
        } else if (KeyAscii == 10 && m_.strTransactionMode == "N" && mnuadd.Enabled()) {
            // Enter opens the selected row; Ctrl+Enter adds one while rows stand.
            mnuadd_Click();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "lvwRequest_KeyPress", e);
    }
}

void frmStockVerification::lvwRequest_KeyDown(int &KeyCode, int /*Shift*/) {
    try {
        // Not gated by cmdOK: a locked entry still offers the removal.
        if (KeyCode == forms::vbKeyDelete && lvwRequest.ListItems().Count() >= 1) {
            mnuDelete_Click();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "lvwRequest_KeyDown", e);
    }
}

void frmStockVerification::lvwRequest_MouseDown(int Button, int /*Shift*/, double /*X*/,
                                                double /*Y*/) {
    try {
        if (!cmdOK.Enabled() || Button != forms::vbRightButton) {
            return;
        }
        // The test is on the entry's id, not on the interface: it disables
        // "&Add" only on the entry whose id is 1005, for the form's life.
        if (m_.strTransactionMode == "E" && m_.lngVerificationId == 1005) {
            mnuadd.setEnabled(false);
        }
        bool blnNoItem = false;
        NoItemInList(false, blnNoItem);
        mnuEdit.setEnabled(!blnNoItem);
        mnuDelete.setEnabled(!blnNoItem);
        PopupMenu(mnuPopup);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "lvwRequest_MouseDown", e);
    }
}

} // namespace tqsv2731
