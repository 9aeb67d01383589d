#include "forms/EventLoop.h"

#include "forms/Errors.h"
#include "forms/Input.h"
#include "forms/Screen.h"
#include "forms/Ui.h"

#include <array>
#include <cctype>
#include <string>
#include <utility>

namespace forms {

void DoEvents(Screen &screen) {
    Input(screen).processQueued();
    screen.ui().doEvents();
}

void SendKeys(Screen &screen, std::string_view keys) {
    screen.queueKeys(parseSendKeys(keys));
}

namespace {

std::string upper(std::string_view s) {
    std::string out(s);
    for (char &c : out) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return out;
}

/// The key code of a braced name ({TAB}); 0 when it is a single character or unknown.
int namedKey(const std::string &name) {
    static const std::array<std::pair<const char *, int>, 17> names{{
        {"TAB", vbKeyTab},
        {"ENTER", vbKeyReturn},
        {"ESC", vbKeyEscape},
        {"ESCAPE", vbKeyEscape},
        {"BACKSPACE", vbKeyBack},
        {"BS", vbKeyBack},
        {"BKSP", vbKeyBack},
        {"DELETE", vbKeyDelete},
        {"DEL", vbKeyDelete},
        {"HOME", vbKeyHome},
        {"END", vbKeyEnd},
        {"UP", vbKeyUp},
        {"DOWN", vbKeyDown},
        {"LEFT", vbKeyLeft},
        {"RIGHT", vbKeyRight},
        {"PGUP", vbKeyPageUp},
        {"PGDN", vbKeyPageDown},
    }};
    for (const auto &[n, code] : names) {
        if (name == n) {
            return code;
        }
    }
    if (name.size() >= 2 && name[0] == 'F') {
        int f = 0;
        for (std::size_t i = 1; i < name.size(); ++i) {
            if (!std::isdigit(static_cast<unsigned char>(name[i]))) {
                return 0;
            }
            f = f * 10 + (name[i] - '0');
        }
        return (f >= 1 && f <= 12) ? vbKeyF1 + f - 1 : 0;
    }
    return 0;
}

KeyStroke withShift(KeyStroke k, int shift) {
    if (shift == 0) {
        return k;
    }
    KeyStroke out = keyStrokeFor(k.keyCode, k.shift | shift);
    return out;
}

} // namespace

std::vector<KeyStroke> parseSendKeys(std::string_view keys) {
    std::vector<KeyStroke> out;
    int shift = 0;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        char c = keys[i];
        if (c == '+' || c == '^' || c == '%') {
            shift |= c == '+' ? vbShiftMask : c == '^' ? vbCtrlMask : vbAltMask;
            continue;
        }
        KeyStroke k;
        if (c == '~') {
            k = keyStrokeFor(vbKeyReturn);
        } else if (c == '{') {
            // "{}}" names the closing brace itself.
            std::size_t close = keys.find('}', i + 2);
            if (close == std::string_view::npos) {
                throw errors::invalidProcedureCall();
            }
            std::string name = upper(keys.substr(i + 1, close - i - 1));
            i = close;
            if (int code = namedKey(name)) {
                k = keyStrokeFor(code);
            } else if (name.size() == 1) {
                k = keyStrokeForCharacter(static_cast<unsigned char>(keys[close - 1]));
            } else {
                throw errors::invalidProcedureCall();
            }
        } else if (c == '}' || c == '(' || c == ')') {
            throw errors::invalidProcedureCall();
        } else {
            k = keyStrokeForCharacter(static_cast<unsigned char>(c));
        }
        out.push_back(withShift(k, shift));
        shift = 0;
    }
    return out;
}

} // namespace forms
