// tui::Overlay: a box the host draws over the forms and gives the keys to (message box, menu, list,
// viewer).
#pragma once

#include "forms/Keys.h"

#include <string>

namespace tui {

class Canvas;
struct Rect;

/// Something the host shows above the forms that takes the keys while it is
/// there: a message box, a popup menu, a combo's drop-down list, a text file.
/// The top overlay gets every key until it says it is done.
class Overlay {
public:
    virtual ~Overlay() = default;

    /// Draws the overlay within `area` (the screen above the status line).
    virtual void paint(Canvas &canvas, const Rect &area) const = 0;
    /// Takes one key; returns true when the overlay has finished (answered,
    /// chosen, dismissed or closed).
    virtual bool handleKey(const forms::KeyStroke &key) = 0;
    /// What the status line says while the overlay is on top.
    virtual std::string statusText() const { return {}; }
};

} // namespace tui
