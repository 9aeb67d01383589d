#include "forms/ComboBox.h"

#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

struct ComboBoxTest : ::testing::Test {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    ComboBox &cbo = form.cboKind;

    void SetUp() override {
        cbo.AddItem("Apple");
        cbo.AddItem("banana");
        cbo.AddItem("Cherry");
        log.lines.clear();
    }
};

TEST_F(ComboBoxTest, SettingListIndexClicksEvenWhenUnchanged) {
    // The detail form sets ListIndex to 0 on a one-item combo and then picks the
    // same item again by item data; both must run the item's Click.
    cbo.setListIndex(1);
    cbo.setListIndex(1);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"cboKind.Click", "cboKind.Click"}));
    EXPECT_EQ(cbo.Text(), "banana");
}

TEST_F(ComboBoxTest, ClearingTheChoiceRaisesNothing) {
    cbo.setListIndex(2);
    log.lines.clear();
    cbo.setListIndex(-1);
    EXPECT_TRUE(log.lines.empty());
    EXPECT_EQ(cbo.ListIndex(), -1);
    EXPECT_EQ(cbo.Text(), "");
}

TEST_F(ComboBoxTest, ListIndexOutOfRangeIsInvalidPropertyValue) {
    try {
        cbo.setListIndex(3);
        FAIL() << "no error";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 380);
    }
    EXPECT_THROW(cbo.setListIndex(-2), vb::Error);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(ComboBoxTest, AddItemKeepsNewIndexAndShiftsTheChoice) {
    cbo.setListIndex(1);
    cbo.AddItem("Apricot", 1);
    EXPECT_EQ(cbo.NewIndex(), 1);
    EXPECT_EQ(cbo.ListIndex(), 2);
    EXPECT_EQ(cbo.List(2), "banana");
    cbo.setItemData(cbo.NewIndex(), 42);
    EXPECT_EQ(cbo.ItemData(1), 42);
    EXPECT_EQ(cbo.ListCount(), 4);
}

TEST_F(ComboBoxTest, RemoveItemAndClearResetTheIndexes) {
    cbo.setListIndex(1);
    cbo.RemoveItem(1);
    EXPECT_EQ(cbo.ListIndex(), -1);
    EXPECT_EQ(cbo.NewIndex(), -1);
    EXPECT_EQ(cbo.Text(), "");
    cbo.setListIndex(1);
    cbo.RemoveItem(0);
    EXPECT_EQ(cbo.ListIndex(), 0);
    EXPECT_EQ(cbo.Text(), "Cherry");
    cbo.Clear();
    EXPECT_EQ(cbo.ListCount(), 0);
    EXPECT_EQ(cbo.ListIndex(), -1);
    EXPECT_EQ(cbo.Text(), "");
}

TEST_F(ComboBoxTest, ListOutOfRangeReadsEmptyButItemDataRaises381) {
    EXPECT_EQ(cbo.List(7), "");
    EXPECT_EQ(cbo.List(-1), "");
    try {
        (void)cbo.ItemData(3);
        FAIL() << "no error";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 381);
    }
}

TEST_F(ComboBoxTest, TextOfAListOnlyComboMustNameAnItem) {
    cbo.setText("CHERRY");
    EXPECT_EQ(cbo.ListIndex(), 2);
    EXPECT_EQ(log.lines, std::vector<std::string>{"cboKind.Click"});
    try {
        cbo.setText("Durian");
        FAIL() << "no error";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 383);
    }
}

TEST_F(ComboBoxTest, TextOfADropdownComboRaisesChangeOnlyWhenDifferent) {
    cbo.setStyle(vbComboDropdown);
    int changes = 0;
    cbo.onChange = [&] { ++changes; };
    cbo.setText("banana");
    cbo.setText("banana");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(cbo.ListIndex(), 1);
    cbo.setText("kiwi");
    EXPECT_EQ(cbo.ListIndex(), -1);
    EXPECT_EQ(changes, 2);
    EXPECT_TRUE(log.lines.empty()); // no Click from the text
}

TEST_F(ComboBoxTest, SortedComboInsertsInTextOrder) {
    cbo.Clear();
    cbo.setSorted(true);
    cbo.AddItem("pear");
    cbo.AddItem("Apple");
    cbo.AddItem("mango");
    EXPECT_EQ(cbo.List(0), "Apple");
    EXPECT_EQ(cbo.List(1), "mango");
    EXPECT_EQ(cbo.NewIndex(), 1);
}

TEST_F(ComboBoxTest, UserPicksWithMouseArrowsAndFirstLetter) {
    form.Show();
    Input in(s.screen);
    ASSERT_TRUE(in.chooseItem(cbo, 2));
    EXPECT_EQ(cbo.ListIndex(), 2);
    log.lines.clear();
    in.keyStroke(vbKeyUp);
    EXPECT_EQ(cbo.ListIndex(), 1);
    in.typeText("c");
    EXPECT_EQ(cbo.ListIndex(), 2);
    in.keyStroke(vbKeyDown); // already the last: nothing moves, no Click
    EXPECT_EQ(log.lines, (std::vector<std::string>{"cboKind.Click", "cboKind.Click"}));
}

} // namespace
