#include "ado/sql/FrontError.h"

#include "ado/Errors.h"

namespace ado::sql {

namespace {
// The front runs before any engine sees the statement, so its refusals name
// the front rather than a provider.
constexpr const char *source = "SQL translator";
} // namespace

vb::Error statementError(std::string description) {
    return vb::Error(errnum::Statement, source, std::move(description));
}

vb::Error conversionError(std::string description) {
    return vb::Error(errnum::Conversion, source, std::move(description));
}

} // namespace ado::sql
