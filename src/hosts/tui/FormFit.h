// Fitting a form into the cells a terminal has: rows taken out where the form can spare them.
#pragma once

#include "hosts/tui/CellScale.h"

#include <optional>

namespace forms {
class Form;
}

namespace tui {

/// Columns and rows of character cells.
struct CellSize {
    int cols = 0;
    int rows = 0;
    friend bool operator==(const CellSize &, const CellSize &) = default;
};

/// How many rows a list or grid keeps under its header when a form is packed.
inline constexpr int packedListRows = 3;

/// The scale at which `form` is drawn in a client area of `cols` x `rows`
/// cells. Across, a wide form is squeezed (CellScale::fitting) down to nine
/// tenths of its width. Down, a form taller than the area is packed rather
/// than squeezed, so that no row of a control is drawn over another: rows
/// are taken out first where they are empty at the form's bottom, then from
/// runs of empty rows (the longest first, keeping one between groups), then
/// from the bottom of its lists and grids (each keeps its header and
/// packedListRows rows, and scrolls), then the empty rows left. None when the form
/// cannot fit even so. Only visible controls count.
std::optional<CellScale> fitForm(const forms::Form &form, int cols, int rows);

/// The smallest client area in which fitForm finds a scale for `form`.
CellSize smallestFit(const forms::Form &form);

} // namespace tui
