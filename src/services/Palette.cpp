#include "services/Palette.h"

#include "forms/Control.h"
#include "forms/Form.h"

namespace services {

namespace {

void paint(forms::Control &control, forms::Color back, forms::Color fore) {
    control.setBackColor(back);
    control.setForeColor(fore);
}

void applyToControl(forms::Control &control, const Palette &p) {
    using forms::ControlKind;
    switch (control.kind()) {
    case ControlKind::Label:
    case ControlKind::CheckBox:
    case ControlKind::OptionButton:
    case ControlKind::Frame:
    case ControlKind::PictureBox:
        paint(control, p.formBack, p.formFore);
        break;
    case ControlKind::TextBox:
    case ControlKind::ComboBox:
    case ControlKind::ListView:
    case ControlKind::DatePicker:
        paint(control, p.controlBack, p.controlFore);
        break;
    case ControlKind::CommandButton:
        paint(control, p.buttonBack, p.formFore);
        break;
    case ControlKind::FlexGrid:
        paint(control, p.gridBack, p.gridFore);
        break;
    case ControlKind::Image:
    case ControlKind::Line:
    case ControlKind::Menu:
        break;
    }
}

} // namespace

void applyPalette(forms::Form &form, const Palette &palette) {
    form.setBackColor(palette.formBack);
    form.setForeColor(palette.formFore);
    for (forms::Control *control : form.controls()) {
        applyToControl(*control, palette);
    }
}

} // namespace services
