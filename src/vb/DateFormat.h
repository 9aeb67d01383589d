// Format's date patterns: "yyyy/mm/dd", "dd/mmm/yyyy", "hh:mm:ss" and their kin.
#pragma once

#include "vb/Date.h"

#include <string>
#include <string_view>

namespace vb {

/// True when a pattern holds a date or time part (d, m, y, h, n, s, w, q
/// c, ttttt outside quotes), so that Format shows its value as a date. Literal
/// text in a number pattern therefore goes in quotes ("0 \"pcs\"").
bool isDatePattern(std::string_view pattern);

/// A date shown with a date pattern. Letters count whatever their case:
/// d dd ddd dddd (day, two-digit day, "Mon", "Monday"), ddddd (short date form),
/// m mm mmm mmmm (month, "Nov", "November"; minutes when they follow h or hh),
/// y (day of the year) yy yyyy, h hh, n nn, s ss, w ww, q, AM/PM and A/P
/// (12-hour clock), ttttt (the time), c (date and time as CStr shows them).
/// Text in double quotes and a character after a backslash stand as written.
std::string formatDate(Date d, std::string_view pattern);

} // namespace vb
