#include "hosts/tui/MessageBoxDialog.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/TextFit.h"

#include "forms/MsgBox.h"
#include "forms/Utf8.h"

#include <algorithm>
#include <cwctype>

namespace tui {

namespace {

constexpr int buttonGap = 2;

int buttonWidth(int answer) {
    return columnsOf(forms::displayCaption(forms::msgBoxButtonCaption(answer))) + 4;
}

} // namespace

MessageBoxDialog::MessageBoxDialog(std::string_view prompt, int buttons, std::string_view title)
    : prompt_(prompt), buttons_(buttons), title_(title), answers_(forms::msgBoxAnswers(buttons)) {
    int preferred = forms::msgBoxDefaultAnswer(buttons);
    auto it = std::find(answers_.begin(), answers_.end(), preferred);
    focus_ = it == answers_.end() ? 0 : static_cast<std::size_t>(it - answers_.begin());
}

std::string MessageBoxDialog::iconWord(int buttons) {
    switch (forms::msgBoxIcon(buttons)) {
    case forms::vbCritical:
        return "Critical";
    case forms::vbQuestion:
        return "Question";
    case forms::vbExclamation:
        return "Exclamation";
    case forms::vbInformation:
        return "Information";
    default:
        return "";
    }
}

char32_t MessageBoxDialog::letterOf(int answer) const {
    std::string caption = forms::msgBoxButtonCaption(answer);
    char32_t key = forms::accessKeyOf(caption);
    if (key != 0) {
        return key;
    }
    std::u32string shown = forms::utf8::decode(forms::displayCaption(caption));
    return shown.empty() ? 0 : static_cast<char32_t>(std::towupper(static_cast<wint_t>(shown[0])));
}

bool MessageBoxDialog::handleKey(const forms::KeyStroke &key) {
    int n = static_cast<int>(answers_.size());
    bool plain = key.shift == 0;
    if ((key.keyCode == forms::vbKeyReturn || key.keyCode == forms::vbKeySpace) && plain) {
        answer_ = answers_[focus_];
    } else if (key.keyCode == forms::vbKeyEscape && plain) {
        answer_ = forms::msgBoxEscapeAnswer(buttons_);
    } else if (key.keyCode == forms::vbKeyLeft || key.keyCode == forms::vbKeyUp ||
               (key.keyCode == forms::vbKeyTab && key.shift == forms::vbShiftMask)) {
        focus_ = static_cast<std::size_t>((static_cast<int>(focus_) + n - 1) % n);
    } else if (key.keyCode == forms::vbKeyRight || key.keyCode == forms::vbKeyDown ||
               (key.keyCode == forms::vbKeyTab && plain)) {
        focus_ = (focus_ + 1) % answers_.size();
    } else if (key.keyCode >= forms::vbKeyA && key.keyCode < forms::vbKeyA + 26 &&
               (key.shift & forms::vbCtrlMask) == 0) {
        char32_t letter = static_cast<char32_t>('A' + key.keyCode - forms::vbKeyA);
        for (int a : answers_) {
            if (letterOf(a) == letter) {
                answer_ = a;
            }
        }
    }
    return answer_ != 0;
}

std::string MessageBoxDialog::statusText() const {
    return "Enter answers, arrows choose a button";
}

void MessageBoxDialog::paint(Canvas &canvas, const Rect &area) const {
    int buttonsWidth = -buttonGap;
    for (int a : answers_) {
        buttonsWidth += buttonWidth(a) + buttonGap;
    }
    std::string icon = iconWord(buttons_);
    int maxText = std::max(10, std::min(area.w - 6, 72));
    auto lines = wrapText(prompt_, maxText);
    int inner = std::max({buttonsWidth, columnsOf(icon), columnsOf(title_) + 2});
    for (const auto &line : lines) {
        inner = std::max(inner, columnsOf(line));
    }
    inner = std::min(inner, std::max(1, area.w - 4));

    int h = 2 + (icon.empty() ? 0 : 2) + static_cast<int>(lines.size()) + 2;
    int w = inner + 4;
    Rect box{area.x + (area.w - w) / 2, area.y + std::max(0, (area.h - h) / 2), w, h};
    ClipScope clip(canvas, area);
    canvas.fill(box, U' ', styles::plain);
    canvas.box(box, styles::plain.with(attrBold), title_);

    int y = box.y + 1;
    if (!icon.empty()) {
        canvas.text(box.x + 2, y, icon, styles::plain.with(attrBold), inner);
        y += 2;
    }
    for (const auto &line : lines) {
        canvas.text(box.x + 2, y++, line, styles::plain, inner);
    }
    ++y;
    int x = box.x + 2 + (inner - buttonsWidth) / 2;
    for (std::size_t i = 0; i < answers_.size(); ++i) {
        int a = answers_[i];
        Style s = i == focus_ ? styles::focused : styles::plain;
        int bw = buttonWidth(a);
        canvas.fill({x, y, bw, 1}, U' ', s);
        canvas.put(x, y, U'[', s);
        canvas.caption(x + 2, y, forms::msgBoxButtonCaption(a), s);
        canvas.put(x + bw - 1, y, U']', s);
        x += bw + buttonGap;
    }
}

} // namespace tui
