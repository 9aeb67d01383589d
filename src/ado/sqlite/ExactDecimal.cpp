#include "ado/sqlite/ExactDecimal.h"

#include "ado/sqlite/ErrorMapping.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <optional>
#include <cstdlib>
#include <string>

namespace ado::sqlite {

namespace {

// SQL Server's numeric holds at most 38 digits.
constexpr int mostDigits = 38;
// Places kept of a value smaller than any the module stores (1e-20).
constexpr int mostPlaces = 20;

vb::Error overflow(bool money = false) {
    return conversionError(money ? "Arithmetic overflow error converting expression to data type "
                                   "money."
                                 : "Arithmetic overflow error converting numeric to data type "
                                   "numeric.");
}

__int128 power10(int n) {
    __int128 p = 1;
    for (int i = 0; i < n; ++i)
        p *= 10;
    return p;
}

// value * 10^n, or the overflow error.
__int128 scaledUp(__int128 value, int n) {
    for (int i = 0; i < n; ++i)
        if (__builtin_mul_overflow(value, 10, &value))
            throw overflow();
    return value;
}

__int128 magnitude(__int128 v) {
    return v < 0 ? -v : v;
}

constexpr double powersOf10[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};

// value * 10^scale when it lies clearly off a half (and so rounds the same
// whether seen as the double or as its decimal), for the common case of a
// value with few places: no text is made. Nothing when it is too close to
// call, or too large to hold every digit.
std::optional<double> clearlyRounded(double value, int scale) {
    if (scale < 0 || scale >= static_cast<int>(std::size(powersOf10)))
        return std::nullopt;
    double x = value * powersOf10[scale];
    if (!(std::fabs(x) < 1e14))
        return std::nullopt;
    double fraction = std::fabs(x - std::trunc(x));
    // The double's own error grows with its size; keep well clear of it.
    if (std::fabs(fraction - 0.5) < 1e-6 + std::fabs(x) * 1e-14)
        return std::nullopt;
    return std::round(x); // half away from zero
}

} // namespace

Decimal decimalOf(double value) {
    if (value == 0 || value != value)
        return {};
    char text[40];
    std::snprintf(text, sizeof text, "%.14e", value); // -d.dddddddddddddde+XX
    std::string s(text);
    bool negative = s[0] == '-';
    std::size_t e = s.find('e');
    std::string digits;
    for (std::size_t i = negative ? 1 : 0; i < e; ++i)
        if (s[i] != '.')
            digits += s[i];
    int exponent = std::atoi(s.c_str() + e + 1);
    Decimal d{std::strtoll(digits.c_str(), nullptr, 10), 14 - exponent};
    if (d.scale < 0) {
        if (exponent >= mostDigits)
            throw overflow();
        d.units = scaledUp(d.units, -d.scale);
        d.scale = 0;
    }
    while (d.scale > 0 && d.units % 10 == 0) {
        d.units /= 10;
        --d.scale;
    }
    if (negative)
        d.units = -d.units;
    return rounded(d, mostPlaces);
}

Decimal rounded(Decimal value, int scale) {
    if (value.scale <= scale)
        return value;
    __int128 divisor = power10(value.scale - scale);
    __int128 kept = value.units / divisor;
    __int128 dropped = value.units % divisor;
    if (2 * magnitude(dropped) >= divisor)
        kept += value.units < 0 ? -1 : 1;
    return {kept, scale};
}

double toDouble(const Decimal &value) {
    __int128 m = magnitude(value.units);
    std::string digits;
    do {
        digits.insert(digits.begin(), static_cast<char>('0' + static_cast<int>(m % 10)));
        m /= 10;
    } while (m > 0);
    if (value.scale > 0) {
        if (static_cast<int>(digits.size()) <= value.scale)
            digits.insert(0, static_cast<std::size_t>(value.scale) - digits.size() + 1, '0');
        digits.insert(digits.size() - static_cast<std::size_t>(value.scale), ".");
    }
    if (value.units < 0)
        digits.insert(digits.begin(), '-');
    return std::strtod(digits.c_str(), nullptr);
}

double toNumeric(double value, int precision, int scale, bool money) {
    if (auto units = clearlyRounded(value, scale)) {
        if (std::fabs(*units) >= std::pow(10.0, precision))
            throw overflow(money);
        return *units / powersOf10[scale];
    }
    Decimal d = rounded(decimalOf(value), scale);
    // The digits before the point: units at the column's scale, less its places.
    if (magnitude(d.units) >= power10(precision - scale + d.scale))
        throw overflow(money);
    return toDouble(d);
}

std::int64_t toNumeric(std::int64_t value, int precision, int scale, bool money) {
    if (magnitude(value) >= power10(precision - scale))
        throw overflow(money);
    return value;
}

void DecimalSum::add(std::int64_t value) {
    add(Decimal{value, 0});
}

void DecimalSum::add(double value) {
    fractions_ = true;
    // A value of few places, as quantities and prices are, is read off at once.
    for (int places = 0; places <= 4; ++places) {
        double x = value * powersOf10[places];
        if (std::fabs(x) < 1e14 && std::fabs(x - std::round(x)) < 1e-12 * std::max(1.0, std::fabs(x)))
            return add(Decimal{static_cast<std::int64_t>(std::round(x)), places});
    }
    add(decimalOf(value));
}

void DecimalSum::add(Decimal value) {
    ++count_;
    if (value.scale > total_.scale) {
        total_.units = scaledUp(total_.units, value.scale - total_.scale);
        total_.scale = value.scale;
    } else {
        value.units = scaledUp(value.units, total_.scale - value.scale);
    }
    if (__builtin_add_overflow(total_.units, value.units, &total_.units) ||
        magnitude(total_.units) >= power10(mostDigits))
        throw overflow();
}

} // namespace ado::sqlite
