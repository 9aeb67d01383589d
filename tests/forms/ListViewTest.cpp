#include "forms/ListView.h"

#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

using namespace forms;
using namespace forms::test;

namespace {

struct ListViewTest : ::testing::Test {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    ListView lvw{form, "lvwRequest"};

    void SetUp() override {
        lvw.ColumnHeaders().Add(0, "", "SlNo", 926);
        lvw.ColumnHeaders().Add(0, "", "Item", 2000);
        lvw.ColumnHeaders().Add(0, "", "Qty", 1000, lvwColumnRight);
        lvw.onItemClick = [this](ListItem &item) { log("ItemClick " + item.Text()); };
    }

    ListItem &add(const std::string &text, const std::string &item, const std::string &qty) {
        ListItem &li = lvw.ListItems().Add(0, "", text);
        li.setSubItems(1, item);
        li.setSubItems(2, qty);
        return li;
    }

    int errorOf(const std::function<void()> &f) {
        try {
            f();
        } catch (const vb::Error &e) {
            return e.number();
        }
        return 0;
    }
};

TEST_F(ListViewTest, RowsCountFromOneAndSubItemsFollowTheColumns) {
    add("1", "Soap", "2.000");
    add("2", "Rice", "5.000");
    EXPECT_EQ(lvw.ListItems().Count(), 2);
    EXPECT_EQ(lvw.ListItems()(2).Index(), 2);
    EXPECT_EQ(lvw.ListItems()(2).SubItems(1), "Rice");
    EXPECT_EQ(lvw.ListItems()(1).ListSubItems(2).Text(), "2.000");
    EXPECT_EQ(errorOf([&] { lvw.ListItems()(1).setSubItems(3, "x"); }), 380);
    EXPECT_EQ(errorOf([&] { (void)lvw.ListItems()(3); }), 35600);
    EXPECT_EQ(errorOf([&] { (void)lvw.ListItems()(0); }), 35600);
}

TEST_F(ListViewTest, SubItemsNeverWrittenReadEmptyButAreNotListSubItems) {
    ListItem &li = lvw.ListItems().Add(0, "", "1");
    EXPECT_EQ(li.SubItems(2), "");
    EXPECT_EQ(li.ListSubItemsCount(), 0);
    EXPECT_EQ(errorOf([&] { (void)li.ListSubItems(1); }), 35600);
    li.setSubItems(2, "x"); // makes sub-items 1 and 2
    EXPECT_EQ(li.ListSubItemsCount(), 2);
    li.ListSubItems(2).setForeColor(vbRed);
    li.ListSubItems(2).setToolTipText("2.000");
    EXPECT_EQ(li.ListSubItems(2).ToolTipText(), "2.000");
    EXPECT_EQ(li.ListSubItems(1).Text(), "");
}

TEST_F(ListViewTest, TheFirstRowAddedIsSelectedAsInTheOldList) {
    EXPECT_EQ(errorOf([&] { (void)lvw.SelectedItem(); }), 91);
    add("1", "Soap", "2");
    add("2", "Rice", "5");
    EXPECT_EQ(lvw.SelectedItem().Index(), 1);
    lvw.ListItems()(2).setSelected(true);
    EXPECT_FALSE(lvw.ListItems()(1).Selected());
    lvw.SelectedItem().setSelected(false);
    EXPECT_EQ(lvw.selectedItemOrNull(), nullptr);
    add("3", "Oil", "1"); // a list with rows does not select again
    EXPECT_EQ(lvw.selectedItemOrNull(), nullptr);
}

TEST_F(ListViewTest, RemovingRenumbersAndDropsTheSelection) {
    add("1", "Soap", "2");
    add("2", "Rice", "5");
    add("3", "Oil", "1");
    lvw.ListItems()(2).setSelected(true);
    lvw.ListItems().Remove(lvw.SelectedItem().Index());
    EXPECT_EQ(lvw.ListItems().Count(), 2);
    EXPECT_EQ(lvw.ListItems()(2).SubItems(1), "Oil");
    EXPECT_EQ(lvw.ListItems()(2).Index(), 2);
    EXPECT_EQ(lvw.selectedItemOrNull(), nullptr);
    lvw.ListItems().Clear();
    EXPECT_EQ(lvw.ListItems().Count(), 0);
}

TEST_F(ListViewTest, KeysMustBeUnique) {
    lvw.ListItems().Add(0, "k1", "a");
    EXPECT_EQ(errorOf([&] { lvw.ListItems().Add(0, "k1", "b"); }), 35602);
    EXPECT_EQ(lvw.ListItems().Item("k1").Text(), "a");
    EXPECT_EQ(errorOf([&] { (void)lvw.ListItems().Item("k2"); }), 35601);
}

TEST_F(ListViewTest, SortedListOrdersByItsSortKey) {
    add("1", "soap", "2");
    add("2", "Rice", "5");
    add("3", "oil", "1");
    lvw.setSortKey(1);
    lvw.setSorted(true);
    EXPECT_EQ(lvw.ListItems()(1).SubItems(1), "oil");
    EXPECT_EQ(lvw.ListItems()(3).Index(), 3);
    lvw.setSortOrder(lvwDescending);
    EXPECT_EQ(lvw.ListItems()(1).SubItems(1), "soap");
    add("4", "Pepper", "1"); // placed by the key it has when added: no sub-item yet
    EXPECT_EQ(lvw.ListItems()(4).Text(), "4");
    lvw.setSorted(true);
    EXPECT_EQ(lvw.ListItems()(3).SubItems(1), "Pepper");
}

// A row's and a sub-item's rarer properties start empty, keep what is set,
// and go with their row when a sort moves it; the selection stays on the row.
TEST_F(ListViewTest, RarePropertiesStayWithTheirRowThroughASort) {
    ListItem &soap = add("1", "soap", "2");
    ListItem &rice = add("2", "Rice", "5");
    EXPECT_EQ(soap.Tag(), "");
    EXPECT_EQ(soap.ListSubItems(1).ToolTipText(), "");
    EXPECT_EQ(soap.ListSubItems(2).ForeColor(), vbWindowText);
    EXPECT_FALSE(soap.ListSubItems(2).Bold());
    soap.setTag("kept");
    soap.setToolTipText("row tip");
    soap.ListSubItems(1).setToolTipText("Bath soap");
    soap.ListSubItems(1).setKey("s1");
    soap.ListSubItems(2).setForeColor(vbRed);
    soap.ListSubItems(2).setBold(true);
    soap.ListSubItems(2).setTag("t");
    rice.setSelected(true);
    lvw.setSortKey(1);
    lvw.setSorted(true);
    ListItem &second = lvw.ListItems()(2);
    EXPECT_EQ(&second, &soap);
    EXPECT_EQ(second.Index(), 2);
    EXPECT_EQ(second.Tag(), "kept");
    EXPECT_EQ(second.ToolTipText(), "row tip");
    EXPECT_EQ(second.ListSubItems(1).ToolTipText(), "Bath soap");
    EXPECT_EQ(second.ListSubItems(1).Key(), "s1");
    EXPECT_EQ(second.ListSubItems(1).Index(), 1);
    EXPECT_EQ(second.ListSubItems(2).ForeColor(), vbRed);
    EXPECT_TRUE(second.ListSubItems(2).Bold());
    EXPECT_EQ(second.ListSubItems(2).Tag(), "t");
    EXPECT_EQ(lvw.ListItems()(1).ListSubItems(2).ForeColor(), vbWindowText);
    EXPECT_EQ(lvw.SelectedItem().Text(), "2");
    EXPECT_EQ(lvw.ListItems()(1).Key(), "");
    lvw.ListItems().Add(0, "k", "3");
    EXPECT_EQ(lvw.ListItems().Item("k").Text(), "3");
}

TEST_F(ListViewTest, ColumnPositionsMoveTheOthers) {
    lvw.ColumnHeaders().Add(0, "", "Unit", 800);
    lvw.ColumnHeaders()(4).setPosition(3);
    EXPECT_EQ(lvw.ColumnHeaders()(3).Position(), 4);
    EXPECT_EQ(lvw.ColumnHeaders()(4).Index(), 4);
    auto order = lvw.ColumnHeaders().inDisplayOrder();
    EXPECT_EQ(order[2]->Text(), "Unit");
    EXPECT_EQ(lvw.ColumnHeaders()(3).Alignment(), lvwColumnRight);
    EXPECT_EQ(errorOf([&] { lvw.ColumnHeaders()(1).setAlignment(lvwColumnRight); }), 380);
}

TEST_F(ListViewTest, UserClicksAndArrowsSelectAndRaiseItemClick) {
    add("1", "Soap", "2");
    add("2", "Rice", "5");
    add("3", "Oil", "1");
    form.Show();
    Input in(s.screen);
    in.clickItem(lvw, 2);
    in.keyStroke(vbKeyDown);
    in.keyStroke(vbKeyDown); // the last row: nothing moves
    EXPECT_EQ(log.lines.back(), "ItemClick 3");
    EXPECT_EQ(std::count(log.lines.begin(), log.lines.end(), "ItemClick 3"), 1);
    EXPECT_EQ(lvw.SelectedItem().Index(), 3);
}

TEST_F(ListViewTest, RightClickSelectsTheRowBeforeMouseDown) {
    add("1", "Soap", "2");
    add("2", "Rice", "5");
    form.Show();
    lvw.onMouseDown = [this](int Button, int, double, double) {
        log("MouseDown " + std::to_string(Button) + " on " + lvw.SelectedItem().Text());
    };
    Input in(s.screen);
    in.rightClickItem(lvw, 2);
    EXPECT_EQ(log.lines.back(), "MouseDown 2 on 2");
}

TEST_F(ListViewTest, EnsureVisibleScrollsTheRowIntoView) {
    for (int i = 1; i <= 10; ++i) {
        add(std::to_string(i), "x", "1");
    }
    lvw.setHeight(240 * 4); // header and three rows
    lvw.ListItems()(8).EnsureVisible();
    EXPECT_EQ(lvw.topIndex(), 6);
    lvw.ListItems()(2).EnsureVisible();
    EXPECT_EQ(lvw.topIndex(), 2);
}

} // namespace
