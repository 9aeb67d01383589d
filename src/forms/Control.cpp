#include "forms/Control.h"

#include "forms/Container.h"
#include "forms/Errors.h"
#include "forms/Form.h"
#include "forms/Screen.h"

namespace forms {

namespace {

/// Text-holding controls draw in window colours, the rest in button colours.
bool usesWindowColors(ControlKind kind) {
    switch (kind) {
    case ControlKind::TextBox:
    case ControlKind::ComboBox:
    case ControlKind::DatePicker:
    case ControlKind::FlexGrid:
    case ControlKind::ListView:
        return true;
    default:
        return false;
    }
}

/// Menus, lines and images have no place in the Tab order.
bool hasTabIndex(ControlKind kind) {
    return kind != ControlKind::Menu && kind != ControlKind::Line && kind != ControlKind::Image;
}

} // namespace

Control::Control(Form &form, ControlKind kind, std::string_view name, int index)
    : form_(&form), kind_(kind), name_(name), index_(index) {
    if (!usesWindowColors(kind)) {
        foreColor_ = vbButtonText;
        backColor_ = vbButtonFace;
    }
    tabIndex_ = hasTabIndex(kind) ? 0 : -1;
    form.addControl(*this);
}

Control::Control(Container &container, ControlKind kind, std::string_view name, int index)
    : Control(container.form(), kind, name, index) {
    container_ = &container;
}

Control::~Control() {
    form_->removeControl(*this);
}

std::string Control::qualifiedName() const {
    return index_ < 0 ? name_ : name_ + "(" + std::to_string(index_) + ")";
}

void Control::setEnabled(bool enabled) {
    enabled_ = enabled;
    if (!enabled) {
        form_->keepFocusValid();
    }
}

void Control::setVisible(bool visible) {
    visible_ = visible;
    if (!visible) {
        form_->keepFocusValid();
    }
}

void Control::Move(int left, int top, int width, int height) {
    left_ = left;
    top_ = top;
    if (width >= 0) {
        width_ = width;
    }
    if (height >= 0) {
        height_ = height;
    }
}

void Control::setTabIndex(int index) {
    if (index < 0) {
        throw errors::invalidPropertyValue();
    }
    if (tabIndex_ >= 0) {
        form_->reorderTabIndex(*this, index);
    }
}

void Control::setMousePointer(int pointer) {
    if (pointer == mousePointer_) {
        return;
    }
    mousePointer_ = pointer;
    form_->screen().notifyPointer();
}

bool Control::effectivelyEnabled() const {
    return enabled_ && (!container_ || container_->effectivelyEnabled());
}

bool Control::effectivelyVisible() const {
    return visible_ && (!container_ || container_->effectivelyVisible());
}

bool Control::canTakeFocus() const {
    return focusable() && effectivelyEnabled() && effectivelyVisible() && form_->Visible() &&
           form_->Enabled();
}

bool Control::hasFocus() const {
    return form_->ActiveControl() == this;
}

void Control::SetFocus() {
    if (!canTakeFocus()) {
        throw errors::invalidProcedureCall();
    }
    form_->moveFocus(this);
}

bool Control::focusHere() {
    return !canTakeFocus() || form_->moveFocus(this);
}

void Control::defaultKeyDown(int, int) {}

void Control::defaultKeyPress(char32_t) {}

void Control::userClick() {
    raise(onClick);
}

void Control::accessKeyPressed() {
    form_->focusAfter(*this);
}

bool Control::fireValidate() {
    bool cancel = false;
    raise(onValidate, cancel);
    return !cancel;
}

Control::FormHold::FormHold(Form &form) : form_(form) {
    ++form_.busy_;
}

Control::FormHold::~FormHold() {
    --form_.busy_;
}

} // namespace forms
