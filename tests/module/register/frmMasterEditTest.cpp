#include "RegisterFixture.h"

#include "forms/MsgBox.h"
#include "module/entry/frmStockVerification.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tqsv2731 {
namespace {

using test::ModuleSession;
using test::SessionValues;

SessionValues session(std::int32_t godown, std::int32_t interfaceId) {
    SessionValues v;
    v.godown = godown;
    v.interfaceId = interfaceId;
    v.caption = "Godown Count";
    return v;
}

/// The entry form's list as rows of its 14 cells joined by "|".
std::vector<std::string> listRows(forms::ListView &lvw) {
    std::vector<std::string> out;
    for (int i = 1; i <= lvw.ListItems().Count(); ++i) {
        std::string row = lvw.ListItems()(i).Text();
        for (int c = 1; c < 14; ++c) {
            row += "|" + lvw.ListItems()(i).SubItems(c);
        }
        out.push_back(row);
    }
    return out;
}

/// What Edit left on the entry form while it was open.
struct Opened {
    bool okEnabled = false;
    bool confirmEnabled = false;
    int confirmValue = -1;
    std::string header;
    std::vector<std::string> list;
};

/// Edit on grid row `row`, with the entry form closed again by its close box.
Opened editRow(ModuleSession &s, int row) {
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(row);
    Opened seen;
    s.ui.queueAction([&](forms::Input &input) {
        frmStockVerification &e = s.m.frmStockVerification();
        seen.okEnabled = e.cmdOK.Enabled();
        seen.confirmEnabled = e.chkConfirm.Enabled();
        seen.confirmValue = e.chkConfirm.Value();
        seen.header = e.txtno.Text() + "|" + e.txtdate.Text() + "|" + e.txtVby.Text() + "|" +
                      e.txtRemarks.Text();
        seen.list = listRows(e.lvwRequest);
        input.closeForm(e);
    });
    f.CmdEdit_Click();
    return seen;
}

TEST(frmMasterEditTest, APostedEntryVerifiedAgainGivesBothMessagesInOrderAndOpensLocked) {
    ModuleSession s(session(1, 1005));
    s.screen.setAppTitle("Inventory");
    s.m.frmMaster();
    s.ui.queueAnswer(forms::vbOK,
                     "The stock is verified again after this entry. You cannot modify now.");
    s.ui.queueAnswer(forms::vbOK, "Entry Posted, Cannot Modify");
    // Row 3 is SVA4: posted, and SVA5 came after it.
    const Opened seen = editRow(s, 3);

    ASSERT_EQ(s.ui.boxes().size(), 2u);
    EXPECT_EQ(s.ui.boxes()[0].buttons, 48);
    EXPECT_EQ(s.ui.boxes()[0].title, "Inventory") << "the first message names no title";
    EXPECT_EQ(s.ui.boxes()[1].buttons, 64);
    EXPECT_EQ(s.ui.boxes()[1].title, "Godown Count");
    EXPECT_FALSE(seen.okEnabled);
    EXPECT_EQ(s.m.strTransactionMode, "E");
    EXPECT_EQ(s.m.lngVerificationId, 4);
    // One row per item, grouped by item id; quantities with three decimals.
    EXPECT_EQ(seen.list,
              (std::vector<std::string>{
                  "1|1|GRO000002|Toor Dal 1 kg|45.000|45.500|0.750|0.75|2|1|1|1|3.25|KG",
                  "2|1|DAI000008|Fresh Milk 1 L|36.000|35.000|0.000|0|8|2|1|1|0.95|LTR",
                  "3|1|BEV000011|Mineral Water 1.5 L|0.000|0.000|6.000|5|11|3|1|1|0.4|PCS"}))
        << "the map formats sub-items 4 to 6, not the verified bad stock in 7";
}

TEST(frmMasterEditTest, ADeletedEntryOpensLockedWithoutAMessageOfItsOwn) {
    ModuleSession s(session(1, 1005));
    s.m.frmMaster();
    s.ui.queueAnswer(forms::vbOK,
                     "The stock is verified again after this entry. You cannot modify now.");
    // Row 2 is SVA3: cancelled, and verified again since.
    const Opened seen = editRow(s, 2);
    EXPECT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_FALSE(seen.okEnabled);
}

TEST(frmMasterEditTest, TheLatestLiveEntryOpensForChangeWithTheGridsHeader) {
    ModuleSession s(session(2, 1005));
    frmMaster &f = s.m.frmMaster();
    const std::string date = f.flexMaster.TextMatrix(1, 2);
    const Opened seen = editRow(s, 1);
    EXPECT_TRUE(s.ui.boxes().empty());
    EXPECT_TRUE(seen.okEnabled);
    EXPECT_EQ(seen.header.substr(0, 5 + date.size()), "SVB1|" + date);
    EXPECT_EQ(seen.list.size(), 3u);
}

TEST(frmMasterEditTest, AConfirmedTotalCountOpensWithItsBoxTickedAndOff) {
    ModuleSession s(session(2, 1013));
    s.m.frmMaster();
    // SVB1 of the plain interface came after it, and freezes it as well.
    s.ui.queueAnswer(forms::vbOK,
                     "The stock is verified again after this entry. You cannot modify now.");
    const Opened seen = editRow(s, 1);
    EXPECT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_EQ(seen.confirmValue, 1);
    EXPECT_FALSE(seen.confirmEnabled);
    EXPECT_FALSE(seen.okEnabled);
}

TEST(frmMasterEditTest, ConfirmedReadsTheMarkersSecondLetterInAnyCase) {
    ModuleSession s(session(1, 1013));
    frmMaster &f = s.m.frmMaster();
    EXPECT_FALSE(f.Confirmed(6, 1)) << "tn00004";
    s.execute("update loiStockVerificationHeader set svhFutureVc = 'tC' where svhid = 6 and "
              "svhgodownid = 1");
    EXPECT_TRUE(f.Confirmed(6, 1));
    s.execute("update loiStockVerificationHeader set svhFutureVc = NULL where svhid = 6 and "
              "svhgodownid = 1");
    EXPECT_FALSE(f.Confirmed(6, 1));
    EXPECT_FALSE(f.Confirmed(6, 2)) << "no such entry";
    s.forget();
    f.Confirmed(6, 1);
    EXPECT_EQ(s.sent(), (std::vector<std::string>{"SELECT svhFutureVc FROM "
                                                  "loiStockVerificationHeader WHERE svhId = 6 "
                                                  "AND svhGodownId = 1"}));
    EXPECT_EQ(s.sentHow()[0], "open forward-only read-only");
}

TEST(frmMasterEditTest, VerifiedAgainCountsAnyLaterLiveEntryByIdNotByDate) {
    ModuleSession s(session(1, 1005));
    frmMaster &f = s.m.frmMaster();
    s.m.lngVerificationId = 6;
    EXPECT_FALSE(f.VerifiedAgain());
    // A later cancelled entry does not freeze it; a later live one of any
    // interface and date does.
    s.execute("update loiStockVerificationHeader set svhcancelled = 1 where svhid = 6 and "
              "svhgodownid = 1");
    s.m.lngVerificationId = 5;
    EXPECT_FALSE(f.VerifiedAgain());
    s.m.lngVerificationId = 4;
    EXPECT_TRUE(f.VerifiedAgain());
}

TEST(frmMasterEditTest, TheTotalCountsLinesComeBackByItemAndLocationMarkedOneOnly) {
    ModuleSession s(session(1, 1013));
    s.m.frmMaster();
    s.m.lngVerificationId = 6;
    s.execute("update loiStockVerificationDetail set svdAvailBadStock = 0 where svdid = 6 and "
              "svdgodownid = 1 and svditemid = 8");
    s.m.frmMaster().PopulateExistingData();
    const std::vector<std::string> sent = test::moduleStatements(s);
    const auto populate = std::find_if(sent.begin(), sent.end(), [](const std::string &q) {
        return q.find("from loiStockVerificationDetail, aItem") != std::string::npos;
    });
    ASSERT_NE(populate, sent.end());
    EXPECT_EQ(*populate,
              "select svdLocationid, itemcode, vwItemdescription.itemdescription, "
              "ISNULL(sum(svdavailstock), 0), isnull(sum(svdVerifiedBadStock), 0), "
              "isnull(sum(svdAvailBadStock), 0), isnull(sum(svdVerifiedBadStock), 0), svdItemId, "
              "max(svdLocationId), max(svdShipmentId), convert(varchar(24),MAX(svdCostPrice)), "
              "MIN(UnitCode) from loiStockVerificationDetail, aItem, vwItemDescription, aUnit "
              "where aItem.ItemId = svdItemId and vwItemDescription.ItemId = aItem.ItemId  and "
              "aItem.UnitsId = aUnit.UnitId and svdgodownid = 1 and svdid = 6 and svdgodownid = 1 "
              "and svdAvailBadStock = 1 group by "
              "svdItemId,svdLocationid,itemcode,vwItemdescription.itemdescription");
    const auto rows = listRows(s.m.frmStockVerification().lvwRequest);
    ASSERT_EQ(rows.size(), 3u) << "item 8 lost its mark";
    EXPECT_EQ(rows[0].substr(0, rows[0].find("|", 2)), "1|1");
}

} // namespace
} // namespace tqsv2731
