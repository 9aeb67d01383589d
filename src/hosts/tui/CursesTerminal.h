// tui::CursesTerminal: the real terminal, through ncurses, restored on every way out.
#pragma once

#include "hosts/tui/Terminal.h"
#include "hosts/tui/TerminfoEntry.h"

#include <map>
#include <utility>

struct screen; // ncurses' SCREEN

namespace tui {

/// Takes over the terminal for as long as it lives: raw mode (so Ctrl+C,
/// Ctrl+D and Ctrl+J come as keys), no echo, the alternate screen, UTF-8
/// output. The destructor gives the terminal back as it was, so the
/// terminal is restored however `stockverify run` ends, by a return, a
/// failure or Ctrl+C. SIGINT, SIGTERM and SIGHUP end the session through
/// `read` (SessionEnded), so that they unwind to that destructor too.
///
/// ncurses only copies the canvas out; input is read as raw bytes from the
/// terminal and decoded by KeyDecoder with the key table of the terminal's
/// terminfo entry. The terminal is put in keypad transmit mode (smkx), so
/// that its keys send the sequences the entry lists, and terminals whose
/// entry describes xterm's modified keys are asked to report the other
/// modified keys too (modifyOtherKeys), so that Ctrl+Enter is not plain Enter.
class CursesTerminal : public Terminal {
public:
    /// Raises vb::Error when standard input or output is not a terminal, and
    /// UnknownTerminal when TERM names no type the terminal database knows
    /// (or one that cannot place the cursor); the terminal is left untouched.
    CursesTerminal();
    ~CursesTerminal() override;
    CursesTerminal(const CursesTerminal &) = delete;
    CursesTerminal &operator=(const CursesTerminal &) = delete;

    TerminalSize size() const override;
    void present(const Canvas &canvas) override;
    std::string read(std::optional<std::chrono::milliseconds> timeout) override;
    const KeyTable &keyTable() const override { return entry_.keys; }
    /// Only types that report modified keys are asked to report Ctrl+Enter.
    bool reportsCtrlEnter() const override { return entry_.reportsModifiedKeys; }

private:
    short pairFor(int fg, int bg);
    void resize();

    TerminfoEntry entry_;
    ::screen *screen_ = nullptr;
    std::map<std::pair<int, int>, short> pairs_;
    bool colors_ = false;
};

} // namespace tui
