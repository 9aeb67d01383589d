// Dates as the embedded database stores them, and the date literals SQL Server reads.
#pragma once

#include "vb/Date.h"

#include <optional>
#include <string>
#include <string_view>

namespace ado::sql {

/// Dates are stored as text "YYYY-MM-DD HH:MM:SS", which sorts and compares
/// as the dates do.
std::string canonicalDate(vb::Date date);

/// The stored form of date text in one of the forms SQL Server reads:
/// 'yyyymmdd', 'yyyy/mm/dd', 'yyyy-mm-dd', 'yyyy.mm.dd', 'yyyy/Mon/dd' (an
/// English month name or its first three letters), 'mm/dd/yyyy', each with
/// an optional time 'hh:mm[:ss[.fff]]' with or without AM/PM (or a 'T'
/// before it); a time alone is on 1 January 1900, and so is the empty text.
/// Fractions of a second are dropped. Nothing when the text is no date.
std::optional<std::string> canonicalDate(std::string_view text);

/// The date of stored or literal date text; nothing when the text is no date.
std::optional<vb::Date> parseDate(std::string_view text);

} // namespace ado::sql
