#include "vb/Date.h"

#include "vb/Error.h"

#include <gtest/gtest.h>

using vb::Date;
using vb::DateSerial;
using vb::TimeSerial;

TEST(DateTest, SerialCountsDaysFromTheEndOf1899) {
    EXPECT_EQ(DateSerial(1899, 12, 30).serial, 0.0);
    EXPECT_EQ(DateSerial(1900, 1, 1).serial, 2.0);
    EXPECT_EQ(DateSerial(2023, 11, 5).serial, 45235.0);
    EXPECT_EQ(DateSerial(1899, 12, 29).serial, -1.0);
    EXPECT_EQ(DateSerial(100, 1, 1).serial, -657434.0);
    EXPECT_EQ(DateSerial(9999, 12, 31).serial, 2958465.0);
}

TEST(DateTest, DateSerialRollsOverAndReadsTwoDigitYears) {
    EXPECT_EQ(DateSerial(2023, 13, 1), DateSerial(2024, 1, 1));
    EXPECT_EQ(DateSerial(2023, 0, 1), DateSerial(2022, 12, 1));
    EXPECT_EQ(DateSerial(2024, 3, 0), DateSerial(2024, 2, 29));
    EXPECT_EQ(DateSerial(2023, -11, 1), DateSerial(2022, 1, 1));
    EXPECT_EQ(DateSerial(2023, 1, 32), DateSerial(2023, 2, 1));
    EXPECT_EQ(DateSerial(29, 1, 1), DateSerial(2029, 1, 1));
    EXPECT_EQ(DateSerial(30, 1, 1), DateSerial(1930, 1, 1));
    EXPECT_THROW(DateSerial(10000, 1, 1), vb::Error);
}

TEST(DateTest, PartsOfADateWithTime) {
    Date d = DateSerial(2024, 2, 29) + TimeSerial(23, 59, 58).serial;
    EXPECT_EQ(vb::Year(d), 2024);
    EXPECT_EQ(vb::Month(d), 2);
    EXPECT_EQ(vb::Day(d), 29);
    EXPECT_EQ(vb::Hour(d), 23);
    EXPECT_EQ(vb::Minute(d), 59);
    EXPECT_EQ(vb::Second(d), 58);
    EXPECT_EQ(vb::Weekday(d), 5); // Thursday
    EXPECT_EQ(vb::Weekday(DateSerial(1899, 12, 30)), 7);
    EXPECT_EQ(vb::Weekday(DateSerial(1899, 12, 24)), 1);
    EXPECT_TRUE(d.hasTime());
    EXPECT_EQ(d.datePart(), DateSerial(2024, 2, 29));
}

TEST(DateTest, TimeRoundsToTheNearestSecondAcrossMidnight) {
    Date almost{DateSerial(2023, 12, 31).serial + 0.4 / 86400.0};
    EXPECT_FALSE(almost.hasTime());
    Date carry{DateSerial(2023, 12, 31).serial + 1.0 - 0.2 / 86400.0};
    EXPECT_EQ(vb::Year(carry), 2024);
    EXPECT_EQ(vb::Day(carry), 1);
    EXPECT_EQ(vb::Hour(carry), 0);
}

TEST(DateTest, DatesBefore1900KeepTheTimeAsAPositiveFraction) {
    Date d = DateSerial(1899, 12, 29) + TimeSerial(6, 0, 0).serial;
    EXPECT_DOUBLE_EQ(d.serial, -1.25);
    EXPECT_EQ(vb::Day(d), 29);
    EXPECT_EQ(vb::Hour(d), 6);
    EXPECT_EQ(d.datePart(), DateSerial(1899, 12, 29));
    EXPECT_DOUBLE_EQ((d + 1.0).serial, 0.25);
    EXPECT_DOUBLE_EQ(Date{0.25} - d, 1.0);
}

TEST(DateTest, ArithmeticInDays) {
    Date d = DateSerial(2024, 3, 1);
    EXPECT_EQ(d - 1.0, DateSerial(2024, 2, 29));
    EXPECT_EQ(d + 365.0, DateSerial(2025, 3, 1));
    EXPECT_DOUBLE_EQ(DateSerial(2024, 1, 1) - DateSerial(2023, 1, 1), 365.0);
    EXPECT_DOUBLE_EQ(TimeSerial(12, 0, 0).serial, 0.5);
    EXPECT_LT(DateSerial(2023, 1, 1), DateSerial(2023, 1, 2));
}

TEST(DateTest, CalendarChecks) {
    EXPECT_TRUE(vb::isValidCalendarDate(2024, 2, 29));
    EXPECT_FALSE(vb::isValidCalendarDate(2023, 2, 29));
    EXPECT_FALSE(vb::isValidCalendarDate(1900, 2, 29));
    EXPECT_TRUE(vb::isValidCalendarDate(2000, 2, 29));
    EXPECT_FALSE(vb::isValidCalendarDate(99, 1, 1));
    EXPECT_FALSE(vb::isValidCalendarDate(2023, 4, 31));
    EXPECT_TRUE(vb::isInDateRange(2958465.99));
    EXPECT_FALSE(vb::isInDateRange(2958466.0));
}
