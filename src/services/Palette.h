// services::Palette: the colours of a screen palette, and how they colour a form.
#pragma once

#include "forms/Colors.h"

namespace forms {
class Form;
}

namespace services {

/// The colours a palette gives a form: the form itself and what stands on it
/// as on a sheet (labels, check and option boxes, frames, pictures), the
/// fields a user types or picks in (text boxes, combos, lists, date pickers),
/// the buttons and the grids.
struct Palette {
    forms::Color formBack = forms::vbButtonFace;
    forms::Color formFore = forms::vbButtonText;
    forms::Color controlBack = forms::vbWindowBackground;
    forms::Color controlFore = forms::vbWindowText;
    forms::Color buttonBack = forms::vbButtonFace;
    forms::Color gridBack = forms::vbWindowBackground;
    forms::Color gridFore = forms::vbWindowText;

    friend bool operator==(const Palette &, const Palette &) = default;
};

/// The palette of a company that has none of its own: the system colours,
/// which each host maps to its own look.
inline constexpr Palette defaultPalette{};

/// Sets BackColor and ForeColor of the form and of each control by its kind.
/// Buttons take the form's text colour; lines, images and menus keep theirs.
void applyPalette(forms::Form &form, const Palette &palette);

} // namespace services
