// forms::CommandButton: a push button, possibly the form's default or cancel button.
#pragma once

#include "forms/Control.h"
#include "forms/Keys.h"

#include <string>
#include <string_view>

namespace forms {

/// A command button. Enter clicks the focused button, or else the form's
/// Default button; Escape clicks the form's Cancel button; Space clicks the
/// focused button; Alt with the letter after "&" in the caption clicks it.
/// In each case only when it is enabled and visible.
class CommandButton : public Control {
public:
    CommandButton(Form &form, std::string_view name, int index = -1);
    CommandButton(Container &container, std::string_view name, int index = -1);

    const std::string &Caption() const { return caption_; }
    void setCaption(std::string_view caption) { caption_ = caption; }
    /// The one button of the form that Enter presses. Setting it on clears it
    /// on the form's other buttons.
    bool Default() const { return default_; }
    void setDefault(bool on);
    /// The one button of the form that Escape presses.
    bool Cancel() const { return cancel_; }
    void setCancel(bool on);
    /// Setting Value to true by code clicks the button (raises Click).
    bool Value() const { return false; }
    void setValue(bool press);

    char32_t accessKey() const override { return accessKeyOf(caption_); }

protected:
    void defaultKeyPress(char32_t keyAscii) override;
    void userClick() override;
    void accessKeyPressed() override;

private:
    std::string caption_;
    bool default_ = false;
    bool cancel_ = false;
};

} // namespace forms
