#include "vb/Conversion.h"

#include "ErrorExpect.h"
#include "vb/Format.h"
#include "vb/Strings.h"

#include <gtest/gtest.h>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

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

// Plain decimals take a short road; a trailing "e0" sends the same number the
// long way, and both must round to the same double, sign of zero included.
TEST(ConversionTest, PlainDecimalsReadAsTheFullReadingDoes) {
    for (const char *text :
         {"0.1", "0.3", "2.675", "12.000", "999999999999999", "1234567890123456", "0.000000000000001",
          "4503599627370497", ".5", "7.", " 42.125 ", "+3.5", "-0.000", "-17.35", "1,234.5",
          "9007199254740993", "123456.78901234567"}) {
        const std::string plain = text;
        const std::string exponent = vb::Trim(plain) + "e0";
        const double a = vb::CDbl(vb::Variant(plain));
        const double b = vb::CDbl(vb::Variant(exponent));
        EXPECT_EQ(a, b) << text;
        EXPECT_EQ(std::signbit(a), std::signbit(b)) << text;
    }
    std::uint64_t seed = 12345;
    for (int i = 0; i < 2000; ++i) {
        seed = seed * 6364136223846793005ULL + 1442695040888963407ULL;
        const std::string digits = std::to_string(seed >> 14);
        const std::size_t point = (seed >> 3) % (digits.size() + 1);
        const std::string text = digits.substr(0, point) + "." + digits.substr(point);
        EXPECT_EQ(vb::CDbl(vb::Variant(text)), vb::CDbl(vb::Variant(text + "e0"))) << text;
    }
    EXPECT_EQ(vb::CDbl(vb::Variant("0.1")), 0.1);
    EXPECT_VB_ERROR(vb::CDbl(vb::Variant("1.2.3")), 13);
    EXPECT_VB_ERROR(vb::CDbl(vb::Variant(".")), 13);
}
