#include "hosts/tui/Palette.h"

#include <algorithm>

namespace tui {

Color terminalColor(forms::Color c) {
    if (forms::isSystemColor(c)) {
        switch (c) {
        case forms::vbHighlight:
            return Color::Blue;
        case forms::vbHighlightText:
            return Color::White;
        default:
            return Color::Default;
        }
    }
    int red = static_cast<int>(c & 0xFF);
    int green = static_cast<int>((c >> 8) & 0xFF);
    int blue = static_cast<int>((c >> 16) & 0xFF);
    int high = std::max({red, green, blue});
    int low = std::min({red, green, blue});
    // Without a clear hue (black, white, greys) the colour is plain text.
    if (high - low < 64) {
        return Color::Default;
    }
    int threshold = (high + low) / 2;
    bool r = red > threshold;
    bool g = green > threshold;
    bool b = blue > threshold;
    static constexpr Color byBits[8] = {Color::Default, Color::Red,    Color::Green,
                                        Color::Yellow,  Color::Blue,   Color::Magenta,
                                        Color::Cyan,    Color::Default};
    return byBits[(r ? 1 : 0) | (g ? 2 : 0) | (b ? 4 : 0)];
}

Style selectionStyle(forms::Color foreSel, forms::Color backSel) {
    Color bg = terminalColor(backSel);
    Color fg = terminalColor(foreSel);
    if (bg == Color::Default) {
        return Style{fg, Color::Default, attrReverse};
    }
    return Style{fg == Color::Default ? Color::White : fg, bg, 0};
}

} // namespace tui
