#include "vb/Conversion.h"

#include "ErrorExpect.h"
#include "vb/Format.h"

#include <gtest/gtest.h>
#include <limits>

TEST(ConversionTest, ValTakesEveryKindOfText) {
    std::string text = " 42 pcs";
    EXPECT_EQ(vb::Val(text), 42.0);
    EXPECT_EQ(vb::Val("7"), 7.0);
    EXPECT_EQ(vb::Val(std::string_view("8")), 8.0);
    EXPECT_EQ(vb::Val(vb::Variant("9")), 9.0);
}

TEST(ConversionTest, IntegerConversionsGiveTheirOwnWidths) {
    EXPECT_EQ(vb::CInt(vb::Variant(-32768.0)), std::int16_t{-32768});
    EXPECT_EQ(vb::CLng(vb::Variant("100000")), 100000);
    EXPECT_VB_ERROR(vb::CInt(vb::Variant("100000")), 6);
    EXPECT_VB_ERROR(vb::CInt(vb::Variant(std::numeric_limits<double>::quiet_NaN())), 6);
}

TEST(ConversionTest, ErrorsNameTheFunctionAsTheirSource) {
    try {
        vb::CStr(vb::Variant::null());
        FAIL();
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 94);
        EXPECT_EQ(e.source(), "CStr");
        EXPECT_EQ(e.description(), "Invalid use of Null");
    }
}

TEST(ConversionTest, TextOfADateRoundTripsThroughCDate) {
    for (double serial : {45235.0, 45235.5, 2.75, -1.25, 0.0}) {
        vb::Date d{serial};
        EXPECT_EQ(vb::CDate(vb::Variant(vb::CStr(vb::Variant(d)))), d) << serial;
    }
}

TEST(ConversionTest, NumbersTheOldPlatformCouldNotHoldRaiseOverflow) {
    double infinite = std::numeric_limits<double>::infinity();
    EXPECT_VB_ERROR(vb::CStr(vb::Variant(infinite)), 6);
    EXPECT_VB_ERROR(vb::Str(-infinite), 6);
    EXPECT_VB_ERROR(vb::Format(vb::Variant(infinite), "0.00"), 6);
}
