#include "vb/DateText.h"

#include "vb/Clock.h"

#include <array>
#include <cctype>
#include <string>
#include <vector>

namespace vb {
namespace {

struct Token {
    enum Kind { Number, MonthName, AmPm, Separator } kind;
    int value = 0;  // the number, the month (1-12), 1 for PM, or the separator
    int digits = 0; // how many digits a number was written with
};

constexpr std::array<const char *, 12> monthNames = {
    "january", "february", "march",     "april",   "may",      "june",
    "july",    "august",   "september", "october", "november", "december"};

/// A month by its full name or its first three letters; 0 if the word is none.
int monthOfWord(const std::string &word) {
    for (std::size_t m = 0; m < monthNames.size(); ++m) {
        std::string_view name = monthNames[m];
        if (word == name || (word.size() == 3 && name.substr(0, 3) == word))
            return static_cast<int>(m) + 1;
    }
    return 0;
}

bool addWord(const std::string &word, std::vector<Token> &tokens) {
    if (word == "am" || word == "a" || word == "pm" || word == "p") {
        tokens.push_back({Token::AmPm, word[0] == 'p' ? 1 : 0});
        return true;
    }
    if (word == "t") { // between the date and the time of ISO text
        tokens.push_back({Token::Separator, ' '});
        return true;
    }
    int month = monthOfWord(word);
    if (month == 0)
        return false;
    tokens.push_back({Token::MonthName, month});
    return true;
}

std::optional<std::vector<Token>> tokenize(std::string_view text) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    while (i < text.size()) {
        unsigned char c = static_cast<unsigned char>(text[i]);
        if (std::isdigit(c)) {
            Token t{Token::Number, 0, 0};
            for (; i < text.size() && std::isdigit(static_cast<unsigned char>(text[i])); ++i)
                if (++t.digits <= 6)
                    t.value = t.value * 10 + (text[i] - '0');
            tokens.push_back(t);
        } else if (std::isalpha(c)) {
            std::string word;
            for (; i < text.size() && std::isalpha(static_cast<unsigned char>(text[i])); ++i)
                word += static_cast<char>(std::tolower(static_cast<unsigned char>(text[i])));
            if (!addWord(word, tokens))
                return std::nullopt;
        } else if (c == ' ' || c == '/' || c == '-' || c == '.' || c == ',' || c == ':') {
            tokens.push_back({Token::Separator, c});
            ++i;
        } else {
            return std::nullopt;
        }
    }
    return tokens;
}

struct TimeOfText {
    int hour = 0, minute = 0, second = 0;
};

bool isNumberAt(const std::vector<Token> &t, std::size_t i) {
    return i < t.size() && t[i].kind == Token::Number;
}
bool isColonAt(const std::vector<Token> &t, std::size_t i) {
    return i < t.size() && t[i].kind == Token::Separator && t[i].value == ':';
}

bool applyAmPm(TimeOfText &time, bool pm) {
    if (time.hour < 1 || time.hour > 12)
        return false;
    time.hour = time.hour % 12 + (pm ? 12 : 0);
    return true;
}

/// Takes "h:mm[:ss] [AM|PM]" out of the tokens. False when the text holds a
/// broken time; an absent time leaves `time` empty.
bool extractTime(std::vector<Token> &t, std::optional<TimeOfText> &time) {
    std::size_t colon = 0;
    while (colon < t.size() && !isColonAt(t, colon))
        ++colon;
    if (colon == t.size())
        return true;
    if (colon == 0 || !isNumberAt(t, colon - 1) || !isNumberAt(t, colon + 1))
        return false;
    std::size_t first = colon - 1, last = colon + 1;
    TimeOfText found{t[first].value, t[last].value, 0};
    if (isColonAt(t, last + 1) && isNumberAt(t, last + 2))
        found.second = t[last += 2].value;
    std::size_t after = last + 1;
    while (after < t.size() && t[after].kind == Token::Separator && t[after].value == ' ')
        ++after;
    bool ok = found.minute < 60 && found.second < 60;
    if (after < t.size() && t[after].kind == Token::AmPm) {
        ok = ok && applyAmPm(found, t[after].value == 1);
        last = after;
    } else {
        ok = ok && found.hour < 24;
    }
    t.erase(t.begin() + static_cast<long>(first), t.begin() + static_cast<long>(last) + 1);
    time = found;
    return ok;
}

int fullYear(const Token &t) {
    if (t.digits > 2)
        return t.value;
    return t.value < 30 ? 2000 + t.value : 1900 + t.value;
}

bool yearComesFirst(const Token &t) {
    return t.digits > 2 || t.value > 31;
}

struct DayMonthYear {
    int day, month, year;
    bool valid() const { return isValidCalendarDate(year, month, day); }
};

/// The order of day, month and year in the session's short date form.
std::array<char, 3> shortDateOrder() {
    std::string order;
    for (char c : shortDateFormat()) {
        char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        if ((lower == 'd' || lower == 'm' || lower == 'y') &&
            order.find(lower) == std::string::npos)
            order += lower;
    }
    return {order[0], order[1], order[2]};
}

std::optional<DayMonthYear> threeNumbers(const std::vector<Token> &n) {
    if (yearComesFirst(n[0]))
        return DayMonthYear{n[2].value, n[1].value, fullYear(n[0])};
    DayMonthYear d{0, 0, 0};
    std::array<char, 3> order = shortDateOrder();
    for (std::size_t i = 0; i < 3; ++i) {
        if (order[i] == 'd')
            d.day = n[i].value;
        else if (order[i] == 'm')
            d.month = n[i].value;
        else
            d.year = fullYear(n[i]);
    }
    if (!d.valid())
        std::swap(d.day, d.month);
    return d;
}

std::optional<DayMonthYear> threeWithMonthName(const std::vector<Token> &n) {
    if (n[0].kind == Token::MonthName && n[2].kind == Token::Number)
        return DayMonthYear{n[1].value, n[0].value, fullYear(n[2])};
    if (n[1].kind != Token::MonthName || n[2].kind != Token::Number)
        return std::nullopt;
    if (yearComesFirst(n[0]))
        return DayMonthYear{n[2].value, n[1].value, fullYear(n[0])};
    return DayMonthYear{n[0].value, n[1].value, fullYear(n[2])};
}

/// Two parts: a month and a year (the first of the month), or a day and a
/// month in the year of the clock.
std::optional<DayMonthYear> twoParts(const std::vector<Token> &n) {
    bool firstIsMonth = n[0].kind == Token::MonthName;
    const Token &month = firstIsMonth ? n[0] : n[1];
    const Token &other = firstIsMonth ? n[1] : n[0];
    if (month.kind == Token::MonthName) {
        if (other.kind != Token::Number)
            return std::nullopt;
        if (yearComesFirst(other))
            return DayMonthYear{1, month.value, fullYear(other)};
        return DayMonthYear{other.value, month.value, Year(Now())};
    }
    if (yearComesFirst(n[1]))
        return DayMonthYear{1, n[0].value, fullYear(n[1])};
    std::array<char, 3> order = shortDateOrder();
    bool dayFirst = order[0] == 'd' || (order[0] == 'y' && order[1] == 'd');
    DayMonthYear d{dayFirst ? n[0].value : n[1].value, dayFirst ? n[1].value : n[0].value,
                   Year(Now())};
    if (!d.valid())
        std::swap(d.day, d.month);
    return d;
}

std::optional<DayMonthYear> datePartOf(const std::vector<Token> &tokens) {
    std::vector<Token> parts;
    for (const Token &t : tokens) {
        if (t.kind == Token::AmPm)
            return std::nullopt;
        if (t.kind != Token::Separator)
            parts.push_back(t);
    }
    int names = 0;
    for (const Token &t : parts)
        names += t.kind == Token::MonthName;
    if (names > 1)
        return std::nullopt;
    std::optional<DayMonthYear> d;
    if (parts.size() == 3)
        d = names ? threeWithMonthName(parts) : threeNumbers(parts);
    else if (parts.size() == 2)
        d = twoParts(parts);
    if (d && !d->valid())
        return std::nullopt;
    return d;
}

bool hasDateParts(const std::vector<Token> &tokens) {
    for (const Token &t : tokens)
        if (t.kind != Token::Separator)
            return true;
    return false;
}

} // namespace

std::optional<Date> dateFromText(std::string_view text) {
    std::optional<std::vector<Token>> tokens = tokenize(text);
    if (!tokens)
        return std::nullopt;
    std::optional<TimeOfText> time;
    if (!extractTime(*tokens, time))
        return std::nullopt;
    Date result{0.0};
    if (hasDateParts(*tokens)) {
        std::optional<DayMonthYear> d = datePartOf(*tokens);
        if (!d)
            return std::nullopt;
        result = DateSerial(d->year, d->month, d->day);
    } else if (!time) {
        return std::nullopt;
    }
    if (time)
        result = result + TimeSerial(time->hour, time->minute, time->second).serial;
    return result;
}

} // namespace vb
