#include "ScriptedTerminal.h"
#include "TestForms.h"

#include "hosts/tui/TuiHost.h"

#include "forms/EventLoop.h"

#include "vb/Error.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace tui::test {
namespace {

constexpr const char *ESC = "\x1b";
constexpr const char *Down = "\x1b[B";
constexpr const char *ShiftF10 = "\x1b[21;2~";
constexpr const char *MenuKey = "\x1b[29~";

struct Session {
    ScriptedTerminal terminal{60, 20};
    TuiHost host{terminal};
    Log log;
};

/// Runs a modal Show and expects the script to close the form.
void showModal(forms::Form &form) {
    form.Show(forms::vbModal);
    EXPECT_FALSE(form.Visible());
}

TEST(TuiHostTest, TabShiftTabAndEscapeMoveAndClose) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    s.terminal.type("\t");
    s.terminal.type("\t\x1b[Z");
    s.terminal.type(ESC); // a lone ESC: the Escape key once no rest comes
    showModal(form);
    std::vector<std::string> focus;
    for (const auto &line : s.log.lines) {
        if (line.ends_with(".GotFocus")) {
            focus.push_back(line);
        }
    }
    EXPECT_EQ(focus, (std::vector<std::string>{"txtName.GotFocus", "cboKind.GotFocus",
                                               "optAscend.GotFocus", "cboKind.GotFocus"}));
    EXPECT_FALSE(s.log.has("KeyDown 27 0")) << "Escape went to the cancel button";
}

TEST(TuiHostTest, KeysAreReadWithTheTerminalsOwnSequences) {
    ScriptedTerminal terminal{60, 20};
    // The Linux console's Shift+Tab is ESC Tab; its F3 is ESC [ [ C.
    terminal.useKeyTable(KeyTable({{"\x1b\t", forms::keyStrokeFor(forms::vbKeyTab, 1), "kcbt"},
                                   {"\x1b[[C", forms::keyStrokeFor(forms::vbKeyF1 + 2), "kf3"}}));
    TuiHost host{terminal};
    Log log;
    EntryDialog form(host.screen(), log);
    terminal.type("\t");
    terminal.type("\x1b\t\x1b[[C");
    terminal.type(ESC);
    showModal(form);
    std::vector<std::string> focus;
    for (const auto &line : log.lines) {
        if (line.ends_with(".GotFocus")) {
            focus.push_back(line);
        }
    }
    EXPECT_EQ(focus, (std::vector<std::string>{"txtName.GotFocus", "cboKind.GotFocus",
                                               "txtName.GotFocus"}));
    // Read by hand, ESC Tab would be Escape, which closes the dialog before F3.
    EXPECT_TRUE(log.has("KeyDown 114 0")) << "F3";
}

TEST(TuiHostTest, ShortcutKeysReachTheFormAsTheOldPlatformSentThem) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    s.terminal.type("\x04");                       // Ctrl+D
    s.terminal.type("\n");                         // Ctrl+Enter
    s.terminal.type("\x1bOR");                     // F3
    s.terminal.type("\x1b[3~");                    // Delete
    s.terminal.type("\033f");                      // Alt+F: the check box "Confirm &Finished"
    s.terminal.type("\x1b[6~\x1b[5~\x1b[H\x1b[F"); // Page Down, Page Up, Home, End
    s.terminal.type(ESC);
    showModal(form);
    for (const char *line : {"KeyDown 68 2", "KeyPress 4", "KeyDown 13 2", "KeyPress 10",
                             "KeyDown 114 0", "KeyDown 46 0", "KeyDown 70 4", "chkDone.Click",
                             "KeyDown 34 0", "KeyDown 33 0", "KeyDown 36 0", "KeyDown 35 0"}) {
        EXPECT_TRUE(s.log.has(line)) << line;
    }
    EXPECT_FALSE(s.log.has("KeyPress 114")) << "F3 makes no character";
    EXPECT_EQ(form.chkDone.Value(), forms::vbChecked);
}

TEST(TuiHostTest, ScannerBurstsAreTypedWholeInOrderWithoutRedraws) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    form.cmdOK.setDefault(false); // else Enter presses it and never reaches the box
    form.txtName.onKeyPress = [&](int &KeyAscii) {
        if (KeyAscii == 13) {
            s.log("scanned " + form.txtName.Text());
            form.txtName.setText("");
        }
    };
    s.terminal.type("8901234567890\r4006381333931\r890123");
    s.terminal.type("4567891\r");
    s.terminal.type(ESC);
    showModal(form);
    std::vector<std::string> scans;
    for (const auto &line : s.log.lines) {
        if (line.starts_with("scanned")) {
            scans.push_back(line);
        }
    }
    EXPECT_EQ(scans, (std::vector<std::string>{"scanned 8901234567890", "scanned 4006381333931",
                                               "scanned 8901234567891"}));
    EXPECT_EQ(s.host.framesDrawn(), 0u) << "nothing is drawn while keys are waiting";
}

TEST(TuiHostTest, KeysTypedAheadGoToTheDialogTheyOpen) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    form.cmdOK.setDefault(false);
    form.txtName.onKeyPress = [&](int &KeyAscii) {
        if (KeyAscii == 13) {
            int answer = forms::MsgBox(form.screen(), "Add " + form.txtName.Text() + "?",
                                       forms::vbYesNo + forms::vbQuestion, "Stock");
            s.log("answer " + std::to_string(answer));
        }
    };
    s.terminal.type("123\ryx");
    s.terminal.type(ESC);
    showModal(form);
    EXPECT_TRUE(s.log.has("answer 6"));
    EXPECT_EQ(form.txtName.Text(), "123x") << "the key after the answer goes back to the field";
}

TEST(TuiHostTest, EnterAsTabThroughSendKeysRunsBeforeTheNextKey) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    form.cmdOK.setDefault(false);
    form.txtName.onKeyPress = [&](int &KeyAscii) {
        if (KeyAscii == 13) {
            forms::SendKeys(form.screen(), "{TAB}");
        }
    };
    s.terminal.type("ab\rd"); // "d" picks "Damaged" in the list box that Tab reached
    s.terminal.type(ESC);
    showModal(form);
    EXPECT_EQ(form.txtName.Text(), "ab");
    EXPECT_EQ(form.cboKind.ListIndex(), 2);
}

TEST(TuiHostTest, ContextMenuKeysOpenThePopupOnTheSelectedRow) {
    Session s;
    ListDialog form(s.host.screen(), s.log);
    for (const char *d : {"Rice", "Sugar", "Salt"}) {
        form.addRow(d, "1.000");
    }
    form.mnuEdit.onClick = [&] {
        s.log("mnuEdit.Click on " + form.lvwItems.SelectedItem().SubItems(2));
    };
    s.terminal.type(Down);
    s.terminal.type(ShiftF10);
    s.terminal.typeLater(Down); // the user sees the menu, then moves to "Edit"
    s.terminal.type("\r");
    s.terminal.type(MenuKey);
    s.terminal.typeLater("d"); // its letter chooses "Delete" at once
    s.terminal.type(MenuKey);
    s.terminal.typeLater(ESC); // dismissed: no item runs
    s.terminal.typeLater(ESC);
    showModal(form);
    EXPECT_EQ(s.log.lines, (std::vector<std::string>{"mnuEdit.Click on Sugar", "mnuDelete.Click"}));

    auto menus = s.terminal.framesShowing("Delete");
    ASSERT_FALSE(menus.empty());
    EXPECT_NE(menus.front().find("│ Add    │"), std::string::npos) << menus.front();
    EXPECT_NE(menus.front().find("│ Edit   │"), std::string::npos);
}

TEST(TuiHostTest, PopupSkipsDisabledItems) {
    Session s;
    ListDialog form(s.host.screen(), s.log);
    form.mnuEdit.setEnabled(false);
    form.mnuDelete.setEnabled(false);
    s.terminal.type(MenuKey); // an empty list: right click on the list itself
    s.terminal.typeLater(Down);
    s.terminal.type("e\r"); // "e" is disabled; Enter takes "Add", the only live item
    s.terminal.typeLater(ESC);
    showModal(form);
    EXPECT_EQ(s.log.lines, (std::vector<std::string>{"mnuAdd.Click"}));
}

TEST(TuiHostTest, ComboListOpensWithF4OrAltDown) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    s.terminal.type("\t\x1bOS");            // to the combo, F4
    s.terminal.typeLater("\x1b[B\x1b[B\r"); // two down, Enter
    s.terminal.type("\x1b[1;3B");           // Alt+Down
    s.terminal.typeLater("\x1b[A");         // up to "Bad"
    s.terminal.typeLater(ESC);              // closed without a choice
    s.terminal.typeLater(ESC);
    showModal(form);
    EXPECT_EQ(form.cboKind.ListIndex(), 2);
    EXPECT_EQ(std::count(s.log.lines.begin(), s.log.lines.end(), "cboKind.Click"), 1);
    auto lists = s.terminal.framesShowing("Damaged");
    ASSERT_FALSE(lists.empty());
    EXPECT_NE(lists.front().find("│Good"), std::string::npos) << lists.front();
}

TEST(TuiHostTest, MessageBoxAnswers) {
    struct Case {
        int style;
        const char *keys;
        int answer;
    };
    const int ync = forms::vbYesNoCancel + forms::vbQuestion + forms::vbDefaultButton2;
    const Case cases[] = {
        {ync, "\r", forms::vbNo},              // Enter: the default button
        {ync, "\x1b[D\r", forms::vbYes},       // Left, Enter
        {ync, "\x1b[C\x1b[C\r", forms::vbYes}, // Right twice wraps round to Yes
        {ync, "\t ", forms::vbCancel},         // Tab, Space
        {ync, "c", forms::vbCancel},           // the first letter of Cancel
        {ync, "\033y", forms::vbYes},          // Alt+Y
        {ync, ESC, forms::vbCancel},           // Escape: Cancel
        {forms::vbYesNo,
         "\033\033[C"
         "\r",
         forms::vbNo}, // Escape cannot dismiss Yes/No
        {forms::vbOKOnly, ESC, forms::vbOK},
        {forms::vbOKOnly, "o", forms::vbOK},
    };
    for (const Case &c : cases) {
        Session s;
        s.terminal.type(c.keys);
        EXPECT_EQ(s.host.msgBox("Save Changes?", c.style, "Stock"), c.answer) << c.keys;
    }
}

TEST(TuiHostTest, MessageBoxIsCentredWithTitleIconWordAndButtons) {
    Session s;
    s.terminal.typeLater("\r");
    s.host.msgBox("Do you want to remove                      \r\nRice 5 kg?",
                  forms::vbYesNo + forms::vbInformation + forms::vbDefaultButton2, "Stock");
    EXPECT_EQ(s.terminal.lastFrame(), R"(




      ┌ Stock ──────────────────────────────────────┐
      │ Information                                 │
      │                                             │
      │ Do you want to remove                       │
      │ Rice 5 kg?                                  │
      │                                             │
      │               [ Yes ]  [ No ]               │
      └─────────────────────────────────────────────┘






 Enter answers, arrows choose a button
)");
}

TEST(TuiHostTest, CtrlCAndTheEndOfInputEndTheSession) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    s.terminal.type("ab\x03"
                    "cd");
    try {
        form.Show(forms::vbModal);
        FAIL() << "Ctrl+C must end the session";
    } catch (const SessionEnded &e) {
        EXPECT_EQ(e.exitCode(), 130);
    }
    EXPECT_EQ(form.txtName.Text(), "ab") << "nothing after Ctrl+C is typed";

    Session quiet;
    EntryDialog other(quiet.host.screen(), quiet.log);
    EXPECT_THROW(other.Show(forms::vbModal), SessionEnded);
}

struct TempDir {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("tui-test-" + std::to_string(::getpid()));
    TempDir() { std::filesystem::create_directories(path); }
    ~TempDir() { std::filesystem::remove_all(path); }
};

TEST(TuiHostTest, TextFileViewerTakesTheKeysUntilClosed) {
    TempDir dir;
    auto file = dir.path / "StockVer.txt";
    {
        std::ofstream out(file);
        for (int i = 1; i <= 40; ++i) {
            out << "slip line " << i << "\n";
        }
    }
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    s.host.showTextFile(file.string());
    s.terminal.typeLater("\x1b[6~"); // Page Down in the viewer
    s.terminal.typeLater("q");
    s.terminal.typeLater("x"); // back in the form
    s.terminal.typeLater(ESC);
    showModal(form);
    EXPECT_EQ(form.txtName.Text(), "x");
    ASSERT_GE(s.terminal.frames().size(), 2u);
    EXPECT_NE(s.terminal.frames()[0].find("slip line 17"), std::string::npos);
    EXPECT_EQ(s.terminal.frames()[0].find("slip line 18"), std::string::npos);
    EXPECT_NE(s.terminal.frames()[1].find("slip line 18 "), std::string::npos) << "a page on";
    EXPECT_NE(s.terminal.frames()[1].find("slip line 34"), std::string::npos);
    EXPECT_EQ(s.terminal.frames()[1].find("slip line 17"), std::string::npos);
    EXPECT_EQ(s.terminal.frames()[2].find("slip line"), std::string::npos) << "closed";

    EXPECT_NO_THROW(s.host.showTextFile((dir.path / "missing.txt").string()))
        << "a missing file opens empty, as in the old viewer";
}

TEST(TuiHostTest, PrinterPortsAndReportsComeFromTheSettings) {
    TempDir dir;
    ScriptedTerminal terminal(60, 20);
    HostSettings settings;
    settings.printers["LPT1"] = (dir.path / "lpt1.out").string();
    settings.printers["LPT2"] = (dir.path / "no-such-folder" / "lpt2.out").string();
    TuiHost host(terminal, settings);
    {
        auto port = host.openPrinter("lpt1"); // port names ignore letter case
        *port << "slip\f";
        EXPECT_FALSE(std::filesystem::exists(dir.path / "lpt1.out"))
            << "nothing leaves before the slip is complete";
        port->flush();
    }
    std::ifstream written(dir.path / "lpt1.out");
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(written), {}), "slip\f");
    for (const char *port : {"LPT2", "/no/such/printer"}) {
        try {
            host.openPrinter(port);
            ADD_FAILURE() << port;
        } catch (const vb::Error &e) {
            EXPECT_EQ(e.number(), 75) << port;
        }
    }
    try {
        forms::ReportPreview preview;
        preview.reportFile = "rptGodownStockVerification.rpt";
        preview.title = "Stock";
        host.previewReport(preview);
        ADD_FAILURE() << "no report viewer is set up";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 429);
    }
}

TEST(TuiHostTest, DoEventsKeepsWaitingKeysForTheLoop) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    form.cmdOK.setDefault(false);
    form.txtName.onKeyPress = [&](int &KeyAscii) {
        if (KeyAscii == 13) {
            forms::DoEvents(form.screen()); // a long action lets the screen breathe
            s.log("after DoEvents " + form.txtName.Text());
        }
    };
    s.terminal.type("ab\rcd");
    s.terminal.type(ESC);
    showModal(form);
    EXPECT_TRUE(s.log.has("after DoEvents ab")) << "the keys after Enter wait their turn";
    EXPECT_EQ(form.txtName.Text(), "abcd");
    EXPECT_EQ(s.host.framesDrawn(), 0u);
}

TEST(TuiHostTest, BusyMarkShowsAtOnceUnlessKeysAreWaiting) {
    Session s;
    s.host.screen().setMousePointer(forms::vbHourglass);
    ASSERT_EQ(s.host.framesDrawn(), 1u);
    EXPECT_NE(s.terminal.lastFrame().find("Busy"), std::string::npos);
    s.terminal.type("a");
    s.host.screen().setMousePointer(forms::vbDefault);
    EXPECT_EQ(s.host.framesDrawn(), 1u) << "a key waits: it is handled before anything is drawn";
}

} // namespace
} // namespace tui::test
