#include "hosts/tui/Canvas.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/TextFit.h"

#include <gtest/gtest.h>

namespace tui {
namespace {

TEST(CanvasTest, DrawingStaysInsideTheClip) {
    Canvas c(12, 3);
    {
        ClipScope clip(c, {2, 0, 5, 2});
        c.text(0, 0, "abcdefghij", {});
        c.fill({0, 1, 12, 5}, U'#', {});
        c.box({0, 0, 12, 3}, {});
    }
    c.text(8, 2, "xyz€", {});
    EXPECT_EQ(c.dump(), "  ─────\n  #####\n        xyz€\n") << "the box edge over the text";
    EXPECT_EQ(c.clip(), c.bounds()) << "the scope gave the clip back";
}

TEST(CanvasTest, CaptionsUnderlineTheirAccessKey) {
    Canvas c(20, 1);
    int n = c.caption(0, 0, "Sca&n && Go", {});
    EXPECT_EQ(c.row(0), "Scan & Go");
    EXPECT_EQ(n, 9);
    for (int x = 0; x < n; ++x) {
        EXPECT_EQ(c.at(x, 0).style.has(attrUnderline), x == 3) << x;
    }
}

TEST(CanvasTest, BoxWithTitle) {
    Canvas c(14, 3);
    c.box(c.bounds(), {}, "Fetch Item");
    EXPECT_EQ(c.dump(), "┌ Fetch Item ┐\n│            │\n└────────────┘\n");
}

TEST(TextFitTest, WrapsAtBreaksThenWordsThenInsideLongWords) {
    EXPECT_EQ(wrapText("one two three", 7), (std::vector<std::string>{"one two", "three"}));
    EXPECT_EQ(wrapText("a\r\nb\rc\nd", 10), (std::vector<std::string>{"a", "b", "c", "d"}));
    EXPECT_EQ(wrapText("8901234567890 ok", 5),
              (std::vector<std::string>{"89012", "34567", "890", "ok"}));
    EXPECT_EQ(wrapText("", 5), (std::vector<std::string>{""}));
}

TEST(TextFitTest, AlignsAndCutsInItsField) {
    Canvas c(10, 3);
    drawAligned(c, 0, 0, 6, "12.5", Align::Right, {});
    drawAligned(c, 0, 1, 6, "ab", Align::Center, {});
    drawAligned(c, 0, 2, 6, "too long for it", Align::Right, {});
    EXPECT_EQ(c.dump(), "  12.5\n  ab\ntoo lo\n");
}

TEST(PaletteTest, OldColoursMapToTerminalColours) {
    EXPECT_EQ(terminalColor(forms::vbRed), Color::Red);
    EXPECT_EQ(terminalColor(255), Color::Red) << "the register's cancelled rows";
    EXPECT_EQ(terminalColor(0xFFFF00), Color::Cyan) << "BGR: blue and green";
    EXPECT_EQ(terminalColor(0x000080), Color::Red) << "dark red";
    EXPECT_EQ(terminalColor(0x00C000), Color::Green);
    EXPECT_EQ(terminalColor(forms::vbBlack), Color::Default) << "ordinary text";
    EXPECT_EQ(terminalColor(0xC0C0C0), Color::Default) << "grey face";
    EXPECT_EQ(terminalColor(forms::vbWindowText), Color::Default);
    EXPECT_EQ(terminalColor(forms::vbHighlight), Color::Blue);
    EXPECT_EQ(selectionStyle(forms::vbHighlightText, forms::vbHighlight), styles::selection);
    EXPECT_EQ(selectionStyle(forms::vbRed, forms::vbWhite).attrs, attrReverse);
}

} // namespace
} // namespace tui
