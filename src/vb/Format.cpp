#include "vb/Format.h"

#include "vb/Conversion.h"
#include "vb/Date.h"
#include "vb/Error.h"
#include "vb/DateFormat.h"
#include "vb/DateText.h"
#include "vb/NumberFormat.h"
#include "vb/NumberText.h"

#include <optional>

namespace vb {
namespace {

/// A number as a date: a number of days past the old platform's range of dates
/// overflows (6), as it did in CDate, instead of wrapping round.
Date dateOfNumber(double serial) {
    if (!isInDateRange(serial))
        throw Error::standard(err::Overflow, "Format");
    return Date{serial};
}

/// The date that a value stands for under a date pattern; none for text that
/// is neither a date nor a number.
std::optional<Date> asDate(const Variant &value) {
    if (value.isDate())
        return value.asDate();
    if (!value.isString())
        return dateOfNumber(value.number());
    if (std::optional<Date> d = dateFromText(value.asString()))
        return d;
    if (std::optional<double> n = numberFromText(value.asString()))
        return dateOfNumber(*n);
    return std::nullopt;
}

/// The number that a value stands for under a number pattern; none for text
/// that is neither a number nor a date.
std::optional<double> asNumber(const Variant &value) {
    if (!value.isString())
        return value.number();
    if (std::optional<double> n = numberFromText(value.asString()))
        return n;
    if (std::optional<Date> d = dateFromText(value.asString()))
        return d->serial;
    return std::nullopt;
}

} // namespace

std::string Format(const Variant &value, std::string_view pattern) {
    if (value.isNull() || value.isEmpty())
        return "";
    if (pattern.empty())
        return Format(value);
    if (isDatePattern(pattern)) {
        std::optional<Date> d = asDate(value);
        return d ? formatDate(*d, pattern) : value.asString();
    }
    std::optional<double> n = asNumber(value);
    return n ? formatNumber(*n, pattern) : value.asString();
}

std::string Format(const Variant &value) {
    return TextOf(value);
}

} // namespace vb
