#include "vb/NumberText.h"

#include "vb/Error.h"

#include <charconv>
#include <cstdint>
#include <string>

namespace vb {
namespace {

/// A decimal number taken apart: the digits before and after the point and
/// the exponent, without the point itself.
struct DecimalParts {
    bool negative = false;
    std::string whole;
    std::string fraction;
    long long exponent = 0;
    bool hasDigits() const { return !whole.empty() || !fraction.empty(); }
};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

int digitValue(char c, int radix) {
    int v = -1;
    if (isDigit(c))
        v = c - '0';
    else if (c >= 'a' && c <= 'f')
        v = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F')
        v = c - 'A' + 10;
    return v < radix ? v : -1;
}

/// Decimal order of magnitude of the digits, to tell an overflow from an
/// underflow when the conversion leaves the range of a double.
long long magnitude(const DecimalParts &p) {
    std::size_t lead = p.whole.find_first_not_of('0');
    if (lead != std::string::npos)
        return static_cast<long long>(p.whole.size() - lead) + p.exponent;
    std::size_t firstFraction = p.fraction.find_first_not_of('0');
    if (firstFraction == std::string::npos)
        return -1;
    return -static_cast<long long>(firstFraction) + p.exponent;
}

double toDouble(const DecimalParts &p, std::string_view source) {
    if (!p.hasDigits())
        return 0.0;
    std::string text =
        (p.whole.empty() ? "0" : p.whole) + "." + p.fraction + "e" + std::to_string(p.exponent);
    double value = 0.0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec == std::errc::result_out_of_range) {
        if (magnitude(p) > 0)
            throw Error::standard(err::Overflow, std::string(source));
        value = 0.0;
    }
    return p.negative ? -value : value;
}

/// A hex or octal number as the old platform read it: up to four hex digits
/// are a 16-bit integer (so "&HFFFF" is -1), more are a 32-bit one.
double radixValue(std::uint64_t raw, std::string_view source) {
    if (raw <= 0xFFFF)
        return static_cast<std::int16_t>(static_cast<std::uint16_t>(raw));
    if (raw <= 0xFFFFFFFF)
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(raw));
    throw Error::standard(err::Overflow, std::string(source));
}

void accumulate(std::uint64_t &raw, int digit, int radix) {
    // Past 32 bits the number overflows anyway; stop growing so it cannot wrap.
    if (raw <= 0xFFFFFFFFFULL)
        raw = raw * radix + digit;
}

/// Cursor over Val's text that steps over the blanks Val ignores.
class LooseReader {
public:
    explicit LooseReader(std::string_view text) : text_(text) {}
    char peek() {
        while (pos_ < text_.size() && isBlank(text_[pos_]))
            ++pos_;
        return pos_ < text_.size() ? text_[pos_] : '\0';
    }
    void next() { ++pos_; }
    /// Consumes the next character if it is one of `chars`; gives it, or '\0'.
    char take(std::string_view chars) {
        char c = peek();
        if (c == '\0' || chars.find(c) == std::string_view::npos)
            return '\0';
        next();
        return c;
    }
    std::size_t position() const { return pos_; }
    void rewind(std::size_t pos) { pos_ = pos; }

private:
    static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n'; }
    std::string_view text_;
    std::size_t pos_ = 0;
};

double looseRadix(LooseReader &in) {
    int radix = 8;
    char prefix = in.take("hHoO");
    if (prefix == 'h' || prefix == 'H')
        radix = 16;
    std::uint64_t raw = 0;
    for (int d; (d = digitValue(in.peek(), radix)) >= 0; in.next())
        accumulate(raw, d, radix);
    return radixValue(raw, "Val");
}

void looseExponent(LooseReader &in, DecimalParts &p) {
    std::size_t mark = in.position();
    char c = in.peek();
    if (c != 'e' && c != 'E' && c != 'd' && c != 'D')
        return;
    in.next();
    bool negative = in.take("+-") == '-';
    if (!isDigit(in.peek()))
        return in.rewind(mark);
    long long exponent = 0;
    for (; isDigit(in.peek()); in.next())
        if (exponent < 100000)
            exponent = exponent * 10 + (in.peek() - '0');
    p.exponent = negative ? -exponent : exponent;
}

} // namespace

double leadingNumber(std::string_view text) {
    LooseReader in(text);
    if (in.peek() == '&') {
        in.next();
        return looseRadix(in);
    }
    DecimalParts p;
    p.negative = in.take("+-") == '-';
    for (; isDigit(in.peek()); in.next())
        p.whole += in.peek();
    if (in.peek() == '.') {
        in.next();
        for (; isDigit(in.peek()); in.next())
            p.fraction += in.peek();
    }
    if (p.hasDigits())
        looseExponent(in, p);
    return toDouble(p, "Val");
}

namespace {

bool isSpaceOrTab(char c) {
    return c == ' ' || c == '\t';
}

// A loop of its own: find_first_not_of looks each character up in the set,
// and lists read this for every row they walk.
std::string_view trimBlanks(std::string_view s) {
    while (!s.empty() && isSpaceOrTab(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && isSpaceOrTab(s.back()))
        s.remove_suffix(1);
    return s;
}

/// Removes the first character of `s` if it is one of `chars`; gives it, or '\0'.
char take(std::string_view &s, std::string_view chars) {
    if (s.empty() || chars.find(s[0]) == std::string_view::npos)
        return '\0';
    char c = s[0];
    s.remove_prefix(1);
    return c;
}

std::optional<double> strictRadix(std::string_view s) {
    int radix = 8;
    char prefix = take(s, "hHoO");
    if (prefix == 'h' || prefix == 'H')
        radix = 16;
    if (s.empty())
        return std::nullopt;
    std::uint64_t raw = 0;
    for (char c : s) {
        int d = digitValue(c, radix);
        if (d < 0)
            return std::nullopt;
        accumulate(raw, d, radix);
    }
    return radixValue(raw, "CDbl");
}

bool strictExponent(std::string_view s, DecimalParts &p) {
    bool negative = take(s, "+-") == '-';
    if (s.empty())
        return false;
    long long exponent = 0;
    for (char c : s) {
        if (!isDigit(c))
            return false;
        if (exponent < 100000)
            exponent = exponent * 10 + (c - '0');
    }
    p.exponent = negative ? -exponent : exponent;
    return true;
}

/// Digits with at most one point among them and nothing else but a leading
/// sign ("1234", "-12.500", ".5"), as lists and grids hold them; nullopt for any other text,
/// which the full reading takes. Up to 15 digits the digits are exact as a
/// double and so is a power of ten up to 10^22: the one division then rounds
/// as the full conversion does, without taking the text apart into strings.
std::optional<double> plainDecimal(std::string_view s) {
    static constexpr double powers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                        1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char *p = s.data();
    const char *const end = p + s.size();
    bool negative = false;
    if (p != end && (*p == '-' || *p == '+')) {
        negative = *p == '-';
        ++p;
    }
    const char *const first = p;
    std::uint64_t digits = 0; // wraps past 19 digits, but then it is not used
    for (unsigned d; p != end && (d = static_cast<unsigned char>(*p) - unsigned{'0'}) <= 9; ++p)
        digits = digits * 10 + d;
    std::ptrdiff_t count = p - first;
    std::ptrdiff_t afterPoint = 0;
    if (p != end && *p == '.') {
        const char *const point = ++p;
        for (unsigned d; p != end && (d = static_cast<unsigned char>(*p) - unsigned{'0'}) <= 9; ++p)
            digits = digits * 10 + d;
        afterPoint = p - point;
        count += afterPoint;
    }
    if (p != end || count == 0 || count > 15)
        return std::nullopt;
    // A whole number needs no division, and a division costs more than the
    // rest of the reading: a list of ids is read this way line after line.
    const double value = afterPoint == 0 ? static_cast<double>(digits)
                                         : static_cast<double>(digits) / powers[afterPoint];
    return negative ? -value : value;
}

} // namespace

std::optional<double> numberFromText(std::string_view text) {
    std::string_view s = trimBlanks(text);
    if (std::optional<double> plain = plainDecimal(s))
        return plain;
    if (!s.empty() && s[0] == '&')
        return strictRadix(s.substr(1));
    DecimalParts p;
    p.negative = take(s, "+-") == '-';
    std::size_t i = 0;
    for (; i < s.size() && (isDigit(s[i]) || (s[i] == ',' && !p.whole.empty())); ++i)
        if (s[i] != ',')
            p.whole += s[i];
    if (i < s.size() && s[i] == '.')
        for (++i; i < s.size() && isDigit(s[i]); ++i)
            p.fraction += s[i];
    if (!p.hasDigits())
        return std::nullopt;
    if (i < s.size()) {
        char c = s[i];
        if (c != 'e' && c != 'E' && c != 'd' && c != 'D')
            return std::nullopt;
        if (!strictExponent(s.substr(i + 1), p))
            return std::nullopt;
    }
    return toDouble(p, "CDbl");
}

} // namespace vb
