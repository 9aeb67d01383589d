#include "forms/Label.h"

#include "forms/Errors.h"

namespace forms {

Label::Label(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::Label, name, index) {
    setTabStop(false);
}

Label::Label(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::Label, name, index) {
    setTabStop(false);
}

void Label::setAlignment(int alignment) {
    if (alignment < 0 || alignment > 2) {
        throw errors::invalidPropertyValue();
    }
    alignment_ = alignment;
}

} // namespace forms
