#include "ModuleSession.h"

#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "module/frame/basStockVerification.h"
#include "vb/Conversion.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

/// A form with a list laid out as the entry form's item list.
class ListForm : public forms::Form {
public:
    explicit ListForm(forms::Screen &screen) : Form(screen, "frmStockVerification") {
        for (int i = 1; i <= 14; ++i) {
            lvwRequest.ColumnHeaders().Add(0, "", "col" + std::to_string(i), 1000);
        }
    }
    forms::ListView lvwRequest{*this, "lvwRequest"};
    forms::FlexGrid flxLocations{*this, "flxLocations"};

    void addRow(std::string text, std::vector<std::string> subItems) {
        forms::ListItem &item = lvwRequest.ListItems().Add(0, "", text);
        for (std::size_t i = 0; i < subItems.size(); ++i) {
            item.setSubItems(static_cast<int>(i) + 1, subItems[i]);
        }
    }
};

TEST(FormatListViewColumnsTest, FormatsSubItemsByTheMap) {
    test::ModuleSession s;
    ListForm f(s.screen);
    f.addRow("1", {"1", "GRO000001", "12.5", "147", "146.5", "2", "", "1"});
    f.addRow("2", {"1", "GRO000002", "Toor Dal 1 kg", "45.5", "abc", "0.75", "1", "2"});
    FormatListViewColumns(f.lvwRequest, {vb::Variant("3:3"), vb::Variant("4:3"), vb::Variant("5:2"),
                                         vb::Variant("6:4")});
    const auto &items = f.lvwRequest.ListItems();
    EXPECT_EQ(items(1).SubItems(3), "12.500") << "a numeric description is formatted too";
    EXPECT_EQ(items(2).SubItems(3), "Toor Dal 1 kg") << "text that is no number stays";
    EXPECT_EQ(items(1).SubItems(4), "147.000");
    EXPECT_EQ(items(1).SubItems(5), "146.50");
    EXPECT_EQ(items(2).SubItems(5), "abc");
    EXPECT_EQ(items(1).SubItems(6), "2") << "four decimals are no format";
    EXPECT_EQ(items(1).SubItems(7), "") << "no map entry reaches the verified bad stock";
}

TEST(FormatListViewColumnsTest, TheFirstCharacterIsTheColumnAndTheLastTheDecimals) {
    test::ModuleSession s;
    ListForm f(s.screen);
    f.addRow("7", {"3", "x"});
    FormatListViewColumns(f.lvwRequest, {vb::Variant("12:2"), vb::Variant("0:3")});
    EXPECT_EQ(f.lvwRequest.ListItems()(1).SubItems(1), "3.00");
    EXPECT_EQ(f.lvwRequest.ListItems()(1).Text(), "7.000") << "column 0 is the row's own text";
}

TEST(FormatListViewColumnsTest, AnEmptyListIsLeftAtOnce) {
    test::ModuleSession s;
    ListForm f(s.screen);
    // A column past the list's would fail; an empty list never gets that far.
    EXPECT_NO_THROW(FormatListViewColumns(f.lvwRequest, {vb::Variant("9:3")}));
}

TEST(ApplyListViewLayoutTest, TakesWidthsAndAlignmentsOfTheListsRows) {
    test::ModuleSession s;
    ListForm f(s.screen);
    ApplyListViewLayout(s.m, " GodownStockVerification ", f.lvwRequest, "frmStockVerification ");
    EXPECT_EQ(s.sent(),
              std::vector<std::string>{
                  "select * from alistviewdetails where lvwdid=(select lvwid from alistviewheader "
                  "where   ltrim(rtrim(upper(lvwtransname)))='GodownStockVerification' and "
                  "ltrim(rtrim(upper(lvwname)))='LVWREQUEST' and "
                  "ltrim(rtrim(upper(lvwmodulename)))='FRMSTOCKVERIFICATION')"});
    const std::vector<int> widths{700,  0, 1500, 4800, 1500, 1500, 1400,
                                  1400, 0, 0,    0,    0,    1300, 900};
    for (int i = 1; i <= 14; ++i) {
        EXPECT_EQ(f.lvwRequest.ColumnHeaders()(i).Width(), widths[i - 1]) << "column " << i;
    }
    EXPECT_EQ(f.lvwRequest.ColumnHeaders()(5).Alignment(), forms::lvwColumnRight);
    EXPECT_EQ(f.lvwRequest.ColumnHeaders()(9).Alignment(), forms::lvwColumnLeft);
    EXPECT_EQ(f.lvwRequest.ColumnHeaders()(13).Alignment(), forms::lvwColumnRight);
    EXPECT_EQ(f.lvwRequest.ColumnHeaders()(14).Alignment(), forms::lvwColumnLeft);
}

TEST(ApplyListViewLayoutTest, AListWithoutRowsKeepsItsDesignLayout) {
    test::ModuleSession s;
    ListForm f(s.screen);
    ApplyListViewLayout(s.m, "OtherTransaction", f.lvwRequest, "frmStockVerification");
    for (int i = 1; i <= 14; ++i) {
        EXPECT_EQ(f.lvwRequest.ColumnHeaders()(i).Width(), 1000);
    }
}

TEST(RemoveGridRowsTest, RemovesEveryRowWithTheKeyExactly) {
    test::ModuleSession s;
    ListForm f(s.screen);
    forms::FlexGrid &g = f.flxLocations;
    g.setCols(3);
    g.setRows(6);
    const char *keys[] = {"", "12", "7", "12", "12 ", "12"};
    for (int r = 1; r < 6; ++r) {
        g.setTextMatrix(r, 1, keys[r]);
        g.setTextMatrix(r, 2, std::to_string(r));
    }
    RemoveGridRows(g, 1, "12");
    ASSERT_EQ(g.Rows(), 3);
    EXPECT_EQ(g.TextMatrix(1, 2), "2");
    EXPECT_EQ(g.TextMatrix(2, 2), "4");
}

TEST(LookUpTest, ExpiryDaysUnitsAndUserNames) {
    test::ModuleSession s;
    EXPECT_TRUE(ItemHasExpiryDays(s.m, 1));
    EXPECT_FALSE(ItemHasExpiryDays(s.m, 2));
    EXPECT_FALSE(ItemHasExpiryDays(s.m, 9999));
    EXPECT_EQ(GetItemUnitCode(s.m, 1), "BAG");
    EXPECT_EQ(GetUserName(s.m, 2), "SUNITA IYER");
    EXPECT_EQ(GetUserName(s.m, 77), "");
    const std::vector<std::string> sent = s.sent();
    ASSERT_EQ(sent.size(), 6u);
    EXPECT_EQ(sent[0], "SELECT ExpiryNoOfDays FROM aItem WHERE ItemId = 1");
    EXPECT_EQ(sent[3], "select u.UnitCode from aItem i, aUnit u where i.UnitsId = u.UnitId AND "
                       "i.ItemId = 1");
    EXPECT_EQ(sent[4], "select UserName from loUsers where UserId = 2");
}

TEST(EnterAsTabTest, EnterQueuesATabAndKeepsTheKey) {
    test::ModuleSession s;
    int key = 13;
    EnterAsTab(s.m, key);
    EXPECT_EQ(key, 13);
    ASSERT_EQ(s.screen.queuedKeyCount(), 1u);
    int other = 'a';
    EnterAsTab(s.m, other);
    EXPECT_EQ(s.screen.queuedKeyCount(), 1u);
}

} // namespace
} // namespace tqsv2731
