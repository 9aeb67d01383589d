// The location and expiry postings that no command calls, each called directly on the demo.
#include "EntrySession.h"

#include "forms/MsgBox.h"
#include "module/frame/Module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqsv2731 {
namespace {

using Rows = std::vector<std::vector<std::string>>;

// In the demo's godown 1, item 9 stands at 24 in RACK A1 (an unconfirmed
// arrival of 10 there does not count), 0 in RACK A2 and -4 in RACK B1; item 1
// has 10 expiring 2027-05-24, 120 on 2027-07-06 and 20 on 2027-10-14.
const std::string locationBalance9 =
    "select locationid, sum(q) from (select ladLocationId locationid, ladItemQty q from "
    "loiLocationArrivalDetails where ladGodownId = 1 and ladItemId = 9 and ladCancel = 0 and "
    "ladconfirmed = 1 union all select lidLocationId, -lidItemQty from loiLocationIssueDetails "
    "where lidGodownId = 1 and lidItemId = 9 and lidCancel = 0 and lidconfirmed = 1) a group by "
    "locationid having sum(q) <> 0 order by locationid";
const std::string expiryBalance1 =
    "select d, sum(q) from (select eadexpirydate d, eadItemQty q from loiExpiryArrivalDetails "
    "where eadGodownId = 1 and eadItemId = 1 and eadCancel = 0 union all select eidExpiryDate, "
    "-eidItemQty from loiExpiryIssueDetails where eidGodownId = 1 and eidItemId = 1 and eidCancel "
    "= 0) a group by d having sum(q) <> 0 order by d";

/// An entry (id 40) listing `item`, its grids sized for one counted row.
struct Ledgers {
    explicit Ledgers(int item, const std::string &mode = "N") {
        e.s.m.lngVerificationId = 40;
        e.s.m.strTransactionMode = mode;
        e.addRow({"Item", "0", "0", "0", "0", std::to_string(item)});
        for (forms::FlexGrid *grid : {&form().flxLocations, &form().flxexpiry}) {
            grid->setRows(2);
        }
    }
    frmStockVerification &form() { return e.entry(); }
    /// A row of `flxLocations`: quantity, location, packing type, packing quantity, item.
    void location(int row, const std::string &qty, const std::string &location,
                  const std::string &packing, const std::string &packingQty,
                  const std::string &item) {
        auto &g = form().flxLocations;
        g.setTextMatrix(row, 2, qty);
        g.setTextMatrix(row, 3, location);
        g.setTextMatrix(row, 4, packing);
        g.setTextMatrix(row, 5, packingQty);
        g.setTextMatrix(row, 6, item);
    }
    /// A row of `flxexpiry`: date, quantity, packing type, packing quantity, item.
    void expiry(int row, const std::string &date, const std::string &qty,
                const std::string &packing, const std::string &packingQty,
                const std::string &item) {
        auto &g = form().flxexpiry;
        g.setTextMatrix(row, 1, date);
        g.setTextMatrix(row, 2, qty);
        g.setTextMatrix(row, 3, packing);
        g.setTextMatrix(row, 4, packingQty);
        g.setTextMatrix(row, 5, item);
    }
    Rows documentRows(const std::string &table, const std::string &prefix,
                      const std::string &transColumn) {
        return e.rows("select " + prefix + "DetailId, " + prefix + "LocationId, " + prefix +
                      "ItemQty, " + prefix + "PackingTypeId, " + prefix + "PakingQty, " + prefix +
                      "Cancel, " + prefix + "confirmed, " + prefix + "Adjustment from " + table +
                      " where " + prefix + "InterfaceId = 1005 and " + prefix +
                      "GodownId = 1 and " + transColumn + " = 40 order by 1");
    }

    test::EntrySession e;
};

TEST(LocationLedgerTest, ReversalBalancesEachLocationWithAnIssueOrAnArrival) {
    Ledgers l(9);
    l.form().flxLocations.setTextMatrix(1, 4, "3");
    std::int16_t arrivals = 5;
    std::int16_t issues = 0;
    l.form().ReverseLocationStock(arrivals, issues);

    EXPECT_EQ(arrivals, 6);
    EXPECT_EQ(issues, 1);
    // The positive balance goes out, the negative one comes in, each with the
    // absolute quantity twice, the packing type from the grid's row of the
    // list row, and position 10 (the confirmed flag) at 1.
    EXPECT_EQ(l.documentRows("loiLocationIssueDetails", "lid", "lidTransactionId"),
              (Rows{{"1", "1", "24", "3", "24", "0", "1", "0"}}));
    EXPECT_EQ(l.documentRows("loiLocationArrivalDetails", "lad", "ladTransId"),
              (Rows{{"6", "3", "4", "3", "4", "0", "1", "0"}}));
    EXPECT_TRUE(l.e.rows(locationBalance9).empty());
    EXPECT_TRUE(l.e.s.faultLog().empty());
}

TEST(LocationLedgerTest, SaveLeavesTheBalanceEqualToTheCountAndAnEditReplacesTheOldRows) {
    Ledgers l(9, "E");
    // Rows of an earlier posting of the same entry, which the edit removes.
    l.e.s.execute("insert into loiLocationArrivalDetails values (1005, 1, 40, 1, 2, 9, 99, "
                  "null, 0, 0, 1, 0)");
    l.e.s.execute("insert into loiLocationIssueDetails values (1005, 1, 40, 1, 1, 9, 1, null, "
                  "0, 0, 1, 0)");
    l.location(1, "7", "2", "", "0", "9");
    l.form().SaveLocationDetails();

    EXPECT_EQ(l.e.rows(locationBalance9), (Rows{{"2", "7"}}));
    // The counted row is numbered on from the balancing arrival; a blank
    // packing type is stored as null, the confirmed flag set.
    EXPECT_EQ(l.documentRows("loiLocationArrivalDetails", "lad", "ladTransId"),
              (Rows{{"1", "3", "4", "NULL", "4", "0", "1", "0"},
                    {"2", "2", "7", "NULL", "0", "0", "1", "0"}}));
    EXPECT_TRUE(l.e.s.faultLog().empty());
}

TEST(LocationLedgerTest, EmptyGridsStopTheReversalAtItsFirstRowAndTheFaultIsReported) {
    // The entry form's grids hold one unread row 0: the reversal's read of
    // the packing type at the list row's number finds no such row.
    Ledgers l(9);
    l.form().flxLocations.setRows(1);
    l.e.s.ui.queueAnswer(forms::vbOK);
    l.form().SaveLocationDetails();
    EXPECT_EQ(l.e.value("select count(*) from loiLocationIssueDetails where lidTransactionId = "
                        "40 and lidInterfaceId = 1005"),
              "0");
    ASSERT_EQ(l.e.s.faultLog().size(), 1u);
    EXPECT_NE(l.e.s.faultLog()[0].find("ReverseLocationStock"), std::string::npos)
        << l.e.s.faultLog()[0];
}

TEST(LocationLedgerTest, ALocationQuantityOfTextIsRefusedByTheDatabase) {
    Ledgers l(12);
    l.location(1, "seven", "3", "", "0", "12");
    l.e.s.ui.queueAnswer(forms::vbOK);
    l.form().SaveLocationDetails();
    ASSERT_EQ(l.e.s.faultLog().size(), 1u);
    EXPECT_NE(l.e.s.faultLog()[0].find("SaveLocationDetails"), std::string::npos);
    EXPECT_EQ(l.e.value("select count(*) from loiLocationArrivalDetails where ladTransId = 40 "
                        "and ladInterfaceId = 1005 and ladAdjustment = 0 and ladItemQty = 0"),
              "0");
}

TEST(ExpiryLedgerTest, SaveReadsDatesMonthFirstAndSkipsOnlyAQuantityWithoutADate) {
    Ledgers l(1);
    l.form().flxexpiry.setRows(4);
    l.expiry(1, "12/31/2027", "30", "", "2", "1");
    l.expiry(2, "", "5", "", "", "1"); // a quantity with no date: left out
    l.expiry(3, "", "", "", "", "1");  // neither: written as it stands
    l.form().SaveExpiryDetails();

    // Three balancing issues, numbered 1 to 3, flagged as adjustments. Their
    // packing type is read from column 4 of the list row's grid row, which
    // in this grid holds the packing quantity.
    EXPECT_EQ(l.e.rows("select eidDetailId, eidItemQty, eidPackingTypeId, eidCancel, "
                       "eidAdjustment from loiExpiryIssueDetails where eidTransactionId = 40 "
                       "and eidinterfaceId = 1005 order by 1"),
              (Rows{{"1", "10", "2", "0", "1"}, {"2", "120", "2", "0", "1"},
                    {"3", "20", "2", "0", "1"}}));
    // The counted rows go on from the arrival count, which stayed at 0; the
    // database reads an empty date as its day zero.
    EXPECT_EQ(l.e.rows("select eaddetailid, eadexpirydate, eadItemQty, eadPackingTypeId, "
                       "eadPackingQty, eadCancel, eadAdjustment from loiExpiryArrivalDetails "
                       "where eadTransactionId = 40 and eadInterfaceId = 1005 order by 1"),
              (Rows{{"1", "31/12/2027", "30", "NULL", "2", "0", "0"},
                    {"3", "01/01/1900", "0", "NULL", "0", "0", "0"}}));
    EXPECT_EQ(l.e.rows(expiryBalance1), (Rows{{"31/12/2027", "30"}}));
}

TEST(ExpiryLedgerTest, APackingQuantityWithDecimalsStopsTheReversalButNotTheCount) {
    Ledgers l(1);
    l.expiry(1, "12/31/2027", "30", "", "1.5", "1");
    l.e.s.ui.queueAnswer(forms::vbOK);
    l.form().SaveExpiryDetails();
    ASSERT_EQ(l.e.s.faultLog().size(), 1u);
    EXPECT_NE(l.e.s.faultLog()[0].find("ReverseexpiryStock"), std::string::npos);
    EXPECT_EQ(l.e.value("select count(*) from loiExpiryIssueDetails where eidTransactionId = 40 "
                        "and eidinterfaceId = 1005"),
              "0");
    EXPECT_EQ(l.e.rows(expiryBalance1),
              (Rows{{"24/05/2027", "10"}, {"06/07/2027", "120"}, {"14/10/2027", "20"},
                    {"31/12/2027", "30"}}));
}

TEST(ExpiryLedgerTest, ADayFirstDateIsRefusedAfterTheReversalHasRun) {
    Ledgers l(1);
    l.expiry(1, "24/05/2027", "30", "", "0", "1");
    l.e.s.ui.queueAnswer(forms::vbOK);
    l.form().SaveExpiryDetails();
    ASSERT_EQ(l.e.s.faultLog().size(), 1u);
    EXPECT_NE(l.e.s.faultLog()[0].find("SaveExpiryDetails"), std::string::npos);
    // With no transaction around it, the reversal stays: the item's expiry
    // balance is gone and the count never arrived.
    EXPECT_TRUE(l.e.rows(expiryBalance1).empty());
}

TEST(TotalLedgerTest, TotalCountsAreWrittenCancelledWithoutAReversal) {
    Ledgers l(9, "E");
    l.e.s.execute("insert into loiLocationArrivalDetails values (1013, 1, 40, 1, 2, 9, 99, "
                  "null, 0, 0, 1, 0)");
    l.e.s.execute("insert into loiLocationIssueDetails values (1013, 1, 40, 1, 1, 9, 1, null, "
                  "0, 0, 1, 0)");
    l.e.s.m.intInterfaceID = 1013;
    l.location(1, "7", "2", "4", "1", "9");
    l.expiry(1, "12/31/2027", "2.5", "", "0", "9");
    l.form().SaveTotalStockLocationDetails();
    l.form().SaveTotalStockExpiryDetails();

    EXPECT_EQ(l.e.rows("select ladDetailId, ladLocationId, ladItemQty, ladPackingTypeId, "
                       "ladCancel, ladconfirmed from loiLocationArrivalDetails where "
                       "ladInterfaceId = 1013 and ladTransId = 40"),
              (Rows{{"1", "2", "7", "4", "1", "0"}}));
    EXPECT_EQ(l.e.value("select count(*) from loiLocationIssueDetails where lidInterfaceId = "
                        "1013 and lidTransactionId = 40"),
              "1")
        << "the issue table is left alone";
    EXPECT_EQ(l.e.rows("select eadDetailId, eadExpiryDate, eadItemQty, eadCancel from "
                       "loiExpiryArrivalDetails where eadInterfaceId = 1013 and "
                       "eadTransactionId = 40"),
              (Rows{{"1", "31/12/2027", "2.5", "1"}}));
    EXPECT_EQ(l.e.rows(locationBalance9), (Rows{{"1", "23"}, {"3", "-4"}}))
        << "the confirmed issue of 1 counts; the cancelled count does not";
}

TEST(LedgerDormancyTest, TheLiveSaveWritesNoLedgerRowEvenWithTheGridsFilled) {
    Ledgers l(9);
    l.location(1, "7", "2", "", "0", "9");
    l.expiry(1, "12/31/2027", "30", "", "0", "9");
    const std::string count =
        "select (select count(*) from loiLocationArrivalDetails) + (select count(*) from "
        "loiLocationIssueDetails) + (select count(*) from loiExpiryArrivalDetails) + (select "
        "count(*) from loiExpiryIssueDetails)";
    const std::string before = l.e.value(count);
    l.form().txtVby.setText("RAHUL");
    l.form().txtRemarks.setText("Monthly count");
    l.e.addRow({"Basmati Rice 5 kg bag", "147", "147", "2", "2", "1"});
    l.form().cmdOK_Click();
    EXPECT_EQ(l.e.value("select count(*) from loiStockVerificationDetail where svdid = "
                        "(select max(svhid) from loiStockVerificationHeader where svhgodownid = "
                        "1)"),
              "2")
        << "the save went through";
    EXPECT_EQ(l.e.value(count), before);
}

} // namespace
} // namespace tqsv2731
