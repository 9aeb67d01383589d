// How the data service joins a table expression and a condition into one selection.
#pragma once

#include <string>
#include <string_view>

namespace services {

/// True when the table expression already holds its own condition: the word
/// "where" (any letter case) outside string literals and brackets, as in
/// "lousers where userid=1 and GodownID=1".
bool hasWhereClause(std::string_view tableExpression);

/// "{tableExpression} where {condition}", or "{tableExpression} and
/// {condition}" when the expression holds a condition already, so that both
/// hold. A condition of blanks only adds nothing.
std::string withCondition(std::string_view tableExpression, std::string_view condition);

} // namespace services
