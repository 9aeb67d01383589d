#include "hosts/tui/PopupMenuBox.h"

#include "hosts/tui/KeyDecoder.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/TextFit.h"

#include "forms/Menu.h"

#include <algorithm>

namespace tui {

PopupMenuBox::PopupMenuBox(forms::Menu &menu, Point anchor) : anchor_(anchor) {
    for (forms::Menu *item : menu.items()) {
        if (item->Visible()) {
            items_.push_back(item);
        }
    }
    move(1);
}

forms::Menu *PopupMenuBox::highlighted() const {
    return focus_ < 0 ? nullptr : items_[static_cast<std::size_t>(focus_)];
}

void PopupMenuBox::move(int step) {
    int n = static_cast<int>(items_.size());
    int at = focus_;
    for (int i = 0; i < n; ++i) {
        at = at < 0 ? (step > 0 ? 0 : n - 1) : (at + step + n) % n;
        if (items_[static_cast<std::size_t>(at)]->Enabled()) {
            focus_ = at;
            return;
        }
    }
    focus_ = -1;
}

bool PopupMenuBox::handleKey(const forms::KeyStroke &key) {
    if (isContextMenuKey(key) || (key.keyCode == forms::vbKeyEscape && key.shift == 0)) {
        return true;
    }
    if (key.keyCode == forms::vbKeyUp) {
        move(-1);
    } else if (key.keyCode == forms::vbKeyDown) {
        move(1);
    } else if (key.keyCode == forms::vbKeyReturn || key.keyCode == forms::vbKeySpace) {
        chosen_ = highlighted();
        return chosen_ != nullptr;
    } else if (key.keyCode >= forms::vbKeyA && key.keyCode < forms::vbKeyA + 26 &&
               (key.shift & forms::vbCtrlMask) == 0) {
        char32_t letter = static_cast<char32_t>('A' + key.keyCode - forms::vbKeyA);
        for (forms::Menu *item : items_) {
            if (item->Enabled() && item->accessKey() == letter) {
                chosen_ = item;
                return true;
            }
        }
    }
    return false;
}

std::string PopupMenuBox::statusText() const {
    return "Enter chooses, Esc closes the menu";
}

void PopupMenuBox::paint(Canvas &canvas, const Rect &area) const {
    int inner = 1;
    for (const forms::Menu *item : items_) {
        inner = std::max(inner, columnsOf(forms::displayCaption(item->Caption())) + 2);
    }
    int w = inner + 2;
    int h = static_cast<int>(items_.size()) + 2;
    int x = std::clamp(anchor_.x, area.x, std::max(area.x, area.right() - w));
    int y = std::clamp(anchor_.y, area.y, std::max(area.y, area.bottom() - h));
    Rect box{x, y, w, h};
    ClipScope clip(canvas, area);
    canvas.fill(box, U' ', styles::plain);
    canvas.box(box, styles::plain.with(attrBold));
    for (std::size_t i = 0; i < items_.size(); ++i) {
        const forms::Menu *item = items_[i];
        Style s = static_cast<int>(i) == focus_ ? styles::focused : styles::plain;
        if (!item->Enabled()) {
            s = dimmed(s);
        }
        int row = y + 1 + static_cast<int>(i);
        canvas.fill({x + 1, row, inner, 1}, U' ', s);
        if (item->Checked()) {
            canvas.put(x + 1, row, U'✓', s);
        }
        canvas.caption(x + 2, row, item->Caption(), s, inner - 1);
    }
}

} // namespace tui
