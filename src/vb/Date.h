// vb::Date: a date as the old platform kept it, a day count with the time as fraction.
#pragma once

#include <compare>

namespace vb {

/// Days since 30 December 1899, the time of day as the fraction (0.5 is noon).
/// Negative serials (dates before 1900) keep the time as a positive fraction
/// of the day, as the old platform did; this port only needs dates after 1900.
struct Date {
    double serial = 0.0;

    friend auto operator<=>(const Date &, const Date &) = default;
    friend bool operator==(const Date &, const Date &) = default;

    /// The date part only (midnight).
    Date datePart() const;
    /// True when the time of day is not midnight.
    bool hasTime() const;
};

/// The calendar parts of a date, the time rounded to the second.
struct DateTimeParts {
    int year = 0;
    int month = 0;
    int day = 0;
    int hour = 0;
    int minute = 0;
    int second = 0;
};
DateTimeParts partsOf(Date d);

/// True for a real day of a month in the years 100 to 9999.
bool isValidCalendarDate(int year, int month, int day);
int daysInMonth(int year, int month);
/// True when a serial lies in the old platform's range of dates (100 to 9999).
bool isInDateRange(double serial);

/// A date from its parts; months and days out of range roll over into the
/// next or previous month or year;
/// years 0-29 mean 2000-2029 and 30-99 mean 1930-1999. Raises 5 outside 100-9999.
Date DateSerial(int year, int month, int day);
/// A time of day as a fraction of a day.
Date TimeSerial(int hour, int minute, int second);

int Year(Date d);
int Month(Date d);
int Day(Date d);
int Hour(Date d);
int Minute(Date d);
int Second(Date d);
/// 1 for Sunday to 7 for Saturday.
int Weekday(Date d);

/// Adds a number of days (may be fractional or negative).
Date operator+(Date d, double days);
Date operator-(Date d, double days);
/// The difference in days.
double operator-(Date a, Date b);

} // namespace vb
