// tui::ScreenLayout: where each shown form and control stood in the last frame drawn.
#pragma once

#include "hosts/tui/Rect.h"

#include <optional>
#include <unordered_map>

namespace forms {
class Control;
class Form;
} // namespace forms

namespace tui {

/// How a list stands sideways: the column the user has moved to with the
/// arrows and the first scrolling column shown (both display positions from
/// 1). The painter moves `first` as little as needed to show `current`.
struct ListScroll {
    int current = 1;
    int first = 1;
};

/// The cells each form window and each drawn control took in the last frame,
/// so that a popup menu or a drop-down list opens beside its control; and how
/// far each list is scrolled sideways, which lasts from frame to frame.
class ScreenLayout {
public:
    /// Forgets the rectangles (not the lists' sideways scroll).
    void clear() {
        controls_.clear();
        forms_.clear();
    }
    void setControl(const forms::Control &control, const Rect &r) { controls_[&control] = r; }
    void setForm(const forms::Form &form, const Rect &window) { forms_[&form] = window; }

    std::optional<Rect> controlRect(const forms::Control &control) const {
        auto it = controls_.find(&control);
        return it == controls_.end() ? std::nullopt : std::optional<Rect>(it->second);
    }
    std::optional<Rect> formRect(const forms::Form &form) const {
        auto it = forms_.find(&form);
        return it == forms_.end() ? std::nullopt : std::optional<Rect>(it->second);
    }

    /// The sideways scroll of a list (the list's first column until moved).
    ListScroll &listScroll(const forms::Control &list) { return lists_[&list]; }

private:
    std::unordered_map<const forms::Control *, Rect> controls_;
    std::unordered_map<const forms::Control *, ListScroll> lists_;
    std::unordered_map<const forms::Form *, Rect> forms_;
};

} // namespace tui
