#include "vb/Date.h"

#include "vb/Error.h"

#include <cmath>

namespace vb {
namespace {

constexpr double secondsPerDay = 86400.0;
/// Day number of 30 December 1899 counted from 1 January 1970.
constexpr long long serialEpoch = -25569;
/// The old platform's range of dates: 1 January 100 to 31 December 9999.
constexpr long long firstSerial = -657434;
constexpr long long lastSerial = 2958465;

long long floorDiv(long long a, long long b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

/// Days from 1970-01-01 to a date of the proleptic Gregorian calendar.
long long daysFromCivil(long long y, long long m, long long d) {
    y -= m <= 2;
    long long era = floorDiv(y, 400);
    long long yoe = y - era * 400;
    long long doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    long long doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}

DateTimeParts civilFromDays(long long z) {
    z += 719468;
    long long era = floorDiv(z, 146097);
    long long doe = z - era * 146097;
    long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    long long mp = (5 * doy + 2) / 153;
    DateTimeParts p;
    p.day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    p.month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    p.year = static_cast<int>(yoe + era * 400 + (p.month <= 2));
    return p;
}

/// The moment a serial stands for, on a straight time line: the old platform
/// kept the time of a date before 1900 as a positive fraction behind a
/// negative day, so -1.25 is 29 December 1899 at 06:00, the moment -0.75.
double momentOf(Date d) {
    double day = std::trunc(d.serial);
    return day + std::abs(d.serial - day);
}

Date dateOfMoment(double moment) {
    double day = std::floor(moment);
    double fraction = moment - day;
    if (day < 0 && fraction > 0)
        return Date{day - fraction};
    return Date{moment};
}

/// Day and second of a date, the time rounded to the nearest second as the
/// old platform showed it.
struct DaySecond {
    long long day;
    long long second;
};

DaySecond splitDate(Date d) {
    auto total = static_cast<long long>(std::llround(momentOf(d) * secondsPerDay));
    long long day = floorDiv(total, 86400);
    return {day, total - day * 86400};
}

} // namespace

Date Date::datePart() const {
    return Date{dateOfMoment(static_cast<double>(splitDate(*this).day)).serial};
}

bool Date::hasTime() const {
    return splitDate(*this).second != 0;
}

DateTimeParts partsOf(Date d) {
    DaySecond ds = splitDate(d);
    DateTimeParts p = civilFromDays(ds.day + serialEpoch);
    p.hour = static_cast<int>(ds.second / 3600);
    p.minute = static_cast<int>(ds.second / 60 % 60);
    p.second = static_cast<int>(ds.second % 60);
    return p;
}

Date DateSerial(int year, int month, int day) {
    // Two-digit years fall in 1930-2029, as the old DateSerial read them.
    if (year >= 0 && year < 30)
        year += 2000;
    else if (year >= 30 && year < 100)
        year += 1900;
    long long y = year + floorDiv(month - 1, 12);
    long long m = month - 1 - floorDiv(month - 1, 12) * 12 + 1;
    long long serial = daysFromCivil(y, m, 1) + day - 1 - serialEpoch;
    if (serial < firstSerial || serial > lastSerial)
        throw Error::standard(err::InvalidProcedureCall, "DateSerial");
    return Date{static_cast<double>(serial)};
}

Date TimeSerial(int hour, int minute, int second) {
    double total = hour * 3600.0 + minute * 60.0 + second;
    return dateOfMoment(total / secondsPerDay);
}

bool isValidCalendarDate(int year, int month, int day) {
    if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1)
        return false;
    return day <= daysInMonth(year, month);
}

int daysInMonth(int year, int month) {
    static constexpr int days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return month == 2 && leap ? 29 : days[month - 1];
}

bool isInDateRange(double serial) {
    return serial >= firstSerial && serial < lastSerial + 1;
}

int Year(Date d) {
    return partsOf(d).year;
}
int Month(Date d) {
    return partsOf(d).month;
}
int Day(Date d) {
    return partsOf(d).day;
}
int Hour(Date d) {
    return partsOf(d).hour;
}
int Minute(Date d) {
    return partsOf(d).minute;
}
int Second(Date d) {
    return partsOf(d).second;
}

int Weekday(Date d) {
    // Day 0, 30 December 1899, was a Saturday.
    long long day = splitDate(d).day;
    return static_cast<int>(day + 6 - floorDiv(day + 6, 7) * 7) + 1;
}

Date operator+(Date d, double days) {
    return dateOfMoment(momentOf(d) + days);
}
Date operator-(Date d, double days) {
    return dateOfMoment(momentOf(d) - days);
}
double operator-(Date a, Date b) {
    return momentOf(a) - momentOf(b);
}

} // namespace vb
