// Drawing the whole screen: the shown forms, the boxes over them and the status line.
#pragma once

#include "hosts/tui/FormFit.h"
#include "hosts/tui/KeyStrip.h"

#include <vector>

namespace forms {
class Screen;
}

namespace tui {

class Canvas;
class Overlay;
class ScreenLayout;

/// Draws one frame. When the canvas is smaller than screenNeeds, only the
/// notice "terminal too small: need W x H", centred (wrapped on a narrow
/// screen); the boxes over the forms still take the keys unseen. Otherwise
/// every shown form, first shown first, each as a window
/// centred on the screen (so a dialog stands over its owner, which shows
/// around it); then the overlays in order; then the status line on the last
/// row, with the tool tip of the focused control (or the top overlay's hint)
/// on the left, or when there is neither and `keyStrip` is on, the keys the
/// active form takes (keyHints); and the busy mark "⧗ Busy" on the right while the mouse
/// pointer is the hourglass. The terminal cursor stands at the focused text
/// box's caret, and is hidden while an overlay is open. `keyNames` names the
/// keys of the strip that depend on the terminal.
void paintScreen(Canvas &canvas, const forms::Screen &screen,
                 const std::vector<const Overlay *> &overlays, ScreenLayout &layout,
                 bool keyStrip = true, const KeyNames &keyNames = {});

/// The smallest canvas on which every shown form fits whole (FormFit),
/// with its window's border and the status line.
CellSize screenNeeds(const forms::Screen &screen);

/// The busy mark on the status line.
inline constexpr const char *busyMark = "⧗ Busy";

} // namespace tui
