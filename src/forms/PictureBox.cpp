#include "forms/PictureBox.h"

namespace forms {

PictureBox::PictureBox(Form &form, std::string_view name, int index)
    : Container(form, ControlKind::PictureBox, name, index) {
    setTabStop(false);
}

PictureBox::PictureBox(Container &container, std::string_view name, int index)
    : Container(container, ControlKind::PictureBox, name, index) {
    setTabStop(false);
}

} // namespace forms
