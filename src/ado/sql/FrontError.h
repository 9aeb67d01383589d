// The refusals of the translation front, with SQL Server's numbers and texts.
#pragma once

#include "vb/Error.h"

#include <string>

namespace ado::sql {

/// Text the front cannot take: -2147217900 with the text given.
vb::Error statementError(std::string description);
/// A literal that is no value of the type it meets: -2147217913.
vb::Error conversionError(std::string description);

} // namespace ado::sql
