// tui::Cell and tui::Style: one character cell of the canvas and how it looks.
#pragma once

#include <cstdint>

namespace tui {

/// The terminal colours the host uses: the eight basic ones and the
/// terminal's own default, so that the user's colour scheme shows through.
enum class Color : std::uint8_t { Default, Black, Red, Green, Yellow, Blue, Magenta, Cyan, White };

/// Attribute bits of a cell; a style holds their sum.
inline constexpr std::uint8_t attrBold = 1;
inline constexpr std::uint8_t attrUnderline = 2;
inline constexpr std::uint8_t attrReverse = 4;
inline constexpr std::uint8_t attrDim = 8;

struct Style {
    Color fg = Color::Default;
    Color bg = Color::Default;
    std::uint8_t attrs = 0;

    bool has(std::uint8_t attr) const { return (attrs & attr) != 0; }
    Style with(std::uint8_t attr) const {
        return {fg, bg, static_cast<std::uint8_t>(attrs | attr)};
    }
    Style without(std::uint8_t attr) const {
        return {fg, bg, static_cast<std::uint8_t>(attrs & ~attr)};
    }
    friend bool operator==(const Style &, const Style &) = default;
};

/// One cell: a character (a Unicode code point, one column wide) and its style.
struct Cell {
    char32_t ch = U' ';
    Style style;

    friend bool operator==(const Cell &, const Cell &) = default;
};

} // namespace tui
