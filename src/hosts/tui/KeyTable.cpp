#include "hosts/tui/KeyTable.h"

#include <algorithm>

namespace tui {

KeyTable::KeyTable(std::vector<KeySequence> sequences) {
    for (KeySequence &s : sequences) {
        if (s.bytes.empty()) {
            continue;
        }
        bool known = std::any_of(sequences_.begin(), sequences_.end(),
                                 [&](const KeySequence &k) { return k.bytes == s.bytes; });
        if (!known) {
            leads_[static_cast<unsigned char>(s.bytes[0])] = true;
            sequences_.push_back(std::move(s));
        }
    }
}

KeyTable::Match KeyTable::match(std::string_view input) const {
    // A terminal description lists a few dozen keys: a scan is as quick as a
    // trie would be and keeps the table a plain list that tests can print.
    Match m;
    if (input.empty() || !leads_[static_cast<unsigned char>(input[0])]) {
        return m;
    }
    for (const KeySequence &s : sequences_) {
        if (input.starts_with(s.bytes)) {
            if (!m.sequence || s.bytes.size() > m.sequence->bytes.size()) {
                m.sequence = &s;
            }
        } else if (s.bytes.size() > input.size() && std::string_view(s.bytes).starts_with(input)) {
            m.longerPossible = true;
        }
    }
    return m;
}

} // namespace tui
