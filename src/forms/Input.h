// forms::Input: the one way a host delivers the user's keys and clicks to the forms.
#pragma once

#include "forms/Keys.h"

#include "vb/Date.h"

#include <string_view>

namespace forms {

class ComboBox;
class Control;
class DatePicker;
class FlexGrid;
class Form;
class ListView;
class Screen;

/// Routes user input to the active form (the top of the screen's stack) and
/// its focused control, as the old platform did. Every entry point returns
/// false when the input reached nothing: no form is shown, the form or the
/// control is disabled or invisible (itself or a container), or the control
/// is not on the active form (a modal form blocks the ones below). A refused
/// input runs no event at all.
///
/// After each input the keystrokes that its handlers queued with SendKeys
/// run, one after another, as the event loop would take them next.
///
/// Order of a keystroke on a control:
/// 1. Tab and Shift+Tab move the focus in Tab order; no key events.
/// 2. Enter clicks the focused command button, else the form's Default
///    button; Escape clicks the Cancel button; no key events in these cases.
/// 3. KeyDown: the form's first when KeyPreview is on, then the control's;
///    a handler that sets KeyCode to 0 stops the key there (also from the
///    control's own handling). Alt with a letter then presses the access key.
/// 4. KeyPress, for keys that make a character: the form's first with
///    KeyPreview, then the control's; KeyAscii 0 stops it. What is left goes
///    to the control (a text box types it). KeyCode 0 in KeyDown does not
///    stop KeyPress, as on the old platform.
/// 5. KeyUp: form first with KeyPreview, then the control.
/// With no focused control the keys go to the form's own events.
///
/// A click moves the focus to the control first (Validate, LostFocus,
/// GotFocus); if Validate cancelled, nothing more happens. Then MouseDown,
/// MouseUp, and the control's click action (see Control::userClick).
class Input {
public:
    explicit Input(Screen &screen);

    /// One key, with the character the keyboard gives for it (keyStrokeFor).
    bool keyStroke(int keyCode, int shift = 0);
    bool keyStroke(const KeyStroke &key);
    /// Types text character by character, as keystrokes. Stops and returns
    /// false at the first character that reached nothing.
    bool typeText(std::string_view text);

    bool click(Control &control);
    /// A double click: the click, then DblClick.
    bool dblClick(Control &control);
    /// A right click: focus, MouseDown and MouseUp with button 2.
    bool rightClick(Control &control);
    /// The pointer moves over a control, at (x, y) twips inside it.
    bool mouseMove(Control &control, double x = 0, double y = 0);

    /// A click on a grid cell: focus, MouseDown, the current cell moves there
    /// (LeaveCell, EnterCell, RowColChange, SelChange), MouseUp, Click.
    bool clickCell(FlexGrid &grid, int row, int col);
    bool dblClickCell(FlexGrid &grid, int row, int col);
    /// The pointer moves over a cell: sets MouseRow and MouseCol, raises MouseMove.
    bool mouseMoveCell(FlexGrid &grid, int row, int col);

    /// A click on a list row (from 1): focus, MouseDown, the row is selected
    /// and ItemClick raised, MouseUp, Click.
    bool clickItem(ListView &list, int index);
    bool dblClickItem(ListView &list, int index);
    /// A right click on a row: focus, the row is selected (ItemClick when it
    /// changes), then MouseDown and MouseUp with button 2.
    bool rightClickItem(ListView &list, int index);
    /// A click on a column header (from 1): ColumnClick.
    bool clickColumn(ListView &list, int column);

    /// The user picks an item of a combo's list: focus, ListIndex, Click.
    bool chooseItem(ComboBox &combo, int index);
    /// The user picks a date: focus, Value, Change when it differs.
    bool setDate(DatePicker &picker, vb::Date date);

    /// The close box of a form: Unload with mode vbFormControlMenu.
    bool closeForm(Form &form);

    /// Runs the keystrokes that were queued when this call began (later ones
    /// wait for the next call) and returns how many ran. Hosts call it at the
    /// top of each turn of their loop; DoEvents calls it too.
    int processQueued();

private:
    bool deliverKey(const KeyStroke &key);
    // The steps of a keystroke; the first two return true when they took it.
    bool navigationKey(Form &form, Control *focused, const KeyStroke &key);
    bool keyDown(Form &form, Control *focused, const KeyStroke &key);
    void keyPress(Form &form, Control *focused, const KeyStroke &key);
    void keyUp(Form &form, Control *focused, const KeyStroke &key);
    bool reachable(Control &control) const;
    bool focusForClick(Control &control);
    void afterInput();

    Screen &screen_;
};

} // namespace forms
