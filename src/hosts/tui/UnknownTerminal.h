// tui::UnknownTerminal: the terminal type is one this machine cannot drive.
#pragma once

#include <stdexcept>
#include <string>

namespace tui {

/// Raised before the terminal is taken over when TERM is unset, names a type
/// the terminal database has no entry for, or a type that cannot place the
/// cursor. A session on a wrong description would read keys as other keys,
/// so `stockverify run` stops with a message that says what to do, and exits
/// with `exitCode` (documented in its --help).
class UnknownTerminal : public std::runtime_error {
public:
    static constexpr int exitCode = 5;

    explicit UnknownTerminal(const std::string &message) : std::runtime_error(message) {}
};

} // namespace tui
