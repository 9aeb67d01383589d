// forms::Label: a caption on a form.
#pragma once

#include "forms/Control.h"
#include "forms/Keys.h"

#include <string>
#include <string_view>

namespace forms {

/// A label. It never takes the focus; its access key ("&Remarks:") gives the
/// focus to the next control in Tab order that can take it.
class Label : public Control {
public:
    Label(Form &form, std::string_view name, int index = -1);
    Label(Container &container, std::string_view name, int index = -1);

    const std::string &Caption() const { return caption_; }
    void setCaption(std::string_view caption) { caption_ = caption; }
    /// 0 left, 1 right, 2 centre.
    int Alignment() const { return alignment_; }
    void setAlignment(int alignment);

    bool focusable() const override { return false; }
    char32_t accessKey() const override { return accessKeyOf(caption_); }

private:
    std::string caption_;
    int alignment_ = 0;
};

} // namespace forms
