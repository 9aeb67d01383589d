// forms::OptionButton: one of a group of choices; one on per container.
#pragma once

#include "forms/Control.h"
#include "forms/Keys.h"

#include <string>
#include <string_view>

namespace forms {

/// An option button. The option buttons with the same container (frame,
/// picture box, or the form itself) form a group: turning one on turns the
/// others off. Setting Value to true by code raises Click on this button when
/// it was off (the ones turned off raise nothing); setting it to true when it
/// is on already raises nothing. A user's click raises Click every time, also
/// on a button that is on, as the old one did. Tab stops only at the button of
/// a group that is on; the arrow keys move to the next one of the group and
/// turn it on.
class OptionButton : public Control {
public:
    OptionButton(Form &form, std::string_view name, int index = -1);
    OptionButton(Container &container, std::string_view name, int index = -1);

    const std::string &Caption() const { return caption_; }
    void setCaption(std::string_view caption) { caption_ = caption; }
    bool Value() const { return value_; }
    void setValue(bool on);

    char32_t accessKey() const override { return accessKeyOf(caption_); }

protected:
    void defaultKeyDown(int keyCode, int shift) override;
    void defaultKeyPress(char32_t keyAscii) override;
    void userClick() override;
    void accessKeyPressed() override;

private:
    void turnOthersOff();

    std::string caption_;
    bool value_ = false;
};

} // namespace forms
