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

/// The cells each form window and each drawn control took in the last frame,
/// so that a popup menu or a drop-down list opens beside its control.
class ScreenLayout {
public:
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

private:
    std::unordered_map<const forms::Control *, Rect> controls_;
    std::unordered_map<const forms::Form *, Rect> forms_;
};

} // namespace tui
