// The one clock (Now, Date, Time) and the session's short date form.
#pragma once

#include "vb/Date.h"

#include <optional>
#include <string>
#include <string_view>

namespace vb {

/// The current date and time; the fixed value when one is set.
Date Now();
/// Today's date, no time.
Date Today();
/// The time of day only.
Date TimeOfDay();

/// Fixes the clock (tests and scenario files), or gives it back to the system
/// with std::nullopt.
void setClock(std::optional<Date> fixed);

/// The session's short date form, a pattern such as "dd/mm/yyyy" (the default)
/// or "mm/dd/yyyy": how CStr shows a date and how CDate reads ambiguous text.
const std::string &shortDateFormat();
void setShortDateFormat(std::string_view pattern);

} // namespace vb
