// tui::paintScrollbar and tui::scrollWindow: the vertical scroll bar of grids, lists and viewers.
#pragma once

#include "hosts/tui/Cell.h"

namespace tui {

class Canvas;

/// A bar of `height` cells at column x from row y: a track "░" with a thumb
/// "█" whose place shows where rows `first` (from 0) onward stand among `total`,
/// `shown` at a time.
void paintScrollbar(Canvas &canvas, int x, int y, int height, int first, int shown, int total,
                    Style style);

/// The first row to show of a list of `total` rows (counted from `base`)
/// with room for `shown`: the control's own `top`, moved as little as needed
/// to bring `current` into view (no move when current is below base), and kept
/// within the list.
int scrollWindow(int top, int current, int shown, int base, int total);

} // namespace tui
