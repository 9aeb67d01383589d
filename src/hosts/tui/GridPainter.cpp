#include "hosts/tui/GridPainter.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/ControlPainter.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/Scrollbar.h"
#include "hosts/tui/TextFit.h"

#include "forms/FlexGrid.h"

#include "vb/Conversion.h"
#include "vb/Variant.h"

#include <algorithm>
#include <vector>

namespace tui {

namespace {

struct Column {
    int index;
    int x;
    int width;
};

Align cellAlign(int alignment, const std::string &text) {
    if (alignment == forms::flexAlignGeneral) {
        return !text.empty() && vb::IsNumeric(vb::Variant(text)) ? Align::Right : Align::Left;
    }
    if (alignment >= forms::flexAlignCenterTop && alignment <= forms::flexAlignCenterBottom) {
        return Align::Center;
    }
    if (alignment >= forms::flexAlignRightTop && alignment <= forms::flexAlignRightBottom) {
        return Align::Right;
    }
    return Align::Left;
}

/// The first scrolling column to show: LeftCol, moved as little as needed to
/// bring the current column fully into view (the user moves it with the arrows).
int firstColumn(const PaintContext &pc, const forms::FlexGrid &grid, int room) {
    int first = std::max(grid.LeftCol(), grid.FixedCols());
    int current = grid.Col();
    if (current < grid.FixedCols()) {
        return first;
    }
    if (current < first) {
        return current;
    }
    auto widthFrom = [&](int from) {
        int w = 0;
        for (int c = from; c <= current; ++c) {
            w += pc.scale.columns(grid.ColWidth(c));
        }
        return w;
    };
    while (first < current && widthFrom(first) > room) {
        ++first;
    }
    return first;
}

/// The columns that fit: the fixed ones, then the scrolling ones from firstColumn.
std::vector<Column> visibleColumns(const PaintContext &pc, const forms::FlexGrid &grid, int width) {
    std::vector<Column> cols;
    int x = pc.rect.x;
    auto add = [&](int c) {
        int w = pc.scale.columns(grid.ColWidth(c));
        if (w > 0 && x < pc.rect.x + width) {
            cols.push_back({c, x, std::min(w, pc.rect.x + width - x)});
            x += w;
        }
    };
    for (int c = 0; c < std::min(grid.FixedCols(), grid.Cols()); ++c) {
        add(c);
    }
    int room = pc.rect.x + width - x;
    for (int c = firstColumn(pc, grid, room); c < grid.Cols(); ++c) {
        add(c);
    }
    return cols;
}

Style cellStyle(const PaintContext &pc, const forms::FlexGrid &grid, int row, int col) {
    Style s;
    bool fixed = row < grid.FixedRows() || col < grid.FixedCols();
    if (fixed) {
        s = styles::header;
    } else if (grid.isSelected(row, col)) {
        s = selectionStyle(grid.ForeColorSel(), grid.BackColorSel());
    } else {
        s = Style{terminalColor(grid.foreColorAt(row, col)),
                  terminalColor(grid.backColorAt(row, col)), 0};
    }
    return pc.enabled ? s : dimmed(s);
}

void paintRow(const PaintContext &pc, const forms::FlexGrid &grid, int row, int y,
              const std::vector<Column> &cols) {
    for (const Column &col : cols) {
        Style s = cellStyle(pc, grid, row, col.index);
        pc.canvas.fill({col.x, y, col.width, 1}, U' ', s);
        std::string text = grid.TextMatrix(row, col.index);
        drawCell(pc.canvas, col.x, y, col.width, text,
                 cellAlign(grid.ColAlignment(col.index), text), s);
    }
}

} // namespace

void paintFlexGrid(const PaintContext &pc, const forms::FlexGrid &grid) {
    const Rect &r = pc.rect;
    if (r.empty()) {
        return;
    }
    int fixedShown = std::min(grid.FixedRows(), r.h);
    int shown = r.h - fixedShown;
    int dataRows = grid.Rows() - grid.FixedRows();
    bool scrolls = shown > 0 && dataRows > shown;
    int width = scrolls ? r.w - 1 : r.w;
    auto cols = visibleColumns(pc, grid, width);

    for (int i = 0; i < fixedShown; ++i) {
        paintRow(pc, grid, i, r.y + i, cols);
    }
    int top = scrollWindow(grid.TopRow(), grid.Row(), shown, grid.FixedRows(), dataRows);
    for (int i = 0; i < shown && top + i < grid.Rows(); ++i) {
        paintRow(pc, grid, top + i, r.y + fixedShown + i, cols);
    }
    if (scrolls) {
        Style bar = pc.enabled ? styles::plain : dimmed(styles::plain);
        paintScrollbar(pc.canvas, r.right() - 1, r.y + fixedShown, shown, top - grid.FixedRows(),
                       shown, dataRows, bar);
    }
}

} // namespace tui
