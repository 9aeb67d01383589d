// The old language's Format function, for the number and date patterns the module uses.
#pragma once

#include "vb/Variant.h"

#include <string>
#include <string_view>

namespace vb {

/// Formats a value with a pattern: number patterns of 0, #, '.', ','
/// ("##0.000", "###,###,##0.000#####", "00000") and date patterns
/// ("yyyy/mm/dd", "yyyy/mmm/dd", "dd/mm/yyyy", "hh:mm:ss"; "mm" after "hh" is
/// minutes; letter case of the pattern does not matter). Text that is a number
/// formats as the number, text that is a date as the date, other text stays.
/// Null and Empty give "".
std::string Format(const Variant &value, std::string_view pattern);
/// Without a pattern: as CStr, Null and Empty as "".
std::string Format(const Variant &value);

} // namespace vb
