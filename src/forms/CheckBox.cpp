#include "forms/CheckBox.h"

#include "forms/Errors.h"
#include "forms/Form.h"

namespace forms {

CheckBox::CheckBox(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::CheckBox, name, index) {}

CheckBox::CheckBox(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::CheckBox, name, index) {}

void CheckBox::setValue(int value) {
    if (value < vbUnchecked || value > vbGrayed) {
        throw errors::invalidPropertyValue();
    }
    if (value == value_) {
        return;
    }
    value_ = value;
    raise(onClick);
}

void CheckBox::defaultKeyPress(char32_t keyAscii) {
    if (keyAscii == ' ') {
        userClick();
    }
}

void CheckBox::userClick() {
    setValue(value_ == vbChecked ? vbUnchecked : vbChecked);
}

void CheckBox::accessKeyPressed() {
    if (!focusHere()) {
        return;
    }
    userClick();
}

} // namespace forms
