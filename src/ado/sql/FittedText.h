// Text as a column with a declared length keeps it.
#pragma once

#include "ado/sql/ColumnType.h"

#include <optional>
#include <string>

namespace ado::sql {

/// `text` as a column of `type` with a length (varchar(20)) keeps it: as it
/// is when it fits, without the blanks at its end past the length (SQL Server
/// drops those without a word), and nothing when it is still too long, which
/// each engine refuses as "String or binary data would be truncated.".
/// Lengths count characters of UTF-8, not bytes.
std::optional<std::string> fittedText(std::string text, const ColumnType &type);

} // namespace ado::sql
