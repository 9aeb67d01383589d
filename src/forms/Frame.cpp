#include "forms/Frame.h"

namespace forms {

Frame::Frame(Form &form, std::string_view name, int index)
    : Container(form, ControlKind::Frame, name, index) {
    setTabStop(false);
}

Frame::Frame(Container &container, std::string_view name, int index)
    : Container(container, ControlKind::Frame, name, index) {
    setTabStop(false);
}

} // namespace forms
