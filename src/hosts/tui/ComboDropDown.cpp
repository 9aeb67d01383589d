#include "hosts/tui/ComboDropDown.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/KeyDecoder.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/Scrollbar.h"
#include "hosts/tui/TextFit.h"

#include "forms/ComboBox.h"
#include "forms/Utf8.h"

#include <algorithm>
#include <cwctype>

namespace tui {

ComboDropDown::ComboDropDown(const forms::ComboBox &combo, const Rect &field) : field_(field) {
    for (int i = 0; i < combo.ListCount(); ++i) {
        items_.push_back(combo.List(i));
    }
    focus_ = std::max(0, combo.ListIndex());
}

bool ComboDropDown::handleKey(const forms::KeyStroke &key) {
    int n = static_cast<int>(items_.size());
    if (n == 0 || (key.keyCode == forms::vbKeyEscape && key.shift == 0) || isDropDownKey(key) ||
        (key.keyCode == forms::vbKeyUp && key.shift == forms::vbAltMask)) {
        return true;
    }
    switch (key.keyCode) {
    case forms::vbKeyReturn:
        chosen_ = focus_;
        return true;
    case forms::vbKeyUp:
        focus_ = std::max(0, focus_ - 1);
        return false;
    case forms::vbKeyDown:
        focus_ = std::min(n - 1, focus_ + 1);
        return false;
    case forms::vbKeyPageUp:
        focus_ = std::max(0, focus_ - maxRows);
        return false;
    case forms::vbKeyPageDown:
        focus_ = std::min(n - 1, focus_ + maxRows);
        return false;
    case forms::vbKeyHome:
        focus_ = 0;
        return false;
    case forms::vbKeyEnd:
        focus_ = n - 1;
        return false;
    default:
        break;
    }
    if (key.character > U' ' && (key.shift & (forms::vbCtrlMask | forms::vbAltMask)) == 0) {
        auto upper = [](char32_t c) { return std::towupper(static_cast<wint_t>(c)); };
        for (int i = 1; i <= n; ++i) {
            int at = (focus_ + i) % n;
            std::u32string text = forms::utf8::decode(items_[static_cast<std::size_t>(at)]);
            if (!text.empty() && upper(text[0]) == upper(key.character)) {
                focus_ = at;
                break;
            }
        }
    }
    return false;
}

std::string ComboDropDown::statusText() const {
    return "Enter chooses, Esc closes the list";
}

void ComboDropDown::paint(Canvas &canvas, const Rect &area) const {
    int n = static_cast<int>(items_.size());
    int rows = std::min(n, maxRows);
    int inner = field_.w;
    for (const auto &item : items_) {
        inner = std::max(inner, std::min(columnsOf(item) + 1, area.w - 2));
    }
    int w = inner + 2;
    int h = rows + 2;
    int y = field_.bottom();
    if (y + h > area.bottom() && field_.y - h >= area.y) {
        y = field_.y - h;
    }
    int x = std::clamp(field_.x - 1, area.x, std::max(area.x, area.right() - w));
    Rect box{x, std::clamp(y, area.y, std::max(area.y, area.bottom() - h)), w, h};
    top_ = scrollWindow(top_, focus_, rows, 0, n);

    ClipScope clip(canvas, area);
    canvas.fill(box, U' ', styles::plain);
    canvas.box(box, styles::plain.with(attrBold));
    bool scrolls = n > rows;
    int textWidth = scrolls ? inner - 1 : inner;
    for (int i = 0; i < rows; ++i) {
        int at = top_ + i;
        Style s = at == focus_ ? styles::selection : styles::plain;
        canvas.fill({box.x + 1, box.y + 1 + i, textWidth, 1}, U' ', s);
        canvas.text(box.x + 1, box.y + 1 + i, items_[static_cast<std::size_t>(at)], s, textWidth);
    }
    if (scrolls) {
        paintScrollbar(canvas, box.right() - 2, box.y + 1, rows, top_, rows, n, styles::plain);
    }
}

} // namespace tui
