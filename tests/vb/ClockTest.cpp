#include "vb/Clock.h"

#include "vb/Conversion.h"
#include "vb/Error.h"

#include <gtest/gtest.h>

namespace {

class ClockTest : public ::testing::Test {
protected:
    void TearDown() override {
        vb::setClock(std::nullopt);
        vb::setShortDateFormat("dd/mm/yyyy");
    }
};

TEST_F(ClockTest, AFixedClockGivesNowTodayAndTheTime) {
    vb::Date fixed = vb::DateSerial(2023, 11, 5) + vb::TimeSerial(13, 7, 9).serial;
    vb::setClock(fixed);
    EXPECT_EQ(vb::Now(), fixed);
    EXPECT_EQ(vb::Today(), vb::DateSerial(2023, 11, 5));
    EXPECT_EQ(vb::TimeOfDay(), vb::TimeSerial(13, 7, 9));
}

TEST_F(ClockTest, TheSystemClockRunsWhenNoneIsFixed) {
    vb::setClock(vb::DateSerial(2000, 1, 1));
    vb::setClock(std::nullopt);
    EXPECT_GT(vb::Year(vb::Now()), 2020);
    EXPECT_FALSE(vb::Today().hasTime());
}

TEST_F(ClockTest, TheShortDateFormGovernsCStrAndCDate) {
    vb::Date d = vb::DateSerial(2023, 11, 5);
    EXPECT_EQ(vb::shortDateFormat(), "dd/mm/yyyy");
    vb::setShortDateFormat("mm/dd/yyyy");
    EXPECT_EQ(vb::CStr(d), "11/05/2023");
    EXPECT_EQ(vb::CDate("11/05/2023"), d);
    EXPECT_EQ(vb::CDate("25/12/2020"), vb::DateSerial(2020, 12, 25));
    vb::setShortDateFormat("yyyy-mm-dd");
    EXPECT_EQ(vb::CStr(d), "2023-11-05");
    EXPECT_EQ(vb::CDate(vb::CStr(d)), d);
}

TEST_F(ClockTest, AShortDateFormWithoutDayMonthOrYearIsRefused) {
    try {
        vb::setShortDateFormat("dd/mm");
        FAIL() << "expected error 5";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 5);
    }
    EXPECT_EQ(vb::shortDateFormat(), "dd/mm/yyyy");
}

} // namespace
