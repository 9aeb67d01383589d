#include "ScriptedTerminal.h"
#include "TestForms.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/KeyStrip.h"
#include "hosts/tui/TuiHost.h"

#include <gtest/gtest.h>

namespace tui::test {
namespace {

using Hints = std::vector<KeyHint>;

struct Session {
    ScriptedTerminal terminal{60, 20};
    TuiHost host{terminal};
    Log log;
};

TEST(KeyStripTest, ButtonsThenCancelThenFieldsInTheOrderTheyStand) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    form.Show();
    EXPECT_EQ(keyHints(form), (Hints{{"Alt+O", "OK"},
                                     {"Alt+C", "Close"},
                                     {"Esc", "Close"},
                                     {"Alt+N", "Name"},
                                     {"Alt+A", "Ascending"},
                                     {"Alt+F", "Confirm Finished"},
                                     {"Alt+D", "Descending"}}));

    // What cannot be pressed now is not offered.
    form.cmdOK.setEnabled(false);
    form.fraOrder.setVisible(false);
    EXPECT_EQ(keyHints(form), (Hints{{"Alt+C", "Close"},
                                     {"Esc", "Close"},
                                     {"Alt+N", "Name"},
                                     {"Alt+F", "Confirm Finished"}}));
}

TEST(KeyStripTest, TheFocusedControlsOwnKeysComeFirst) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    form.Show();
    form.cboKind.SetFocus();
    EXPECT_EQ(keyHints(form).front(), (KeyHint{"F4", "List"}));
    form.cboKind.Clear();
    EXPECT_EQ(keyHints(form).front(), (KeyHint{"Alt+O", "OK"})) << "an empty list opens nothing";
}

TEST(KeyStripTest, AListOffersItsMenuItsKeysAndItsColumns) {
    Session s;
    ListDialog form(s.host.screen(), s.log);
    form.Show();
    form.addRow("Rice", "2.000");
    form.lvwItems.SetFocus();
    EXPECT_EQ(keyHints(form), (Hints{{"Shift+F10", "Menu"}, {"Alt+C", "Close"}, {"Esc", "Close"}}));

    // Key handlers on the list (or on a form that previews keys) take
    // Ctrl+Enter and Delete; columns wider than the list scroll sideways.
    form.lvwItems.onKeyPress = [](int &) {};
    form.lvwItems.onKeyDown = [](int &, int) {};
    form.lvwItems.ColumnHeaders().Add(0, "", "Remarks", 2400);
    EXPECT_EQ(keyHints(form), (Hints{{"Ctrl+Enter", "Add"},
                                     {"Del", "Delete"},
                                     {"Shift+F10", "Menu"},
                                     {"←→", "Columns"},
                                     {"Alt+C", "Close"},
                                     {"Esc", "Close"}}));
    // Where the terminal cannot send Ctrl+Enter, the same character is Ctrl+J.
    EXPECT_EQ(keyHints(form, KeyNames{"Ctrl+J"}).front(), (KeyHint{"Ctrl+J", "Add"}));

    // Without a right-click handler the menu cannot open from the list.
    form.lvwItems.onMouseDown = nullptr;
    EXPECT_EQ(keyHints(form).at(2), (KeyHint{"←→", "Columns"}));
}

TEST(KeyStripTest, CtrlDWhereTheFormTakesItAndTheListIsElsewhere) {
    Session s;
    ListDialog form(s.host.screen(), s.log);
    form.Show();
    form.cmdClose.SetFocus();
    auto hasCtrlD = [&] {
        auto hints = keyHints(form);
        return std::any_of(hints.begin(), hints.end(),
                           [](const KeyHint &h) { return h.key == "Ctrl+D"; });
    };
    EXPECT_FALSE(hasCtrlD()) << "the form does not preview keys";
    form.setKeyPreview(true);
    form.onKeyPress = [](int &) {};
    EXPECT_TRUE(hasCtrlD());
    form.lvwItems.SetFocus();
    EXPECT_FALSE(hasCtrlD()) << "the list has the focus already";
}

TEST(KeyStripTest, FunctionKeysFromToolTipsOfButtonsThatAnswer) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    forms::CommandButton cmdFetch{form, "cmdFetch"};
    cmdFetch.setCaption(" ...");
    cmdFetch.setToolTipText("To open Item Fetch interface. Shortcut: F3");
    cmdFetch.Move(4000, 120, 480, 285);
    form.Show();
    auto f3 = [&] {
        for (const KeyHint &h : keyHints(form)) {
            if (h.key == "F3") {
                return h.action;
            }
        }
        return std::string("(none)");
    };
    EXPECT_EQ(f3(), "(none)") << "a button that does nothing on a click";
    cmdFetch.onClick = [] {};
    EXPECT_EQ(f3(), "To open Item Fetch interface");
    cmdFetch.setEnabled(false);
    EXPECT_EQ(f3(), "(none)");
}

TEST(KeyStripTest, PaintsWholeHintsOnly) {
    Canvas canvas(40, 1);
    Hints hints{{"Alt+N", "New"}, {"Alt+E", "Edit"}, {"Alt+D", "Delete"}};
    EXPECT_EQ(paintKeyStrip(canvas, 1, 0, 34, hints, Style{}), 21);
    EXPECT_EQ(canvas.row(0), " Alt+N New  Alt+E Edit");
    EXPECT_TRUE(canvas.at(1, 0).style.has(attrBold)) << "the key stands out";
    EXPECT_FALSE(canvas.at(7, 0).style.has(attrBold));
    canvas.clear();
    EXPECT_EQ(paintKeyStrip(canvas, 1, 0, 35, hints, Style{}), 35) << "exactly the room";
}

TEST(KeyStripTest, TheStatusLineGivesWayToTipsAndHintsAndCanBeOff) {
    Session s;
    EntryDialog form(s.host.screen(), s.log);
    form.Show();
    form.cmdOK.SetFocus();
    s.host.redraw();
    // "Alt+A Ascending" would end past the 58 cells of the line: it is left out whole.
    EXPECT_EQ(s.host.canvas().row(19), " Alt+O OK  Alt+C Close  Esc Close  Alt+N Name");
    form.txtName.SetFocus();
    s.host.redraw();
    EXPECT_EQ(s.host.canvas().row(19), " Scan or type the barcode");

    ScriptedTerminal terminal{60, 20};
    HostSettings settings;
    settings.keyStrip = false;
    TuiHost quiet(terminal, settings);
    EntryDialog other(quiet.screen(), s.log);
    other.Show();
    other.cmdOK.SetFocus();
    quiet.redraw();
    EXPECT_EQ(quiet.canvas().row(19), "");
}

TEST(KeyStripTest, CtrlEnterIsOfferedAsCtrlJWhereTheTerminalCannotSendIt) {
    ScriptedTerminal terminal{60, 20};
    terminal.cannotReportCtrlEnter();
    TuiHost host(terminal);
    Log log;
    ListDialog form(host.screen(), log);
    form.lvwItems.onKeyPress = [](int &) {};
    form.Show();
    form.lvwItems.SetFocus();
    host.redraw();
    EXPECT_EQ(host.canvas().row(19).substr(0, 12), " Ctrl+J Add ");
}

} // namespace
} // namespace tui::test
