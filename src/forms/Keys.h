// Key codes, shift masks, keystrokes and access keys (the "&" in captions).
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace forms {

// Key codes as KeyDown and KeyUp see them (the old platform's vbKey... values).
inline constexpr int vbKeyBack = 8;
inline constexpr int vbKeyTab = 9;
inline constexpr int vbKeyReturn = 13;
inline constexpr int vbKeyShift = 16;
inline constexpr int vbKeyControl = 17;
inline constexpr int vbKeyMenu = 18; // Alt
inline constexpr int vbKeyEscape = 27;
inline constexpr int vbKeySpace = 32;
inline constexpr int vbKeyPageUp = 33;
inline constexpr int vbKeyPageDown = 34;
inline constexpr int vbKeyEnd = 35;
inline constexpr int vbKeyHome = 36;
inline constexpr int vbKeyLeft = 37;
inline constexpr int vbKeyUp = 38;
inline constexpr int vbKeyRight = 39;
inline constexpr int vbKeyDown = 40;
inline constexpr int vbKeyInsert = 45;
inline constexpr int vbKeyDelete = 46;
inline constexpr int vbKey0 = 48; // to vbKey0 + 9
inline constexpr int vbKeyA = 65; // to vbKeyA + 25
inline constexpr int vbKeyMultiply = 106;
inline constexpr int vbKeyAdd = 107;
inline constexpr int vbKeySubtract = 109;
inline constexpr int vbKeyDecimal = 110;
inline constexpr int vbKeyDivide = 111;
inline constexpr int vbKeyF1 = 112; // to vbKeyF1 + 11 (F3 is 114)

// The Shift argument of key and mouse events is the sum of these.
inline constexpr int vbShiftMask = 1;
inline constexpr int vbCtrlMask = 2;
inline constexpr int vbAltMask = 4;

// The Button argument of mouse events.
inline constexpr int vbLeftButton = 1;
inline constexpr int vbRightButton = 2;
inline constexpr int vbMiddleButton = 4;

/// One key as the user pressed it: the key code and shift state that KeyDown
/// and KeyUp see, and the character that KeyPress sees (0 when the key makes
/// none, as arrows and function keys do). Characters are Unicode code points;
/// the control characters are those of the old platform (Enter 13, Ctrl+D 4,
/// Ctrl+Enter 10, Escape 27, Backspace 8).
struct KeyStroke {
    int keyCode = 0;
    int shift = 0;
    char32_t character = 0;

    friend bool operator==(const KeyStroke &, const KeyStroke &) = default;
};

/// The keystroke of a key code with a shift state, with the character that a
/// US keyboard gives for it: letters by Shift, Ctrl+letter 1 to 26, digits,
/// Enter (Ctrl+Enter 10), Escape, Backspace, Space; 0 for every other key and
/// for anything with Alt.
KeyStroke keyStrokeFor(int keyCode, int shift = 0);

/// The keystroke that types one character: the key code of its key (letters
/// and digits their own, punctuation the US keyboard's codes) and Shift where
/// that keyboard needs it.
KeyStroke keyStrokeForCharacter(char32_t character);

/// The access key of a caption: the character after a single "&", upper-cased
/// ("&Ok" gives 'O', "Ver &Good Stock :" gives 'G'); 0 when there is none.
/// "&&" stands for a literal "&".
char32_t accessKeyOf(std::string_view caption);

/// A caption as it shows: the "&" markers removed and "&&" made one "&".
std::string displayCaption(std::string_view caption);

} // namespace forms
