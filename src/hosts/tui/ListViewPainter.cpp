#include "hosts/tui/ListViewPainter.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/ControlPainter.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/Scrollbar.h"
#include "hosts/tui/TextFit.h"

#include "forms/ListView.h"

#include <algorithm>
#include <vector>

namespace tui {

namespace {

struct Column {
    const forms::ColumnHeader *header;
    int x;
    int width;
};

std::vector<Column> visibleColumns(const PaintContext &pc, const forms::ListView &list, int width) {
    std::vector<Column> cols;
    int x = pc.rect.x;
    for (const forms::ColumnHeader *h : list.ColumnHeaders().inDisplayOrder()) {
        int w = pc.scale.columns(h->Width());
        if (w > 0 && x < pc.rect.x + width) {
            cols.push_back({h, x, std::min(w, pc.rect.x + width - x)});
            x += w;
        }
    }
    return cols;
}

Align columnAlign(const forms::ColumnHeader &h) {
    switch (h.Alignment()) {
    case forms::lvwColumnRight:
        return Align::Right;
    case forms::lvwColumnCenter:
        return Align::Center;
    default:
        return Align::Left;
    }
}

/// The text and own style of one column of a row (column 1 is the row's text).
std::pair<std::string, Style> cellOf(const forms::ListItem &item, int column) {
    if (column == 1) {
        Style s{terminalColor(item.ForeColor()), Color::Default,
                item.Bold() ? attrBold : std::uint8_t{0}};
        return {item.Text(), s};
    }
    int n = column - 1;
    if (n > item.ListSubItemsCount()) {
        return {std::string(), Style{}};
    }
    const forms::ListSubItem &sub = item.ListSubItems(n);
    Style s{terminalColor(sub.ForeColor()), Color::Default,
            sub.Bold() ? attrBold : std::uint8_t{0}};
    return {sub.Text(), s};
}

void drawCell(const PaintContext &pc, const Column &col, int y, const std::string &text, Style s,
              Align align) {
    pc.canvas.fill({col.x, y, col.width, 1}, U' ', s);
    int textWidth = col.width > 1 ? col.width - 1 : col.width;
    drawAligned(pc.canvas, col.x, y, textWidth, text, align, s);
    if (col.width > 1) {
        pc.canvas.put(col.x + col.width - 1, y, U'│', s);
    }
}

void paintItem(const PaintContext &pc, const forms::ListView &list, const forms::ListItem &item,
               int y, const std::vector<Column> &cols) {
    bool showSelected = item.Selected() && (pc.focused || !list.HideSelection());
    Style selected = selectionStyle(forms::vbHighlightText, forms::vbHighlight);
    for (const Column &col : cols) {
        auto [text, s] = cellOf(item, col.header->Index());
        if (showSelected && (list.FullRowSelect() || col.header->Index() == 1)) {
            s = selected;
        }
        drawCell(pc, col, y, text, pc.enabled ? s : dimmed(s), columnAlign(*col.header));
    }
}

} // namespace

void paintListView(const PaintContext &pc, const forms::ListView &list) {
    const Rect &r = pc.rect;
    if (r.empty()) {
        return;
    }
    const auto &items = list.ListItems();
    int shown = r.h - 1;
    bool scrolls = shown > 0 && items.Count() > shown;
    auto cols = visibleColumns(pc, list, scrolls ? r.w - 1 : r.w);

    Style header = pc.enabled ? styles::header : dimmed(styles::header);
    pc.canvas.fill({r.x, r.y, r.w, 1}, U' ', header);
    for (const Column &col : cols) {
        drawCell(pc, col, r.y, col.header->Text(), header, columnAlign(*col.header));
    }
    const forms::ListItem *selected = list.selectedItemOrNull();
    int top =
        scrollWindow(list.topIndex(), selected ? selected->Index() : 0, shown, 1, items.Count());
    for (int i = 0; i < shown && top + i <= items.Count(); ++i) {
        paintItem(pc, list, items.Item(top + i), r.y + 1 + i, cols);
    }
    if (scrolls) {
        Style bar = pc.enabled ? styles::plain : dimmed(styles::plain);
        paintScrollbar(pc.canvas, r.right() - 1, r.y + 1, shown, top - 1, shown, items.Count(),
                       bar);
    }
}

} // namespace tui
