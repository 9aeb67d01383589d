#include "hosts/tui/KeyDecoder.h"

#include <algorithm>
#include <charconv>

namespace tui {

using forms::KeyStroke;

namespace {

/// The Shift argument of a terminal's modifier parameter (1 + bits: 1 Shift, 2 Alt, 4 Ctrl).
int shiftOf(int modifier) {
    int bits = modifier > 1 ? modifier - 1 : 0;
    int shift = 0;
    if (bits & 1) {
        shift |= forms::vbShiftMask;
    }
    if (bits & 2) {
        shift |= forms::vbAltMask;
    }
    if (bits & 4) {
        shift |= forms::vbCtrlMask;
    }
    return shift;
}

/// The numbers of a CSI sequence's parameters ("21;2" gives 21, 2); empty ones are 0.
std::vector<int> parameters(std::string_view text) {
    std::vector<int> out;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = std::min(text.find(';', start), text.size());
        int value = 0;
        std::from_chars(text.data() + start, text.data() + end, value);
        out.push_back(value);
        start = end + 1;
    }
    return out;
}

/// A key that a terminal reports by its character code and modifiers.
KeyStroke characterKey(int code, int shift) {
    switch (code) {
    case 13:
        return forms::keyStrokeFor(forms::vbKeyReturn, shift);
    case 9:
        return forms::keyStrokeFor(forms::vbKeyTab, shift);
    case 27:
        return forms::keyStrokeFor(forms::vbKeyEscape, shift);
    case 127:
    case 8:
        return forms::keyStrokeFor(forms::vbKeyBack, shift);
    default:
        break;
    }
    if (code >= 'a' && code <= 'z') {
        return forms::keyStrokeFor(forms::vbKeyA + code - 'a', shift);
    }
    if (code >= 'A' && code <= 'Z') {
        return forms::keyStrokeFor(forms::vbKeyA + code - 'A', shift | forms::vbShiftMask);
    }
    KeyStroke k = forms::keyStrokeForCharacter(static_cast<char32_t>(code));
    k.shift |= shift;
    if (shift & (forms::vbCtrlMask | forms::vbAltMask)) {
        k.character = 0;
    }
    return k;
}

std::optional<KeyStroke> tildeKey(const std::vector<int> &p) {
    int shift = shiftOf(p.size() > 1 ? p[1] : 1);
    int n = p.empty() ? 0 : p[0];
    int code = 0;
    switch (n) {
    case 1:
    case 7:
        code = forms::vbKeyHome;
        break;
    case 2:
        code = forms::vbKeyInsert;
        break;
    case 3:
        code = forms::vbKeyDelete;
        break;
    case 4:
    case 8:
        code = forms::vbKeyEnd;
        break;
    case 5:
        code = forms::vbKeyPageUp;
        break;
    case 6:
        code = forms::vbKeyPageDown;
        break;
    case 27: // xterm modifyOtherKeys: CSI 27 ; modifier ; code ~
        if (p.size() > 2) {
            return characterKey(p[2], shiftOf(p[1]));
        }
        return std::nullopt;
    case 29:
        code = keyApps;
        break;
    default:
        if (n >= 11 && n <= 15) {
            code = forms::vbKeyF1 + (n - 11);
        } else if (n >= 17 && n <= 21) {
            code = forms::vbKeyF1 + 5 + (n - 17);
        } else if (n == 23 || n == 24) {
            code = forms::vbKeyF1 + 10 + (n - 23);
        } else {
            return std::nullopt; // bracketed paste marks and the like
        }
    }
    return forms::keyStrokeFor(code, shift);
}

/// The key of a final letter shared by CSI and SS3 sequences (arrows, Home, End, F1-F4).
std::optional<KeyStroke> letterKey(char final, int shift) {
    switch (final) {
    case 'A':
        return forms::keyStrokeFor(forms::vbKeyUp, shift);
    case 'B':
        return forms::keyStrokeFor(forms::vbKeyDown, shift);
    case 'C':
        return forms::keyStrokeFor(forms::vbKeyRight, shift);
    case 'D':
        return forms::keyStrokeFor(forms::vbKeyLeft, shift);
    case 'H':
        return forms::keyStrokeFor(forms::vbKeyHome, shift);
    case 'F':
        return forms::keyStrokeFor(forms::vbKeyEnd, shift);
    case 'P':
    case 'Q':
    case 'R':
    case 'S':
        return forms::keyStrokeFor(forms::vbKeyF1 + (final - 'P'), shift);
    default:
        return std::nullopt;
    }
}

std::optional<KeyStroke> csiKey(std::string_view params, char final) {
    auto p = parameters(params);
    int shift = shiftOf(p.size() > 1 ? p[1] : 1);
    switch (final) {
    case '~':
        return tildeKey(p);
    case 'u': // CSI code ; modifier u
        return characterKey(p[0], shift);
    case 'Z':
        return forms::keyStrokeFor(forms::vbKeyTab, forms::vbShiftMask);
    default:
        // Private sequences ("<" mouse reports, "?" replies) carry no key.
        if (!params.empty() && (params[0] < '0' || params[0] > ';')) {
            return std::nullopt;
        }
        return letterKey(final, shift);
    }
}

} // namespace

bool isContextMenuKey(const KeyStroke &key) {
    return key.keyCode == keyApps || (key.keyCode == keyF10 && key.shift == forms::vbShiftMask);
}

bool isDropDownKey(const KeyStroke &key) {
    return (key.keyCode == keyF4 && key.shift == 0) ||
           (key.keyCode == forms::vbKeyDown && key.shift == forms::vbAltMask);
}

bool isInterruptKey(const KeyStroke &key) {
    return key.character == 3 && key.shift == forms::vbCtrlMask;
}

void KeyDecoder::feed(std::string_view bytes) {
    buffer_.append(bytes);
    decode(false);
}

void KeyDecoder::flush() {
    decode(true);
}

std::vector<KeyStroke> KeyDecoder::take() {
    std::vector<KeyStroke> out;
    out.swap(keys_);
    return out;
}

std::vector<KeyStroke> KeyDecoder::decodeAll(std::string_view bytes, const KeyTable &table) {
    KeyDecoder d(table);
    d.feed(bytes);
    d.flush();
    return d.take();
}

void KeyDecoder::decode(bool final) {
    std::size_t at = 0;
    while (at < buffer_.size()) {
        Step step = decodeOne(std::string_view(buffer_).substr(at), final);
        if (step.consumed == 0) {
            break;
        }
        if (step.key) {
            keys_.push_back(*step.key);
        }
        at += step.consumed;
    }
    buffer_.erase(0, at);
}

KeyDecoder::Step KeyDecoder::decodeOne(std::string_view s, bool final) const {
    KeyTable::Match known = table_.match(s);
    if (known.longerPossible && !final) {
        return {}; // ESC O could be F1 or Alt+O: the next bytes (or the delay) tell
    }
    if (known.sequence) {
        return {known.sequence->bytes.size(), known.sequence->key};
    }
    auto b = static_cast<unsigned char>(s[0]);
    if (b == 0x1b) {
        return decodeEscape(s, final);
    }
    if (b >= 0x80) {
        return decodeUtf8(s, final);
    }
    switch (b) {
    case '\r':
        return {1, forms::keyStrokeFor(forms::vbKeyReturn)};
    case '\n': // what Ctrl+Enter (Ctrl+J) sends
        return {1, forms::keyStrokeFor(forms::vbKeyReturn, forms::vbCtrlMask)};
    case '\t':
        return {1, forms::keyStrokeFor(forms::vbKeyTab)};
    case 0x7f:
    case 0x08:
        return {1, forms::keyStrokeFor(forms::vbKeyBack)};
    default:
        break;
    }
    if (b >= 1 && b <= 26) {
        return {1, forms::keyStrokeFor(forms::vbKeyA + b - 1, forms::vbCtrlMask)};
    }
    if (b < 0x20) {
        return {1, std::nullopt}; // Ctrl+Space and Ctrl with punctuation: no key of the forms
    }
    return {1, forms::keyStrokeForCharacter(static_cast<char32_t>(b))};
}

KeyDecoder::Step KeyDecoder::decodeEscape(std::string_view s, bool final) const {
    KeyStroke escape = forms::keyStrokeFor(forms::vbKeyEscape);
    if (s.size() == 1) {
        return final ? Step{1, escape} : Step{};
    }
    char c = s[1];
    if (c == '[') {
        if (s.size() > 2 && s[2] == '[') { // Linux console F1-F5: ESC [ [ A..E
            if (s.size() == 3) {
                return final ? Step{1, escape} : Step{};
            }
            int n = s[3] - 'A';
            if (n >= 0 && n < 5) {
                return {4, forms::keyStrokeFor(forms::vbKeyF1 + n)};
            }
            return {4, std::nullopt};
        }
        std::size_t i = 2;
        while (i < s.size() && static_cast<unsigned char>(s[i]) >= 0x20 &&
               static_cast<unsigned char>(s[i]) < 0x40) {
            ++i;
        }
        if (i == s.size()) {
            return final ? Step{1, escape} : Step{};
        }
        char fin = s[i];
        if (static_cast<unsigned char>(fin) < 0x40 || static_cast<unsigned char>(fin) > 0x7e) {
            return {1, escape}; // not a sequence after all: Escape, then the bytes as typed
        }
        return {i + 1, csiKey(s.substr(2, i - 2), fin)};
    }
    if (c == 'O') {
        if (s.size() == 2) {
            return final ? Step{2, characterKey('O', forms::vbAltMask)} : Step{};
        }
        if (s[2] == 'M') {
            return {3, forms::keyStrokeFor(forms::vbKeyReturn)}; // keypad Enter
        }
        return {3, letterKey(s[2], 0)};
    }
    auto u = static_cast<unsigned char>(c);
    if (u >= 0x20 && u < 0x7f) {
        return {2, characterKey(u, forms::vbAltMask)};
    }
    // ESC before a control byte or another ESC: the Escape key, then that byte on its own.
    return {1, escape};
}

KeyDecoder::Step KeyDecoder::decodeUtf8(std::string_view s, bool final) const {
    auto b = static_cast<unsigned char>(s[0]);
    std::size_t length = b >= 0xf0 ? 4 : b >= 0xe0 ? 3 : b >= 0xc0 ? 2 : 0;
    if (length == 0) {
        return {1, std::nullopt}; // a stray continuation byte
    }
    if (s.size() < length) {
        return final ? Step{s.size(), std::nullopt} : Step{};
    }
    char32_t c = b & (0x3f >> (length - 1));
    for (std::size_t i = 1; i < length; ++i) {
        auto next = static_cast<unsigned char>(s[i]);
        if ((next & 0xc0) != 0x80) {
            return {i, std::nullopt}; // broken: skip what was read, go on from here
        }
        c = (c << 6) | (next & 0x3f);
    }
    return {length, forms::keyStrokeForCharacter(c)};
}

} // namespace tui
