#include "ado/sql/DateText.h"

#include <array>
#include <cctype>
#include <cstdio>

namespace ado::sql {

namespace {

struct Parts {
    int year = 1900, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};

// A small reader over the literal's characters.
class Reader {
public:
    explicit Reader(std::string_view s) : s_(s) {}
    bool done() const { return i_ >= s_.size(); }
    char peek() const { return done() ? '\0' : s_[i_]; }
    bool take(char c) {
        if (peek() != c)
            return false;
        ++i_;
        return true;
    }
    void blanks() {
        while (peek() == ' ')
            ++i_;
    }
    // Reads between `min` and `max` digits; -1 when fewer than `min` stand here.
    int digits(int min, int max, int *count = nullptr) {
        int value = 0, n = 0;
        while (n < max && std::isdigit(static_cast<unsigned char>(peek()))) {
            value = value * 10 + (s_[i_++] - '0');
            ++n;
        }
        if (count)
            *count = n;
        return n >= min ? value : -1;
    }
    std::string letters() {
        std::string out;
        while (std::isalpha(static_cast<unsigned char>(peek())))
            out += static_cast<char>(std::tolower(static_cast<unsigned char>(s_[i_++])));
        return out;
    }

private:
    std::string_view s_;
    std::size_t i_ = 0;
};

int monthOfName(const std::string &name) {
    static constexpr std::array<std::string_view, 12> names = {
        "january", "february", "march",     "april",   "may",      "june",
        "july",    "august",   "september", "october", "november", "december"};
    if (name.size() < 3)
        return -1;
    for (std::size_t m = 0; m < names.size(); ++m)
        if (names[m].substr(0, name.size()) == name)
            return static_cast<int>(m) + 1;
    return -1;
}

bool validDate(const Parts &p) {
    static constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (p.year < 1753 || p.year > 9999 || p.month < 1 || p.month > 12 || p.day < 1)
        return false;
    bool leap = (p.year % 4 == 0 && p.year % 100 != 0) || p.year % 400 == 0;
    int last = days[p.month - 1] + (p.month == 2 && leap ? 1 : 0);
    return p.day <= last && p.hour < 24 && p.minute < 60 && p.second < 60;
}

bool readTime(Reader &r, Parts &p) {
    p.hour = r.digits(1, 2);
    if (p.hour < 0 || !r.take(':'))
        return false;
    p.minute = r.digits(2, 2);
    if (p.minute < 0)
        return false;
    if (r.take(':')) {
        p.second = r.digits(2, 2);
        if (p.second < 0)
            return false;
        if (r.take('.') || r.take(':'))
            r.digits(1, 9); // fractions of a second are not kept
    }
    r.blanks();
    std::string ampm = r.letters();
    if (ampm == "pm" && p.hour < 12)
        p.hour += 12;
    else if (ampm == "am" && p.hour == 12)
        p.hour = 0;
    else if (!ampm.empty() && ampm != "am" && ampm != "pm")
        return false;
    return true;
}

// yyyy sep (mm | Mon) sep dd, after the year has been read.
bool readYearFirst(Reader &r, Parts &p) {
    char sep = r.peek();
    if (sep != '/' && sep != '-' && sep != '.')
        return false;
    r.take(sep);
    if (std::isalpha(static_cast<unsigned char>(r.peek())))
        p.month = monthOfName(r.letters());
    else
        p.month = r.digits(1, 2);
    if (p.month < 0 || !r.take(sep))
        return false;
    p.day = r.digits(1, 2);
    return p.day >= 0;
}

bool readDate(Reader &r, Parts &p) {
    int n = 0;
    int first = r.digits(1, 8, &n);
    if (first < 0)
        return false;
    if (n == 8) {
        p.year = first / 10000;
        p.month = first / 100 % 100;
        p.day = first % 100;
        return true;
    }
    if (n == 4) {
        p.year = first;
        return readYearFirst(r, p);
    }
    if (n > 2 || !r.take('/'))
        return false;
    p.month = first; // mm/dd/yyyy, the order of an English-language server
    p.day = r.digits(1, 2);
    if (p.day < 0 || !r.take('/'))
        return false;
    p.year = r.digits(4, 4);
    return p.year >= 0;
}

std::optional<Parts> parse(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    Parts p;
    if (text.empty())
        return p;
    Reader r(text);
    bool timeOnly = text.find(':') != std::string_view::npos &&
                    text.find_first_of("/-.") == std::string_view::npos && text.size() <= 12;
    if (timeOnly) {
        if (!readTime(r, p))
            return std::nullopt;
    } else {
        if (!readDate(r, p))
            return std::nullopt;
        if (!r.done()) {
            if (!r.take('T'))
                r.blanks();
            if (!r.done() && !readTime(r, p))
                return std::nullopt;
        }
    }
    r.blanks();
    if (!r.done() || !validDate(p))
        return std::nullopt;
    return p;
}

std::string format(const Parts &p) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", p.year, p.month, p.day,
                  p.hour, p.minute, p.second);
    return buffer;
}

} // namespace

std::string canonicalDate(vb::Date date) {
    Parts p{vb::Year(date), vb::Month(date),  vb::Day(date),
            vb::Hour(date), vb::Minute(date), vb::Second(date)};
    return format(p);
}

std::optional<std::string> canonicalDate(std::string_view text) {
    auto p = parse(text);
    if (!p)
        return std::nullopt;
    return format(*p);
}

std::optional<vb::Date> parseDate(std::string_view text) {
    auto p = parse(text);
    if (!p)
        return std::nullopt;
    vb::Date day = vb::DateSerial(p->year, p->month, p->day);
    return vb::Date{day.serial + vb::TimeSerial(p->hour, p->minute, p->second).serial};
}

} // namespace ado::sql
