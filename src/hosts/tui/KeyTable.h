// tui::KeyTable: the byte sequences one terminal type sends for its keys, as its terminfo entry
// lists them.
#pragma once

#include "forms/Keys.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tui {

/// One key of a terminal description: the bytes it sends, the keystroke the
/// forms get for it, and the terminfo capability it came from ("kf3"), so a
/// message or a test can say which entry line a key was read from.
struct KeySequence {
    std::string bytes;
    forms::KeyStroke key;
    std::string capability;
};

/// The keys of one terminal type, looked up by the longest sequence that the
/// input starts with. An empty table knows no key: the decoder then reads
/// everything by hand.
class KeyTable {
public:
    KeyTable() = default;
    /// Later sequences with the same bytes as an earlier one are dropped, so
    /// the first capability listed for a sequence wins.
    explicit KeyTable(std::vector<KeySequence> sequences);

    struct Match {
        /// The longest sequence that `input` starts with; null when none.
        const KeySequence *sequence = nullptr;
        /// True when `input` is a proper start of a longer sequence, so that
        /// more bytes could still make a different key.
        bool longerPossible = false;
    };
    Match match(std::string_view input) const;

    bool empty() const { return sequences_.empty(); }
    const std::vector<KeySequence> &sequences() const { return sequences_; }

private:
    std::vector<KeySequence> sequences_;
    /// The bytes some sequence starts with: a scanner's burst of digits is
    /// passed over without a look at the list.
    std::array<bool, 256> leads_{};
};

} // namespace tui
