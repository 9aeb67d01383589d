// script::controlProperty: the properties a scenario can check, read as text.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace forms {
class Control;
class Form;
} // namespace forms

namespace script {

/// A property of a control as a scenario compares it: text as it stands,
/// booleans "True" or "False", numbers and colours in decimal, dates as
/// YYYY-MM-DD. The name is matched ignoring letter case. None when the kind
/// of control has no such property.
std::optional<std::string> controlProperty(const forms::Control &control, std::string_view name);
/// The names controlProperty knows for this control, for a failure to list.
std::vector<std::string> controlPropertyNames(const forms::Control &control);

/// The same for a form: Name, Caption, Enabled, Visible, MousePointer,
/// KeyPreview, Tag, Left, Top, Width, Height, ActiveControl.
std::optional<std::string> formProperty(const forms::Form &form, std::string_view name);
std::vector<std::string> formPropertyNames();

/// The name of a kind of control ("TextBox").
std::string kindName(const forms::Control &control);

} // namespace script
