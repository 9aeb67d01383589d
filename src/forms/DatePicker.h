// forms::DatePicker: a date field with a drop-down calendar.
#pragma once

#include "forms/Control.h"

#include "vb/Date.h"

#include <functional>
#include <string>
#include <string_view>

namespace forms {

/// A date picker. Value is a date without time. Setting a different Value
/// (by code or by the user) raises Change. The user changes it with
/// Input::setDate, or with the Up and Down keys one day at a time.
class DatePicker : public Control {
public:
    DatePicker(Form &form, std::string_view name, int index = -1);
    DatePicker(Container &container, std::string_view name, int index = -1);

    vb::Date Value() const { return value_; }
    void setValue(vb::Date value);
    /// A pattern such as "dd/MM/yyyy" for the host to show the date with;
    /// empty for the session's short date form.
    const std::string &CustomFormat() const { return customFormat_; }
    void setCustomFormat(std::string_view pattern) { customFormat_ = pattern; }

    std::function<void()> onChange;

protected:
    void defaultKeyDown(int keyCode, int shift) override;

private:
    vb::Date value_;
    std::string customFormat_;
};

} // namespace forms
