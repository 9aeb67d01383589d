// forms::CheckBox: a box that is unchecked (0), checked (1) or grayed (2).
#pragma once

#include "forms/Control.h"
#include "forms/Keys.h"

#include <string>
#include <string_view>

namespace forms {

inline constexpr int vbUnchecked = 0;
inline constexpr int vbChecked = 1;
inline constexpr int vbGrayed = 2;

/// A check box. Setting Value by code to a different value raises Click,
/// as a click by the user does; setting the value it has raises nothing. A
/// user's click (or Space, or its access key) turns 1 to 0 and 0 or 2 to 1.
class CheckBox : public Control {
public:
    CheckBox(Form &form, std::string_view name, int index = -1);
    CheckBox(Container &container, std::string_view name, int index = -1);

    const std::string &Caption() const { return caption_; }
    void setCaption(std::string_view caption) { caption_ = caption; }
    int Value() const { return value_; }
    /// Raises 380 ("Invalid property value") outside 0 to 2.
    void setValue(int value);
    /// 0 box on the left of the caption, 1 on the right.
    int Alignment() const { return alignment_; }
    void setAlignment(int alignment) { alignment_ = alignment; }

    char32_t accessKey() const override { return accessKeyOf(caption_); }

protected:
    void defaultKeyPress(char32_t keyAscii) override;
    void userClick() override;
    void accessKeyPressed() override;

private:
    std::string caption_;
    int value_ = vbUnchecked;
    int alignment_ = 0;
};

} // namespace forms
