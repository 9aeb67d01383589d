#include "forms/Line.h"

namespace forms {

Line::Line(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::Line, name, index) {
    setTabStop(false);
}

Line::Line(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::Line, name, index) {
    setTabStop(false);
}

} // namespace forms
