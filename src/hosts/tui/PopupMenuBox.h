// tui::PopupMenuBox: a form's popup menu drawn beside the focused control and chosen by keys.
#pragma once

#include "hosts/tui/Canvas.h"
#include "hosts/tui/Overlay.h"

#include <vector>

namespace forms {
class Menu;
}

namespace tui {

/// The visible items of a popup menu in a box whose top left is at `anchor`
/// (moved in to stay on the screen). Up and Down move between the enabled
/// items, Enter or Space chooses, an item's access letter (with or without
/// Alt) chooses it at once; Escape, Shift+F10 and the Menu key dismiss it.
/// Disabled items show dimmed and cannot be chosen.
class PopupMenuBox : public Overlay {
public:
    PopupMenuBox(forms::Menu &menu, Point anchor);

    /// The item chosen; nullptr while open and after the menu was dismissed.
    forms::Menu *chosen() const { return chosen_; }
    /// The item under the highlight, or nullptr when none can be chosen.
    forms::Menu *highlighted() const;

    void paint(Canvas &canvas, const Rect &area) const override;
    bool handleKey(const forms::KeyStroke &key) override;
    std::string statusText() const override;

private:
    void move(int step);

    std::vector<forms::Menu *> items_;
    Point anchor_;
    int focus_ = -1;
    forms::Menu *chosen_ = nullptr;
};

} // namespace tui
