#include "hosts/tui/ListViewPainter.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/ControlPainter.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/ScreenLayout.h"
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

/// The first column to show (a display position from 1): the one shown last
/// time, moved as little as needed to bring the current column fully into view.
int firstColumn(const PaintContext &pc, const std::vector<forms::ColumnHeader *> &headers,
                ListScroll &scroll, int room) {
    int count = static_cast<int>(headers.size());
    scroll.current = std::clamp(scroll.current, 1, std::max(1, count));
    int first = std::clamp(scroll.first, 1, scroll.current);
    auto widthFrom = [&](int from) {
        int w = 0;
        for (int p = from; p <= scroll.current; ++p) {
            w += pc.scale.columns(headers[static_cast<std::size_t>(p - 1)]->Width());
        }
        return w;
    };
    while (first < scroll.current && widthFrom(first) > room) {
        ++first;
    }
    scroll.first = first;
    return first;
}

std::vector<Column> visibleColumns(const PaintContext &pc, const forms::ListView &list, int width) {
    std::vector<Column> cols;
    auto headers = list.ColumnHeaders().inDisplayOrder();
    int first =
        pc.listScroll && !headers.empty() ? firstColumn(pc, headers, *pc.listScroll, width) : 1;
    int x = pc.rect.x;
    for (std::size_t i = static_cast<std::size_t>(first - 1); i < headers.size(); ++i) {
        const forms::ColumnHeader *h = headers[i];
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

void drawColumnCell(const PaintContext &pc, const Column &col, int y, const std::string &text,
                    Style s, Align align) {
    pc.canvas.fill({col.x, y, col.width, 1}, U' ', s);
    drawCell(pc.canvas, col.x, y, col.width, text, align, s);
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
        drawColumnCell(pc, col, y, text, pc.enabled ? s : dimmed(s), columnAlign(*col.header));
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
    // The focused list marks the column the arrows have moved to.
    int current = pc.listScroll ? pc.listScroll->current : 0;
    for (const Column &col : cols) {
        bool mark = pc.focused && col.header->Position() == current && cols.size() > 1;
        drawColumnCell(pc, col, r.y, col.header->Text(), mark ? header.with(attrUnderline) : header,
                       columnAlign(*col.header));
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
