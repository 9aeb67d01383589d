// Drawing a ListView in report layout: column headers, the rows in view and the selection.
#pragma once

namespace forms {
class ListView;
}

namespace tui {

struct PaintContext;

/// Draws the list in its rectangle: a header row of the columns in display
/// order (hidden columns, width 0, take no room), then the rows from the
/// list's top row, moved only as far as needed to keep the selected row in
/// view. The selected row shows in the selection colours (the whole row with
/// FullRowSelect, else its first column) while the list has the focus, and
/// also without it when HideSelection is off. A scroll bar stands at the
/// right when rows are hidden.
void paintListView(const PaintContext &pc, const forms::ListView &list);

} // namespace tui
