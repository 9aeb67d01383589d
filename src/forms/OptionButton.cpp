#include "forms/OptionButton.h"

#include "forms/Form.h"

#include <algorithm>
#include <vector>

namespace forms {

OptionButton::OptionButton(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::OptionButton, name, index) {}

OptionButton::OptionButton(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::OptionButton, name, index) {}

void OptionButton::setValue(bool on) {
    if (on == value_) {
        return;
    }
    value_ = on;
    if (on) {
        turnOthersOff();
        raise(onClick);
    }
}

void OptionButton::turnOthersOff() {
    for (Control *c : form().controls()) {
        if (c != this && c->kind() == ControlKind::OptionButton && c->container() == container()) {
            static_cast<OptionButton *>(c)->value_ = false;
        }
    }
}

void OptionButton::defaultKeyDown(int keyCode, int) {
    bool forward = keyCode == vbKeyDown || keyCode == vbKeyRight;
    bool back = keyCode == vbKeyUp || keyCode == vbKeyLeft;
    if (!forward && !back) {
        return;
    }
    std::vector<Control *> group;
    for (Control *c : form().controlsInTabOrder()) {
        if (c->kind() == ControlKind::OptionButton && c->container() == container() &&
            (c == this || c->canTakeFocus())) {
            group.push_back(c);
        }
    }
    auto at = std::find(group.begin(), group.end(), this) - group.begin();
    auto n = static_cast<long>(group.size());
    auto *next = static_cast<OptionButton *>(group[(at + (forward ? 1 : n - 1)) % n]);
    if (next != this && next->focusHere()) {
        next->userClick();
    }
}

void OptionButton::defaultKeyPress(char32_t keyAscii) {
    if (keyAscii == ' ') {
        userClick();
    }
}

void OptionButton::userClick() {
    if (value_) {
        raise(onClick);
    } else {
        setValue(true);
    }
}

void OptionButton::accessKeyPressed() {
    if (!focusHere()) {
        return;
    }
    userClick();
}

} // namespace forms
