#include "RegisterFixture.h"

#include "forms/MsgBox.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::gridRows;
using test::ModuleSession;
using test::moduleStatements;
using test::SessionValues;

const std::string list1005 =
    "select svhid,svhno,svhdate,svhVerificationby,  case svhcancelled when 1 then 'Yes' when 0 "
    "then 'No' end, svhremarks,case svhposted when 1 then 'Yes' when 0 then 'No' end  from "
    "loiStockVerificationHeader where svhDate>'20260930' and svhgodownid=1 and "
    "left(svhFutureVc, 1) <> 't' order by svhid";

SessionValues interfaceValues(std::int32_t interfaceId) {
    SessionValues v;
    v.interfaceId = interfaceId;
    return v;
}

TEST(frmMasterLoadTest, SendsItsStatementsInOrderLetterForLetter) {
    ModuleSession s;
    s.m.frmMaster();
    const std::vector<std::string> expected{
        "select username from lousers where userid=1 and GodownID=1",
        "select sNoBackDays from LOiSettings where Godownid=1",
        "select closedate from vwGodownCloseDate where Godownid=1",
        "select IntegerQuantity from aPAckageSettings",
        "select Alias from aPAckageSettings",
        list1005,
        "select tc.columnheader,tc.columnname from atables t,atablecolumns tc where t.tableid = "
        "tc.tableid and tablename ='loiStockVerificationHeader'",
        "select functionrights from louserrights where userid = 1 and interfaceid = 1005 and "
        "companyid = 1",
    };
    EXPECT_EQ(moduleStatements(s), expected);
    EXPECT_EQ(s.m.strRegisterSql, list1005);
    EXPECT_EQ(s.m.strUserName, "RAHUL MEHTA");
    EXPECT_EQ(s.m.dtListFloorDate, vb::DateSerial(2026, 9, 30)) << "the close date is later";
    EXPECT_TRUE(s.ui.boxes().empty());
}

TEST(frmMasterLoadTest, ListsAndRightsAreOpenedKeysetOptimistic) {
    ModuleSession s;
    s.m.frmMaster();
    const auto sent = s.sent();
    const auto how = s.sentHow();
    for (std::size_t i = 0; i < sent.size(); ++i) {
        if (sent[i].rfind("select svhid", 0) == 0 || sent[i].rfind("select tc.", 0) == 0 ||
            sent[i].rfind("select functionrights", 0) == 0) {
            EXPECT_EQ(how[i], "open keyset optimistic") << sent[i];
        }
    }
}

TEST(frmMasterLoadTest, TotalInterfaceListsTotalEntriesWithItsOwnDateForm) {
    ModuleSession s(interfaceValues(1013));
    frmMaster &f = s.m.frmMaster();
    EXPECT_EQ(f.Caption(), "Total Stock Verification");
    EXPECT_EQ(s.m.strRegisterSql,
              "select svhid, svhno, svhdate, svhVerificationby,  case svhCancelled when 1 then "
              "'Yes'  when 0 then 'No' end, svhRemarks,  case svhposted when 1 then 'Yes' when 0 "
              "then 'No' end  from loiStockVerificationHeader where svhDate > '2026/Sep/30' and "
              "svhgodownid = 1 and left(svhFutureVc, 1) = 't' order by svhid");
    EXPECT_EQ(gridRows(f.flexMaster).at(1),
              "6|TSA1|16/11/2026|RAHUL MEHTA|No|Year end total count, "
              "first pass|No");
    EXPECT_EQ(moduleStatements(s).back(), "select functionrights from louserrights where userid "
                                          "= 1 and interfaceid = 1013 and companyid = 1");
}

TEST(frmMasterLoadTest, WithoutCloseDateTheFloorIsTheBackDays) {
    SessionValues v;
    v.godown = 2;
    ModuleSession s(v);
    s.m.frmMaster();
    EXPECT_EQ(s.m.dtListFloorDate, vb::DateSerial(2026, 10, 23));
    EXPECT_NE(s.m.strRegisterSql.find("svhDate>'20261023' and svhgodownid=2"), std::string::npos);
}

TEST(frmMasterLoadTest, ReadsTheAliasTextsWhenAliasesAreOn) {
    ModuleSession s;
    s.execute("update aPackageSettings set Alias = 1");
    s.m.frmMaster();
    const auto sent = moduleStatements(s);
    ASSERT_GE(sent.size(), 7u);
    EXPECT_EQ(sent[5], "select Alias from aAlias where AliasId = 1 AND CompanyId =1");
    EXPECT_EQ(sent[6], "select Alias from aAlias where AliasId = 2 AND CompanyId =1");
    EXPECT_TRUE(s.m.blnAliasEnabled);
    EXPECT_EQ(s.m.strAliasOne, "Outlet");
    EXPECT_EQ(s.m.strAliasTwo, "Godown");
}

TEST(frmMasterLoadTest, FillsTheGridWithItsHeadersAndSelectsTheLastRow) {
    ModuleSession s;
    frmMaster &f = s.m.frmMaster();
    const std::vector<std::string> expected{
        "|Verification No|Date|Verified By|Deleted|Remarks|Posted",
        "2|SVA2|05/10/2026|SUNITA IYER|No|Stationery and beverages recount|No",
        "3|SVA3|19/10/2026|RAHUL MEHTA|Yes|Rice and paper spot check|No",
        "4|SVA4|02/11/2026|SUNITA IYER|No|Dairy and water monthly count|Yes",
        "5|SVA5|09/11/2026|RAHUL MEHTA|No|Fast movers weekly count|No",
    };
    EXPECT_EQ(gridRows(f.flexMaster), expected);
    EXPECT_EQ(f.flexMaster.FixedRows(), 1);
    EXPECT_EQ(f.flexMaster.FixedCols(), 0);
    EXPECT_EQ(f.flexMaster.Row(), 4);
    EXPECT_EQ(f.flexMaster.Col(), 0);
    EXPECT_EQ(f.flexMaster.ColSel(), 6);
    EXPECT_EQ(f.flexMaster.ColAlignment(5), forms::flexAlignLeftTop);
    ASSERT_EQ(f.cboColNames.ListCount(), 6);
    ASSERT_EQ(f.cboSearch.ListCount(), 6);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(f.cboColNames.ItemData(i), i + 1);
        EXPECT_EQ(f.cboSearch.ItemData(i), i + 1);
    }
    EXPECT_EQ(f.cboSearch.List(1), "Date");
}

TEST(frmMasterLoadTest, AFailingLoadStopsWhereItFailedAndTheFormStillOpens) {
    ModuleSession s;
    s.execute("drop table aPackageSettings");
    s.ui.queueAnswer(forms::vbOK);
    frmMaster &f = s.m.frmMaster();
    EXPECT_TRUE(f.Loaded());
    ASSERT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_EQ(s.ui.boxes()[0].prompt.rfind("Error 17865 in Form_Load (frmMaster)", 0), 0u)
        << s.ui.boxes()[0].prompt;
    EXPECT_TRUE(s.m.strRegisterSql.empty());
    EXPECT_EQ(f.cboColNames.ListCount(), 0) << "the grid was never filled";
    EXPECT_TRUE(f.cmdnew.Enabled() && f.CmdEdit.Enabled() && f.CmdDelete.Enabled());
}

} // namespace
} // namespace tqsv2731
