// The fills of the entry form's hidden ledger grids, called directly: nothing in the module calls them.
#include "RegisterFixture.h"

#include "forms/MsgBox.h"
#include "module/entry/frmStockVerification.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::ModuleSession;
using test::SessionValues;

SessionValues session(std::int32_t interfaceId) {
    SessionValues v;
    v.interfaceId = interfaceId;
    return v;
}

/// Entry 77 of godown 1 with three expiry arrivals: a live one, a cancelled
/// one and an adjusting one; and the same for locations, plus one not confirmed.
void seedLedgers(ModuleSession &s, int interfaceId) {
    const std::string i = std::to_string(interfaceId);
    s.execute("insert into loiLocation (lLocationId, lLocationName, lGodownId) values "
              "(901, 'BAY 901', 1)");
    s.execute("insert into loiexpiryArrivalDetails (eadInterfaceId, eadGodownId, "
              "eadTransactionId, eaddetailid, eadexpirydate, eadItemId, eadItemQty, "
              "eadPackingTypeId, eadPackingQty, eadCancel, eadAdjustment) values (" +
              i + ", 1, 77, 1, '20270524', 5, 12.5, null, 12.5, 0, 0), (" + i +
              ", 1, 77, 2, '20270601', 6, 3, 2, 36, 1, 0), (" + i +
              ", 1, 77, 3, '20270602', 7, 4, null, 4, 0, 1), (" + i +
              ", 1, 78, 1, '20270603', 8, 9, null, 9, 0, 0)");
    s.execute("insert into loiLocationArrivalDetails (ladInterfaceId, ladGodownId, ladTransId, "
              "ladDetailId, ladLocationId, ladItemId, ladItemQty, ladPackingTypeId, ladPakingQty, "
              "ladCancel, ladconfirmed, ladAdjustment) values (" +
              i + ", 1, 77, 1, 901, 5, 7.25, 3, 87, 0, 1, 0), (" + i +
              ", 1, 77, 2, 902, 6, 2, null, 2, 0, 1, 0), (" + i +
              ", 1, 77, 3, 901, 7, 1, null, 1, 0, 0, 0), (" + i +
              ", 1, 77, 4, 901, 8, 1, null, 1, 1, 1, 0)");
    s.m.lngVerificationId = 77;
}

TEST(frmMasterLedgerGridsTest, ExpiryFillLeavesCancelledAndAdjustingRowsOutOfAPlainCount) {
    ModuleSession s(session(1005));
    seedLedgers(s, 1005);
    frmMaster &f = s.m.frmMaster();
    frmStockVerification &entry = s.m.frmStockVerification();
    const int before = entry.flxexpiry.Rows();
    s.forget();
    f.FillEntryExpiryGrid();

    const auto sent = test::moduleStatements(s);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0], "SELECT Arrival.* FROM loiexpiryArrivalDetails Arrival WHERE "
                       "eadInterfaceId = 1005 AND eadGodownId = 1 AND eadTransactionId = 77 AND "
                       "eadCancel <> 1 AND eadAdjustment <> 1");
    // Row 0 stays as it was: the postings start reading at row 1.
    ASSERT_EQ(entry.flxexpiry.Rows(), before + 1);
    const int r = before;
    EXPECT_EQ(entry.flxexpiry.TextMatrix(r, 2), "12.5");
    EXPECT_EQ(entry.flxexpiry.TextMatrix(r, 3), "") << "no packing type reads as blank";
    EXPECT_EQ(entry.flxexpiry.TextMatrix(r, 4), "12.5");
    EXPECT_EQ(entry.flxexpiry.TextMatrix(r, 5), "5");
    EXPECT_EQ(entry.flxexpiry.TextMatrix(r, 1), "24/05/2027") << "the session's short date";
    EXPECT_TRUE(s.faultLog().empty());
}

TEST(frmMasterLedgerGridsTest, ExpiryFillOfATotalCountKeepsEveryRowOfTheEntry) {
    ModuleSession s(session(1013));
    seedLedgers(s, 1013);
    frmMaster &f = s.m.frmMaster();
    frmStockVerification &entry = s.m.frmStockVerification();
    const int before = entry.flxexpiry.Rows();
    s.forget();
    f.FillEntryExpiryGrid();
    EXPECT_EQ(test::moduleStatements(s).at(0),
              "SELECT Arrival.* FROM loiexpiryArrivalDetails Arrival WHERE eadInterfaceId = 1013 "
              "AND eadGodownId = 1 AND eadTransactionId = 77");
    EXPECT_EQ(entry.flxexpiry.Rows(), before + 3);
}

TEST(frmMasterLedgerGridsTest, LocationFillTakesConfirmedLiveRowsWithTheirNames) {
    ModuleSession s(session(1013));
    seedLedgers(s, 1013);
    frmMaster &f = s.m.frmMaster();
    frmStockVerification &entry = s.m.frmStockVerification();
    const int before = entry.flxLocations.Rows();
    s.forget();
    f.FillEntryLocationGrid();

    // The filter is the same whatever the interface.
    EXPECT_EQ(test::moduleStatements(s).at(0),
              "SELECT Arrival.*, Location.lLocationName LocationName FROM "
              "loiLocationArrivalDetails Arrival LEFT OUTER JOIN loiLocation Location ON "
              "Arrival.ladLocationId = Location.lLocationId AND Arrival.ladGodownID = "
              "Location.lGodownId WHERE ladInterfaceId = 1013 AND ladGodownId = 1 AND "
              "ladTransId = 77 AND ladCancel <> 1 and ladconfirmed=1 AND ladAdjustment <> 1");
    ASSERT_EQ(entry.flxLocations.Rows(), before + 2);
    const auto row = [&](int r) {
        std::string text;
        for (int c = 1; c <= 6; ++c) {
            text += (c > 1 ? "|" : "") + entry.flxLocations.TextMatrix(r, c);
        }
        return text;
    };
    EXPECT_EQ(row(before), "BAY 901|7.25|901|3|87|5");
    // A location the godown does not list keeps its row, with no name.
    EXPECT_EQ(row(before + 1), "|2|902||2|6");
}

TEST(frmMasterLedgerGridsTest, AFailingReadIsReportedUnderTheRoutinesName) {
    ModuleSession s(session(1005));
    frmMaster &f = s.m.frmMaster();
    s.execute("drop table loiLocationArrivalDetails");
    s.ui.queueAnswer(forms::vbOK); // the fault desk's report
    f.FillEntryLocationGrid();
    ASSERT_EQ(s.faultLog().size(), 1u);
    EXPECT_NE(s.faultLog()[0].find("FillEntryLocationGrid"), std::string::npos) << s.faultLog()[0];
}

} // namespace
} // namespace tqsv2731
