// The key strip: the keys the active form takes, read from its controls, for the bottom line.
#pragma once

#include "hosts/tui/Cell.h"

#include <string>
#include <vector>

namespace forms {
class Form;
}

namespace tui {

class Canvas;

/// One key of the strip: what to press ("Alt+N") and what it does ("New").
struct KeyHint {
    std::string key;
    std::string action;
    friend bool operator==(const KeyHint &, const KeyHint &) = default;
};

/// What the strip calls the keys that not every terminal can send.
struct KeyNames {
    /// Ctrl+Enter gives the same character 10 as Ctrl+J. Terminals that
    /// cannot report Ctrl+Enter (the Linux console, VT220s, screen) send
    /// plain Enter for it, so there the strip offers "Ctrl+J".
    std::string ctrlEnter = "Ctrl+Enter";
};

/// The keys `form` takes now, most useful first, each key once. Nothing here
/// knows a form by name: every hint comes from a control that is visible and
/// enabled.
///
/// 1. The focused list or grid: Ctrl+Enter "Add" and Del "Delete" where it
///    (or the form, previewing keys) has key handlers; Shift+F10 "Menu"
///    where the form has a popup menu and the list answers a right click; "←→ Columns" where
///    a list's columns are wider than the list. A focused drop-down combo: F4.
/// 2. The Alt letters of the buttons, in the order they stand (top to bottom,
///    left to right).
/// 3. Escape and the caption of the Cancel button, where there is one.
/// 4. Ctrl+D "List", where the form previews keys and has a list or grid that
///    does not have the focus.
/// 5. The function keys that tool tips name ("... Shortcut: F3") on buttons
///    that answer a click.
/// 6. The Alt letters of labels, option buttons and check boxes.
std::vector<KeyHint> keyHints(const forms::Form &form, const KeyNames &names = {});

/// Draws as many whole hints as fit in `width` cells from (x, y), the key in
/// bold, two blanks between hints; returns the cells used.
int paintKeyStrip(Canvas &canvas, int x, int y, int width, const std::vector<KeyHint> &hints,
                  Style style);

} // namespace tui
