// script::dumpForm: a form and its controls as text, for `dump` lines and failure reports.
#pragma once

#include <ostream>

namespace forms {
class Form;
}

namespace script {

/// Writes the form and each of its controls, one per line in creation order:
/// name, kind, caption or text, state (disabled, hidden, focus), and the rows
/// of grids and lists, so that a scenario's author can see what to expect.
void dumpForm(const forms::Form &form, std::ostream &out);

} // namespace script
