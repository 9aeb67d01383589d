// forms::Image: a picture on a form.
#pragma once

#include "forms/Control.h"

#include <string>
#include <string_view>

namespace forms {

/// An image control: a picture file, shown stretched or at its own size.
class Image : public Control {
public:
    Image(Form &form, std::string_view name, int index = -1);
    Image(Container &container, std::string_view name, int index = -1);

    const std::string &Picture() const { return picture_; }
    void setPicture(std::string_view path) { picture_ = path; }
    bool Stretch() const { return stretch_; }
    void setStretch(bool stretch) { stretch_ = stretch; }

    bool focusable() const override { return false; }

private:
    std::string picture_;
    bool stretch_ = false;
};

} // namespace forms
