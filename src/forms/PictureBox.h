// forms::PictureBox: a plain box that holds controls or a picture.
#pragma once

#include "forms/Container.h"

#include <string>
#include <string_view>

namespace forms {

/// A picture box. In this system it serves as a borderless holder of option
/// buttons and never takes the focus itself.
class PictureBox : public Container {
public:
    PictureBox(Form &form, std::string_view name, int index = -1);
    PictureBox(Container &container, std::string_view name, int index = -1);

    /// The picture file shown, if any.
    const std::string &Picture() const { return picture_; }
    void setPicture(std::string_view path) { picture_ = path; }

    bool focusable() const override { return false; }

private:
    std::string picture_;
};

} // namespace forms
