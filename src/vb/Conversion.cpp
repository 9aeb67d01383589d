#include "vb/Conversion.h"

#include "vb/Clock.h"
#include "vb/DateFormat.h"
#include "vb/DateText.h"
#include "vb/Error.h"
#include "vb/NumberText.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace vb {
namespace {

[[noreturn]] void raise(std::int32_t number, std::string_view source) {
    throw Error::standard(number, std::string(source));
}

/// A number as the old platform wrote it: at most 15 significant digits, no
/// trailing zeros, and the exponent form ("1E+15", "1E-05") outside the range
/// where plain digits stay short.
std::string numberText(double x) {
    if (x == 0.0)
        return "0";
    if (!std::isfinite(x))
        raise(err::Overflow, "CStr");
    std::array<char, 64> buf{};
    auto [end, ec] =
        std::to_chars(buf.data(), buf.data() + buf.size(), x, std::chars_format::general, 15);
    std::string text(buf.data(), end);
    std::size_t e = text.find('e');
    if (e == std::string::npos)
        return text;
    // to_chars writes "1e+15"; the old platform wrote "1E+15", two exponent digits at least.
    std::string digits = text.substr(e + 2);
    std::string out = text.substr(0, e);
    out += 'E';
    out += text[e + 1];
    if (digits.size() < 2)
        out += '0';
    return out + digits;
}

std::string dateText(Date d) {
    // The time is written only where it shows: grids list thousands of plain dates.
    if (d.datePart().serial == 0.0)
        return formatDate(d, "hh:mm:ss");
    std::string date = formatDate(d, shortDateFormat());
    return d.hasTime() ? date + " " + formatDate(d, "hh:mm:ss") : date;
}

double numberOfText(const std::string &text, std::string_view source) {
    std::optional<double> n = numberFromText(text);
    if (!n)
        raise(err::TypeMismatch, source);
    return *n;
}

/// Rounds half to even, as the old integer conversions did.
double roundHalfEven(double x) {
    double r = std::round(x);
    if (std::abs(x - std::trunc(x)) == 0.5)
        r = 2.0 * std::round(x / 2.0);
    return r;
}

double integral(const Variant &v, double low, double high, std::string_view source) {
    double r = roundHalfEven(CDbl(v));
    if (!(r >= low && r <= high))
        raise(err::Overflow, source);
    return r;
}

bool sameWord(std::string_view text, std::string_view word) {
    if (text.size() != word.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(text[i])) != word[i])
            return false;
    return true;
}

} // namespace

double Val(std::string_view text) {
    return leadingNumber(text);
}

double Val(const std::string &text) {
    return leadingNumber(text);
}

double Val(const char *text) {
    return leadingNumber(text);
}

double Val(const Variant &v) {
    return leadingNumber(CStr(v));
}

double CDbl(const Variant &v) {
    switch (v.type()) {
    case VarType::Empty:
        return 0.0;
    case VarType::Null:
        raise(err::InvalidUseOfNull, "CDbl");
    case VarType::String:
        return numberOfText(v.asString(), "CDbl");
    default:
        return v.number();
    }
}

std::int16_t CInt(const Variant &v) {
    return static_cast<std::int16_t>(integral(v, -32768.0, 32767.0, "CInt"));
}

std::int32_t CLng(const Variant &v) {
    return static_cast<std::int32_t>(integral(v, -2147483648.0, 2147483647.0, "CLng"));
}

bool CBool(const Variant &v) {
    switch (v.type()) {
    case VarType::Empty:
        return false;
    case VarType::Null:
        raise(err::InvalidUseOfNull, "CBool");
    case VarType::Boolean:
        return v.asBoolean();
    case VarType::String: {
        std::string_view text = v.asString();
        std::size_t first = text.find_first_not_of(' ');
        text = first == std::string_view::npos
                   ? std::string_view{}
                   : text.substr(first, text.find_last_not_of(' ') - first + 1);
        if (sameWord(text, "true"))
            return true;
        if (sameWord(text, "false"))
            return false;
        return numberOfText(std::string(text), "CBool") != 0.0;
    }
    default:
        return v.number() != 0.0;
    }
}

std::string CStr(const Variant &v) {
    switch (v.type()) {
    case VarType::Empty:
        return "";
    case VarType::Null:
        raise(err::InvalidUseOfNull, "CStr");
    case VarType::Boolean:
        return v.asBoolean() ? "True" : "False";
    case VarType::Integer:
        return std::to_string(v.asInteger());
    case VarType::Long:
        return std::to_string(v.asLong());
    case VarType::Double:
        return numberText(v.asDouble());
    case VarType::Date:
        return dateText(v.asDate());
    case VarType::String:
        return v.asString();
    }
    raise(err::TypeMismatch, "CStr");
}

std::string TextOf(const Variant &v) {
    return v.isNull() ? std::string() : CStr(v);
}

Date CDate(const Variant &v) {
    switch (v.type()) {
    case VarType::Null:
        raise(err::InvalidUseOfNull, "CDate");
    case VarType::Date:
        return v.asDate();
    case VarType::String: {
        std::optional<Date> d = dateFromText(v.asString());
        if (!d)
            raise(err::TypeMismatch, "CDate");
        return *d;
    }
    default: {
        double serial = v.number();
        if (!isInDateRange(serial))
            raise(err::Overflow, "CDate");
        return Date{serial};
    }
    }
}

bool IsNumeric(const Variant &v) {
    switch (v.type()) {
    case VarType::Null:
    case VarType::Date:
        return false;
    case VarType::String: {
        // A number too large for a double fails to convert, so it is no number.
        try {
            return numberFromText(v.asString()).has_value();
        } catch (const Error &e) {
            if (e.number() != err::Overflow)
                throw;
            return false;
        }
    }
    default:
        return true;
    }
}

bool IsDate(const Variant &v) {
    if (v.isDate())
        return true;
    return v.isString() && dateFromText(v.asString()).has_value();
}

bool IsNull(const Variant &v) {
    return v.isNull();
}
bool IsEmpty(const Variant &v) {
    return v.isEmpty();
}

double Int(double x) {
    return std::floor(x);
}
double Fix(double x) {
    return std::trunc(x);
}

double Round(double x, int decimals) {
    if (decimals < 0)
        raise(err::InvalidProcedureCall, "Round");
    if (decimals > 22)
        return x;
    double scale = std::pow(10.0, decimals);
    double scaled = x * scale;
    if (!std::isfinite(scaled))
        return x;
    return roundHalfEven(scaled) / scale;
}

std::string Str(double x) {
    // Str drops the zero before the point (Str(0.5) is " .5"), unlike CStr.
    std::string text = numberText(std::abs(x));
    if (text.size() > 1 && text[0] == '0' && text[1] == '.')
        text.erase(0, 1);
    return (x < 0 ? "-" : " ") + text;
}

} // namespace vb
