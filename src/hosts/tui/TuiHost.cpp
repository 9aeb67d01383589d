#include "hosts/tui/TuiHost.h"

#include "hosts/tui/ComboDropDown.h"
#include "hosts/tui/MessageBoxDialog.h"
#include "hosts/tui/PopupMenuBox.h"
#include "hosts/tui/PrintSpooler.h"
#include "hosts/tui/ReportViewer.h"
#include "hosts/tui/ScreenPainter.h"
#include "hosts/tui/SessionEnded.h"
#include "hosts/tui/Terminal.h"
#include "hosts/tui/TextViewer.h"

#include "forms/ComboBox.h"
#include "forms/Control.h"
#include "forms/Form.h"
#include "forms/ListView.h"

#include "vb/Error.h"
#include "vb/Strings.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace tui {

using namespace std::chrono_literals;

namespace {

/// Keeps an overlay on the host's stack while it lives.
class OverlayScope {
public:
    OverlayScope(std::vector<Overlay *> &stack, Overlay &overlay)
        : stack_(stack), overlay_(&overlay) {
        stack_.push_back(overlay_);
    }
    ~OverlayScope() { std::erase(stack_, overlay_); }
    OverlayScope(const OverlayScope &) = delete;
    OverlayScope &operator=(const OverlayScope &) = delete;

private:
    std::vector<Overlay *> &stack_;
    Overlay *overlay_;
};

} // namespace

TuiHost::TuiHost(Terminal &terminal, HostSettings settings)
    : terminal_(terminal), settings_(std::move(settings)), decoder_(terminal.keyTable()) {}

TuiHost::~TuiHost() = default;

void TuiHost::redraw() {
    TerminalSize size = terminal_.size();
    if (size.cols != canvas_.width() || size.rows != canvas_.height()) {
        canvas_.resize(size.cols, size.rows);
    }
    std::vector<const Overlay *> overlays(overlays_.begin(), overlays_.end());
    KeyNames names;
    if (!terminal_.reportsCtrlEnter()) {
        names.ctrlEnter = "Ctrl+J";
    }
    paintScreen(canvas_, screen_, overlays, layout_, settings_.keyStrip, names);
    terminal_.present(canvas_);
    shownPointer_ = screen_.effectivePointer();
    ++frames_;
}

bool TuiHost::pull(std::optional<std::chrono::milliseconds> timeout) {
    std::string bytes = terminal_.read(timeout);
    if (bytes.empty()) {
        return false;
    }
    decoder_.feed(bytes);
    for (const forms::KeyStroke &key : decoder_.take()) {
        keys_.push_back(key);
    }
    return true;
}

forms::KeyStroke TuiHost::waitKey() {
    while (keys_.empty()) {
        // Everything that is waiting is read before anything is drawn.
        if (pull(0ms)) {
            continue;
        }
        if (decoder_.pending()) {
            if (!pull(settings_.escapeDelay)) {
                decoder_.flush();
                for (const forms::KeyStroke &key : decoder_.take()) {
                    keys_.push_back(key);
                }
            }
            continue;
        }
        redraw();
        pull(std::nullopt);
    }
    forms::KeyStroke key = keys_.front();
    keys_.pop_front();
    if (isInterruptKey(key)) {
        throw SessionEnded("interrupted by Ctrl+C", 130);
    }
    return key;
}

void TuiHost::runModal(forms::Form &form) {
    while (form.Visible()) {
        if (input_.processQueued() > 0) {
            continue;
        }
        dispatch(waitKey());
    }
}

void TuiHost::dispatch(const forms::KeyStroke &key) {
    if (!overlays_.empty()) {
        // Only a text viewer stays open between keys: it has them until it closes.
        Overlay *top = overlays_.back();
        if (top->handleKey(key)) {
            closeViewer(top);
        }
        return;
    }
    forms::Control *focused = screen_.ActiveControl();
    if (isContextMenuKey(key)) {
        contextMenu(focused);
        return;
    }
    if (isDropDownKey(key) && focused && focused->kind() == forms::ControlKind::ComboBox) {
        dropDown(static_cast<forms::ComboBox &>(*focused));
        return;
    }
    input_.keyStroke(key);
    // A list wider than its window scrolls sideways a column at a time with
    // the arrows, as the old list's scroll bar did; the rows stay selected.
    bool sideways =
        key.shift == 0 && (key.keyCode == forms::vbKeyLeft || key.keyCode == forms::vbKeyRight);
    if (sideways && focused && focused == screen_.ActiveControl() &&
        focused->kind() == forms::ControlKind::ListView) {
        const auto &list = static_cast<const forms::ListView &>(*focused);
        ListScroll &scroll = layout_.listScroll(list);
        auto headers = list.ColumnHeaders().inDisplayOrder();
        int step = key.keyCode == forms::vbKeyLeft ? -1 : 1;
        // Columns of no width (hidden ones) are stepped over.
        for (int p = scroll.current + step; p >= 1 && p <= static_cast<int>(headers.size());
             p += step) {
            if (headers[static_cast<std::size_t>(p - 1)]->Width() > 0) {
                scroll.current = p;
                break;
            }
        }
    }
}

void TuiHost::contextMenu(forms::Control *focused) {
    if (!focused) {
        return;
    }
    if (focused->kind() == forms::ControlKind::ListView) {
        auto &list = static_cast<forms::ListView &>(*focused);
        if (forms::ListItem *item = list.selectedItemOrNull()) {
            input_.rightClickItem(list, item->Index());
            return;
        }
    }
    input_.rightClick(*focused);
}

void TuiHost::dropDown(forms::ComboBox &combo) {
    if (combo.ListCount() == 0 || combo.Style() == forms::vbComboSimple) {
        return;
    }
    auto field = layout_.controlRect(combo);
    ComboDropDown list(combo, field.value_or(Rect{0, 0, 10, 1}));
    runOverlay(list);
    if (list.chosen()) {
        input_.chooseItem(combo, *list.chosen());
    }
}

void TuiHost::runOverlay(Overlay &overlay) {
    OverlayScope scope(overlays_, overlay);
    while (!overlay.handleKey(waitKey())) {
    }
}

void TuiHost::closeViewer(const Overlay *viewer) {
    std::erase(overlays_, viewer);
    std::erase_if(viewers_, [&](const auto &v) { return v.get() == viewer; });
}

int TuiHost::msgBox(std::string_view prompt, int buttons, std::string_view title) {
    MessageBoxDialog box(prompt, buttons, title);
    runOverlay(box);
    return box.answer();
}

forms::Menu *TuiHost::popupMenu(forms::Form &, forms::Menu &menu) {
    Point anchor{2, 2};
    if (const forms::Control *focused = screen_.ActiveControl()) {
        if (auto r = layout_.controlRect(*focused)) {
            anchor = {r->x + 2, r->y + 1};
            if (focused->kind() == forms::ControlKind::ListView) {
                const auto &list = static_cast<const forms::ListView &>(*focused);
                if (const forms::ListItem *item = list.selectedItemOrNull()) {
                    int row = item->Index() - list.topIndex() + 2;
                    anchor.y = r->y + std::clamp(row, 1, std::max(1, r->h - 1));
                }
            }
        }
    }
    PopupMenuBox box(menu, anchor);
    runOverlay(box);
    return box.chosen();
}

void TuiHost::doEvents() {
    while (pull(0ms)) {
    }
    if (keys_.empty()) {
        redraw();
    }
}

void TuiHost::showTextFile(const std::string &path) {
    // The old viewer opened a file that was not there as a new, empty one.
    auto viewer = std::make_unique<TextViewer>(
        std::filesystem::exists(path) ? TextViewer::fromFile(path) : TextViewer(path, ""));
    overlays_.push_back(viewer.get());
    viewers_.push_back(std::move(viewer));
}

std::unique_ptr<std::ostream> TuiHost::openPrinter(const std::string &port) {
    return openPrinterPort(port, settings_.printers);
}

void TuiHost::previewReport(const forms::ReportPreview &report) {
    if (!report.pages.empty()) {
        showReportPages(report);
        return;
    }
    if (!settings_.reportText) {
        throw vb::Error(429, "tui",
                        "ActiveX component can't create object: no report viewer is set up");
    }
    auto viewer = std::make_unique<TextViewer>(report.title, settings_.reportText(report));
    overlays_.push_back(viewer.get());
    viewers_.push_back(std::move(viewer));
}

void TuiHost::mousePointerChanged(forms::Screen &screen) {
    // The busy mark must show while the long action runs, before any key comes
    // back; but a burst of keys still waiting is not held up by drawing.
    if (screen.effectivePointer() == shownPointer_) {
        return;
    }
    while (pull(0ms)) {
    }
    if (keys_.empty() && !decoder_.pending()) {
        redraw();
    }
}

} // namespace tui
