// tui::Rect: a rectangle of character cells on the canvas.
#pragma once

#include <algorithm>

namespace tui {

/// A rectangle of cells: column x, row y, w columns wide and h rows high.
struct Rect {
    int x = 0;
    int y = 0;
    int w = 0;
    int h = 0;

    int right() const { return x + w; }  // one past the last column
    int bottom() const { return y + h; } // one past the last row
    bool empty() const { return w <= 0 || h <= 0; }
    bool contains(int cx, int cy) const {
        return cx >= x && cx < right() && cy >= y && cy < bottom();
    }

    /// The cells that lie in both rectangles (empty when they do not meet).
    Rect intersect(const Rect &o) const {
        int l = std::max(x, o.x);
        int t = std::max(y, o.y);
        int r = std::min(right(), o.right());
        int b = std::min(bottom(), o.bottom());
        return {l, t, std::max(0, r - l), std::max(0, b - t)};
    }
    /// The rectangle shrunk by `n` cells on every side (a box's inside).
    Rect inset(int n) const {
        return {x + n, y + n, std::max(0, w - 2 * n), std::max(0, h - 2 * n)};
    }

    friend bool operator==(const Rect &, const Rect &) = default;
};

} // namespace tui
