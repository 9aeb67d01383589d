#include "forms/DatePicker.h"

#include "forms/Keys.h"

namespace forms {

DatePicker::DatePicker(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::DatePicker, name, index) {}

DatePicker::DatePicker(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::DatePicker, name, index) {}

void DatePicker::setValue(vb::Date value) {
    value = value.datePart();
    if (value == value_) {
        return;
    }
    value_ = value;
    raise(onChange);
}

void DatePicker::defaultKeyDown(int keyCode, int) {
    if (keyCode == vbKeyUp) {
        setValue(value_ + 1.0);
    } else if (keyCode == vbKeyDown) {
        setValue(value_ - 1.0);
    }
}

} // namespace forms
