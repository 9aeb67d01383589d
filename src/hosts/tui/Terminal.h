// tui::Terminal: where the host's frames go and the user's bytes come from.
#pragma once

#include "hosts/tui/KeyTable.h"

#include <chrono>
#include <optional>
#include <string>

namespace tui {

class Canvas;

struct TerminalSize {
    int cols = 80;
    int rows = 24;
};

/// The terminal as the host sees it: a size, a place to show a canvas, a
/// source of raw input bytes, and the keys its description lists.
/// CursesTerminal is the real one; tests use a scripted one.
class Terminal {
public:
    virtual ~Terminal() = default;

    virtual TerminalSize size() const = 0;
    /// Shows the canvas (its cells and its cursor).
    virtual void present(const Canvas &canvas) = 0;
    /// Waits up to `timeout` (without limit when none) for input and returns
    /// every byte that is there; "" when the time ran out or the terminal was
    /// resized. Raises SessionEnded when the input has ended or a signal asked
    /// the program to stop.
    virtual std::string read(std::optional<std::chrono::milliseconds> timeout) = 0;
    /// The sequences of the terminal's keys from its terminfo entry; empty
    /// when there is no entry to read, and the host then reads the sequences
    /// of xterm, VT and the Linux console by hand.
    virtual const KeyTable &keyTable() const {
        static const KeyTable none;
        return none;
    }
    /// Whether Ctrl+Enter arrives as itself rather than as plain Enter.
    virtual bool reportsCtrlEnter() const { return true; }
};

} // namespace tui
