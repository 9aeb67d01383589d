#include "module/register/frmcancelreason.h"

#include "forms/MsgBox.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "services/clsScreenPalette.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmcancelreason";

} // namespace

frmcancelreason &Module::frmcancelreason() {
    return slotOf<tqsv2731::frmcancelreason>(frmcancelreason_).get();
}

frmcancelreason::frmcancelreason(Module &m) : Form(m.screen(), FormName), m_(m) {
    setCaption("Reason For Deletion");
    Label1.setCaption("&Reason :");
    txtcanreason.setMaxLength(200);
    cmdOK.setCaption("&OK");
    Move(0, 0, 6480, 915);
    Label1.Move(120, 120, 960, 240);
    txtcanreason.Move(1080, 120, 4200, 240);
    cmdOK.Move(5400, 120, 840, 240);
    bindEvents();
}

void frmcancelreason::bindEvents() {
    onLoad = [this] { Form_Load(); };
    onActivate = [this] { Form_Activate(); };
    onQueryUnload = [this](int &Cancel, int UnloadMode) { Form_QueryUnload(Cancel, UnloadMode); };
    txtcanreason.onKeyPress = [this](int &KeyAscii) { txtcanreason_KeyPress(KeyAscii); };
    txtcanreason.onKeyUp = [this](int &KeyCode, int Shift) { txtcanreason_KeyUp(KeyCode, Shift); };
    cmdOK.onClick = [this] { cmdOK_Click(); };
}

void frmcancelreason::Form_Load() {
    if (!m_.objScreenPalette) {
        throw vb::Error::standard(vb::err::ObjectNotSet);
    }
    m_.objScreenPalette->ApplyScreenPalette(*this);
}

void frmcancelreason::Form_Activate() {
    try {
        // Each activation starts with no reason, so an earlier deletion's
        // reason never passes for this one's.
        m_.strCancelReason = "";
        setHeight(915);
        setWidth(6480);
        setCaption("Reason for deletion");
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Activate", e);
    }
}

void frmcancelreason::txtcanreason_KeyPress(int &KeyAscii) {
    try {
        if (KeyAscii == 39) {
            KeyAscii = 0;
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtcanreason_KeyPress", e);
    }
}

void frmcancelreason::txtcanreason_KeyUp(int & /*KeyCode*/, int /*Shift*/) {
    try {
        cmdOK.setEnabled(!vb::Trim(txtcanreason.Text()).empty());
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtcanreason_KeyUp", e);
    }
}

void frmcancelreason::cmdOK_Click() {
    try {
        if (!vb::Trim(txtcanreason.Text()).empty()) {
            // The reason is kept as typed; the delete trims it when it stores it.
            m_.strCancelReason = txtcanreason.Text();
            cmdOK.setEnabled(false);
            Unload();
        } else {
            forms::MsgBox(m_.screen(), "Enter reason for deletion", forms::vbInformation,
                          m_.strMsgboxCaption);
            txtcanreason.SetFocus();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdOK_Click", e);
    }
}

void frmcancelreason::Form_QueryUnload(int &Cancel, int /*UnloadMode*/) {
    try {
        // The close box works as OK while OK is live; the dialog stays open
        // until a reason is typed.
        if (cmdOK.Enabled()) {
            Cancel = 1;
            cmdOK_Click();
            if (!txtcanreason.Text().empty()) {
                Cancel = 0;
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_QueryUnload", e);
    }
}

} // namespace tqsv2731
