#include "ScriptedTerminal.h"
#include "TestForms.h"

#include "hosts/tui/Palette.h"
#include "hosts/tui/TuiHost.h"

#include "forms/Utf8.h"

#include <gtest/gtest.h>

#include <sstream>

namespace tui::test {
namespace {

/// A host on a 60 x 20 terminal, with nothing typed.
struct Screen60 {
    ScriptedTerminal terminal{60, 20};
    TuiHost host{terminal};
    Log log;

    std::string draw() {
        host.redraw();
        return terminal.lastFrame();
    }
    /// The cell where `text` first shows on the last frame.
    Point find(const std::string &text) const {
        const Canvas &c = host.canvas();
        for (int y = 0; y < c.height(); ++y) {
            auto x = c.row(y).find(text);
            if (x != std::string::npos) {
                // Columns count characters, not bytes.
                return {static_cast<int>(forms::utf8::length(c.row(y).substr(0, x))), y};
            }
        }
        ADD_FAILURE() << "'" << text << "' is not on the screen";
        return {};
    }
};

TEST(FormPainterTest, DrawsEachControlAtItsDesignPlace) {
    Screen60 s;
    EntryDialog form(s.host.screen(), s.log);
    form.Show();
    form.txtName.setText("8901234");
    form.cboKind.setListIndex(1);
    form.optDescend.setValue(true);
    form.chkDone.setValue(forms::vbChecked);
    form.txtRemarks.setText("shelf 4 short");
    form.txtRemarks.SetFocus();

    EXPECT_EQ(s.draw(), R"(
    ┌ Sample Entry ────────────────────────────────────┐
    │                                                  │
    │ Name:      8901234                               │
    │            Bad                ▼                  │
    │                                                  │
    │ ┌ Order ───────────────┐                         │
    │ │( ) Ascending         │  [x] Confirm Finished   │
    │ │                      │                         │
    │ │(*) Descending        │  shelf 4 short          │
    │ └──────────────────────┘                         │
    │                                                  │
    │                                                  │
    │                                                  │
    │                                                  │
    │               [   OK   ]  [ Close  ]             │
    │                                                  │
    └──────────────────────────────────────────────────┘

 What the count found
)");
}

TEST(FormPainterTest, MarksFocusDisabledControlsAndAccessKeys) {
    Screen60 s;
    EntryDialog form(s.host.screen(), s.log);
    form.Show();
    form.cmdOK.setEnabled(false);
    form.txtName.setText("ab");
    form.txtName.SetFocus();
    form.txtName.setSelStart(2);
    s.draw();

    const Canvas &c = s.host.canvas();
    Point ok = s.find("OK");
    EXPECT_TRUE(c.at(ok.x, ok.y).style.has(attrDim)) << "a disabled button is dimmed";
    Point close = s.find("Close  ]");
    EXPECT_FALSE(c.at(close.x, close.y).style.has(attrDim));
    EXPECT_TRUE(c.at(close.x, close.y).style.has(attrUnderline)) << "C is the access key";
    EXPECT_FALSE(c.at(close.x + 1, close.y).style.has(attrUnderline));
    Point name = s.find("ab");
    EXPECT_TRUE(c.at(name.x, name.y).style.has(attrUnderline)) << "a text box is a field";
    EXPECT_EQ(s.terminal.cursor(), (Point{name.x + 2, name.y})) << "the caret after the text";

    form.cmdCancel.SetFocus();
    s.draw();
    EXPECT_EQ(s.terminal.cursor(), std::nullopt) << "no caret off a text box";
    EXPECT_TRUE(c.at(close.x, close.y).style.has(attrReverse)) << "the focused button";
}

TEST(FormPainterTest, LongTextScrollsToKeepTheCaretInView) {
    Screen60 s;
    EntryDialog form(s.host.screen(), s.log);
    form.Show();
    form.txtName.SetFocus();
    form.txtName.setText("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789");
    form.txtName.setSelStart(36);
    s.draw();
    // A field of 20 cells shows the last 19 characters and the caret after them.
    Point end = s.find("RSTUVWXYZ0123456789");
    EXPECT_EQ(s.host.canvas().row(end.y).find("QRS"), std::string::npos);
    EXPECT_EQ(s.terminal.cursor(), (Point{end.x + 19, end.y}));

    form.txtName.setSelStart(0);
    s.draw();
    EXPECT_NE(s.host.canvas().row(end.y).find("ABCDEFGHIJKLMNOPQRST"), std::string::npos);
}

TEST(FormPainterTest, GridShowsHeadersRowsInViewAndCancelledRowsInRed) {
    Screen60 s;
    GridDialog form(s.host.screen());
    form.fill(12, {2});
    form.Show();
    form.flexList.setRow(1);
    form.flexList.setCol(0);
    form.flexList.setColSel(3);

    EXPECT_EQ(s.draw(), R"(


    ┌ Register ────────────────────────────────────────┐
    │                                                  │
    │ Number   │Date       │Remarks              │     │
    │ SV1      │2026-11-02 │count 1              │   █ │
    │ SV2      │2026-11-03 │count 2              │   ░ │
    │ SV3      │2026-11-04 │count 3              │   ░ │
    │ SV4      │2026-11-05 │count 4              │   ░ │
    │ SV5      │2026-11-06 │count 5              │   ░ │
    │ SV6      │2026-11-07 │count 6              │   ░ │
    │                                       [ Close  ] │
    │                                                  │
    └──────────────────────────────────────────────────┘




 Alt+C Close  Esc Close
)");
    const Canvas &c = s.host.canvas();
    Point sv1 = s.find("SV1");
    Point sv2 = s.find("SV2");
    Point sv3 = s.find("SV3");
    EXPECT_EQ(c.at(sv1.x, sv1.y).style, styles::selection) << "the selected row";
    EXPECT_EQ(c.at(sv2.x, sv2.y).style.fg, Color::Red) << "a cancelled row";
    EXPECT_EQ(c.at(sv3.x, sv3.y).style.fg, Color::Default);
    EXPECT_EQ(c.at(s.find("Number").x, sv1.y - 1).style, styles::header);
}

TEST(FormPainterTest, GridScrollsWithTheCurrentRow) {
    Screen60 s;
    GridDialog form(s.host.screen());
    form.fill(10000, {9999});
    form.Show();
    form.flexList.setRow(9999); // the whole row, as the register selects it
    form.flexList.setCol(0);
    form.flexList.setColSel(3);
    form.flexList.setForeColorSel(forms::vbRed); // as the register does for a cancelled row
    s.draw();
    const Canvas &c = s.host.canvas();
    Point red = s.find("SV9999 ");
    EXPECT_EQ(s.find("SV9994 ").y + 5, red.y) << "the rows up to the current one show";
    EXPECT_EQ(c.at(red.x, red.y).style.fg, Color::Red) << "selected and cancelled: red text";
    EXPECT_EQ(c.at(red.x, red.y).style.bg, Color::Blue);

    form.flexList.setRow(10000);
    s.draw();
    EXPECT_EQ(s.find("SV10000").y, red.y) << "one row further down scrolls by one";
    EXPECT_NE(c.row(red.y).find("█"), std::string::npos) << "the thumb at the end of the bar";
    EXPECT_EQ(s.find("SV9999 ").y, red.y - 1);
    EXPECT_EQ(c.at(s.find("SV9999 ").x, red.y - 1).style.bg, Color::Default);
}

TEST(FormPainterTest, GridScrollsSidewaysToTheCurrentColumn) {
    Screen60 s;
    GridDialog form(s.host.screen());
    form.fill(3);
    form.flexList.setColWidth(3, 4800); // wider than the grid: Remarks ends out of view
    form.flexList.setCols(5);
    form.flexList.setTextMatrix(0, 4, "Posted");
    form.flexList.setTextMatrix(1, 4, "Yes");
    form.Show();
    form.flexList.setRow(1);
    form.flexList.setCol(1);
    EXPECT_EQ(s.draw().find("Posted"), std::string::npos);
    EXPECT_NE(s.terminal.lastFrame().find("Number"), std::string::npos);

    form.flexList.setCol(4);
    std::string frame = s.draw();
    EXPECT_NE(frame.find("Posted"), std::string::npos) << frame;
    EXPECT_NE(frame.find("Remarks"), std::string::npos);
    EXPECT_EQ(frame.find("Number"), std::string::npos) << "scrolled past the first column";
}

TEST(FormPainterTest, ListViewShowsColumnsInDisplayOrderAndItsSelection) {
    Screen60 s;
    ListDialog form(s.host.screen(), s.log);
    for (int i = 1; i <= 9; ++i) {
        form.addRow("Item number " + std::to_string(i), std::to_string(i * 2) + ".000");
    }
    form.lvwItems.ColumnHeaders()(4).setPosition(2);
    form.Show();
    form.lvwItems.SetFocus();
    form.lvwItems.setSelectedItem(&form.lvwItems.ListItems()(8));

    EXPECT_EQ(s.draw(), R"(


 ┌ Items ────────────────────────────────────────────────┐
 │                                                       │
 │ SlNo │      Qty│Description                  │        │
 │ 3    │    6.000│Item number 3                │      ░ │
 │ 4    │    8.000│Item number 4                │      ░ │
 │ 5    │   10.000│Item number 5                │      ░ │
 │ 6    │   12.000│Item number 6                │      █ │
 │ 7    │   14.000│Item number 7                │      ░ │
 │ 8    │   16.000│Item number 8                │      ░ │
 │                                            [ Close  ] │
 │                                                       │
 └───────────────────────────────────────────────────────┘




 Shift+F10 Menu  Alt+C Close  Esc Close
)");
    Point eight = s.find("Item number 8");
    EXPECT_EQ(s.host.canvas().at(eight.x, eight.y).style, styles::selection);

    form.cmdClose.SetFocus(); // HideSelection: the row shows selected only with the focus
    s.draw();
    EXPECT_EQ(s.host.canvas().at(eight.x, eight.y).style, styles::plain);
}

TEST(FormPainterTest, DialogStandsOverItsOwner) {
    Screen60 s;
    GridDialog owner(s.host.screen());
    owner.fill(3);
    owner.Show();
    EntryDialog dialog(s.host.screen(), s.log);
    dialog.Move(0, 0, 3600, 1200);
    dialog.setCaption("Small");
    dialog.Show();
    std::string frame = s.draw();
    EXPECT_NE(frame.find("┌ Register"), std::string::npos) << frame;
    EXPECT_NE(frame.find("┌ Small"), std::string::npos);
    Point small = s.find("┌ Small");
    Point reg = s.find("┌ Register");
    EXPECT_GT(small.y, reg.y);
    EXPECT_TRUE(s.host.canvas().at(reg.x + 2, reg.y).style.has(attrDim)) << "the owner is inactive";
}

TEST(FormPainterTest, BusyMarkAndHiddenControls) {
    Screen60 s;
    EntryDialog form(s.host.screen(), s.log);
    form.Show();
    form.fraOrder.setVisible(false);
    form.chkDone.setVisible(false);
    s.host.screen().setMousePointer(forms::vbHourglass);
    std::string frame = s.draw();
    EXPECT_EQ(frame.find("Ascending"), std::string::npos) << "inside a hidden frame";
    EXPECT_EQ(frame.find("Confirm"), std::string::npos);
    EXPECT_EQ(s.host.canvas().row(19),
              " Scan or type the barcode                            ⧗ Busy");
    s.host.screen().setMousePointer(forms::vbDefault);
    EXPECT_EQ(s.draw().find("Busy"), std::string::npos);
}

TEST(FormPainterTest, NumbersInANarrowColumnShowWholeOrMarkedCut) {
    Screen60 s;
    ListDialog form(s.host.screen(), s.log);
    form.lvwItems.ColumnHeaders()(4).setWidth(720); // Qty: 6 cells, the last the separator
    form.lvwItems.ColumnHeaders()(3).setWidth(1200);
    form.addRow("Basmati Rice 5 kg bag", "44.255"); // one digit more than the room
    form.addRow("Cola", "240.000");                 // more than the column
    form.addRow("Sugar", "1.25");                   // room to spare
    form.Show();
    s.draw();
    const Canvas &c = s.host.canvas();
    EXPECT_EQ(c.row(5), " │ SlNo │Descripti│  Qty│                                │");
    EXPECT_EQ(c.row(6), " │ 1    │Basmati R│44.255                                │");
    EXPECT_EQ(c.row(7), " │ 2    │Cola     │240.…│                                │");
    EXPECT_EQ(c.row(8), " │ 3    │Sugar    │ 1.25│                                │");
}

TEST(FormPainterTest, ListScrollsSidewaysToTheColumnTheArrowsMoveTo) {
    ScriptedTerminal terminal{40, 12};
    TuiHost host{terminal};
    Log log;
    ListDialog form(host.screen(), log);
    form.Move(0, 0, 4200, 2400);
    form.lvwItems.Move(120, 120, 3960, 1680); // 33 cells for 46 of columns
    form.cmdClose.Move(2880, 1920, 1200, 360);
    form.addRow("Rice", "2.000");
    terminal.typeLater("\x1b[C\x1b[C\x1b[C"); // Right three times: past the last column
    terminal.typeLater("\x1b[D");             // Left: the first column stays out of view
    terminal.typeLater("\x1b[D");             // back to the first, over the hidden Code
    terminal.typeLater("\x1b");
    form.lvwItems.setTabIndex(0); // the list has the focus first
    form.Show(forms::vbModal);
    const auto &seen = terminal.waitFrames();
    ASSERT_EQ(seen.size(), 4u);
    auto header = [](const std::string &frame) {
        std::istringstream in(frame);
        std::string line;
        for (int i = 0; i < 3 && std::getline(in, line);) {
            ++i;
        }
        return line;
    };
    EXPECT_EQ(header(seen[0]), " │ SlNo │Description               │ │");
    // Qty and Description do not fit side by side: Qty shows alone.
    EXPECT_EQ(header(seen[1]), " │       Qty│                        │");
    // Back one column the view moves as little as it must: Description first.
    EXPECT_EQ(header(seen[2]), " │ Description                  │Qt│ │");
    // The hidden Code column is skipped on the way back.
    EXPECT_EQ(header(seen[3]), " │ SlNo │Description               │ │");
}

TEST(FormPainterTest, TallFormIsPackedNotSqueezed) {
    // 15 rows of design in 11: empty rows go, no control is drawn over another.
    ScriptedTerminal terminal(54, 14);
    TuiHost host(terminal);
    Log log;
    EntryDialog form(host.screen(), log);
    form.Show();
    host.redraw();
    EXPECT_EQ(terminal.lastFrame(), R"( ┌ Sample Entry ────────────────────────────────────┐
 │                                                  │
 │ Name:                                            │
 │                               ▼                  │
 │                                                  │
 │ ┌ Order ───────────────┐                         │
 │ │( ) Ascending         │  [ ] Confirm Finished   │
 │ │                      │                         │
 │ │( ) Descending        │                         │
 │ └──────────────────────┘                         │
 │                                                  │
 │               [   OK   ]  [ Close  ]             │
 └──────────────────────────────────────────────────┘
 Scan or type the barcode
)");
}

TEST(FormPainterTest, TooSmallATerminalSaysWhatItNeedsUntilItGrows) {
    ScriptedTerminal terminal(54, 14);
    TuiHost host(terminal);
    Log log;
    EntryDialog form(host.screen(), log);
    form.Show();
    terminal.resize(20, 5);
    host.redraw();
    EXPECT_EQ(terminal.lastFrame(), "\nterminal too small:\n    need 47 x 10\n\n\n");
    // The need is exact: one cell less either way and the notice stays.
    for (auto [cols, rows] : {std::pair{46, 10}, std::pair{47, 9}}) {
        terminal.resize(cols, rows);
        host.redraw();
        EXPECT_NE(terminal.lastFrame().find("need 47 x 10"), std::string::npos)
            << cols << "x" << rows;
    }
    terminal.resize(47, 10);
    host.redraw();
    EXPECT_EQ(terminal.lastFrame().find("too small"), std::string::npos);
    for (const char *shown :
         {"Name:", "Ascending", "Descending", "Confirm Finished", "OK", "Close"}) {
        EXPECT_NE(terminal.lastFrame().find(shown), std::string::npos) << shown;
    }
}

} // namespace
} // namespace tui::test
