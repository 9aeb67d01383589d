#include "vb/Variant.h"
#include "vb/Error.h"

#include <gtest/gtest.h>

TEST(VariantTest, KindsAreThoseOfTheOldVarType) {
    EXPECT_EQ(vb::Variant().type(), vb::VarType::Empty);
    EXPECT_EQ(vb::Variant::null().type(), vb::VarType::Null);
    EXPECT_EQ(vb::Variant(std::int16_t{3}).type(), vb::VarType::Integer);
    EXPECT_EQ(vb::Variant(3).type(), vb::VarType::Long);
    EXPECT_EQ(vb::Variant(3.0).type(), vb::VarType::Double);
    EXPECT_EQ(vb::Variant("x").type(), vb::VarType::String);
    EXPECT_EQ(vb::Variant(true).type(), vb::VarType::Boolean);
    EXPECT_EQ(vb::Variant(true).number(), -1.0);
}

TEST(VariantTest, WideIntegersBecomeLongOrDouble) {
    EXPECT_EQ(vb::Variant(5L).type(), vb::VarType::Long);
    EXPECT_EQ(vb::Variant(-2147483648LL).type(), vb::VarType::Long);
    EXPECT_EQ(vb::Variant(2147483648LL).type(), vb::VarType::Double);
    EXPECT_EQ(vb::Variant(2147483648LL).number(), 2147483648.0);
}

TEST(ErrorTest, StandardNumbersCarryThePlatformText) {
    EXPECT_EQ(vb::Error::standard(6).description(), "Overflow");
    EXPECT_EQ(vb::Error::standard(94).description(), "Invalid use of Null");
    EXPECT_EQ(vb::Error::standard(13).number(), 13);
}
