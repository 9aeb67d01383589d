// Colour values as the old platform wrote them: 0x00BBGGRR, or a system colour.
#pragma once

#include <cstdint>

namespace forms {

/// A colour as the old platform stored it: blue, green, red from the high byte
/// down (so pure red is 0xFF, 255), or a system colour with the top bit set
/// (0x80000008 is "window text"). Hosts map system colours to their palette.
using Color = std::uint32_t;

inline constexpr Color vbBlack = 0x000000;
inline constexpr Color vbRed = 0x0000FF;
inline constexpr Color vbGreen = 0x00FF00;
inline constexpr Color vbYellow = 0x00FFFF;
inline constexpr Color vbBlue = 0xFF0000;
inline constexpr Color vbMagenta = 0xFF00FF;
inline constexpr Color vbCyan = 0xFFFF00;
inline constexpr Color vbWhite = 0xFFFFFF;

inline constexpr Color vbScrollBars = 0x80000000;
inline constexpr Color vbWindowBackground = 0x80000005;
inline constexpr Color vbWindowText = 0x80000008;
inline constexpr Color vbHighlight = 0x8000000D;
inline constexpr Color vbHighlightText = 0x8000000E;
inline constexpr Color vbButtonFace = 0x8000000F;
inline constexpr Color vbGrayText = 0x80000011;
inline constexpr Color vbButtonText = 0x80000012;
inline constexpr Color vbInfoText = 0x80000017;
inline constexpr Color vbInfoBackground = 0x80000018;

/// True for a system colour (top bit set) rather than a literal one.
constexpr bool isSystemColor(Color c) {
    return (c & 0x80000000u) != 0;
}

} // namespace forms
