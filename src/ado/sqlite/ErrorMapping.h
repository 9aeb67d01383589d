// How failures of the SQLite engine become the errors that the old data layer gave.
#pragma once

#include "vb/Error.h"

#include <string>
#include <string_view>

namespace ado::sqlite {

/// The `source` of every error the embedded provider raises.
inline constexpr std::string_view providerSource = "SQLite provider";

/// A statement the server refuses: -2147217900 with the text given.
vb::Error statementError(std::string description);
/// A value the target type cannot take: -2147217913 with SQL Server's text.
vb::Error conversionError(std::string description);
/// Text longer than the column it goes into: -2147217833 with SQL Server's
/// "String or binary data would be truncated.".
vb::Error truncationError();
/// A divisor of zero: -2147217833 with SQL Server's "Divide by zero error
/// encountered.", the provider's number for a value out of range.
vb::Error divideByZeroError();
/// A database that cannot be opened or used: -2147467259.
vb::Error connectionError(std::string description);

/// The error for a failed engine call: its result code and message, and the
/// statement it ran (its first words go into the description where the
/// message alone would not say what failed). Missing tables give
/// -2147217865 "Invalid object name 'x'.", conversions -2147217913, locks
/// and timeouts -2147217871, constraints -2147217873, damaged or foreign
/// files -2147467259, everything else -2147217900.
vb::Error engineError(int resultCode, std::string_view message, std::string_view statement);

/// The first words of a statement, blanks collapsed, cut at about 60 characters.
std::string firstWords(std::string_view statement);

} // namespace ado::sqlite
