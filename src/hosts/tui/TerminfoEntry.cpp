#include "hosts/tui/TerminfoEntry.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>
#include <utility>

// term.h defines a macro for every capability name; it comes last so that
// nothing above sees them.
#define NCURSES_WIDECHAR 1
#include <ncursesw/curses.h>
#include <ncursesw/term.h>

namespace tui {

namespace {

using forms::keyStrokeFor;

/// A string capability of the current entry; "" when the entry lacks it.
std::string stringCapability(const std::string &name) {
    const char *value = tigetstr(name.c_str());
    if (value == nullptr || value == reinterpret_cast<const char *>(-1)) {
        return {};
    }
    return value;
}

struct Named {
    std::string capability;
    forms::KeyStroke key;
};

/// The keys of the standard capabilities. Find and Select of a VT220's
/// editing keypad stand where Home and End stand on a PC keyboard, and RF
/// terminals of that class label them so.
std::vector<Named> standardKeys() {
    std::vector<Named> keys = {
        {"kcuu1", keyStrokeFor(forms::vbKeyUp)},
        {"kcud1", keyStrokeFor(forms::vbKeyDown)},
        {"kcuf1", keyStrokeFor(forms::vbKeyRight)},
        {"kcub1", keyStrokeFor(forms::vbKeyLeft)},
        {"khome", keyStrokeFor(forms::vbKeyHome)},
        {"kend", keyStrokeFor(forms::vbKeyEnd)},
        {"kfnd", keyStrokeFor(forms::vbKeyHome)},
        {"kslt", keyStrokeFor(forms::vbKeyEnd)},
        {"kich1", keyStrokeFor(forms::vbKeyInsert)},
        {"kdch1", keyStrokeFor(forms::vbKeyDelete)},
        {"kpp", keyStrokeFor(forms::vbKeyPageUp)},
        {"knp", keyStrokeFor(forms::vbKeyPageDown)},
        {"kcbt", keyStrokeFor(forms::vbKeyTab, forms::vbShiftMask)},
        {"kent", keyStrokeFor(forms::vbKeyReturn)},
        {"kbs", keyStrokeFor(forms::vbKeyBack)},
        {"kri", keyStrokeFor(forms::vbKeyUp, forms::vbShiftMask)},
        {"kind", keyStrokeFor(forms::vbKeyDown, forms::vbShiftMask)},
    };
    for (int i = 0; i < 12; ++i) {
        keys.push_back({"kf" + std::to_string(i + 1), keyStrokeFor(forms::vbKeyF1 + i)});
    }
    return keys;
}

/// xterm's modified keys, which ncurses names by the key and the modifier
/// parameter the terminal sends: kUP5 is Ctrl+Up ("\E[1;5A"), kDC3 is
/// Alt+Delete, no digit is Shift. Function keys follow the same scheme by
/// number: kf13 to kf24 are Shift+F1 to Shift+F12 (Shift+F10 is the
/// keyboard's right click). Other types number their F13 and up as keys of
/// their own, so these are read only from entries that describe modified keys.
std::vector<Named> modifiedKeys() {
    static const std::array<std::pair<const char *, int>, 10> bases = {{
        {"kUP", forms::vbKeyUp},
        {"kDN", forms::vbKeyDown},
        {"kRIT", forms::vbKeyRight},
        {"kLFT", forms::vbKeyLeft},
        {"kHOM", forms::vbKeyHome},
        {"kEND", forms::vbKeyEnd},
        {"kIC", forms::vbKeyInsert},
        {"kDC", forms::vbKeyDelete},
        {"kPRV", forms::vbKeyPageUp},
        {"kNXT", forms::vbKeyPageDown},
    }};
    constexpr int shift = forms::vbShiftMask;
    constexpr int alt = forms::vbAltMask;
    constexpr int ctrl = forms::vbCtrlMask;
    static const std::array<std::pair<const char *, int>, 6> modifiers = {{
        {"", shift},
        {"3", alt},
        {"4", alt | shift},
        {"5", ctrl},
        {"6", ctrl | shift},
        {"7", ctrl | alt},
    }};
    std::vector<Named> keys;
    for (const auto &[base, code] : bases) {
        for (const auto &[suffix, mask] : modifiers) {
            keys.push_back({std::string(base) + suffix, keyStrokeFor(code, mask)});
        }
    }
    for (int i = 0; i < 12; ++i) {
        keys.push_back({"kf" + std::to_string(i + 13), keyStrokeFor(forms::vbKeyF1 + i, shift)});
    }
    return keys;
}

/// Reads the entry that setupterm made current.
TerminfoEntry currentEntry() {
    TerminfoEntry entry;
    entry.placesCursor = !stringCapability("cup").empty();
    entry.reportsModifiedKeys = !stringCapability("kUP5").empty();
    entry.keypadOn = stringCapability("smkx");
    entry.keypadOff = stringCapability("rmkx");

    std::vector<Named> named = standardKeys();
    if (entry.reportsModifiedKeys) {
        std::vector<Named> more = modifiedKeys();
        named.insert(named.end(), more.begin(), more.end());
    }
    std::vector<KeySequence> sequences;
    for (const Named &n : named) {
        std::string bytes = stringCapability(n.capability);
        if (!bytes.empty()) {
            sequences.push_back({std::move(bytes), n.key, n.capability});
        }
    }
    entry.keys = KeyTable(std::move(sequences));
    return entry;
}

} // namespace

std::optional<TerminfoEntry> readTerminfoEntry(std::string_view term) {
    // setupterm wants a descriptor to describe; nothing is written to it.
    int fd = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (fd < 0) {
        throw std::system_error(errno, std::generic_category(), "cannot open /dev/null");
    }
    TERMINAL *previous = cur_term;
    int status = 0;
    std::string name(term);
    int result = setupterm(name.c_str(), fd, &status);
    std::optional<TerminfoEntry> entry;
    if (result == OK && status == 1) {
        entry = currentEntry();
    }
    if (result == OK && cur_term != previous) {
        del_curterm(cur_term);
    }
    set_curterm(previous);
    ::close(fd);
    return entry;
}

} // namespace tui
