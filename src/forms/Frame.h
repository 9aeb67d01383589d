// forms::Frame: a captioned box that groups controls.
#pragma once

#include "forms/Container.h"
#include "forms/Keys.h"

#include <string>
#include <string_view>

namespace forms {

/// A frame: a caption and a border around the controls in it. Its access key
/// passes the focus to the first control inside it that can take it.
class Frame : public Container {
public:
    Frame(Form &form, std::string_view name, int index = -1);
    Frame(Container &container, std::string_view name, int index = -1);

    const std::string &Caption() const { return caption_; }
    void setCaption(std::string_view caption) { caption_ = caption; }

    bool focusable() const override { return false; }
    char32_t accessKey() const override { return accessKeyOf(caption_); }

private:
    std::string caption_;
};

} // namespace forms
