// A total count of a whole godown, 100,000 lines, whose save fails after its last line.
#include "EntrySession.h"

#include "ado/Operation.h"
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "module/frame/Module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqsv2731 {
namespace {

constexpr int wholeGodown = 100000;

// What a save of godown 1 could touch, summed up: any row written, moved or left
// behind changes one of these figures.
std::vector<std::vector<std::string>> footprint(test::EntrySession &e) {
    std::vector<std::vector<std::string>> out;
    for (const std::string sql :
         {"select count(*), sum(gsStock), sum(gsBadStock), sum(gsLocationId) from "
          "moigodownstock",
          "select count(*), max(svhid) from loiStockVerificationHeader",
          "select count(*), sum(svdVerifiedStock) from loiStockVerificationDetail",
          "select count(*), sum(tvcNewStock) from loiTotalVerificationChange",
          "select count(*) from loiVerificationNewStock", "select count(*) from aActivityTrail"}) {
        out.push_back(e.rows(sql).at(0));
    }
    return out;
}

TEST(WholeGodownSaveTest, AFailedCommitLeavesTheDatabaseAsItWasAndTheListForAnotherTry) {
    test::SessionValues values;
    values.interfaceId = 1013;
    test::EntrySession e(values);
    // 100,000 lines write as many trace blocks; the trace is not what this test reads.
    e.s.connection.traceSql("");
    frmStockVerification &f = e.entry();
    f.txtRemarks.setText("Year-end count");
    f.chkConfirm.setValue(forms::vbChecked);
    // Each line counts a shipment that the godown holds no row for: the posting adds
    // 100,000 stock rows and records each, and sets every other row of the godown to zero.
    for (int k = 0; k < wholeGodown; ++k) {
        const std::string item = std::to_string(1 + k % 12);
        e.addRow({"Item " + item, "0.000", std::to_string(1 + k % 7) + ".000", "0", "0", item});
        f.lvwRequest.ListItems()(k + 1).setSubItems(11, std::to_string(1000 + k / 12));
    }
    const auto before = footprint(e);

    e.s.connection.failNthCall(1, vb::Error(-2147467259, "test", "disk full"),
                               ado::Operation::CommitTrans);
    e.s.ui.queueAnswer(forms::vbOK);
    f.cmdOK_Click();

    EXPECT_EQ(footprint(e), before);
    ASSERT_EQ(e.s.faultLog().size(), 1u);
    EXPECT_NE(e.s.faultLog()[0].find("CmdOk_Click"), std::string::npos);
    ASSERT_TRUE(e.entryLoaded());
    EXPECT_EQ(f.lvwRequest.ListItems().Count(), wholeGodown);
    EXPECT_EQ(f.lvwRequest.ListItems()(wholeGodown).SubItems(11), "9333");

    // The rollback closed the transaction: the same OK saves and posts the count.
    f.cmdOK_Click();
    EXPECT_FALSE(e.entryLoaded());
    EXPECT_EQ(e.value("select count(*) from loiStockVerificationDetail where svdid = 7 and "
                      "svdgodownid = 1"),
              "100000");
    EXPECT_EQ(e.value("select count(*) from loiTotalVerificationChange where tvcSvhId = 7 and "
                      "tvcCreated = 1"),
              "100000");
    // Lines count 1 to 7 in turn: 14,285 rounds of 28, then 1 to 5; every row of the
    // godown that no line counted holds zero now.
    EXPECT_EQ(e.value("select sum(gsStock) from moigodownstock where gsGodownId = 1"), "399995");
}

} // namespace
} // namespace tqsv2731
