// Drawing one form as a window: its border and caption, then its controls from their design
// geometry.
#pragma once

#include "hosts/tui/Rect.h"

namespace forms {
class Form;
}

namespace tui {

class Canvas;
class ScreenLayout;

/// Draws `form` as a window centred in `area`: a border with the caption in
/// it, and inside, each visible control at its design position and size
/// scaled to cells (CellScale: 120 x 240 twips a cell, squeezed when the form
/// is larger than the area). A control inside a frame or picture box is
/// clipped to it. Disabled controls (or a disabled form) are dimmed; the
/// focused control of the active form is marked. Records every rectangle in
/// `layout`.
void paintForm(Canvas &canvas, const forms::Form &form, const Rect &area, bool active,
               ScreenLayout &layout);

/// The window rectangle `paintForm` gives a form in `area`.
Rect formWindow(const forms::Form &form, const Rect &area);

} // namespace tui
