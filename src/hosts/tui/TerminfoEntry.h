// tui::TerminfoEntry: what the host takes from the terminal database about one terminal type.
#pragma once

#include "hosts/tui/KeyTable.h"

#include <optional>
#include <string>
#include <string_view>

namespace tui {

/// The parts of a terminfo entry that the host uses for input.
struct TerminfoEntry {
    /// The keys the entry lists that the forms take (see docs/terminal.md for
    /// the capabilities read and the keys they give).
    KeyTable keys;
    /// Whether the type can place the cursor (cup): without it no form can be drawn.
    bool placesCursor = false;
    /// Whether the entry describes xterm's reports of modified keys (kUP5 and
    /// the like). Such terminals are asked to report Ctrl+Enter too
    /// (modifyOtherKeys), which no terminfo capability names.
    bool reportsModifiedKeys = false;
    /// Keypad transmit on and off (smkx, rmkx): the keys send the sequences of
    /// the entry only while it is on. Empty when the type has no such mode.
    std::string keypadOn;
    std::string keypadOff;
};

/// Reads the entry of terminal type `term` from the terminal database; none
/// when the machine has no entry for it. It leaves ncurses' current terminal
/// as it was.
std::optional<TerminfoEntry> readTerminfoEntry(std::string_view term);

} // namespace tui
