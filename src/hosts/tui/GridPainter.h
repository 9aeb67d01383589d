// Drawing a FlexGrid: fixed header rows, the rows in view, cell colours and the selection.
#pragma once

namespace forms {
class FlexGrid;
}

namespace tui {

struct PaintContext;

/// Draws the grid in its rectangle: the fixed rows on top in header style,
/// then the rows from TopRow (moved only as far as needed to keep the current
/// row in view), each column as wide as its ColWidth at the scale and closed
/// by "│", from LeftCol (moved as far as needed to show the current column);
/// hidden columns (width 0) take no room. Cells show their own text
/// colour (cancelled entries in red); the selected range shows in the
/// selection colours. A scroll bar stands at the right when rows are hidden.
void paintFlexGrid(const PaintContext &pc, const forms::FlexGrid &grid);

} // namespace tui
