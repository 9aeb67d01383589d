#include "EntrySession.h"

#include "ado/Operation.h"
#include "forms/MsgBox.h"
#include "module/frame/Module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqsv2731 {
namespace {

using Rows = std::vector<std::vector<std::string>>;

const std::string lines = "select svdLocationid, svdShipmentID, svdItemID, svdAvailStock, "
                          "svdVerifiedStock, svdavailbadstock, svdverifiedbadstock, svdcostprice "
                          "from loiStockVerificationDetail where svdid = 7 and svdgodownid = 1";
const std::string stockOfItem2 =
    "select gsStock, gsBadStock from moigodownstock where gsgodownid = 1 and gsitemid = 2";

/// An entry of godown 1 with two rows and its header filled in.
void fill(test::EntrySession &e) {
    e.addRow({"Basmati Rice 5 kg bag", "147", "147", "2", "2", "1"});
    e.addRow({"Toor Dal 1 kg", "45.5", "44", "0.75", "0.5", "2"});
    e.entry().txtRemarks.setText("  Monthly count ");
}

test::SessionValues total() {
    test::SessionValues v;
    v.interfaceId = 1013;
    return v;
}

TEST(InsertRequestTest, SendsItsStatementsInOrder) {
    test::EntrySession e;
    fill(e);
    e.s.forget();
    e.entry().cmdOK_Click();
    const std::vector<std::string> expected{
        "select CurrencyID curID from aaccountmaster where companyid=1 and accountid=1001",
        "select depcurrencyid curID from adepartmentMaster where DepartmentID=1 and CompanyID=1",
        "select CurrencyID curID from acompanyMaster where companyID=1",
        "select max(svhid) from loiStockVerificationHeader where svhgodownid=1",
        "select UserName from loUsers where GodownID=1 and Userid=1",
        "select * from loistockVerificationHeader",
        "SELECT Prefix FROM aPrefix WHERE InterfaceID = 1005AND FinancialId = (Select FinancialId "
        "from aFinancialYear where CurFinancialYear = 1) and godownid=1",
        "Select isnull(max(convert(int,right(svhno,len(svhno)-3))),0) from "
        "loiStockVerificationHeader where svhgodownid = 1 and len(svhno)>len('SVA') and  "
        "isnumeric(isnull(right(svhno,len(svhno)-3),0)) =1 and "
        "substring(svhno,1,len('SVA'))='SVA'",
        "select departmentid from aGodown where  godownid = 1",
        "select * from aActivityTrail",
        "select * from loiStockVerificationDetail",
        "exec spupdateGodownVerification @svhid=7, @godownid=1, @mode='F'",
    };
    std::vector<std::string> sent = e.s.sent();
    ASSERT_GE(sent.size(), expected.size());
    sent.resize(expected.size());
    EXPECT_EQ(sent, expected);
    EXPECT_EQ(e.s.sentHow()[5], "open keyset optimistic");
    EXPECT_EQ(e.s.sentHow()[6], "open static read-only");
    EXPECT_EQ(e.s.sentHow()[7], "open static optimistic");
}

TEST(EntrySaveTest, PlainEntryStoresTheListsTextThroughVal) {
    test::EntrySession e;
    fill(e);
    e.entry().lvwRequest.ListItems()(1).setSubItems(5, "1O0");
    e.entry().lvwRequest.ListItems()(1).setSubItems(10, "");
    e.entry().cmdOK_Click();
    // "1O0" is no number: Val reads its leading 1; an empty text is 0.
    EXPECT_EQ(e.rows(lines), (Rows{{"0", "1", "1", "147", "1", "2", "2", "14.5"},
                                   {"1", "1", "2", "45.5", "44", "0.75", "0.5", "14.5"}}));
    EXPECT_EQ(e.rows(stockOfItem2), (Rows{{"44", "0.5"}}));
    EXPECT_FALSE(e.entryLoaded());
    EXPECT_TRUE(e.s.faultLog().empty());
}

TEST(EntrySaveTest, TotalEntryHandsTheTextToTheDatabaseWhichMayRefuseIt) {
    test::EntrySession e(total());
    fill(e);
    e.entry().lvwRequest.ListItems()(2).setSubItems(5, "44 pcs");
    e.entry().lvwRequest.ListItems()(1).setSubItems(6, "2 bad");
    e.s.ui.queueAnswer(forms::vbOK);
    e.entry().cmdOK_Click();

    // The first line went in (its bad stock by Val); the second was refused,
    // and what InsertRequest wrote before that was committed all the same.
    EXPECT_EQ(e.rows(lines), (Rows{{"1", "1", "1", "147", "147", "2", "2", "14.5"}}));
    EXPECT_EQ(e.value("select count(*) from loiStockVerificationHeader where svhid = 7"), "1");
    ASSERT_EQ(e.s.faultLog().size(), 1u);
    EXPECT_NE(e.s.faultLog()[0].find("InsertRequest"), std::string::npos);
    EXPECT_FALSE(e.entryLoaded()) << "the form closed as after a save";
}

TEST(EntrySaveTest, ChecksStopTheSaveOneAtATime) {
    test::EntrySession e;
    frmStockVerification &f = e.entry();
    f.Show();
    f.txtVby.setText("   ");
    e.s.ui.queueAnswer(forms::vbOK, "Atleast one detail needed");
    f.cmdOK_Click();
    fill(e);
    f.txtRemarks.setText("");
    e.s.ui.queueAnswer(forms::vbOK, "Enter verified by");
    f.cmdOK_Click();
    EXPECT_TRUE(f.txtVby.Enabled());
    EXPECT_TRUE(f.txtVby.hasFocus());
    f.txtVby.setText("S. IYER");
    e.s.ui.queueAnswer(forms::vbOK, "Enter remarks");
    f.cmdOK_Click();
    EXPECT_TRUE(f.txtRemarks.hasFocus());
    EXPECT_EQ(e.s.ui.boxes().size(), 3u);
    EXPECT_EQ(e.s.ui.boxes()[0].buttons, 64);
    EXPECT_EQ(e.value("select count(*) from loiStockVerificationHeader"), "8");
    EXPECT_TRUE(e.s.ui.failures().empty());
}

TEST(EntrySaveTest, OnlyAFailureInTheSavesOwnLinesRollsBack) {
    const vb::Error refused(-2147217900, "Microsoft OLE DB Provider for SQL Server", "refused");
    test::EntrySession own(total());
    fill(own);
    own.entry().chkConfirm.setValue(1);
    own.s.connection.failNthCall(1, refused, ado::Operation::Procedure);
    own.s.ui.queueAnswer(forms::vbOK);
    own.entry().cmdOK_Click();
    EXPECT_EQ(own.value("select count(*) from loiStockVerificationHeader where svhid = 7"), "0");
    EXPECT_TRUE(own.entryLoaded());
    EXPECT_EQ(own.entry().MousePointer(), forms::vbDefault);
    EXPECT_NE(own.s.faultLog().at(0).find("CmdOk_Click"), std::string::npos);

    // UpdateStock reports its own failure and the save commits without it.
    test::EntrySession plain;
    fill(plain);
    plain.s.connection.failNthCall(1, refused, ado::Operation::Procedure);
    plain.s.ui.queueAnswer(forms::vbOK);
    plain.entry().cmdOK_Click();
    EXPECT_EQ(plain.value("select count(*) from loiStockVerificationDetail where svdid = 7 and "
                          "svdgodownid = 1"),
              "2");
    EXPECT_EQ(plain.rows(stockOfItem2), (Rows{{"45.5", "0.75"}}));
    EXPECT_NE(plain.s.faultLog().at(0).find("UpdateStock"), std::string::npos);
    EXPECT_FALSE(plain.entryLoaded());
}

} // namespace
} // namespace tqsv2731
