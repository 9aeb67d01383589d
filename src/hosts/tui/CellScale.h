// tui::CellScale: design geometry in twips turned into character cells.
#pragma once

#include "hosts/tui/Rect.h"

#include <vector>

namespace forms {
class Control;
}

namespace tui {

/// How many twips make one column and one row. A terminal cell is about 8
/// by 16 pixels, so at the usual 15 twips a pixel a column is 120 twips and
/// a row 240 (the height of a grid or list row). A form larger than the
/// terminal is squeezed to fit; a small one is never stretched.
struct CellScale {
    double colTwips = 120;
    double rowTwips = 240;
    /// When a form is packed to fit (FormFit), the row each row edge of the
    /// unpacked form moves to, by edge from 0; empty when no row was taken out.
    std::vector<int> rowEdges;

    /// The scale at which a `width` x `height` twips area fits in `cols` x `rows` cells.
    static CellScale fitting(int width, int height, int cols, int rows);

    int col(double twips) const;
    int row(double twips) const;
    /// The cells of a twips rectangle, from its rounded edges, at least one
    /// cell each way unless the rectangle has no size at all.
    Rect rect(double left, double top, double width, double height) const;
    /// Width in whole columns of a span of twips (a grid or list column).
    int columns(double twips) const;
};

/// A control's rectangle in twips from its form's top left, through its
/// containers (a control's Left and Top are relative to its container).
struct TwipsRect {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};
TwipsRect formTwips(const forms::Control &control);

} // namespace tui
