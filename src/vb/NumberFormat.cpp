#include "vb/NumberFormat.h"

#include "vb/Error.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <vector>

namespace vb {
namespace {

struct Item {
    enum Kind { Zero, Digit, Literal } kind;
    std::string text;
    bool isPlace() const { return kind != Literal; }
};

struct NumberPattern {
    std::vector<Item> whole;
    std::vector<Item> fraction;
    bool point = false;
    bool grouping = false;
    int thousandsScale = 0;
    bool percent = false;
};

std::vector<std::string_view> splitSections(std::string_view pattern) {
    std::vector<std::string_view> sections;
    std::size_t start = 0;
    bool quoted = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '"')
            quoted = !quoted;
        else if (!quoted && pattern[i] == '\\')
            ++i;
        else if (!quoted && pattern[i] == ';') {
            sections.push_back(pattern.substr(start, i - start));
            start = i + 1;
        }
    }
    sections.push_back(pattern.substr(start));
    return sections;
}

bool isExponentAt(std::string_view s, std::size_t i) {
    return (s[i] == 'e' || s[i] == 'E') && i + 1 < s.size() && (s[i + 1] == '+' || s[i + 1] == '-');
}

/// Commas before the point group thousands when digit places stand on both
/// sides of them, and divide by 1000 when they close the digit places.
void placeCommas(NumberPattern &p, const std::vector<std::size_t> &commasAfter) {
    std::size_t places = 0;
    for (const Item &item : p.whole)
        places += item.isPlace();
    for (std::size_t before : commasAfter) {
        if (before > 0 && before < places)
            p.grouping = true;
        else if (before > 0 && before == places)
            ++p.thousandsScale;
    }
}

NumberPattern parsePattern(std::string_view s) {
    NumberPattern p;
    std::vector<std::size_t> commasAfter; // digit places before each comma
    std::size_t placesSoFar = 0;
    for (std::size_t i = 0; i < s.size(); ++i) {
        std::vector<Item> &items = p.point ? p.fraction : p.whole;
        char c = s[i];
        if (c == '"') {
            std::size_t close = std::min(s.find('"', i + 1), s.size());
            items.push_back({Item::Literal, std::string(s.substr(i + 1, close - i - 1))});
            i = close;
        } else if (c == '\\') {
            if (i + 1 < s.size())
                items.push_back({Item::Literal, std::string(1, s[++i])});
        } else if (c == '0' || c == '#') {
            items.push_back({c == '0' ? Item::Zero : Item::Digit, {}});
            placesSoFar += !p.point;
        } else if (c == '.' && !p.point) {
            p.point = true;
        } else if (c == ',' && !p.point) {
            commasAfter.push_back(placesSoFar);
        } else if (isExponentAt(s, i)) {
            throw Error(err::InvalidProcedureCall, "Format",
                        "Exponent number patterns are not supported: " + std::string(s));
        } else {
            p.percent = p.percent || c == '%';
            items.push_back({Item::Literal, std::string(1, c)});
        }
    }
    placeCommas(p, commasAfter);
    return p;
}

/// The digits of a number rounded to a number of decimals, half away from
/// zero, after taking it at 15 significant digits as the old platform did.
struct RoundedDigits {
    std::string whole;    // no leading zeros; empty for zero
    std::string fraction; // exactly `decimals` digits
};

RoundedDigits roundDigits(double value, std::size_t decimals) {
    std::array<char, 64> buf{};
    auto [end, ec] = std::to_chars(buf.data(), buf.data() + buf.size(), value,
                                   std::chars_format::scientific, 14);
    std::string text(buf.data(), end); // d.dddddddddddddde±x
    std::size_t e = text.find('e');
    int exponent = std::stoi(text.substr(e + 1));
    std::string digits = text.substr(0, 1) + text.substr(2, e - 2);
    long long wholeCount = exponent + 1;
    if (wholeCount < 0) {
        digits.insert(0, static_cast<std::size_t>(-wholeCount), '0');
        wholeCount = 0;
    }
    std::size_t keep = static_cast<std::size_t>(wholeCount) + decimals;
    if (digits.size() <= keep)
        digits.append(keep + 1 - digits.size(), '0');
    bool up = digits[keep] >= '5';
    digits.resize(keep);
    for (std::size_t i = keep; up && i > 0; --i) {
        up = digits[i - 1] == '9';
        digits[i - 1] = up ? '0' : static_cast<char>(digits[i - 1] + 1);
    }
    if (up)
        digits.insert(0, "1"), ++wholeCount;
    RoundedDigits r{digits.substr(0, static_cast<std::size_t>(wholeCount)),
                    digits.substr(static_cast<std::size_t>(wholeCount))};
    r.whole.erase(0, std::min(r.whole.find_first_not_of('0'), r.whole.size()));
    return r;
}

std::string groupThousands(const std::string &digits) {
    std::string out;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        if (i > 0 && (digits.size() - i) % 3 == 0)
            out += ',';
        out += digits[i];
    }
    return out;
}

/// Puts the digits before the point into the digit places from the right;
/// the leftmost place takes all that is left over.
std::string fillWhole(const NumberPattern &p, std::string digits) {
    std::size_t places = 0, minimum = 0;
    for (const Item &item : p.whole) {
        places += item.isPlace();
        if (item.kind == Item::Zero && minimum == 0)
            minimum = places;
    }
    if (minimum > 0)
        minimum = places - minimum + 1;
    if (digits.size() < minimum)
        digits.insert(0, minimum - digits.size(), '0');
    if (p.grouping)
        digits = groupThousands(digits);
    if (places == 0) {
        std::string out;
        for (const Item &item : p.whole)
            out += item.text;
        return out + digits;
    }
    std::vector<std::string> pieces;
    std::size_t end = digits.size();
    for (std::size_t i = p.whole.size(), seen = 0; i-- > 0;) {
        const Item &item = p.whole[i];
        if (!item.isPlace()) {
            pieces.push_back(item.text);
            continue;
        }
        std::size_t start = ++seen == places ? 0 : end - std::min<std::size_t>(end, 1);
        while (start > 0 && digits[start - 1] == ',')
            --start;
        pieces.push_back(digits.substr(start, end - start));
        end = start;
    }
    std::string out;
    for (auto it = pieces.rbegin(); it != pieces.rend(); ++it)
        out += *it;
    return out;
}

std::string fillFraction(const NumberPattern &p, const std::string &digits) {
    std::size_t last = 0, index = 0; // digit places to show: up to the last that must
    for (const Item &item : p.fraction) {
        if (!item.isPlace())
            continue;
        ++index;
        if (item.kind == Item::Zero || digits[index - 1] != '0')
            last = index;
    }
    std::string out = p.point ? "." : "";
    index = 0;
    for (const Item &item : p.fraction) {
        if (!item.isPlace())
            out += item.text;
        else if (++index <= last)
            out += digits[index - 1];
    }
    return out;
}

std::string formatSection(double magnitude, std::string_view section) {
    NumberPattern p = parsePattern(section);
    if (p.percent)
        magnitude *= 100.0;
    for (int i = 0; i < p.thousandsScale; ++i)
        magnitude /= 1000.0;
    std::size_t decimals = 0;
    for (const Item &item : p.fraction)
        decimals += item.isPlace();
    RoundedDigits r = roundDigits(magnitude, decimals);
    return fillWhole(p, r.whole) + fillFraction(p, r.fraction);
}

} // namespace

std::string formatNumber(double x, std::string_view pattern) {
    if (!std::isfinite(x))
        throw Error::standard(err::Overflow, "Format");
    std::vector<std::string_view> sections = splitSections(pattern);
    if (x < 0 && sections.size() >= 2 && !sections[1].empty())
        return formatSection(-x, sections[1]);
    if (x == 0 && sections.size() >= 3 && !sections[2].empty())
        return formatSection(0.0, sections[2]);
    return (x < 0 ? "-" : "") + formatSection(std::abs(x), sections[0]);
}

} // namespace vb
