// How the server's refusals become the errors that the old data layer gave.
#pragma once

#include "ado/postgresql/PgResult.h"
#include "vb/Error.h"

#include <string>
#include <string_view>

namespace ado::postgresql {

/// The `source` of every error the server provider raises.
inline constexpr std::string_view providerSource = "PostgreSQL provider";

/// The error for a failed statement, from its SQLSTATE and the server's
/// message, `statement` being the text as the module wrote it. Missing
/// tables give -2147217865 "Invalid object name 'x'.", missing columns
/// -2147217900 "Invalid column name 'a.x'.", each name as the statement
/// writes it where it stands there (the server reports it in lower case), text that is no
/// number or date -2147217913 with SQL Server's conversion text, text too
/// long for its column -2147217833 (also a check named NAME_length, which is
/// how a case-insensitive text column keeps its length), numeric overflow
/// -2147217913 "Arithmetic overflow...", divide by zero -2147217833,
/// statement timeouts and lock waits -2147217871, keys and constraints
/// -2147217873, a lost connection -2147467259 "General network error".
vb::Error serverError(const PGresult *result, std::string_view statement);

/// The error for a connection that cannot be made, or that is gone.
vb::Error connectionError(const PGconn *conn);

/// The text of a failed statement: its first words, blanks collapsed.
std::string firstWords(std::string_view statement);

} // namespace ado::postgresql
