#include "hosts/tui/ScreenPainter.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/FormFit.h"
#include "hosts/tui/FormPainter.h"
#include "hosts/tui/KeyStrip.h"
#include "hosts/tui/Overlay.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/ScreenLayout.h"
#include "hosts/tui/TextFit.h"

#include "forms/Control.h"
#include "forms/Form.h"
#include "forms/Screen.h"

#include <algorithm>
#include <string>

namespace tui {

namespace {

std::string statusText(const forms::Screen &screen, const std::vector<const Overlay *> &overlays) {
    if (!overlays.empty()) {
        return overlays.back()->statusText();
    }
    const forms::Control *focused = screen.ActiveControl();
    return focused ? focused->ToolTipText() : std::string();
}

void paintStatusLine(Canvas &canvas, const forms::Screen &screen,
                     const std::vector<const Overlay *> &overlays, bool keyStrip,
                     const KeyNames &keyNames) {
    int y = canvas.height() - 1;
    canvas.fill({0, y, canvas.width(), 1}, U' ', styles::status);
    int markWidth = 0;
    if (screen.effectivePointer() == forms::vbHourglass) {
        markWidth = columnsOf(busyMark) + 2;
        canvas.fill({canvas.width() - markWidth, y, markWidth, 1}, U' ', styles::busy);
        canvas.text(canvas.width() - markWidth + 1, y, busyMark, styles::busy);
    }
    int room = std::max(0, canvas.width() - markWidth - 2);
    std::string status = statusText(screen, overlays);
    // The strip gives way to a tool tip or a box's hint, which say more about
    // what is in front of the user right now.
    const forms::Form *active = screen.ActiveForm();
    // While a box is open it has the keys, so the form's are not offered.
    if (status.empty() && keyStrip && active && overlays.empty()) {
        paintKeyStrip(canvas, 1, y, room, keyHints(*active, keyNames), styles::status);
    } else {
        canvas.text(1, y, status, styles::status, room);
    }
}

void paintTooSmall(Canvas &canvas, CellSize need) {
    std::string notice =
        "terminal too small: need " + std::to_string(need.cols) + " x " + std::to_string(need.rows);
    auto lines = wrapText(notice, canvas.width());
    int top = std::max(0, (canvas.height() - static_cast<int>(lines.size())) / 2);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        drawAligned(canvas, 0, top + static_cast<int>(i), canvas.width(), lines[i], Align::Center,
                    styles::plain.with(attrBold));
    }
}

} // namespace

CellSize screenNeeds(const forms::Screen &screen) {
    CellSize need{1, 2};
    for (const forms::Form *form : screen.shownForms()) {
        CellSize fit = smallestFit(*form);
        // The window's border round the form, and the status line below.
        need.cols = std::max(need.cols, fit.cols + 2);
        need.rows = std::max(need.rows, fit.rows + 3);
    }
    return need;
}

void paintScreen(Canvas &canvas, const forms::Screen &screen,
                 const std::vector<const Overlay *> &overlays, ScreenLayout &layout, bool keyStrip,
                 const KeyNames &keyNames) {
    canvas.clear();
    layout.clear();
    if (canvas.height() < 1 || canvas.width() < 1) {
        return;
    }
    Rect area{0, 0, canvas.width(), canvas.height() - 1};
    CellSize need = screenNeeds(screen);
    if (canvas.width() < need.cols || canvas.height() < need.rows) {
        // A form drawn smaller than its controls need loses some of them
        // without a word; better to say so until the terminal grows.
        paintTooSmall(canvas, need);
        return;
    }
    const forms::Form *active = screen.ActiveForm();
    for (const forms::Form *form : screen.shownForms()) {
        paintForm(canvas, *form, area, form == active, layout);
    }
    if (!overlays.empty()) {
        canvas.setCursor(std::nullopt);
    }
    for (const Overlay *overlay : overlays) {
        overlay->paint(canvas, area);
    }
    paintStatusLine(canvas, screen, overlays, keyStrip, keyNames);
}

} // namespace tui
