#include "forms/Image.h"

namespace forms {

Image::Image(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::Image, name, index) {
    setTabStop(false);
}

Image::Image(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::Image, name, index) {
    setTabStop(false);
}

} // namespace forms
