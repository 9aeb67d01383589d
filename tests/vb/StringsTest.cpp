#include "vb/Strings.h"

#include "ErrorExpect.h"
#include "vb/Utf8.h"

#include <gtest/gtest.h>

using Parts = std::vector<std::string>;

TEST(StringsTest, SplitAndJoinAsTheOldFunctionsDid) {
    EXPECT_EQ(vb::Split("a:b::c", ":"), (Parts{"a", "b", "", "c"}));
    EXPECT_EQ(vb::Split("1:2:-3:4:", ":"), (Parts{"1", "2", "-3", "4", ""}));
    EXPECT_EQ(vb::Split("", ":"), Parts{});
    EXPECT_EQ(vb::Split("abc", ""), Parts{"abc"});
    EXPECT_EQ(vb::Split("a\r\nb", "\r\n"), (Parts{"a", "b"}));
    EXPECT_EQ(vb::Join({"a", "", "b"}, ", "), "a, , b");
    EXPECT_EQ(vb::Join({}, ","), "");
}

TEST(StringsTest, ControlCharactersForCharacterPrinters) {
    EXPECT_EQ(vb::Chr(12), "\f");
    EXPECT_EQ(vb::Chr(14) + vb::Chr(15), "\x0e\x0f");
    EXPECT_EQ(vb::Chr(0), std::string(1, '\0'));
    EXPECT_EQ(vb::Len(vb::Chr(13) + vb::Chr(10)), 2);
}

TEST(StringsTest, StrayBytesCountAsOneCharacterEachAndSurvive) {
    std::string broken = "a\xff\xc3z"; // a lone 0xFF and a cut-off two-byte sequence
    EXPECT_EQ(vb::Len(broken), 4);
    EXPECT_EQ(vb::Mid(broken, 2, 2), "\xff\xc3");
    EXPECT_EQ(vb::UCase(broken), "A\xff\xc3Z");
    EXPECT_EQ(vb::Asc("\xff"), 255);
    EXPECT_EQ(vb::utf8::encode(vb::utf8::decode("\xed\xa0\x80")), "\xed\xa0\x80");
    EXPECT_EQ(vb::Len("\xc0\xaf"), 2) << "an overlong form is no character";
}

TEST(StringsTest, CaseMappingIsOneCharacterForOne) {
    for (char32_t c = 0; c < 0x500; ++c) {
        char32_t upper = vb::utf8::toUpper(c);
        if (upper != c) {
            EXPECT_EQ(static_cast<std::uint32_t>(vb::utf8::toLower(upper)),
                      static_cast<std::uint32_t>(c));
        }
    }
    EXPECT_EQ(vb::UCase("ı"), "ı");
    EXPECT_EQ(vb::LCase("İ"), "İ");
}

TEST(StringsTest, FourByteCharactersCountOnce) {
    std::string text = "x\xf0\x9f\x93\xa6y"; // a parcel sign between two letters
    EXPECT_EQ(vb::Len(text), 3);
    EXPECT_EQ(vb::Right(text, 2), "\xf0\x9f\x93\xa6y");
    EXPECT_EQ(vb::InStr(text, "y"), 3);
}

// Plain ASCII takes a byte road and other text a character road: both count
// positions in characters, from the start asked, and ignore case alike.
TEST(StringsTest, SearchCutAndCaseAgreeOnPlainAndAccentedText) {
    EXPECT_EQ(vb::InStr(3, "abcABC", "b", vb::Compare::Text), 5);
    EXPECT_EQ(vb::InStr(3, "abcABC", "b", vb::Compare::Binary), 0);
    EXPECT_EQ(vb::InStr(3, "abc", "", vb::Compare::Binary), 3);
    EXPECT_EQ(vb::InStr(4, "abc", "", vb::Compare::Binary), 0);
    EXPECT_EQ(vb::InStr(2, "ñañA", "a", vb::Compare::Text), 2);
    EXPECT_EQ(vb::InStr(3, "ñañA", "A", vb::Compare::Text), 4);
    EXPECT_EQ(vb::InStr(1, "xÑAa", "ña", vb::Compare::Text), 2);
    EXPECT_EQ(vb::InStr(1, "Stock date", "DATE", vb::Compare::Text), 7);
    EXPECT_EQ(vb::Left("abc", 5), "abc");
    EXPECT_EQ(vb::Left("abc", 0), "");
    EXPECT_EQ(vb::Left("ñandú", 2), "ña");
    EXPECT_EQ(vb::UCase("admin-d n"), "ADMIN-D N");
    EXPECT_EQ(vb::UCase("ñu"), "ÑU");
    EXPECT_EQ(vb::LCase("PCS[1]"), "pcs[1]");
    EXPECT_EQ(vb::Trim("  a b  "), "a b");
    EXPECT_EQ(vb::Trim("    "), "");
    EXPECT_EQ(vb::Trim("\ta "), "\ta");
    EXPECT_EQ(vb::Len("ñandú"), 5);
}
