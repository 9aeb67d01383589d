#include "hosts/tui/CursesTerminal.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/SessionEnded.h"
#include "hosts/tui/UnknownTerminal.h"

#include "vb/Error.h"

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#define NCURSES_WIDECHAR 1
#include <ncursesw/curses.h>
#include <ncursesw/term.h> // tputs; after the rest, as it defines a macro per capability

namespace tui {

namespace {

// What the signal handlers leave for the loop: the self-pipe wakes `read`.
volatile std::sig_atomic_t stopSignal = 0;
volatile std::sig_atomic_t resized = 0;
int wakeFds[2] = {-1, -1};

extern "C" void onSignal(int sig) {
    if (sig == SIGWINCH) {
        resized = 1;
    } else {
        stopSignal = sig;
    }
    int saved = errno;
    if (wakeFds[1] >= 0) {
        [[maybe_unused]] auto n = ::write(wakeFds[1], "x", 1);
    }
    errno = saved;
}

constexpr int handledSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGWINCH};
struct sigaction savedActions[4];

void installHandlers() {
    for (std::size_t i = 0; i < std::size(handledSignals); ++i) {
        struct sigaction action {};
        action.sa_handler = onSignal;
        sigemptyset(&action.sa_mask);
        sigaction(handledSignals[i], &action, &savedActions[i]);
    }
}

void closeWakePipe() {
    ::close(wakeFds[0]);
    ::close(wakeFds[1]);
    wakeFds[0] = wakeFds[1] = -1;
}

void restoreHandlers() {
    for (std::size_t i = 0; i < std::size(handledSignals); ++i) {
        sigaction(handledSignals[i], &savedActions[i], nullptr);
    }
}

/// ncurses writes wide characters only in a UTF-8 character locale. Only the
/// character type is set: numbers and dates keep the "C" rules everywhere.
void useUtf8Characters() {
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) {
        std::setlocale(LC_CTYPE, "C.UTF-8");
    }
}

short cursesColor(int c) {
    static constexpr short colors[] = {-1,           COLOR_BLACK, COLOR_RED,     COLOR_GREEN,
                                       COLOR_YELLOW, COLOR_BLUE,  COLOR_MAGENTA, COLOR_CYAN,
                                       COLOR_WHITE};
    return colors[c];
}

attr_t cursesAttrs(const Style &s) {
    attr_t a = A_NORMAL;
    if (s.has(attrBold)) {
        a |= A_BOLD;
    }
    if (s.has(attrUnderline)) {
        a |= A_UNDERLINE;
    }
    if (s.has(attrReverse)) {
        a |= A_REVERSE;
    }
    if (s.has(attrDim)) {
        a |= A_DIM;
    }
    return a;
}

/// xterm's request to report keys such as Ctrl+Enter with their modifiers,
/// and its reset; terminfo has no capability for either.
constexpr const char *modifyOtherKeysOn = "\033[>4;1m";
constexpr const char *modifyOtherKeysOff = "\033[>4m";

/// Sends a terminfo string to the terminal at once, with its padding done,
/// beside ncurses' own output buffer (which is empty between frames).
std::string tputsBuffer;
extern "C" int appendToTputsBuffer(int c) {
    tputsBuffer.push_back(static_cast<char>(c));
    return c;
}
void sendNow(const std::string &capability) {
    if (capability.empty()) {
        return;
    }
    tputsBuffer.clear();
    tputs(capability.c_str(), 1, appendToTputsBuffer);
    std::size_t done = 0;
    while (done < tputsBuffer.size()) {
        ssize_t n = ::write(STDOUT_FILENO, tputsBuffer.data() + done, tputsBuffer.size() - done);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            return; // a terminal that takes no output has no keypad to set either
        }
        done += static_cast<std::size_t>(n);
    }
}

/// The entry of the terminal type in TERM, or why there is none to use.
TerminfoEntry terminalEntry() {
    const char *term = std::getenv("TERM");
    const std::string remedy =
        ": set TERM to a type this machine knows ('toe -a' lists them; xterm-256color, "
        "screen-256color, linux and vt220 are always there), or install the package "
        "ncurses-term, which describes many more terminals";
    if (term == nullptr || *term == '\0') {
        throw UnknownTerminal("TERM is not set, so the keys of the terminal cannot be read" +
                              remedy);
    }
    std::optional<TerminfoEntry> entry = readTerminfoEntry(term);
    if (!entry) {
        throw UnknownTerminal(std::string("the terminal type '") + term +
                              "' (TERM) has no entry in this machine's terminal database, so "
                              "its keys cannot be read" +
                              remedy);
    }
    if (!entry->placesCursor) {
        throw UnknownTerminal(std::string("the terminal type '") + term +
                              "' (TERM) cannot place the cursor, so no form can be drawn on it" +
                              remedy);
    }
    return std::move(*entry);
}

} // namespace

CursesTerminal::CursesTerminal() {
    if (!isatty(STDIN_FILENO) || !isatty(STDOUT_FILENO)) {
        throw vb::Error(vb::err::DeviceIOError, "tui",
                        "the register needs a terminal: standard input and output must be one");
    }
    entry_ = terminalEntry();
    if (::pipe(wakeFds) != 0) {
        throw vb::Error(vb::err::DeviceIOError, "tui", "cannot make the signal pipe");
    }
    useUtf8Characters();
    // Installed before ncurses starts, so that it leaves these signals to us.
    installHandlers();
    screen_ = newterm(nullptr, stdout, stdin);
    if (!screen_) {
        restoreHandlers();
        closeWakePipe();
        const char *term = std::getenv("TERM");
        throw vb::Error(vb::err::DeviceIOError, "tui",
                        std::string("the terminal type '") + (term ? term : "") +
                            "' is not known to ncurses");
    }
    set_term(screen_);
    sendNow(entry_.keypadOn);
    if (entry_.reportsModifiedKeys) {
        sendNow(modifyOtherKeysOn);
    }
    raw();
    noecho();
    nonl();
    curs_set(0);
    if (has_colors()) {
        start_color();
        use_default_colors();
        colors_ = true;
    }
}

CursesTerminal::~CursesTerminal() {
    if (entry_.reportsModifiedKeys) {
        sendNow(modifyOtherKeysOff);
    }
    sendNow(entry_.keypadOff);
    curs_set(1);
    endwin();
    delscreen(screen_);
    restoreHandlers();
    closeWakePipe();
    stopSignal = 0;
    resized = 0;
}

TerminalSize CursesTerminal::size() const {
    return {COLS, LINES};
}

short CursesTerminal::pairFor(int fg, int bg) {
    if (!colors_ || (fg == 0 && bg == 0)) {
        return 0;
    }
    auto key = std::make_pair(fg, bg);
    auto it = pairs_.find(key);
    if (it != pairs_.end()) {
        return it->second;
    }
    auto pair = static_cast<short>(pairs_.size() + 1);
    if (pair >= COLOR_PAIRS || init_pair(pair, cursesColor(fg), cursesColor(bg)) == ERR) {
        return 0;
    }
    pairs_.emplace(key, pair);
    return pair;
}

void CursesTerminal::present(const Canvas &canvas) {
    int rows = std::min(canvas.height(), LINES);
    int cols = std::min(canvas.width(), COLS);
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < cols; ++x) {
            const Cell &cell = canvas.at(x, y);
            wchar_t text[2] = {static_cast<wchar_t>(cell.ch), L'\0'};
            cchar_t out;
            short pair = pairFor(static_cast<int>(cell.style.fg), static_cast<int>(cell.style.bg));
            setcchar(&out, text, cursesAttrs(cell.style), pair, nullptr);
            mvadd_wch(y, x, &out);
        }
    }
    if (auto at = canvas.cursor(); at && at->x < cols && at->y < rows) {
        curs_set(1);
        move(at->y, at->x);
    } else {
        curs_set(0);
    }
    refresh();
}

void CursesTerminal::resize() {
    winsize ws{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &ws) == 0 && ws.ws_row > 0 && ws.ws_col > 0) {
        resizeterm(ws.ws_row, ws.ws_col);
    }
}

std::string CursesTerminal::read(std::optional<std::chrono::milliseconds> timeout) {
    pollfd fds[2] = {{STDIN_FILENO, POLLIN, 0}, {wakeFds[0], POLLIN, 0}};
    int wait = timeout ? static_cast<int>(timeout->count()) : -1;
    int ready = ::poll(fds, 2, wait);
    if (ready < 0 && errno != EINTR) {
        throw SessionEnded(std::string("cannot read the terminal: ") + std::strerror(errno), 1);
    }
    if (ready > 0 && (fds[1].revents & POLLIN)) {
        char drain[64];
        [[maybe_unused]] auto n = ::read(wakeFds[0], drain, sizeof drain);
    }
    if (stopSignal != 0) {
        int sig = stopSignal;
        throw SessionEnded(std::string("stopped by ") + strsignal(sig), 128 + sig);
    }
    if (resized != 0) {
        resized = 0;
        resize();
        return {};
    }
    std::string bytes;
    while (ready > 0 && (fds[0].revents & (POLLIN | POLLHUP | POLLERR))) {
        char buffer[4096];
        ssize_t n = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (n == 0 || (n < 0 && errno != EINTR && errno != EAGAIN)) {
            if (bytes.empty()) {
                throw SessionEnded("the terminal's input has ended", 1);
            }
            break;
        }
        if (n > 0) {
            bytes.append(buffer, static_cast<std::size_t>(n));
        }
        // Take everything that has come so far: a scanner's burst in one go.
        fds[0].revents = 0;
        ready = ::poll(fds, 1, 0);
    }
    return bytes;
}

} // namespace tui
