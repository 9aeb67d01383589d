#include "frame/ModuleSession.h"

#include "forms/Input.h"
#include "forms/Keys.h"
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/entry/frmStockVerification.h"
#include "module/fetch/FrmFetch.h"
#include "module/frame/Module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqsv2731 {
namespace {

const std::string stockSql =
    "select a.itemid, a.itemcode, "
    "v.itemdescription,ai.categorynamedescription,ai.itemcategoryid,isnull(a.part_code,'')part_"
    "code from aitem a, vwinquirygodownstock ss, aitemcategory ai, vwitemdescription v Where "
    "a.itemID = v.itemID And a.ItemCategoryID = ai.ItemCategoryID and a.itemid=ss.gsitemid and "
    "ss.gsgodownid=1 And a.Active = 1";
const std::string carriedSql =
    "select a.itemid, a.itemcode, "
    "v.itemdescription,ai.categorynamedescription,ai.itemcategoryid,isnull(a.part_code,'')part_"
    "code from aitem a, agodowndetail ss, aitemcategory ai, vwitemdescription v Where a.itemID = "
    "v.itemID And a.ItemCategoryID = ai.ItemCategoryID and a.itemid=ss.itemid and ss.godownid=1 "
    "And a.Active = 1";

/// The register loaded (it makes the shared services), the entry form of a
/// new entry and its detail form shown, as a clerk reaches the fetch dialog.
class FetchSession {
public:
    FetchSession() {
        s.m.frmMaster();
        s.m.strTransactionMode = "N";
        s.m.strDetailMode = "N";
        s.m.frmStockVerificationDetail().Show();
    }

    frmStockVerificationDetail &detail() { return s.m.frmStockVerificationDetail(); }
    forms::ListView &list() { return s.m.frmStockVerification().lvwRequest; }

    /// The dialog, loaded and activated as the fetch button shows it.
    FrmFetch &open() {
        FrmFetch &f = s.m.FrmFetch();
        f.Show();
        return f;
    }

    /// Types the fragment into the box and presses Enter; the statement sent.
    std::string fetch(FrmFetch &f, const std::string &fragment) {
        f.txtFetch.setText(fragment);
        s.forget();
        int enter = 13;
        f.txtFetch_KeyPress(enter);
        const std::vector<std::string> sent = s.sent();
        return sent.empty() ? "" : sent.front();
    }

    std::vector<std::string> column(const FrmFetch &f, int col) const {
        std::vector<std::string> out;
        for (int r = 1; r < f.flexMaster.Rows(); ++r) {
            out.push_back(f.flexMaster.TextMatrix(r, col));
        }
        return out;
    }

    /// A row of the entry's list holding the item, as the detail form adds it.
    void listRow(int itemId) {
        forms::ListItem &row = list().ListItems().Add(0, "", "1");
        for (int n = 1; n <= 13; ++n) {
            row.setSubItems(n, n == 8 ? std::to_string(itemId) : "");
        }
    }

    test::ModuleSession s;
};

std::vector<int> widths(const forms::FlexGrid &g) {
    std::vector<int> out;
    for (int c = 0; c < g.Cols(); ++c) {
        out.push_back(g.ColWidth(c));
    }
    return out;
}

std::vector<std::string> headings(const forms::FlexGrid &g) {
    std::vector<std::string> out;
    for (int c = 0; c < g.Cols(); ++c) {
        out.push_back(g.TextMatrix(0, c));
    }
    return out;
}

TEST(FrmFetchLoadTest, StatementFollowsTheDetailFormsOptionAndTheGridWaitsForEnter) {
    FetchSession fs;
    FrmFetch &f = fs.open();
    EXPECT_EQ(f.strFetchSql, carriedSql);
    EXPECT_EQ(f.flexMaster.Rows(), 2);
    EXPECT_EQ(f.flexMaster.TextMatrix(1, 1), "");
    EXPECT_EQ(widths(f.flexMaster), (std::vector<int>{0, 3000, 6200, 1200, 0, 1200}));
    EXPECT_EQ(headings(f.flexMaster),
              (std::vector<std::string>{"ItemID", "ItemCode", "ItemDescription", "Item Category",
                                        "Itemcategoryid", "Part_code"}));
    // The godown's default column is picked, and the click maps nothing yet.
    EXPECT_EQ(f.cboFetch.Text(), "ItemDescription");
    EXPECT_EQ(f.strFetchOn, "ItemDescription");
    EXPECT_EQ(fs.s.screen.ActiveControl(), &f.txtFetch);
    f.Unload();

    fs.detail().optGodownItems.setValue(true);
    EXPECT_EQ(fs.open().strFetchSql, stockSql);
}

TEST(FrmFetchLoadTest, DefaultColumnFromTheSettingsOrTheSecondItem) {
    FetchSession fs;
    fs.s.execute("update LOiSettings set defaultfetch = 'item category' where godownid = 1");
    FrmFetch &f = fs.open();
    EXPECT_EQ(f.cboFetch.ListIndex(), 2) << "picked by name, letter case ignored";
    f.Unload();

    fs.s.execute("update LOiSettings set defaultfetch = null where godownid = 1");
    EXPECT_EQ(fs.open().cboFetch.ListIndex(), 1);
}

TEST(FrmFetchStatementTest, EachColumnFiltersTheBaseStatementAfresh) {
    FetchSession fs;
    FrmFetch &f = fs.open();
    EXPECT_EQ(fs.fetch(f, " rice "), carriedSql + " and v.itemdescription like '%rice%' ");
    EXPECT_EQ(f.txtFetch.Text(), "") << "the box is emptied after each fetch";
    f.cboFetch.setListIndex(0);
    EXPECT_EQ(fs.fetch(f, "GRO"), carriedSql + " and a.itemcode like '%GRO%' ");
    f.cboFetch.setListIndex(2);
    EXPECT_EQ(fs.fetch(f, "dairy"), carriedSql + " and categorynamedescription like '%dairy%' ");
    EXPECT_EQ(fs.column(f, 1), (std::vector<std::string>{"DAI000008"}));
    // The fourth item's capital C matches no mapping: the bare column goes out.
    f.cboFetch.setListIndex(3);
    EXPECT_EQ(fs.fetch(f, "RB"), carriedSql + " and Part_Code like '%RB%' ");
    EXPECT_EQ(fs.column(f, 5), (std::vector<std::string>{"RB-5"}));
    // The mapped name stays for the next Enter.
    f.cboFetch.setListIndex(1);
    fs.fetch(f, "");
    EXPECT_EQ(f.strFetchOn, "v.itemdescription");
    EXPECT_EQ(fs.fetch(f, "tea"), carriedSql + " and v.itemdescription like '%tea%' ");
}

TEST(FrmFetchStatementTest, ApostrophesAreKeptOutOrDoubled) {
    FetchSession fs;
    FrmFetch &f = fs.open();
    int quote = 39;
    f.txtFetch_KeyPress(quote);
    EXPECT_EQ(quote, 0);
    // Pasted text gets past the key filter; the box shows the doubled text.
    fs.s.execute("update aItem set ItemName = 'Farmer''s Rice' where ItemId = 1");
    EXPECT_EQ(fs.fetch(f, " farmer's "), carriedSql + " and v.itemdescription like '%farmer''s%' ");
    EXPECT_EQ(fs.column(f, 1), (std::vector<std::string>{"GRO000001"}));
}

TEST(FrmFetchFillTest, AfterAFillTheCategoryIdShowsAndTheLastRowIsCurrent) {
    FetchSession fs;
    FrmFetch &f = fs.open();
    f.cboColNames.setListIndex(0);
    f.cboSearch.setListIndex(0);
    fs.fetch(f, "");
    EXPECT_TRUE(f.flexMaster.Visible());
    EXPECT_EQ(f.flexMaster.Rows(), 11) << "the ten active items the godown carries";
    EXPECT_EQ(widths(f.flexMaster), (std::vector<int>{0, 3000, 6200, 1200, 1200, 1200}));
    EXPECT_EQ(headings(f.flexMaster),
              (std::vector<std::string>{"ItemID", "ItemCode", "ItemDescription", "Item Category",
                                        "itemcategoryid", "Part_Code"}));
    EXPECT_EQ(f.flexMaster.Row(), 10);
    EXPECT_EQ(f.flexMaster.Col(), 0);
    EXPECT_EQ(f.flexMaster.ColSel(), 5);
    EXPECT_EQ(f.cboColNames.ListIndex(), -1);
    EXPECT_EQ(f.cboSearch.ListIndex(), -1);
    EXPECT_EQ(f.flexMaster.ColAlignment(2), forms::flexAlignLeftTop);
}

TEST(FrmFetchFillTest, FiveHundredRowsAtMostAndAnEmptyResultLeavesOneEmptyRow) {
    FetchSession fs;
    FrmFetch &f = fs.open();
    f.GridPopulate("select a.itemid, a.itemcode, b.itemcode, c.itemcode, a.itemid, a.itemid "
                   "from aitem a, aitem b, aitem c",
                   "", "vwinquirygodownstock");
    EXPECT_EQ(f.flexMaster.Rows(), 501);
    EXPECT_EQ(f.flexMaster.Cols(), 6);
    EXPECT_EQ(f.flexMaster.Row(), 500);
    EXPECT_FALSE(f.flexMaster.TextMatrix(500, 0).empty());

    fs.fetch(f, "no such item");
    EXPECT_EQ(f.flexMaster.Rows(), 2);
    EXPECT_EQ(f.flexMaster.TextMatrix(1, 0), "");
    EXPECT_TRUE(f.flexMaster.Visible());
}

TEST(FrmFetchDormantTest, AddToListAddsARowOrCountsItsItemUp) {
    FetchSession fs;
    frmStockVerificationDetail &d = fs.detail();
    FrmFetch &f = fs.open();

    fs.s.ui.queueAnswer(forms::vbOK, "Select Item");
    f.addtolist();
    EXPECT_EQ(d.ActiveControl(), &d.cboItem);

    d.cboItem.AddItem("Green Tea 25 bags");
    d.cboItem.setItemData(0, 4);
    d.cboItem.setListIndex(0);
    d.txtAvailStock.setText("0");
    d.txtVerifiedStock.setText("");
    d.txtBadStock.setText("");
    d.txtVerifiedBadStock.setText("0");
    fs.s.ui.queueAnswer(forms::vbOK, "Enter verified Good stock or verified bad stock");
    f.addtolist();

    fs.s.m.strFetchedItemCode = "BEV000004";
    d.txtVerifiedStock.setText("2.5");
    f.addtolist();
    ASSERT_EQ(fs.list().ListItems().Count(), 1);
    const forms::ListItem &row = fs.list().ListItems()(1);
    EXPECT_EQ(row.Text(), "1");
    EXPECT_EQ(row.SubItems(1), " ");
    EXPECT_EQ(row.SubItems(2), "BEV000004");
    EXPECT_EQ(row.SubItems(3), "Green Tea 25 bags");
    EXPECT_EQ(row.SubItems(5), "2.500");
    EXPECT_EQ(row.SubItems(8), "4");
    EXPECT_EQ(row.SubItems(9), "0") << "the count before the row, not after";
    EXPECT_EQ(row.SubItems(10), "1");
    EXPECT_EQ(row.SubItems(12), "2.95");
    EXPECT_TRUE(row.Selected());
    EXPECT_EQ(d.cboItem.ListIndex(), -1);
    EXPECT_EQ(d.txtVerifiedStock.Text(), "");

    d.cboItem.setListIndex(0);
    d.txtVerifiedStock.setText("1");
    f.addtolist();
    EXPECT_EQ(fs.list().ListItems().Count(), 1);
    EXPECT_EQ(fs.list().ListItems()(1).SubItems(5), "3.500");
    EXPECT_EQ(fs.s.ui.boxes().size(), 2u);
}

TEST(FrmFetchDormantTest, LocationStockFillsTheDetailFormsGrid) {
    FetchSession fs;
    frmStockVerificationDetail &d = fs.detail();
    FrmFetch &f = fs.open();
    d.flxLocations.setRows(5);
    d.flxLocations.setTextMatrix(4, 1, "stale");
    f.ClearLocationFlex();
    EXPECT_EQ(d.flxLocations.Rows(), 2);
    EXPECT_EQ(d.flxLocations.TextMatrix(1, 0), "1");

    d.cboItem.AddItem("Ball Point Pen Blue box of 10");
    d.cboItem.setItemData(0, 9);
    d.cboItem.setListIndex(0);
    f.PopulateLocationStock();
    ASSERT_EQ(d.flxLocations.Rows(), 3);
    std::vector<std::string> rows;
    for (int r = 1; r <= 2; ++r) {
        std::string line;
        for (int c = 0; c <= 5; ++c) {
            line += d.flxLocations.TextMatrix(r, c) + "|";
        }
        rows.push_back(line);
    }
    EXPECT_EQ(rows, (std::vector<std::string>{"1|RACK A1|24|1||24|", "2|RACK B1|-4|3||-4|"}));
}

} // namespace
} // namespace tqsv2731
