#include "vb/DateFormat.h"

#include "vb/Clock.h"

#include <array>
#include <cctype>

namespace vb {
namespace {

constexpr std::array<const char *, 12> monthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<const char *, 7> dayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                  "Thursday", "Friday", "Saturday"};

// ASCII letters only: pattern letters are ASCII, and tolower leaves other
// bytes alone in the C and UTF-8 locales this program runs in.
char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

bool isDateLetter(char c) {
    c = lower(c);
    return c == 'd' || c == 'm' || c == 'y' || c == 'h' || c == 'n' || c == 's' || c == 'w' ||
           c == 'q';
}

std::string twoDigits(int n) {
    if (n >= 0 && n < 100)
        return {static_cast<char>('0' + n / 10), static_cast<char>('0' + n % 10)};
    return n < 10 ? "0" + std::to_string(n) : std::to_string(n);
}

std::string fourDigits(int n) {
    std::string s = std::to_string(n);
    return std::string(s.size() < 4 ? 4 - s.size() : 0, '0') + s;
}

int dayOfYear(const DateTimeParts &p) {
    return static_cast<int>(DateSerial(p.year, p.month, p.day) - DateSerial(p.year, 1, 1)) + 1;
}

bool startsWithNoCase(std::string_view s, std::string_view prefix) {
    if (s.size() < prefix.size())
        return false;
    for (std::size_t i = 0; i < prefix.size(); ++i)
        if (lower(s[i]) != lower(prefix[i]))
            return false;
    return true;
}

/// Length of an AM/PM marker at the start of the pattern, 0 if there is none.
std::size_t amPmLength(std::string_view p) {
    // Every other letter of every pattern is asked this: answer most at once.
    if (p.empty() || lower(p[0]) != 'a')
        return 0;
    if (startsWithNoCase(p, "am/pm"))
        return 5;
    if (startsWithNoCase(p, "ampm"))
        return 4;
    if (startsWithNoCase(p, "a/p"))
        return 3;
    return 0;
}

bool usesTwelveHours(std::string_view pattern) {
    for (std::size_t i = 0; i < pattern.size(); ++i)
        if (lower(pattern[i]) == 'a' && amPmLength(pattern.substr(i)) > 0)
            return true;
    return false;
}

/// One run of a letter ("mmm") shown for a date.
class DateWriter {
public:
    DateWriter(Date d, bool twelveHours) : date_(d), p_(partsOf(d)), twelveHours_(twelveHours) {}

    void field(char letter, std::size_t run, std::string &out) {
        bool afterHour = lastWasHour_;
        lastWasHour_ = letter == 'h';
        switch (letter) {
        case 'd':
            return day(run, out);
        case 'm':
            return month(run, afterHour, out);
        case 'y':
            return year(run, out);
        case 'h':
            out += number(hour(), run);
            break;
        case 'n':
            out += number(p_.minute, run);
            break;
        case 's':
            out += number(p_.second, run);
            break;
        case 'w':
            return week(run, out);
        case 'q':
            out += std::to_string((p_.month - 1) / 3 + 1);
            break;
        }
    }

    void amPm(std::string_view marker, std::string &out) {
        bool pm = p_.hour >= 12;
        if (marker.size() == 3) { // A/P
            char c = pm ? marker[2] : marker[0];
            out += c;
        } else {
            bool upper = std::isupper(static_cast<unsigned char>(marker[0]));
            out += pm ? (upper ? "PM" : "pm") : (upper ? "AM" : "am");
        }
    }

private:
    static std::string number(int n, std::size_t run) {
        return run >= 2 ? twoDigits(n) : std::to_string(n);
    }
    int hour() const {
        if (!twelveHours_)
            return p_.hour;
        return p_.hour % 12 == 0 ? 12 : p_.hour % 12;
    }
    void day(std::size_t run, std::string &out) {
        if (run <= 2)
            out += number(p_.day, run);
        else if (run == 3)
            out += std::string(dayNames[Weekday(date_) - 1]).substr(0, 3);
        else if (run == 4)
            out += dayNames[Weekday(date_) - 1];
        else if (run == 5)
            out += formatDate(date_, shortDateFormat());
        else
            out += formatDate(date_, "dddd, mmmm dd, yyyy");
    }
    void month(std::size_t run, bool afterHour, std::string &out) {
        // "mm" after "hh" shows minutes, so "hh:mm:ss" is a time.
        if (afterHour && run <= 2)
            out += number(p_.minute, run);
        else if (run <= 2)
            out += number(p_.month, run);
        else if (run == 3)
            out += std::string(monthNames[p_.month - 1]).substr(0, 3);
        else
            out += monthNames[p_.month - 1];
    }
    void year(std::size_t run, std::string &out) {
        if (run == 1)
            out += std::to_string(dayOfYear(p_));
        else if (run <= 3)
            out += twoDigits(p_.year % 100);
        else
            out += fourDigits(p_.year);
        if (run == 3)
            out += std::to_string(dayOfYear(p_));
    }
    void week(std::size_t run, std::string &out) {
        if (run == 1) {
            out += std::to_string(Weekday(date_));
            return;
        }
        int offset = Weekday(DateSerial(p_.year, 1, 1)) - 1;
        out += std::to_string((dayOfYear(p_) - 1 + offset) / 7 + 1);
    }

    Date date_;
    DateTimeParts p_;
    bool twelveHours_;
    bool lastWasHour_ = false;
};

std::size_t runLength(std::string_view pattern, std::size_t i) {
    std::size_t run = 1;
    while (i + run < pattern.size() && lower(pattern[i + run]) == lower(pattern[i]))
        ++run;
    return run;
}

} // namespace

bool isDatePattern(std::string_view pattern) {
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '"') {
            std::size_t close = pattern.find('"', i + 1);
            if (close == std::string_view::npos)
                return false;
            i = close;
        } else if (pattern[i] == '\\') {
            ++i;
        } else if (isDateLetter(pattern[i]) || lower(pattern[i]) == 'c' ||
                   startsWithNoCase(pattern.substr(i), "ttttt")) {
            return true;
        }
    }
    return false;
}

std::string formatDate(Date d, std::string_view pattern) {
    DateWriter writer(d, usesTwelveHours(pattern));
    std::string out;
    for (std::size_t i = 0; i < pattern.size();) {
        char c = pattern[i];
        if (c == '"') {
            std::size_t close = pattern.find('"', i + 1);
            if (close == std::string_view::npos)
                close = pattern.size();
            out += pattern.substr(i + 1, close - i - 1);
            i = close + 1;
        } else if (c == '\\') {
            if (i + 1 < pattern.size())
                out += pattern[i + 1];
            i += 2;
        } else if (std::size_t n = lower(c) == 'a' ? amPmLength(pattern.substr(i)) : 0; n > 0) {
            writer.amPm(pattern.substr(i, n), out);
            i += n;
        } else if (isDateLetter(c)) {
            std::size_t run = runLength(pattern, i);
            writer.field(lower(c), run, out);
            i += run;
        } else if (lower(c) == 't' && startsWithNoCase(pattern.substr(i), "ttttt")) {
            out += formatDate(d, "hh:mm:ss");
            i += 5;
        } else if (lower(c) == 'c') {
            out += formatDate(d, "ddddd");
            if (d.hasTime())
                out += " " + formatDate(d, "ttttt");
            ++i;
        } else {
            out += c;
            ++i;
        }
    }
    return out;
}

} // namespace vb
