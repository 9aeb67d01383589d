#include "forms/Keys.h"

#include <array>
#include <utility>

namespace forms {

KeyStroke keyStrokeFor(int keyCode, int shift) {
    KeyStroke k{keyCode, shift, 0};
    bool shiftOn = (shift & vbShiftMask) != 0;
    bool ctrl = (shift & vbCtrlMask) != 0;
    if ((shift & vbAltMask) != 0) {
        return k;
    }
    if (keyCode >= vbKeyA && keyCode < vbKeyA + 26) {
        int letter = keyCode - vbKeyA;
        k.character = ctrl ? static_cast<char32_t>(letter + 1)
                           : static_cast<char32_t>((shiftOn ? 'A' : 'a') + letter);
    } else if (keyCode >= vbKey0 && keyCode < vbKey0 + 10 && !ctrl) {
        static constexpr std::string_view shifted = ")!@#$%^&*(";
        k.character = shiftOn ? static_cast<char32_t>(shifted[keyCode - vbKey0])
                              : static_cast<char32_t>(keyCode);
    } else if (keyCode == vbKeyReturn) {
        k.character = ctrl ? 10 : 13;
    } else if (keyCode == vbKeyEscape || keyCode == vbKeyBack || keyCode == vbKeySpace) {
        k.character = static_cast<char32_t>(keyCode);
    }
    return k;
}

KeyStroke keyStrokeForCharacter(char32_t c) {
    if (c >= 'a' && c <= 'z') {
        return {vbKeyA + static_cast<int>(c - 'a'), 0, c};
    }
    if (c >= 'A' && c <= 'Z') {
        return {vbKeyA + static_cast<int>(c - 'A'), vbShiftMask, c};
    }
    if (c >= '0' && c <= '9') {
        return {static_cast<int>(c), 0, c};
    }
    // Punctuation on a US keyboard: the key code of its key, with Shift where needed.
    static constexpr std::array<std::pair<char, std::pair<int, int>>, 32> keys{{
        {' ', {32, 0}},  {'!', {49, 1}},  {'@', {50, 1}},  {'#', {51, 1}},   {'$', {52, 1}},
        {'%', {53, 1}},  {'^', {54, 1}},  {'&', {55, 1}},  {'*', {56, 1}},   {'(', {57, 1}},
        {')', {48, 1}},  {'-', {189, 0}}, {'_', {189, 1}}, {'=', {187, 0}},  {'+', {187, 1}},
        {'[', {219, 0}}, {'{', {219, 1}}, {']', {221, 0}}, {'}', {221, 1}},  {'\\', {220, 0}},
        {'|', {220, 1}}, {';', {186, 0}}, {':', {186, 1}}, {'\'', {222, 0}}, {'"', {222, 1}},
        {',', {188, 0}}, {'<', {188, 1}}, {'.', {190, 0}}, {'>', {190, 1}},  {'/', {191, 0}},
        {'?', {191, 1}}, {'`', {192, 0}},
    }};
    for (const auto &[ch, code] : keys) {
        if (static_cast<char32_t>(ch) == c) {
            return {code.first, code.second, c};
        }
    }
    if (c == '~') {
        return {192, vbShiftMask, c};
    }
    if (c == '\r' || c == '\n') {
        return {vbKeyReturn, 0, 13};
    }
    if (c == '\t') {
        return {vbKeyTab, 0, 9};
    }
    return {0, 0, c}; // a character no US key makes (an accented letter typed by a host)
}

char32_t accessKeyOf(std::string_view caption) {
    for (std::size_t i = 0; i + 1 < caption.size(); ++i) {
        if (caption[i] != '&') {
            continue;
        }
        if (caption[i + 1] == '&') {
            ++i;
            continue;
        }
        auto c = static_cast<unsigned char>(caption[i + 1]);
        return (c >= 'a' && c <= 'z') ? static_cast<char32_t>(c - 'a' + 'A') : c;
    }
    return 0;
}

std::string displayCaption(std::string_view caption) {
    std::string out;
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i] == '&' && i + 1 < caption.size()) {
            ++i;
        } else if (caption[i] == '&') {
            continue;
        }
        out += caption[i];
    }
    return out;
}

} // namespace forms
