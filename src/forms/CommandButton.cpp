#include "forms/CommandButton.h"

#include "forms/Form.h"

namespace forms {

CommandButton::CommandButton(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::CommandButton, name, index) {}

CommandButton::CommandButton(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::CommandButton, name, index) {}

void CommandButton::setDefault(bool on) {
    if (on) {
        for (Control *c : form().controls()) {
            if (c != this && c->kind() == ControlKind::CommandButton) {
                static_cast<CommandButton *>(c)->default_ = false;
            }
        }
    }
    default_ = on;
}

void CommandButton::setCancel(bool on) {
    if (on) {
        for (Control *c : form().controls()) {
            if (c != this && c->kind() == ControlKind::CommandButton) {
                static_cast<CommandButton *>(c)->cancel_ = false;
            }
        }
    }
    cancel_ = on;
}

void CommandButton::setValue(bool press) {
    if (press) {
        raise(onClick);
    }
}

void CommandButton::defaultKeyPress(char32_t keyAscii) {
    if (keyAscii == ' ') {
        raise(onClick);
    }
}

void CommandButton::userClick() {
    raise(onClick);
}

void CommandButton::accessKeyPressed() {
    if (!focusHere()) {
        return; // the control that had the focus refused to let it go
    }
    raise(onClick);
}

} // namespace forms
