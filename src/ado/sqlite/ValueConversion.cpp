#include "ado/sqlite/ValueConversion.h"

#include "ado/sql/DateText.h"
#include "ado/sql/FittedText.h"
#include "ado/sqlite/ErrorMapping.h"
#include "ado/sqlite/ExactDecimal.h"
#include "vb/Conversion.h"

#include <cctype>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace ado::sqlite {

using sql::canonicalDate;
using sql::parseDate;

namespace {

std::string_view trimBlanks(std::string_view s) {
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front())))
        s.remove_prefix(1);
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back())))
        s.remove_suffix(1);
    return s;
}

bool isDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

std::string intName(const ColumnType &type) {
    return type.kind == ColumnKind::Integer && !type.name.empty() && type.name != "integer"
               ? type.name
               : "int";
}

// sign? digits (point digits)? (e sign? digits)? : the length of the number read, 0 if none.
std::size_t numberSpan(std::string_view s, bool allowExponent) {
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-'))
        ++i;
    std::size_t digits = 0;
    while (i < s.size() && isDigit(s[i]))
        ++i, ++digits;
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && isDigit(s[i]))
            ++i, ++digits;
    }
    if (digits == 0)
        return 0;
    if (allowExponent && i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-'))
            ++j;
        if (j < s.size() && isDigit(s[j])) {
            while (j < s.size() && isDigit(s[j]))
                ++j;
            i = j;
        }
    }
    return i;
}

std::int64_t textToBit(std::string_view text) {
    auto t = trimBlanks(text);
    std::string lower;
    for (char c : t)
        lower += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (lower == "true")
        return 1;
    if (lower == "false" || lower.empty())
        return 0;
    if (numberSpan(t, false) != t.size())
        throw conversionError("Conversion failed when converting the varchar value '" +
                              std::string(text) + "' to data type bit.");
    return std::strtod(lower.c_str(), nullptr) != 0 ? 1 : 0;
}

StoredValue numberFor(const vb::Variant &v, const ColumnType &type) {
    double x = 0;
    switch (v.type()) {
    case vb::VarType::Double:
        x = v.asDouble();
        break;
    case vb::VarType::Long:
        x = v.asLong();
        break;
    case vb::VarType::Integer:
        x = v.asInteger();
        break;
    case vb::VarType::Boolean:
        x = v.asBoolean() ? -1 : 0;
        break;
    case vb::VarType::Date:
        x = v.asDate().serial;
        break;
    default:
        x = v.number();
        break;
    }
    if (type.kind == ColumnKind::Bit)
        return std::int64_t{x != 0 ? 1 : 0};
    if (type.kind == ColumnKind::Integer)
        return numberToInteger(x, type);
    if (v.type() != vb::VarType::Double && v.type() != vb::VarType::Date)
        return static_cast<std::int64_t>(x);
    return x;
}

StoredValue textForNumeric(const std::string &text, const ColumnType &type) {
    switch (type.kind) {
    case ColumnKind::Integer:
        return textToInteger(text, type);
    case ColumnKind::Bit:
        return textToBit(text);
    case ColumnKind::Float:
        return textToFloat(text);
    default: {
        double x = textToDecimal(text, type);
        if (x == std::floor(x) && std::fabs(x) < 9e15)
            return static_cast<std::int64_t>(x);
        return x;
    }
    }
}

StoredValue forDate(const vb::Variant &v) {
    if (v.isDate())
        return canonicalDate(v.asDate());
    if (v.isString()) {
        if (auto c = canonicalDate(std::string_view(v.asString())))
            return *c;
        throw conversionError("Conversion failed when converting date and/or time from character "
                              "string.");
    }
    return canonicalDate(vb::Date{v.number()});
}

// "YYYY-MM-DD HH:MM:SS", the form dates are stored in.
bool looksStored(std::string_view t) {
    static constexpr std::string_view shape = "0000-00-00 00:00:00";
    if (t.size() != shape.size())
        return false;
    for (std::size_t i = 0; i < t.size(); ++i)
        if (shape[i] == '0' ? !isDigit(t[i]) : t[i] != shape[i])
            return false;
    return true;
}

} // namespace

std::int64_t textToInteger(std::string_view text, const ColumnType &type) {
    auto t = trimBlanks(text);
    if (t.empty())
        return 0;
    std::size_t i = (t[0] == '+' || t[0] == '-') ? 1 : 0;
    bool digitsOnly = i < t.size();
    for (std::size_t j = i; j < t.size(); ++j)
        digitsOnly = digitsOnly && isDigit(t[j]);
    if (!digitsOnly)
        throw conversionError("Conversion failed when converting the varchar value '" +
                              std::string(text) + "' to data type " + intName(type) + ".");
    errno = 0;
    long long value = std::strtoll(std::string(t).c_str(), nullptr, 10);
    if (errno == ERANGE || value < type.low || value > type.high)
        throw conversionError("The conversion of the varchar value '" + std::string(text) +
                              "' overflowed " + (intName(type) == "int" ? "an " : "a ") +
                              intName(type) + " column.");
    return value;
}

double textToDecimal(std::string_view text, const ColumnType &type) {
    auto t = trimBlanks(text);
    if (t.empty() || numberSpan(t, false) != t.size())
        throw conversionError(type.kind == ColumnKind::Money
                                  ? "Cannot convert a char value to money. The char value has "
                                    "incorrect syntax."
                                  : "Error converting data type varchar to numeric.");
    return std::strtod(std::string(t).c_str(), nullptr);
}

double textToFloat(std::string_view text) {
    auto t = trimBlanks(text);
    if (t.empty())
        return 0.0;
    if (numberSpan(t, true) != t.size())
        throw conversionError("Error converting data type varchar to float.");
    return std::strtod(std::string(t).c_str(), nullptr);
}

std::int64_t numberToInteger(double value, const ColumnType &type) {
    double rounded = std::nearbyint(value); // the current rounding mode: half to even
    if (!(rounded >= static_cast<double>(type.low) && rounded <= static_cast<double>(type.high)))
        throw conversionError("Arithmetic overflow error converting expression to data type " +
                              intName(type) + ".");
    return static_cast<std::int64_t>(rounded);
}

std::string fittedText(std::string text, const ColumnType &type) {
    if (auto fitted = sql::fittedText(std::move(text), type))
        return std::move(*fitted);
    throw truncationError();
}

StoredValue exactNumeric(const StoredValue &stored, const ColumnType &type) {
    if (type.kind != ColumnKind::Decimal && type.kind != ColumnKind::Money)
        return stored;
    bool money = type.kind == ColumnKind::Money;
    if (const auto *i = std::get_if<std::int64_t>(&stored))
        return toNumeric(*i, type.precision, type.scale, money);
    if (const auto *d = std::get_if<double>(&stored))
        return toNumeric(*d, type.precision, type.scale, money);
    return stored;
}

StoredValue toStored(const vb::Variant &v, const ColumnType &type) {
    if (v.isNull() || v.isEmpty())
        return std::monostate{};
    if (type.kind == ColumnKind::Date)
        return forDate(v);
    if (type.numeric()) {
        StoredValue stored = v.isString() ? textForNumeric(v.asString(), type) : numberFor(v, type);
        return exactNumeric(stored, type);
    }
    if (type.kind == ColumnKind::Text)
        return sqlite::fittedText(vb::CStr(v), type);
    if (v.isString() || v.isBoolean())
        return vb::CStr(v);
    if (v.isDate())
        return canonicalDate(v.asDate());
    if (v.type() == vb::VarType::Double)
        return v.asDouble();
    return static_cast<std::int64_t>(v.number());
}

vb::Variant readBack(const StoredValue &stored, ColumnKind kind) {
    if (std::holds_alternative<std::monostate>(stored))
        return vb::Variant::null();
    if (const auto *i = std::get_if<std::int64_t>(&stored)) {
        if (kind == ColumnKind::Bit)
            return vb::Variant(*i != 0);
        bool real =
            kind == ColumnKind::Decimal || kind == ColumnKind::Float || kind == ColumnKind::Money;
        if (!real && *i >= std::numeric_limits<std::int32_t>::min() &&
            *i <= std::numeric_limits<std::int32_t>::max())
            return vb::Variant(static_cast<std::int32_t>(*i));
        return vb::Variant(static_cast<double>(*i));
    }
    if (const auto *d = std::get_if<double>(&stored))
        return vb::Variant(*d);
    const auto &text = std::get<std::string>(stored);
    if (kind == ColumnKind::Date || (kind == ColumnKind::Unknown && looksStored(text)))
        if (auto date = parseDate(text))
            return vb::Variant(*date);
    return vb::Variant(text);
}

} // namespace ado::sqlite
