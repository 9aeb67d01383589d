#include "hosts/tui/ControlPainter.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/PictureGlyphs.h"
#include "hosts/tui/TextFit.h"

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/DatePicker.h"
#include "forms/Frame.h"
#include "forms/Keys.h"
#include "forms/Label.h"
#include "forms/Line.h"
#include "forms/OptionButton.h"
#include "forms/TextBox.h"
#include "forms/Utf8.h"

#include "vb/Clock.h"
#include "vb/DateFormat.h"

#include <algorithm>

namespace tui {

namespace {

Align alignOf(int alignment) {
    switch (alignment) {
    case 1:
        return Align::Right;
    case 2:
        return Align::Center;
    default:
        return Align::Left;
    }
}

Style stateStyle(const PaintContext &pc, Style s) {
    return pc.enabled ? s : dimmed(s);
}

/// The row a one-line control uses: the middle of its rectangle.
int middleRow(const Rect &r) {
    return r.y + (r.h - 1) / 2;
}

/// A caption aligned in a field, its access key underlined.
void drawCaption(Canvas &canvas, int x, int y, int width, std::string_view caption, Align align,
                 Style style) {
    if (width <= 0) {
        return;
    }
    int n = columnsOf(forms::displayCaption(caption));
    int offset = 0;
    if (n < width && align == Align::Right) {
        offset = width - n;
    } else if (n < width && align == Align::Center) {
        offset = (width - n) / 2;
    }
    canvas.caption(x + offset, y, caption, style, width - offset);
}

/// "[x] Caption" and its kin: a mark of three cells and the caption beside it.
void paintMarked(const PaintContext &pc, std::string_view mark, std::string_view caption,
                 bool markOnRight) {
    const Rect &r = pc.rect;
    int y = middleRow(r);
    Style style = stateStyle(pc, styles::plain);
    Style captionStyle = pc.focused ? style.with(attrReverse) : style;
    int captionWidth = std::min(columnsOf(forms::displayCaption(caption)), std::max(0, r.w - 4));
    if (markOnRight) {
        drawCaption(pc.canvas, r.x, y, captionWidth, caption, Align::Left, captionStyle);
        pc.canvas.text(r.right() - 3, y, mark, style);
    } else {
        pc.canvas.text(r.x, y, mark, style);
        drawCaption(pc.canvas, r.x + 4, y, captionWidth, caption, Align::Left, captionStyle);
    }
}

/// A one-line field with a drop-down mark at its right end.
void paintDropField(const PaintContext &pc, std::string_view text) {
    const Rect &r = pc.rect;
    int y = middleRow(r);
    Style field = stateStyle(pc, pc.focused ? styles::focused : styles::field);
    pc.canvas.fill({r.x, y, r.w, 1}, U' ', field);
    int width = std::max(0, r.w - 1);
    pc.canvas.text(r.x, y, text, field, width);
    pc.canvas.put(r.right() - 1, y, U'▼', stateStyle(pc, styles::plain));
}

} // namespace

void paintLabel(const PaintContext &pc, const forms::Label &label) {
    const Rect &r = pc.rect;
    Style style = stateStyle(pc, styles::plain);
    Align align = alignOf(label.Alignment());
    std::string shown = forms::displayCaption(label.Caption());
    if (r.h <= 1 || columnsOf(shown) <= r.w) {
        drawCaption(pc.canvas, r.x, r.y, r.w, label.Caption(), align, style);
        return;
    }
    // A caption longer than its label wraps over the label's rows, as it did.
    auto lines = wrapText(shown, r.w);
    for (int i = 0; i < r.h && i < static_cast<int>(lines.size()); ++i) {
        drawAligned(pc.canvas, r.x, r.y + i, r.w, lines[i], align, style);
    }
}

void paintTextBox(const PaintContext &pc, const forms::TextBox &box) {
    const Rect &r = pc.rect;
    int y = middleRow(r);
    int w = r.w;
    Style field = stateStyle(pc, styles::field);
    pc.canvas.fill({r.x, y, w, 1}, U' ', field);

    std::u32string chars = forms::utf8::decode(box.Text());
    if (!box.PasswordChar().empty()) {
        char32_t mask = forms::utf8::decode(box.PasswordChar()).front();
        chars.assign(chars.size(), mask);
    }
    int n = static_cast<int>(chars.size());
    int caret = std::clamp(box.SelStart(), 0, n);
    int start = 0;
    int offset = 0;
    if (n < w) {
        Align align = alignOf(box.Alignment());
        offset = align == Align::Right ? w - n : align == Align::Center ? (w - n) / 2 : 0;
    } else if (pc.focused) {
        // The focused box scrolls so that its caret stays in view.
        start = std::max(0, caret - w + 1);
    }
    int selFrom = box.SelStart();
    int selTo = box.SelStart() + box.SelLength();
    for (int i = start; i < n && offset + i - start < w; ++i) {
        bool selected = pc.focused && i >= selFrom && i < selTo;
        pc.canvas.put(r.x + offset + i - start, y, chars[i],
                      selected ? field.with(attrReverse) : field);
    }
    if (pc.focused) {
        pc.canvas.setCursor(Point{std::min(r.x + offset + caret - start, r.right() - 1), y});
    }
}

void paintCommandButton(const PaintContext &pc, const forms::CommandButton &button) {
    const Rect &r = pc.rect;
    int y = middleRow(r);
    Style style = pc.focused ? styles::focused : styles::plain;
    if (button.Default()) {
        style = style.with(attrBold);
    }
    style = stateStyle(pc, style);
    pc.canvas.fill({r.x, y, r.w, 1}, U' ', style);
    if (r.w >= 3) {
        pc.canvas.put(r.x, y, U'[', style);
        pc.canvas.put(r.right() - 1, y, U']', style);
        std::string_view glyph = pictureGlyph(button);
        if (!glyph.empty()) {
            drawAligned(pc.canvas, r.x + 1, y, r.w - 2, glyph, Align::Center, style);
        } else {
            drawCaption(pc.canvas, r.x + 1, y, r.w - 2, button.Caption(), Align::Center, style);
        }
    } else {
        drawCaption(pc.canvas, r.x, y, r.w, button.Caption(), Align::Left, style);
    }
}

void paintCheckBox(const PaintContext &pc, const forms::CheckBox &box) {
    std::string_view mark = box.Value() == forms::vbChecked  ? "[x]"
                            : box.Value() == forms::vbGrayed ? "[-]"
                                                             : "[ ]";
    paintMarked(pc, mark, box.Caption(), box.Alignment() == 1);
}

void paintOptionButton(const PaintContext &pc, const forms::OptionButton &option) {
    paintMarked(pc, option.Value() ? "(*)" : "( )", option.Caption(), false);
}

void paintComboBox(const PaintContext &pc, const forms::ComboBox &combo) {
    paintDropField(pc, combo.Text());
    if (pc.focused && combo.Style() != forms::vbComboDropdownList) {
        int n = std::min(columnsOf(combo.Text()), std::max(0, pc.rect.w - 2));
        pc.canvas.setCursor(Point{pc.rect.x + n, middleRow(pc.rect)});
    }
}

void paintDatePicker(const PaintContext &pc, const forms::DatePicker &picker) {
    const std::string &pattern =
        picker.CustomFormat().empty() ? vb::shortDateFormat() : picker.CustomFormat();
    paintDropField(pc, vb::formatDate(picker.Value(), pattern));
}

void paintFrame(const PaintContext &pc, const forms::Frame &frame) {
    const Rect &r = pc.rect;
    Style style = stateStyle(pc, styles::plain);
    if (r.w >= 2 && r.h >= 2) {
        pc.canvas.box(r, style);
    }
    if (!frame.Caption().empty() && r.w > 4) {
        pc.canvas.put(r.x + 1, r.y, U' ', style);
        int n = pc.canvas.caption(r.x + 2, r.y, frame.Caption(), style, r.w - 4);
        pc.canvas.put(r.x + 2 + n, r.y, U' ', style);
    }
}

void paintLine(const PaintContext &pc, const forms::Line &line, int originX, int originY) {
    TwipsRect at = formTwips(line);
    int x1 = originX + pc.scale.col(at.left + line.X1());
    int y1 = originY + pc.scale.row(at.top + line.Y1());
    int x2 = originX + pc.scale.col(at.left + line.X2());
    int y2 = originY + pc.scale.row(at.top + line.Y2());
    Style style = stateStyle(pc, styles::plain);
    if (y1 == y2) {
        for (int x = std::min(x1, x2); x <= std::max(x1, x2); ++x) {
            pc.canvas.put(x, y1, U'─', style);
        }
    } else if (x1 == x2) {
        for (int y = std::min(y1, y2); y <= std::max(y1, y2); ++y) {
            pc.canvas.put(x1, y, U'│', style);
        }
    }
}

} // namespace tui
