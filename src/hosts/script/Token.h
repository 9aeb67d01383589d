// script::Token: the words and quoted texts of a scenario line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace script {

/// A word (blanks end it) or a quoted text ("..." with \" \\ \n \r \t).
struct Token {
    std::string text;
    bool quoted = false;
    /// Where the token starts in the line, so that a command can take the
    /// rest of the line as it stands (a SQL statement).
    std::size_t offset = 0;
};

/// Splits a line into tokens. Raises BadScript (with `line`) for a quote that
/// is not closed or an escape it does not know.
std::vector<Token> tokenize(std::string_view text, int line);

/// A text as a scenario writes it: in double quotes, with the escapes above,
/// so that a failure shows blanks and line breaks that a plain print hides.
std::string inQuotes(std::string_view text);

} // namespace script
