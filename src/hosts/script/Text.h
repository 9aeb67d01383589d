// script text helpers: names compared as the old platform compared them, blanks trimmed.
#pragma once

#include <string>
#include <string_view>

namespace script {

/// Names of controls, forms, properties and menu items match ignoring letter case.
bool sameName(std::string_view a, std::string_view b);

/// The text in lower case (ASCII), for command words and key names.
std::string lowerCase(std::string_view text);

/// The text without blanks and tabs at either end.
std::string_view trimBlanks(std::string_view text);

} // namespace script
