#include "hosts/script/KeyName.h"

#include "hosts/script/Text.h"

#include <array>
#include <cctype>
#include <string>
#include <utility>

namespace script {

namespace {

/// The key code of a key without modifiers; 0 for a name it does not know.
int keyCode(const std::string &key) {
    static const std::array<std::pair<const char *, int>, 20> named{{
        {"enter", forms::vbKeyReturn},  {"return", forms::vbKeyReturn},
        {"tab", forms::vbKeyTab},       {"escape", forms::vbKeyEscape},
        {"esc", forms::vbKeyEscape},    {"delete", forms::vbKeyDelete},
        {"del", forms::vbKeyDelete},    {"backspace", forms::vbKeyBack},
        {"space", forms::vbKeySpace},   {"insert", forms::vbKeyInsert},
        {"home", forms::vbKeyHome},     {"end", forms::vbKeyEnd},
        {"pageup", forms::vbKeyPageUp}, {"pagedown", forms::vbKeyPageDown},
        {"up", forms::vbKeyUp},         {"down", forms::vbKeyDown},
        {"left", forms::vbKeyLeft},     {"right", forms::vbKeyRight},
        {"pgup", forms::vbKeyPageUp},   {"pgdn", forms::vbKeyPageDown},
    }};
    for (const auto &[name, code] : named) {
        if (key == name) {
            return code;
        }
    }
    if (key.size() == 1 && std::isalpha(static_cast<unsigned char>(key[0]))) {
        return forms::vbKeyA + (key[0] - 'a');
    }
    if (key.size() == 1 && std::isdigit(static_cast<unsigned char>(key[0]))) {
        return forms::vbKey0 + (key[0] - '0');
    }
    if (key.size() >= 2 && key.size() <= 3 && key[0] == 'f') {
        int n = 0;
        for (std::size_t i = 1; i < key.size(); ++i) {
            if (!std::isdigit(static_cast<unsigned char>(key[i]))) {
                return 0;
            }
            n = n * 10 + (key[i] - '0');
        }
        return n >= 1 && n <= 12 ? forms::vbKeyF1 + n - 1 : 0;
    }
    return 0;
}

} // namespace

std::optional<forms::KeyStroke> parseKeyName(std::string_view name) {
    std::string rest = lowerCase(name);
    int shift = 0;
    static const std::array<std::pair<const char *, int>, 3> modifiers{{
        {"shift+", forms::vbShiftMask},
        {"ctrl+", forms::vbCtrlMask},
        {"alt+", forms::vbAltMask},
    }};
    for (bool found = true; found;) {
        found = false;
        for (const auto &[prefix, mask] : modifiers) {
            if (rest.starts_with(prefix) && rest.size() > std::string_view(prefix).size()) {
                rest.erase(0, std::string_view(prefix).size());
                shift |= mask;
                found = true;
            }
        }
    }
    int code = keyCode(rest);
    if (code == 0) {
        return std::nullopt;
    }
    return forms::keyStrokeFor(code, shift);
}

} // namespace script
