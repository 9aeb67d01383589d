#include "module/printing/frmPrint.h"

#include "forms/Screen.h"
#include "forms/Shell.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/register/frmMaster.h"
#include "services/clsScreenPalette.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"
#include "vb/WindowsPath.h"

namespace tqsv2731 {

frmPrint &Module::frmPrint() { return slotOf<tqsv2731::frmPrint>(frmPrint_).get(); }

frmPrint::frmPrint(Module &m) : Form(m.screen(), "frmPrint"), m_(m) {
    setCaption("Print");
    optScreen.setCaption("To &Screen");
    optScreen.setToolTipText("Shortcut: Alt + S");
    Optwindowsprint.setCaption("&Windows Print");
    Optwindowsprint.setToolTipText("Shortcut: Alt + W");
    Optwindowsprint.setValue(true);
    optPrint.setCaption("To &Printer");
    optPrint.setToolTipText("Shortcut: Alt + P");
    cmdOK.setCaption("&OK");
    cmdOK.setToolTipText("Shortcut: Alt + O");
    cmdOK.setDefault(true);
    cmdCancel.setCaption("&Cancel");
    cmdCancel.setToolTipText("Shortcut: Alt + C");
    cmdCancel.setCancel(true);
    layOut();
    bindEvents();
}

void frmPrint::layOut() {
    // A small dialog: the three options in a frame, the buttons under it.
    Move(0, 0, 3840, 2640);
    fraPrint.Move(120, 60, 3600, 1380);
    Picture1.Move(120, 240, 3360, 1020);
    optScreen.Move(120, 0, 3000, 300);
    Optwindowsprint.Move(120, 360, 3000, 300);
    optPrint.Move(120, 720, 3000, 300);
    cmdOK.Move(480, 1620, 1200, 400);
    cmdCancel.Move(2040, 1620, 1200, 400);
    optScreen.setTabIndex(0);
    Optwindowsprint.setTabIndex(1);
    optPrint.setTabIndex(2);
    cmdOK.setTabIndex(3);
    cmdCancel.setTabIndex(4);
}

void frmPrint::bindEvents() {
    onLoad = [this] { Form_Load(); };
    onKeyPress = [this](int &KeyAscii) { Form_KeyPress(KeyAscii); };
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
}

void frmPrint::Form_Load() {
    try {
        if (!m_.objScreenPalette) {
            throw vb::Error::standard(vb::err::ObjectNotSet);
        }
        m_.objScreenPalette->ApplyScreenPalette(*this);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Load", e);
    }
}

void frmPrint::cmdOK_Click() {
    forms::Screen &screen = m_.screen();
    std::int32_t number = 0;
    try {
        if (Optwindowsprint.Value()) {
            screen.setMousePointer(forms::vbHourglass);
            WIndowsprint();
            screen.setMousePointer(forms::vbDefault);
            // WIndowsprint has reported its own failure, which cleared the
            // error: this report carries number 0 and shows nothing.
            TrackError(m_, FormName, m_.intUserID, "cmdOK_Click", number, "", "",
                       m_.strTransactionMode, true);
            screen.setMousePointer(forms::vbDefault);
            return;
        }

        screen.setMousePointer(forms::vbHourglass);
        std::string buffer(260, ' ');
        vb::GetWindowsDirectoryA(buffer, 260);
        const std::string folder = vb::Left(buffer, vb::Len(vb::Trim(buffer)) - 1);
        const std::string viewer = vb::InStr(folder, "WINDOWS") > 0
                                       ? folder + "\\command\\edit.com "
                                       : folder + "\\system32\\edit.com ";
        frmMaster &master = m_.frmMaster();
        const std::int32_t id =
            vb::CLng(vb::Variant(master.flexMaster.TextMatrix(master.flexMaster.Row(), 0)));
        if (optScreen.Value()) {
            master.PrintBill(id);
            forms::Shell(screen, viewer + "  c:\\StockVer.txt", 3, m_.context().stateDirectory);
        } else {
            master.PrintBill(id);
        }
        Unload();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdOK_Click", e);
        screen.setMousePointer(forms::vbDefault);
    }
}

void frmPrint::cmdCancel_Click() {
    Unload();
}

void frmPrint::Form_KeyPress(int &KeyAscii) {
    if (KeyAscii == 27) {
        Unload();
    }
}

} // namespace tqsv2731
