// tui::ComboDropDown: the open list of a combo box, chosen from by keys.
#pragma once

#include "hosts/tui/Overlay.h"
#include "hosts/tui/Rect.h"

#include <optional>
#include <string>
#include <vector>

namespace forms {
class ComboBox;
}

namespace tui {

/// A combo's items in a box under its field (above it when there is no room
/// below), the chosen item highlighted. Up, Down, Page Up, Page Down, Home
/// and End move; a letter moves to the next item that starts with it; Enter
/// takes the highlighted item; Escape, F4 and Alt+Up close without a choice.
/// The host then hands the choice to the combo (Input::chooseItem), which
/// raises Click as a choice with the mouse does.
class ComboDropDown : public Overlay {
public:
    ComboDropDown(const forms::ComboBox &combo, const Rect &field);

    /// The index chosen; none while open or after closing without a choice.
    std::optional<int> chosen() const { return chosen_; }
    int highlighted() const { return focus_; }

    void paint(Canvas &canvas, const Rect &area) const override;
    bool handleKey(const forms::KeyStroke &key) override;
    std::string statusText() const override;

    /// Rows of the list shown at once.
    static constexpr int maxRows = 8;

private:
    std::vector<std::string> items_;
    Rect field_;
    int focus_ = 0;
    mutable int top_ = 0;
    std::optional<int> chosen_;
};

} // namespace tui
