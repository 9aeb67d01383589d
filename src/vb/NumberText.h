// Reading numbers from text: Val's loose reading and the strict one of CDbl and IsNumeric.
#pragma once

#include <optional>
#include <string_view>

namespace vb {

/// Val's reading: the number that the leading characters spell. Blanks, tabs
/// and line feeds are skipped anywhere, an exponent (E or D) counts, "&H" and
/// "&O" (or a bare "&") read hex and octal; no number gives 0. Raises 6 when
/// the number does not fit a double.
double leadingNumber(std::string_view text);

/// The strict reading of CDbl, CInt and IsNumeric with the default locale:
/// blanks around, a leading sign, commas between the digits before the point
/// as thousands separators ("1,234" is 1234), a point, an exponent, or a whole
/// "&H"/"&O" number. Anything else in the text makes it no number (nullopt).
/// Raises 6 for a number that does not fit a double.
std::optional<double> numberFromText(std::string_view text);

} // namespace vb
