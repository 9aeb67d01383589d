#include "RegisterFixture.h"

#include "ado/Recordset.h"
#include "ado/Session.h"
#include "forms/MsgBox.h"
#include "module/register/frmcancelreason.h"
#include "vb/Conversion.h"

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

std::string value(ModuleSession &s, const std::string &sql) {
    ado::Recordset rs;
    rs.Open(sql, s.connection);
    const vb::Variant v = rs.Fields(0).Value();
    return vb::IsNull(v) ? "NULL" : vb::CStr(v);
}

std::string headerOf(ModuleSession &s, int godown, int id) {
    return value(s, "select svhcancelled || '|' || ifnull(svhcancelledRemarks, 'NULL') from "
                    "loiStockVerificationHeader where svhgodownid = " +
                        std::to_string(godown) + " and svhid = " + std::to_string(id));
}

/// Godown 2's good stock of item 1, which SVB1 counted from 40 down to 37.
std::string item1Stock(ModuleSession &s) {
    return value(s, "select sum(gsStock) from moigodownstock where gsgodownid = 2 and gsitemid = 1");
}

bool shown(const ModuleSession &s, const std::string &form) {
    const auto &f = s.ui.modalForms();
    return std::find(f.begin(), f.end(), form) != f.end();
}

/// The reason dialog's user: the reason typed into the box, then OK.
void typeReason(ModuleSession &s, const std::string &reason) {
    s.ui.queueAction([&s, reason](forms::Input &input) {
        frmcancelreason &d = s.m.frmcancelreason();
        d.txtcanreason.setText(reason);
        input.click(d.cmdOK);
    });
}

TEST(frmMasterDeleteTest, AReasonedDeleteFlagsTheEntryReversesItsStockAndRedrawsTheRow) {
    ModuleSession s(session(2, 1005));
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(1);
    s.ui.queueAnswer(forms::vbYes, "Are you sure you want to Delete the entry of - SVB1 ?");
    typeReason(s, "  Counted the wrong bay  ");
    f.CmdDelete_Click();

    ASSERT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_EQ(s.ui.boxes()[0].buttons, 276);
    EXPECT_EQ(s.ui.boxes()[0].title, "Godown Count");
    // The user's name of godown 2, then the reason, both trimmed.
    EXPECT_EQ(headerOf(s, 2, 2), "1|" + value(s, "select trim(username) from lousers where "
                                                 "userid = 1 and godownid = 2") +
                                     ":Counted the wrong bay");
    EXPECT_EQ(item1Stock(s), "40");
    EXPECT_EQ(f.flexMaster.TextMatrix(1, 4), "Yes");
    EXPECT_EQ(f.flexMaster.CellForeColor(), 255u) << "GridColor ran over the row";
    EXPECT_FALSE(s.connection.session().inTransaction());
    EXPECT_EQ(s.m.strCancelReason, "  Counted the wrong bay  ");
    EXPECT_EQ(s.m.lngVerificationId, 2);
    EXPECT_TRUE(s.faultLog().empty());
}

TEST(frmMasterDeleteTest, TheStoredRemarkCutsTheUserAtTwentyAndTheReasonAtTwoHundredThirty) {
    ModuleSession s(session(2, 1005));
    s.execute("update lousers set username = '" + std::string(30, 'U') +
              "' where userid = 1 and godownid = 2");
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(1);
    s.ui.queueAnswer(forms::vbYes);
    // The box takes 200 characters; the reason in the global may be longer
    // only when set past the box, which the cut still bounds.
    s.ui.queueAction([&s](forms::Input &input) {
        frmcancelreason &d = s.m.frmcancelreason();
        d.txtcanreason.setText(std::string(200, 'r'));
        input.click(d.cmdOK);
        s.m.strCancelReason = std::string(300, 'R');
    });
    f.CmdDelete_Click();
    EXPECT_EQ(headerOf(s, 2, 2), "1|" + std::string(20, 'U') + ":" + std::string(230, 'R'));
}

TEST(frmMasterDeleteTest, NoAtTheQuestionRollsBackAndAsksNoReason) {
    ModuleSession s(session(2, 1005));
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(1);
    s.ui.queueAnswer(forms::vbNo);
    f.CmdDelete_Click();
    EXPECT_FALSE(shown(s, "frmcancelreason"));
    EXPECT_EQ(headerOf(s, 2, 2), "0|NULL");
    EXPECT_EQ(item1Stock(s), "37");
    EXPECT_FALSE(s.connection.session().inTransaction());
    EXPECT_FALSE(f.blnInTransaction);
    EXPECT_EQ(f.MousePointer(), 0);
}

TEST(frmMasterDeleteTest, APostedEntryIsRefusedByAFreshReadWithAnUntitledMessage) {
    ModuleSession s(session(2, 1005));
    s.screen.setAppTitle("Inventory");
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(1);
    s.execute("update loiStockVerificationHeader set svhposted = 1 where svhid = 2 and "
              "svhgodownid = 2");
    s.ui.queueAnswer(forms::vbOK, "Entry Posted,Cannot Delete");
    f.CmdDelete_Click();
    ASSERT_EQ(s.ui.boxes().size(), 1u) << "no question before the refusal";
    EXPECT_EQ(s.ui.boxes()[0].title, "Inventory");
    EXPECT_EQ(s.ui.boxes()[0].buttons, 64);
    EXPECT_FALSE(s.connection.session().inTransaction());
    EXPECT_EQ(headerOf(s, 2, 2), "0|NULL");
}

TEST(frmMasterDeleteTest, AnEntryDeletedMeanwhileIsRefusedInThePlainInterfaceOnly) {
    ModuleSession s(session(2, 1005));
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(1);
    s.execute("update loiStockVerificationHeader set svhcancelled = 1 where svhid = 2 and "
              "svhgodownid = 2");
    s.ui.queueAnswer(forms::vbOK, "This entry is already deleted");
    f.CmdDelete_Click();
    EXPECT_FALSE(f.CmdDelete.Enabled());
    EXPECT_FALSE(s.connection.session().inTransaction()) << "refused before BeginTrans";

    // The total interface asks no such question: the entry is deleted and
    // reversed a second time.
    ModuleSession t(session(2, 1013));
    frmMaster &g = t.m.frmMaster();
    g.flexMaster.setRow(1);
    t.execute("update loiStockVerificationHeader set svhcancelled = 1 where svhid = 1 and "
              "svhgodownid = 2");
    t.ui.queueAnswer(forms::vbYes);
    typeReason(t, "again");
    t.forget();
    g.CmdDelete_Click();
    const auto sent = test::moduleStatements(t);
    EXPECT_NE(std::find(sent.begin(), sent.end(),
                        "exec spReverseGodownTotalStockVerification @svhid=1, @godownid=2"),
              sent.end());
    EXPECT_EQ(headerOf(t, 2, 1).substr(0, 2), "1|");
}

TEST(frmMasterDeleteTest, AFailedReversalRollsBackFirstAndTheGridKeepsWhatItShowed) {
    ModuleSession s(session(2, 1005));
    s.screen.setAppTitle("Inventory");
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(1);
    s.ui.queueAnswer(forms::vbYes);
    typeReason(s, "Wrong bay");
    s.ui.queueAnswer(forms::vbOK); // the fault desk's report
    s.connection.failNthCall(1, vb::Error(-2147217900, "Microsoft OLE DB Provider", "Deadlock"),
                             ado::Operation::Procedure);
    f.CmdDelete_Click();

    EXPECT_EQ(headerOf(s, 2, 2), "0|NULL");
    EXPECT_EQ(item1Stock(s), "37");
    EXPECT_EQ(f.flexMaster.TextMatrix(1, 4), "No");
    ASSERT_EQ(s.ui.boxes().size(), 2u);
    EXPECT_EQ(s.ui.boxes()[1].prompt, "Error 17900 in CmdDelete_Click (frmMaster):\nDeadlock");
    EXPECT_FALSE(s.connection.session().inTransaction());
    EXPECT_EQ(f.MousePointer(), 0);
    EXPECT_EQ(f.flexMaster.MousePointer(), 0);
}

TEST(frmMasterDeleteTest, ThirdInterfaceOnlyFlagsTheEntry) {
    ModuleSession s(session(1, 1020));
    s.execute("update loiStockVerificationHeader set svhFutureVc = 'tn00001' where svhid = 6 and "
              "svhgodownid = 1");
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(f.flexMaster.Rows() - 1);
    ASSERT_EQ(f.flexMaster.TextMatrix(f.flexMaster.Row(), 0), "6");
    s.ui.queueAnswer(forms::vbYes);
    typeReason(s, "x");
    s.forget();
    f.CmdDelete_Click();
    for (const std::string &sql : test::moduleStatements(s)) {
        EXPECT_EQ(sql.find("exec "), std::string::npos) << sql;
    }
    EXPECT_EQ(headerOf(s, 1, 6).substr(0, 2), "1|");
}

} // namespace
} // namespace tqsv2731
