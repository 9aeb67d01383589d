// tui::CursesTerminal: the real terminal, through ncurses, restored on every way out.
#pragma once

#include "hosts/tui/Terminal.h"

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
/// terminal and decoded by KeyDecoder, so the keys the forms see do not
/// depend on the terminal description.
class CursesTerminal : public Terminal {
public:
    /// Raises vb::Error when standard input or output is not a terminal, or
    /// ncurses does not know the terminal's type.
    CursesTerminal();
    ~CursesTerminal() override;
    CursesTerminal(const CursesTerminal &) = delete;
    CursesTerminal &operator=(const CursesTerminal &) = delete;

    TerminalSize size() const override;
    void present(const Canvas &canvas) override;
    std::string read(std::optional<std::chrono::milliseconds> timeout) override;

private:
    short pairFor(int fg, int bg);
    void resize();

    ::screen *screen_ = nullptr;
    std::map<std::pair<int, int>, short> pairs_;
    bool colors_ = false;
};

} // namespace tui
