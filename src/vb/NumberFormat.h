// Format's number patterns: "##0.000", "00000", "###,###,##0.000#####" and their kin.
#pragma once

#include <string>
#include <string_view>

namespace vb {

/// A number shown with a number pattern: 0 a digit that always shows, # one
/// that shows when needed, the first point the decimal point (always shown),
/// a comma between digit places groups thousands, commas right before the
/// point divide by 1000 each, % multiplies by 100; up to three sections split
/// by ";" (positive, negative, zero); anything else, text in double quotes
/// and a character after a backslash stand as written. The number is taken
/// at 15 significant digits and rounded half away from zero, and a negative
/// number keeps its "-" even when it rounds to zero ("-0.000"), as the old
/// Format did. Raises 5 for the exponent patterns ("0.00E+00").
std::string formatNumber(double x, std::string_view pattern);

} // namespace vb
