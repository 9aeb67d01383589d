// tui::KeyDecoder: the bytes a terminal sends turned into the keystrokes the forms expect.
#pragma once

#include "hosts/tui/KeyTable.h"

#include "forms/Keys.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tui {

/// The key code of the Menu (Applications) key, which the old platform had no name for.
inline constexpr int keyApps = 93;
inline constexpr int keyF4 = forms::vbKeyF1 + 3;
inline constexpr int keyF10 = forms::vbKeyF1 + 9;

/// Shift+F10 or the Menu key: the keyboard's right click.
bool isContextMenuKey(const forms::KeyStroke &key);
/// F4 or Alt+Down: open a combo's list.
bool isDropDownKey(const forms::KeyStroke &key);
/// Ctrl+C: leave the program (the terminal is in raw mode, so it comes as a key).
bool isInterruptKey(const forms::KeyStroke &key);

/// Turns terminal input into keystrokes, in the order the bytes came, none
/// dropped: a scanner's burst of characters and Enter comes out as that many
/// keys however the bytes were split between reads.
///
/// What it reads: UTF-8 characters; Enter (CR) as Enter and LF as
/// Ctrl+Enter (character 10), Tab, Backspace (DEL or BS), Ctrl+letter as
/// characters 1 to 26 (Ctrl+D is 4); Escape; Alt+key as ESC and the key;
/// the xterm, VT and Linux console sequences of arrows, Home, End, Insert,
/// Delete, Page Up and Down, F1 to F12 and the Menu key, with their Shift,
/// Alt and Ctrl modifiers; Shift+Tab; and the "CSI u" and modifyOtherKeys
/// forms of modified keys (so Ctrl+Enter also arrives from terminals that
/// report it that way). Sequences it does not know are skipped whole.
///
/// Given the key table of the terminal's terminfo entry, it reads the
/// sequences the table lists first (the longest that the input starts with,
/// waiting for more bytes while a longer one could still come), and the rest
/// as above: so the Linux console's Shift+Tab (ESC Tab) and a VT220's Find
/// and Select come out right, while what terminfo has no name for (Alt
/// letters, Ctrl+Enter, the modified keys of most entries) is still read.
class KeyDecoder {
public:
    explicit KeyDecoder(KeyTable table = {}) : table_(std::move(table)) {}

    /// Adds the bytes of one read.
    void feed(std::string_view bytes);
    /// True while the input ends inside a sequence that more bytes could
    /// complete: a lone ESC (Escape, or the start of a longer key) or part of
    /// a UTF-8 character. The host waits a moment for more, then calls flush.
    bool pending() const { return !buffer_.empty(); }
    /// Takes what is left as it stands: a lone ESC is the Escape key.
    void flush();
    /// The keys decoded so far, oldest first; they are removed.
    std::vector<forms::KeyStroke> take();

    /// Decodes a whole text at once (feed and flush), for tests and scripts.
    static std::vector<forms::KeyStroke> decodeAll(std::string_view bytes,
                                                   const KeyTable &table = {});

private:
    struct Step {
        std::size_t consumed = 0; // 0: more bytes are needed
        std::optional<forms::KeyStroke> key;
    };
    void decode(bool final);
    Step decodeOne(std::string_view s, bool final) const;
    Step decodeEscape(std::string_view s, bool final) const;
    Step decodeUtf8(std::string_view s, bool final) const;

    KeyTable table_;
    std::string buffer_;
    std::vector<forms::KeyStroke> keys_;
};

} // namespace tui
