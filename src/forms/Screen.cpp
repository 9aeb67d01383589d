#include "forms/Screen.h"

#include "forms/Control.h"
#include "forms/Form.h"
#include "forms/Ui.h"

#include <algorithm>

namespace forms {

Screen::Screen(Ui &ui) : ui_(&ui) {}

void Screen::setMousePointer(int pointer) {
    if (pointer == mousePointer_) {
        return;
    }
    mousePointer_ = pointer;
    notifyPointer();
}

int Screen::effectivePointer() const {
    if (mousePointer_ != vbDefault) {
        return mousePointer_;
    }
    Form *form = ActiveForm();
    if (!form) {
        return vbDefault;
    }
    if (form->MousePointer() != vbDefault) {
        return form->MousePointer();
    }
    Control *control = form->ActiveControl();
    return control ? control->MousePointer() : vbDefault;
}

Form *Screen::ActiveForm() const {
    return shown_.empty() ? nullptr : shown_.back();
}

Control *Screen::ActiveControl() const {
    Form *form = ActiveForm();
    return form ? form->ActiveControl() : nullptr;
}

void Screen::queueKeys(const std::vector<KeyStroke> &keys) {
    queued_.insert(queued_.end(), keys.begin(), keys.end());
}

void Screen::pushShown(Form &form) {
    std::erase(shown_, &form);
    shown_.push_back(&form);
}

void Screen::removeShown(Form &form) {
    std::erase(shown_, &form);
}

void Screen::notifyPointer() {
    ui_->mousePointerChanged(*this);
}

KeyStroke Screen::takeQueuedKey() {
    KeyStroke k = queued_.front();
    queued_.pop_front();
    return k;
}

} // namespace forms
