#include "services/clsBaseTools.h"

#include "ServiceFixture.h"
#include "TestForm.h"

namespace servicetest {
namespace {

struct KeyCase {
    const char *text;
    int selStart, selLength, key, width, decimals;
    bool accepted;
};

TEST(NumericKeyTest, DigitsAndOnePointWithinWidthAndDecimals) {
    const std::string d15(15, '9'), d12(12, '8');
    const KeyCase cases[] = {
        {"", 0, 0, '7', 18, 3, true},
        {"12", 2, 0, '.', 18, 3, true},
        {"", 0, 0, '.', 18, 3, true},
        {"1.5", 3, 0, '.', 18, 3, false},
        {"1.25", 4, 0, '5', 18, 3, true},
        {"1.255", 5, 0, '5', 18, 3, false},
        {"1.255", 0, 0, '9', 18, 3, true},
        {d15.c_str(), 15, 0, '9', 18, 3, false},
        {d15.c_str(), 15, 0, '.', 18, 3, true},
        {"1234567", 7, 0, '8', 10, 2, true},
        {"12345678", 8, 0, '9', 10, 2, false},
        {"1.23", 4, 0, '4', 10, 2, false},
        {d12.c_str(), 12, 0, '9', 13, 0, true},
        {"8888888888889", 13, 0, '0', 13, 0, false},
        {"88", 2, 0, '.', 13, 0, false},
        // the selection is replaced by the key, as typing replaces it
        {d15.c_str(), 0, 15, '5', 18, 3, true},
        {"147.000", 0, 7, '2', 18, 3, true},
        {"147.000", 7, 0, '2', 18, 3, false},
        {"1.5", 1, 1, '.', 18, 3, true},
    };
    for (const KeyCase &c : cases) {
        EXPECT_EQ(BaseServices::acceptsNumericKey(c.text, c.selStart, c.selLength, c.key, c.width,
                                                  c.decimals),
                  c.accepted)
            << c.text << " key " << char(c.key) << " at " << c.selStart << "+" << c.selLength;
    }
    for (int key : std::initializer_list<int>{'-', '+', 'a', ',', ' ', 13, 9, 27, 22, 0}) {
        EXPECT_FALSE(BaseServices::acceptsNumericKey("1", 1, 0, key, 18, 3)) << key;
    }
}

class BaseToolsTest : public ServiceTest {
protected:
    BaseServices::clsBaseTools tools{context};
    TestForm form{screen};
    int clicks = 0;
};

TEST_F(BaseToolsTest, TextValidateNumClearsARefusedKeyAndLetsBackspacePass) {
    form.txtno.setText("12.345");
    form.txtno.setSelStart(6);
    for (auto [key, width, decimals, after] : {std::tuple{'6', 18, 3, 0}, {8, 18, 3, 8}}) {
        int KeyAscii = key;
        tools.TextValidateNum(form.txtno, KeyAscii, width, decimals);
        EXPECT_EQ(KeyAscii, after);
    }
    int KeyAscii = '.';
    tools.TextValidateNum(form.txtno, KeyAscii, 13);
    EXPECT_EQ(KeyAscii, 0) << "decimals left out count as none";
    EXPECT_EQ(form.txtno.Text(), "12.345");
}

TEST_F(BaseToolsTest, ComboPickersChooseAndClickOrLeaveTheComboAlone) {
    form.cboItem.onClick = [this] { ++clicks; };
    tools.selectcomboitembyvalue(form.cboItem, vb::Variant("10"));
    EXPECT_EQ(form.cboItem.ListIndex(), 2);
    tools.selectcomboitembyvalue(form.cboItem, 2);
    tools.selectcomboitembyvalue(form.cboItem, 2);
    EXPECT_EQ(form.cboItem.ListIndex(), 1);
    EXPECT_EQ(clicks, 3) << "the same item again clicks again";
    for (const vb::Variant &none : {vb::Variant(99), vb::Variant("abc"), vb::Variant::null()}) {
        tools.selectcomboitembyvalue(form.cboItem, none);
    }
    tools.SelectComboItemByname(form.cboItem, "basmati");
    EXPECT_EQ(clicks, 3);
    tools.SelectComboItemByname(form.cboItem, "basmati RICE ");
    EXPECT_EQ(form.cboItem.ListIndex(), 0);
}

} // namespace
} // namespace servicetest
