// Drawing the simple controls (labels, fields, buttons, boxes, frames, lines) onto the canvas.
#pragma once

#include "hosts/tui/CellScale.h"
#include "hosts/tui/Rect.h"

namespace forms {
class CheckBox;
class ComboBox;
class CommandButton;
class DatePicker;
class Frame;
class Label;
class Line;
class OptionButton;
class TextBox;
} // namespace forms

namespace tui {

class Canvas;
struct ListScroll;

/// What every control painter gets: where to draw, at what scale, and the
/// control's state as it shows (dimmed when disabled, marked when focused).
struct PaintContext {
    Canvas &canvas;
    const CellScale &scale;
    Rect rect;
    bool enabled = true;
    bool focused = false;
    /// A list's sideways scroll, which its painter keeps up to date.
    ListScroll *listScroll = nullptr;
};

/// A label's caption, wrapped over its rows and aligned; the access key underlined.
void paintLabel(const PaintContext &pc, const forms::Label &label);
/// An underlined field with the text; the focused box shows its selection in
/// reverse and puts the terminal cursor at its caret, scrolling to keep it in view.
void paintTextBox(const PaintContext &pc, const forms::TextBox &box);
/// "[ Caption ]" centred; the focused button in reverse, the default one bold.
void paintCommandButton(const PaintContext &pc, const forms::CommandButton &button);
/// "[x] Caption", "[ ]" unchecked, "[-]" grayed.
void paintCheckBox(const PaintContext &pc, const forms::CheckBox &box);
/// "(*) Caption" when on, "( )" when off.
void paintOptionButton(const PaintContext &pc, const forms::OptionButton &option);
/// The combo's text in a field with a drop-down mark "▼" at its right end.
void paintComboBox(const PaintContext &pc, const forms::ComboBox &combo);
/// The date in its pattern, with the drop-down mark.
void paintDatePicker(const PaintContext &pc, const forms::DatePicker &picker);
/// A box with the caption in its top edge.
void paintFrame(const PaintContext &pc, const forms::Frame &frame);
/// A horizontal or vertical line; `origin` is the form's client area's top left.
void paintLine(const PaintContext &pc, const forms::Line &line, int originX, int originY);

} // namespace tui
