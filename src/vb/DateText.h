// Reading dates from text, as CDate and IsDate did.
#pragma once

#include "vb/Date.h"

#include <optional>
#include <string_view>

namespace vb {

/// The date a text spells, or nullopt. Read are: the session's short date form
/// (day, month and year in its order, separated by "/", "-", "." or blanks;
/// when that gives no real date the day and month are tried the other way
/// round, as the old platform did with "12/25/2020"); a year first
/// ("yyyy-mm-dd", "yyyy/mm/dd", "yyyy/Mon/dd"); a month name ("dd-Mon-yyyy",
/// "Mon dd, yyyy"); day and month alone (the year of the clock); a time
/// "hh:mm[:ss]" with an optional AM/PM, alone or before or after the date.
/// Two-digit years mean 1930-2029.
std::optional<Date> dateFromText(std::string_view text);

} // namespace vb
