// tui::SessionEnded: the user or the system ended the terminal session (Ctrl+C, a signal, input
// closed).
#pragma once

#include <stdexcept>
#include <string>

namespace tui {

/// Raised by the host's event loop when the session cannot go on: the user
/// pressed Ctrl+C, the process got SIGINT, SIGTERM or SIGHUP, or the
/// terminal's input ended. It is deliberately not a vb::Error: the module's
/// failure handlers catch vb::Error and would report it and carry on, while
/// this has to unwind every modal loop up to `stockverify run`, which
/// restores the terminal and exits with `exitCode`.
class SessionEnded : public std::runtime_error {
public:
    SessionEnded(const std::string &reason, int exitCode)
        : std::runtime_error(reason), exitCode_(exitCode) {}

    int exitCode() const { return exitCode_; }

private:
    int exitCode_;
};

} // namespace tui
