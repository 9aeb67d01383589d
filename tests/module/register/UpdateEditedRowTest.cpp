#include "RegisterFixture.h"

#include "module/frame/basStockVerification.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::gridRows;
using test::ModuleSession;

const char *newEntry =
    "insert into loiStockVerificationHeader (svhid, svhno, svhdate, svhremarks, "
    "svhverificationby, svhGodownid, svhFutureVc) values (7, 'SVA6', '2026-11-23 00:00:00', "
    "'Evening count', 'RAHUL MEHTA', 1, 'on00001')";

TEST(UpdateEditedRowTest, AnEditOverwritesTheCurrentRowButItsId) {
    ModuleSession s;
    frmMaster &f = s.m.frmMaster();
    s.execute("update loiStockVerificationHeader set svhremarks = 'Recounted', svhcancelled = 1 "
              "where svhid = 5 and svhGodownid = 1");
    s.m.strTransactionMode = "E";
    f.flexMaster.setRow(1); // the current row is elsewhere: it is overwritten all the same
    UpdateEditedRow(s.m, " svhID=5", 5);
    EXPECT_EQ(gridRows(f.flexMaster).at(1), "2|SVA5|09/11/2026|RAHUL MEHTA|Yes|Recounted|No");
    EXPECT_EQ(s.sent().at(0),
              "select svhid,svhno,svhdate,svhVerificationby,  case svhcancelled when 1 then 'Yes' "
              "when 0 then 'No' end, svhremarks,case svhposted when 1 then 'Yes' when 0 then 'No' "
              "end  from loiStockVerificationHeader where svhDate>'20260930' and svhgodownid=1 "
              "and left(svhFutureVc, 1) <> 't'  and  svhID=5");
    EXPECT_EQ(s.sentHow().at(0), "open keyset read-only");
}

TEST(UpdateEditedRowTest, ANewEntryIsAddedAtTheEndAndSelected) {
    ModuleSession s;
    frmMaster &f = s.m.frmMaster();
    s.execute(newEntry);
    s.m.strTransactionMode = "N";
    f.flexMaster.setRow(1);
    UpdateEditedRow(s.m, " svhID=7", 7);
    ASSERT_EQ(f.flexMaster.Rows(), 6);
    EXPECT_EQ(gridRows(f.flexMaster).at(5), "7|SVA6|23/11/2026|RAHUL MEHTA|No|Evening count|No");
    EXPECT_EQ(f.flexMaster.Row(), 5);
    EXPECT_EQ(f.flexMaster.Col(), 0);
    EXPECT_EQ(f.flexMaster.ColSel(), 6);
}

TEST(UpdateEditedRowTest, TheFirstEntryFillsTheEmptyGridsBlankRow) {
    ModuleSession s;
    s.execute("update LOiSettings set sNoBackDays = 0 where GodownID = 1");
    frmMaster &f = s.m.frmMaster();
    ASSERT_EQ(f.flexMaster.Rows(), 2);
    s.execute(newEntry);
    s.m.strTransactionMode = "N";
    UpdateEditedRow(s.m, " svhID=7", 7);
    ASSERT_EQ(f.flexMaster.Rows(), 2);
    EXPECT_EQ(gridRows(f.flexMaster).at(1), "7|SVA6|23/11/2026|RAHUL MEHTA|No|Evening count|No");
}

TEST(UpdateEditedRowTest, AnEntryOutsideTheFloorChangesNothing) {
    ModuleSession s;
    frmMaster &f = s.m.frmMaster();
    const auto before = gridRows(f.flexMaster);
    s.m.strTransactionMode = "E";
    UpdateEditedRow(s.m, " svhID=1", 1); // SVA1 lies before the floor date
    s.m.strTransactionMode = "N";
    UpdateEditedRow(s.m, " svhID=1", 1);
    EXPECT_EQ(gridRows(f.flexMaster), before);
}

TEST(UpdateEditedRowTest, AStatementWithoutWhereGetsItsOwnAndFailuresGoToTheCaller) {
    ModuleSession s;
    s.m.frmMaster();
    s.forget();
    s.m.strRegisterSql = "select svhid, svhno from loiStockVerificationHeader";
    s.m.strTransactionMode = "E";
    // The grid has more columns than this statement has fields: the failure
    // goes to the caller, which has the handler.
    try {
        UpdateEditedRow(s.m, "svhid=2 and svhgodownid=1", 2);
        FAIL();
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 3265);
    }
    EXPECT_EQ(
        s.sent().at(0),
        "select svhid, svhno from loiStockVerificationHeader where svhid=2 and svhgodownid=1");
}

} // namespace
} // namespace tqsv2731
