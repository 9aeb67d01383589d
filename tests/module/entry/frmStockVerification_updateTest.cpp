#include "frame/ModuleSession.h"

#include "ado/Recordset.h"
#include "ado/Session.h"
#include "forms/MsgBox.h"
#include "module/entry/frmStockVerification.h"
#include "module/register/frmMaster.h"
#include "vb/Conversion.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tqsv2731 {
namespace {

using Rows = std::vector<std::vector<std::string>>;
using test::ModuleSession;
using test::SessionValues;

SessionValues session(std::int32_t godown, std::int32_t interfaceId) {
    SessionValues v;
    v.godown = godown;
    v.interfaceId = interfaceId;
    return v;
}

Rows rows(ModuleSession &s, const std::string &sql) {
    Rows out;
    ado::Recordset rs;
    rs.Open(sql, s.connection);
    while (!rs.Eof()) {
        std::vector<std::string> row;
        for (int i = 0; i < rs.Fields().Count(); ++i) {
            const vb::Variant v = rs.Fields(i).Value();
            row.push_back(vb::IsNull(v) ? "NULL" : vb::CStr(v));
        }
        out.push_back(row);
        rs.MoveNext();
    }
    return out;
}

std::string value(ModuleSession &s, const std::string &sql) {
    return rows(s, sql).at(0).at(0);
}

/// The entry of grid row `row` on the entry form, as Edit brings it, with
/// its header boxes and its stored lines, not yet shown.
frmStockVerification &openEntry(ModuleSession &s, int row) {
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(row);
    s.m.strTransactionMode = "E";
    s.m.lngVerificationId = std::stoi(f.flexMaster.TextMatrix(row, 0));
    frmStockVerification &e = s.m.frmStockVerification();
    e.txtno.setText(f.flexMaster.TextMatrix(row, 1));
    e.txtVby.setText(f.flexMaster.TextMatrix(row, 3));
    e.txtRemarks.setText(f.flexMaster.TextMatrix(row, 5));
    f.PopulateExistingData();
    return e;
}

const std::string svb1Item1 =
    "select sum(gsStock) from moigodownstock where gsgodownid = 2 and gsitemid = 1";

TEST(UpdateRequestTest, PlainEditReversesReplacesAndReappliesInThisOrder) {
    ModuleSession s(session(2, 1005));
    frmStockVerification &e = openEntry(s, 1);
    ASSERT_EQ(e.lvwRequest.ListItems()(1).SubItems(8), "1");
    e.lvwRequest.ListItems()(1).setSubItems(5, "39");
    e.txtRemarks.setText(" Recount of bay 1 ");
    s.forget();
    e.cmdOK_Click();

    std::vector<std::string> sent = s.sent();
    const std::vector<std::string> expected{
        "select svhposted from loistockVerificationHeader where svhgodownid=2 and svhid = 2 ",
        "select UserName from loUsers where GodownID = 2 and Userid = 1",
        "select * from loiStockVerificationHeader where svhid=2 and svhgodownid=2",
        "Update loiStockVerificationHeader set updatetime=getdate() where svhid=2 and "
        "svhgodownid=2",
        "exec spupdateGodownVerification @svhid=2, @godownid=2, @mode='R'",
        "delete loiStockVerificationDetail where svdid = 2 and svdGodownID=2",
        "select * from loiStockVerificationDetail",
        "exec spUpdateGodownVerification @svhid=2, @godownid=2, @mode='F'",
    };
    sent.erase(std::remove_if(sent.begin(), sent.end(),
                              [](const std::string &q) {
                                  return q.rfind("insert", 0) == 0 || q.rfind("update", 0) == 0 ||
                                         q.find("aScreenPalette") != std::string::npos;
                              }),
               sent.end());
    ASSERT_GE(sent.size(), expected.size());
    EXPECT_EQ(std::vector<std::string>(sent.begin(), sent.begin() + 8), expected);

    // Back to the book's 40, then down to the new count of 39.
    EXPECT_EQ(value(s, svb1Item1), "39");
    EXPECT_EQ(rows(s, "select svhremarks, svhFutureVc, svhno, updatetime is not null from "
                      "loiStockVerificationHeader where svhid = 2 and svhgodownid = 2"),
              (Rows{{"Recount of bay 1", "on00003", "SVB1", "1"}}));
    EXPECT_EQ(value(s, "select count(*) from loiStockVerificationDetail where svdid = 2 and "
                       "svdgodownid = 2"),
              "3");
    EXPECT_EQ(s.m.frmMaster().flexMaster.TextMatrix(1, 5), "Recount of bay 1");
    EXPECT_TRUE(s.faultLog().empty());
}

TEST(UpdateRequestTest, TheMarkerIsBuiltWhenNullAndOtherwiseOverwrittenInPlace) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"NULL", "on00003"},
        {"'tcX'", "on0"},
        {"'tc0000945'", "on0000345"},
    };
    for (const auto &[stored, expected] : cases) {
        ModuleSession s(session(2, 1005));
        // Changed after the register listed it: a null marker keeps an entry
        // out of the list.
        frmStockVerification &e = openEntry(s, 1);
        s.execute("update loiStockVerificationHeader set svhFutureVc = " + stored +
                  " where svhid = 2 and svhgodownid = 2");
        e.cmdOK_Click();
        EXPECT_EQ(value(s, "select svhFutureVc from loiStockVerificationHeader where svhid = 2 "
                           "and svhgodownid = 2"),
                  expected)
            << stored;
    }
}

TEST(UpdateRequestTest, AnEditedTotalCountMarksEveryLineAndMovesNoStock) {
    ModuleSession s(session(1, 1013));
    const std::string stock = value(s, "select group_concat(gsStock) from moigodownstock where "
                                       "gsgodownid = 1");
    frmMaster &f = s.m.frmMaster();
    frmStockVerification &e = openEntry(s, f.flexMaster.Rows() - 1);
    ASSERT_EQ(e.lvwRequest.ListItems().Count(), 4);
    e.lvwRequest.ListItems()(2).setSubItems(5, "44.5");
    s.forget();
    e.cmdOK_Click();

    for (const std::string &q : s.sent()) {
        EXPECT_EQ(q.find("exec "), std::string::npos) << q;
        EXPECT_EQ(q.find("updatetime"), std::string::npos) << q;
    }
    EXPECT_EQ(rows(s, "select svditemid, svdVerifiedStock, svdavailbadstock, svdverifiedbadstock "
                      "from loiStockVerificationDetail where svdid = 6 and svdgodownid = 1 order "
                      "by svditemid"),
              (Rows{{"1", "0", "1", "NULL"},
                    {"2", "44.5", "1", "NULL"},
                    {"4", "0", "1", "NULL"},
                    {"8", "0", "1", "NULL"}}))
        << "the list's Verified GS came back from the unset verified bad stock, and goes "
           "back as the count";
    EXPECT_EQ(value(s, "select svhFutureVc from loiStockVerificationHeader where svhid = 6 and "
                       "svhgodownid = 1"),
              "tn00004");
    EXPECT_EQ(value(s, "select group_concat(gsStock) from moigodownstock where gsgodownid = 1"),
              stock);
}

TEST(UpdateRequestTest, AFailureAfterTheReversalCommitsWhatWasWritten) {
    ModuleSession s(session(2, 1005));
    frmStockVerification &e = openEntry(s, 1);
    e.lvwRequest.ListItems()(1).setSubItems(5, "39");
    s.ui.queueAnswer(forms::vbOK); // the fault desk
    // The second procedure call is the re-application "F".
    s.connection.failNthCall(2, vb::Error(-2147217900, "Microsoft OLE DB Provider", "Timeout"),
                             ado::Operation::Procedure);
    e.cmdOK_Click();

    ASSERT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_EQ(s.ui.boxes()[0].prompt, "Error 17900 in UpdateRequest (frmStockVerification):\nTimeout");
    EXPECT_FALSE(s.connection.session().inTransaction()) << "the save committed";
    EXPECT_EQ(value(s, svb1Item1), "40") << "reversed, and not applied again";
    EXPECT_EQ(value(s, "select svdVerifiedStock from loiStockVerificationDetail where svdid = 2 "
                       "and svdgodownid = 2 and svditemid = 1"),
              "39");
}

TEST(reSetgodownStockTest, SetsTheStockToTheBookOrTheCountedFigures) {
    ModuleSession s(session(2, 1005));
    s.m.frmMaster();
    s.m.lngVerificationId = 2;
    frmStockVerification &e = s.m.frmStockVerification();
    const std::string item10 = "select gsStock || '/' || gsBadStock from moigodownstock where "
                               "gsgodownid = 2 and gsitemid = 10 and gsshipmentid = 2";
    e.reSetgodownStock(true);
    EXPECT_EQ(value(s, svb1Item1), "40");
    EXPECT_EQ(value(s, item10), "119/3");
    e.reSetgodownStock(false);
    EXPECT_EQ(value(s, svb1Item1), "37");
    EXPECT_EQ(value(s, item10), "119/2");
}

} // namespace
} // namespace tqsv2731
