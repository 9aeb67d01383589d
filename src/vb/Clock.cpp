#include "vb/Clock.h"

#include "vb/Error.h"

#include <chrono>
#include <ctime>
#include <utility>

namespace vb {
namespace {

std::optional<Date> &fixedClock() {
    static std::optional<Date> fixed;
    return fixed;
}

std::string &shortDatePattern() {
    static std::string pattern = "dd/mm/yyyy";
    return pattern;
}

Date systemNow() {
    std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
    localtime_r(&now, &local);
    return DateSerial(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday) +
           TimeSerial(local.tm_hour, local.tm_min, local.tm_sec).serial;
}

bool contains(std::string_view pattern, char letter) {
    for (char c : pattern)
        if (c == letter || c == letter - 'a' + 'A')
            return true;
    return false;
}

} // namespace

Date Now() {
    return fixedClock() ? *fixedClock() : systemNow();
}

Date Today() {
    return Now().datePart();
}

Date TimeOfDay() {
    DateTimeParts p = partsOf(Now());
    return TimeSerial(p.hour, p.minute, p.second);
}

void setClock(std::optional<Date> fixed) {
    fixedClock() = fixed;
}

const std::string &shortDateFormat() {
    return shortDatePattern();
}

void setShortDateFormat(std::string_view pattern) {
    // A short date form has to show all three parts, or CDate could not read
    // back what CStr wrote.
    if (!contains(pattern, 'd') || !contains(pattern, 'm') || !contains(pattern, 'y'))
        throw Error(err::InvalidProcedureCall, "setShortDateFormat",
                    "A short date form needs d, m and y: " + std::string(pattern));
    shortDatePattern() = std::string(pattern);
}

} // namespace vb
