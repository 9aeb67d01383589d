#include "hosts/tui/CellScale.h"

#include "forms/Container.h"
#include "forms/Control.h"

#include <algorithm>
#include <cmath>

namespace tui {

namespace {

constexpr double defaultColTwips = 120;
constexpr double defaultRowTwips = 240;

int roundCells(double v) {
    return static_cast<int>(std::floor(v + 0.5));
}

} // namespace

CellScale CellScale::fitting(int width, int height, int cols, int rows) {
    CellScale s;
    if (cols > 0 && width > cols * defaultColTwips) {
        s.colTwips = static_cast<double>(width) / cols;
    }
    if (rows > 0 && height > rows * defaultRowTwips) {
        s.rowTwips = static_cast<double>(height) / rows;
    }
    return s;
}

int CellScale::col(double twips) const {
    return roundCells(twips / colTwips);
}

int CellScale::row(double twips) const {
    int edge = roundCells(twips / rowTwips);
    if (rowEdges.empty()) {
        return edge;
    }
    int last = static_cast<int>(rowEdges.size()) - 1;
    // Beyond the form's last edge rows keep their distance to it.
    if (edge > last) {
        return rowEdges.back() + edge - last;
    }
    return rowEdges[static_cast<std::size_t>(std::max(edge, 0))];
}

Rect CellScale::rect(double left, double top, double width, double height) const {
    int x = col(left);
    int y = row(top);
    int w = col(left + width) - x;
    int h = row(top + height) - y;
    if (width > 0) {
        w = std::max(w, 1);
    }
    if (height > 0) {
        h = std::max(h, 1);
    }
    return {x, y, std::max(w, 0), std::max(h, 0)};
}

int CellScale::columns(double twips) const {
    if (twips <= 0) {
        return 0;
    }
    return std::max(1, roundCells(twips / colTwips));
}

TwipsRect formTwips(const forms::Control &control) {
    TwipsRect r{static_cast<double>(control.Left()), static_cast<double>(control.Top()),
                static_cast<double>(control.Width()), static_cast<double>(control.Height())};
    for (const forms::Container *c = control.container(); c; c = c->container()) {
        r.left += c->Left();
        r.top += c->Top();
    }
    return r;
}

} // namespace tui
