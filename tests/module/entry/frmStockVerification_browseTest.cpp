#include "EntrySession.h"

#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "module/frame/Module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqsv2731 {
namespace {

using test::EntrySession;

const std::string newEntrySelect =
    "select itemcode, vwItemdescription.itemdescription, sum(gsStock), sum(gsstock), "
    "sum(gsBadStock), sum(gsBadStock), gsitemid, gsLocationId, gsShipmentId, gsItemCost, "
    "MIN(UnitCode) from vwinquirygodownstock, aitem, vwItemdescription, aUnit where gsitemid = "
    "aitem.itemid  and vwItemdescription.itemid = aitem.itemid  and gsGodownid = 1 and lgodownid "
    "= gsGodownid  and aItem.UnitsId = aUnit.UnitId  group by gsitemid, "
    "vwItemdescription.itemdescription,itemcode  order by ";
const std::string savedEntrySelect =
    "select itemcode, vwItemdescription.itemdescription, ISNULL(sum(svdavailstock),0), "
    "isnull(sum(svdVerifiedStock),0), isnull(sum(svdAvailBadStock),0), "
    "isnull(sum(svdVerifiedBadStock),0), svditemid, svdLocationId, svdShipmentId, svdItemCost, "
    "MIN(UnitCode) from loiStockVerificationDetail, aitem, aShipment, vwItemdescription, aUnit "
    "where aitem.itemid = svditemid  and vwItemdescription.itemid = aitem.itemid  and lgodownid = "
    "1 and svdid = 5 and svdgodownid = 1 and aItem.UnitsId = aUnit.UnitId group by svditemid, "
    "vwItemdescription.itemdescription,itemcode  order by ";

int indexOf(const forms::ComboBox &cbo, const std::string &text) {
    for (int i = 0; i < cbo.ListCount(); ++i) {
        if (cbo.List(i) == text) {
            return i;
        }
    }
    return -1;
}

class BrowseTest : public ::testing::Test {
protected:
    EntrySession es;
    frmStockVerification &f = es.entry();
    forms::ListView &list = f.lvwRequest;

    /// A row: its running number, then sub-items 1 (location) to 6.
    void row(const std::vector<std::string> &cells) {
        forms::ListItem &item = list.ListItems().Add(0, "", cells[0]);
        for (int n = 1; n <= 13; ++n) {
            item.setSubItems(n, n < static_cast<int>(cells.size()) ? cells[n] : "");
        }
    }
    void searchFor(const std::string &caption, const std::string &text) {
        f.cboSearch.setListIndex(indexOf(f.cboSearch, caption));
        f.txtsearch.setText(text);
        f.searchtheword();
    }
    int selected() const {
        const forms::ListItem *item = list.selectedItemOrNull();
        return item ? item->Index() : 0;
    }
};

TEST_F(BrowseTest, ANewEntryReloadsTheGodownsStockInTheChosenOrder) {
    // Both reloads name columns outside the GROUP BY and are refused.
    es.s.ui.queueAnswer(forms::vbOK);
    es.s.ui.queueAnswer(forms::vbOK);
    es.s.forget();
    f.optDescend.setValue(true);
    EXPECT_TRUE(es.s.sent().empty()) << "a direction alone reloads nothing";
    f.cboColNames.setListIndex(indexOf(f.cboColNames, "Location"));
    ASSERT_FALSE(es.s.sent().empty());
    EXPECT_EQ(es.s.sent()[0], newEntrySelect + "lLocationName desc");

    es.s.forget();
    f.optAscend.setValue(true);
    EXPECT_EQ(f.cboColNames.Text(), "");
    EXPECT_EQ(f.cboColNames.ListIndex(), -1);
    f.cboColNames.setListIndex(indexOf(f.cboColNames, "Verified BS"));
    EXPECT_EQ(es.s.sent().at(0), newEntrySelect + "sum(gsBadStock)");
}

TEST_F(BrowseTest, ASavedEntrysReloadIsRefusedAndLeavesTheListEmptyAndTheFormDisabled) {
    es.s.m.strTransactionMode = "E";
    es.s.m.lngVerificationId = 5;
    row({"1", "RACK A1", "GRO000001", "Basmati Rice 5 kg bag", "148", "147", "0", "0", "1"});
    es.s.forget();
    es.s.ui.queueAnswer(forms::vbOK);
    f.cboColNames.setListIndex(indexOf(f.cboColNames, "Verified GS"));
    ASSERT_FALSE(es.s.sent().empty());
    EXPECT_EQ(es.s.sent()[0], savedEntrySelect + "sum(svdVerifiedStock)");
    EXPECT_EQ(list.ListItems().Count(), 0);
    EXPECT_FALSE(f.Enabled());
    ASSERT_EQ(es.s.faultLog().size(), 1u);
    EXPECT_NE(es.s.faultLog()[0].find("Search"), std::string::npos);
}

TEST_F(BrowseTest, EnterSearchesThenShowsTheRowAndEachFailureIsReportedByItsRoutine) {
    es.s.m.strTransactionMode = "E";
    es.s.m.lngVerificationId = 5;
    f.cboSearch.setListIndex(indexOf(f.cboSearch, "Item Description"));
    f.txtsearch.setText("gro");
    for (int box = 0; box < 3; ++box) {
        es.s.ui.queueAnswer(forms::vbOK);
    }
    int enter = 13;
    f.txtsearch_KeyPress(enter);
    // The refused reload, the probe of the empty list, the row to show.
    const std::vector<std::string> faults = es.s.faultLog();
    ASSERT_EQ(faults.size(), 3u);
    EXPECT_NE(faults[0].find("Search"), std::string::npos);
    EXPECT_NE(faults[1].find("searchtheword"), std::string::npos);
    EXPECT_NE(faults[2].find("txtsearch_KeyPress"), std::string::npos);

    f.txtsearch.setText("   ");
    f.txtsearch_KeyPress(enter);
    EXPECT_EQ(es.s.faultLog().size(), 3u) << "a blank text searches nothing";
}

TEST_F(BrowseTest, ChoosingASearchColumnEmptiesTheText) {
    f.txtsearch.setText("rice");
    f.cboSearch.setListIndex(1);
    EXPECT_EQ(f.txtsearch.Text(), "");
}

TEST_F(BrowseTest, TextSearchMatchesAPrefixAndEndsOnTheLowestMatch) {
    row({"1", "RACK A1", "BEV000004"});
    row({"2", "RACK A1", "GRO000001"});
    row({"3", "RACK A2", "GRO000002"});
    row({"4", "RACK B1", "STA000009"});
    searchFor("Location", "rack a");
    EXPECT_EQ(selected(), 1);
    // "Item Description" reads the column left of it, the item code.
    searchFor("Item Description", "gro");
    EXPECT_EQ(selected(), 2);
    // A text longer than the value compares with the whole value.
    searchFor("Location", "RACK A1 X");
    EXPECT_EQ(selected(), 0) << "a failed search leaves nothing selected";
}

TEST_F(BrowseTest, NumericSearchSelectsTheRowTheLoopEndedOn) {
    // "Verified GS" probes and reads sub-item 4, the available good stock.
    row({"1", "", "", "a", "10.000"});
    row({"2", "", "", "b", "15.000"});
    row({"3", "", "", "c", "20.000"});
    row({"4", "", "", "d", "30.000"});
    row({"5", "", "", "e", "40.000"});
    searchFor("Verified GS", "20");
    EXPECT_EQ(selected(), 2) << "the match was row 3, the loop ended on row 2";
    searchFor("Verified GS", "40");
    EXPECT_EQ(selected(), 5);
}

TEST_F(BrowseTest, NumericSearchOnTheFirstCaptionComparesTheRunningNumber) {
    row({"1", "7"});
    row({"2", "7"});
    row({"3", "7"});
    searchFor("Location", "3");
    EXPECT_EQ(selected(), 3);
    // No running number is 7: the text search over the locations follows.
    searchFor("Location", "7");
    EXPECT_EQ(selected(), 1);
}

TEST_F(BrowseTest, AnEmptyListFailsIntoTheTrap) {
    es.s.ui.queueAnswer(forms::vbOK);
    searchFor("Location", "rack");
    ASSERT_EQ(es.s.faultLog().size(), 1u);
    EXPECT_NE(es.s.faultLog()[0].find("searchtheword"), std::string::npos);
}

} // namespace
} // namespace tqsv2731
