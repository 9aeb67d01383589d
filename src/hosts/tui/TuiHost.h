// tui::TuiHost: the terminal host, forms::Ui for people: draws the forms and feeds them the keys.
#pragma once

#include "hosts/tui/Canvas.h"
#include "hosts/tui/KeyDecoder.h"
#include "hosts/tui/ScreenLayout.h"

#include "forms/Input.h"
#include "forms/Screen.h"
#include "forms/Ui.h"

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace forms {
class ComboBox;
class Control;
} // namespace forms

namespace tui {

class Overlay;
class Terminal;
class TextViewer;

/// What the host is told at start.
struct HostSettings {
    /// Printer ports by name ("LPT1"): the file or device that takes the
    /// port's bytes. Other names are device paths or print queues
    /// (openPrinterPort).
    std::map<std::string, std::string> printers;
    /// The print queue of a report preview's print key; empty: the default.
    std::string reportPrinter;
    /// Where a report preview saves its PDF; empty: the current folder.
    std::string reportFolder;
    /// Turns a report preview into text for the viewer; without it a
    /// preview raises 429, as a missing report engine did.
    std::function<std::string(const forms::ReportPreview &)> reportText;
    /// How long a lone ESC waits for the rest of a key sequence before it
    /// counts as the Escape key.
    std::chrono::milliseconds escapeDelay{25};
    /// Whether the bottom line shows the keys of the active form when no tool
    /// tip or hint is there.
    bool keyStrip = true;
};

/// The terminal host. It owns the session's forms::Screen (hand `screen()` to
/// the module) and implements forms::Ui on a Terminal:
///
/// - The loop of a modal Show runs SendKeys' queued keys first, then takes the
///   next key. Keys are read from the terminal as they come and queued in
///   order, and the screen is redrawn only when no key is waiting, so a
///   scanner's burst is never dropped or reordered and costs no redraws.
/// - Keys go to the forms through forms::Input, with three of the host's own:
///   Shift+F10 and the Menu key are the right click on the focused control
///   (on a list, on its selected row), so its popup menu opens; F4 and
///   Alt+Down open a combo's list; Ctrl+C ends the session (SessionEnded).
/// - Message boxes, popup menus and combo lists are boxes over the forms that
///   take the keys until answered; a text file opens in a viewer window that
///   stays until closed.
/// - The busy mark shows at once when the pointer becomes the hourglass.
class TuiHost : public forms::Ui {
public:
    explicit TuiHost(Terminal &terminal, HostSettings settings = {});
    ~TuiHost() override;
    TuiHost(const TuiHost &) = delete;
    TuiHost &operator=(const TuiHost &) = delete;

    forms::Screen &screen() { return screen_; }
    /// The frame drawn last, and where its forms and controls stood.
    const Canvas &canvas() const { return canvas_; }
    const ScreenLayout &layout() const { return layout_; }
    /// Draws the screen as it stands and shows it on the terminal.
    void redraw();
    /// How many frames were drawn (tests check that a burst draws none).
    std::size_t framesDrawn() const { return frames_; }

    void runModal(forms::Form &form) override;
    int msgBox(std::string_view prompt, int buttons, std::string_view title) override;
    forms::Menu *popupMenu(forms::Form &form, forms::Menu &menu) override;
    void doEvents() override;
    void showTextFile(const std::string &path) override;
    std::unique_ptr<std::ostream> openPrinter(const std::string &port) override;
    void previewReport(const forms::ReportPreview &report) override;
    void mousePointerChanged(forms::Screen &screen) override;

private:
    /// Reads what the terminal has within `timeout` into the key queue;
    /// false when nothing came.
    bool pull(std::optional<std::chrono::milliseconds> timeout);
    /// The next key, drawing and waiting for one when none is queued.
    forms::KeyStroke waitKey();
    /// Runs a box over the forms until it is done.
    void runOverlay(Overlay &overlay);
    void dispatch(const forms::KeyStroke &key);
    void contextMenu(forms::Control *focused);
    void dropDown(forms::ComboBox &combo);
    void closeViewer(const Overlay *viewer);

    Terminal &terminal_;
    HostSettings settings_;
    forms::Screen screen_{*this};
    forms::Input input_{screen_};
    Canvas canvas_{0, 0};
    ScreenLayout layout_;
    KeyDecoder decoder_;
    std::deque<forms::KeyStroke> keys_;
    std::vector<Overlay *> overlays_;
    std::vector<std::unique_ptr<TextViewer>> viewers_;
    /// A report laid out by the engine, in a ReportViewer (TuiHost_report.cpp).
    void showReportPages(const forms::ReportPreview &report);
    std::size_t frames_ = 0;
    int shownPointer_ = forms::vbDefault;
};

} // namespace tui
