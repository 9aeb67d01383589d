// The fault hook (the Nth call fails) and the --trace-sql file.
#include "ado/Connection.h"

#include "TempDatabase.h"
#include "ado/Command.h"
#include "ado/Session.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using adotest::errorOf;
using adotest::scalar;
using adotest::TempDatabase;

std::string readFile(const std::string &path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(FaultTest, TheNthCallFromNowFailsOnceWithTheGivenError) {
    TempDatabase db;
    auto c = db.connect();
    c.failNthCall(2, vb::Error(-2147217900, "test", "disk on fire"));
    c.Execute("insert into aItem (ItemId) values (1)");
    auto e = errorOf([&] { c.Execute("insert into aItem (ItemId) values (2)"); });
    EXPECT_EQ(e.number(), -2147217900);
    EXPECT_EQ(e.description(), "disk on fire");
    c.Execute("insert into aItem (ItemId) values (3)");
    EXPECT_EQ(scalar(c, "select group_concat(ItemId) from aItem"), "1,3");
}

TEST(FaultTest, FaultsOfOneKindLetOtherCallsThrough) {
    TempDatabase db;
    auto c = db.connect();
    c.failNthCall(2, vb::Error(-2147467259, "test", "update refused"), ado::Operation::Update);
    c.BeginTrans();
    ado::Recordset rs;
    rs.Open("select * from aItem", c, ado::adOpenKeyset, ado::adLockOptimistic);
    for (int id = 1; id <= 3; ++id) {
        rs.AddNew();
        rs.Fields("ItemId") = id;
        if (id == 2) {
            EXPECT_EQ(errorOf([&] { rs.Update(); }).description(), "update refused");
            rs.CancelUpdate();
        } else {
            rs.Update();
        }
    }
    rs.Close();
    c.CommitTrans();
    EXPECT_EQ(scalar(c, "select group_concat(ItemId) from aItem"), "1,3");
}

TEST(FaultTest, AFailedCommitLeavesTheTransactionToRollBack) {
    TempDatabase db;
    auto c = db.connect();
    long before = c.callCount();
    c.failNthCall(1, vb::Error(-2147467259, "test", "commit lost"), ado::Operation::CommitTrans);
    c.BeginTrans();
    c.Execute("insert into aItem (ItemId) values (1)");
    EXPECT_EQ(errorOf([&] { c.CommitTrans(); }).description(), "commit lost");
    c.RollbackTrans();
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "0");
    EXPECT_EQ(c.callCount() - before, 4);
}

TEST(FaultTest, AStatementIsNamedByItsFirstWordsWhateverItsCaseAndSpacing) {
    TempDatabase db;
    auto c = db.connect();
    // The second insert into aItem fails; the statement into another table
    // and the open of a recordset in between are not counted.
    c.failStatement(2, "INSERT  into aitem", vb::Error(-2147217873, "test", "key taken"));
    c.Execute("insert into aItem (ItemId) values (1)");
    c.Execute("insert into loiStockVerificationHeader (svhid, svhGodownid) values (1, 1)");
    ado::Recordset rs;
    rs.Open("select * from aItem", c, ado::adOpenKeyset, ado::adLockOptimistic);
    rs.Close();
    auto e = errorOf([&] { c.Execute("  insert\tinto   aItem (ItemId) values (2)"); });
    EXPECT_EQ(e.number(), -2147217873);
    EXPECT_EQ(c.pendingFaults(), 0u);
    c.Execute("insert into aItem (ItemId) values (3)");
    EXPECT_EQ(scalar(c, "select group_concat(ItemId) from aItem"), "1,3");
}

TEST(FaultTest, StatementFaultsCountOnlyStatementsAndNeedTheWholePrefix) {
    TempDatabase db;
    auto c = db.connect();
    c.failStatement(2, "", vb::Error(-2147467259, "test", "second statement"));
    c.failStatement(1, "insert into aItems", vb::Error(-2147467259, "test", "never"));
    c.BeginTrans();
    c.Execute("insert into aItem (ItemId) values (1)");
    ado::Recordset rs;
    EXPECT_EQ(errorOf([&] { rs.Open("select * from aItem", c, ado::adOpenKeyset,
                                    ado::adLockOptimistic); })
                  .description(),
              "second statement");
    c.RollbackTrans();
    EXPECT_EQ(c.pendingFaults(), 1u) << "\"aItems\" is no prefix of \"aItem (\"";
    c.clearFaults();
    EXPECT_EQ(c.pendingFaults(), 0u);
}

TEST(SentStatementsTest, KeepsStatementsAndTransactionCallsInOrderFailedOnesToo) {
    TempDatabase db;
    auto c = db.connect();
    c.Execute("select 0");
    c.recordStatements(true);
    c.BeginTrans();
    c.Execute("insert into aItem (ItemId) values (1) ");
    {
        ado::Recordset rs;
        rs.Open("select * from aItem", c, ado::adOpenKeyset, ado::adLockOptimistic);
        rs.AddNew();
        rs.Fields("ItemId") = 2;
        rs.Update(); // a row written through a recordset is no statement
    }
    c.failStatement(1, "delete", vb::Error(-2147467259, "test", "refused"));
    errorOf([&] { c.Execute("delete from aItem"); });
    {
        ado::Session::Unobserved tool(c.session());
        c.Execute("select count(*) from aItem"); // a tool's own check is not kept
    }
    c.RollbackTrans();
    EXPECT_EQ(c.takeStatements(),
              (std::vector<std::string>{"BeginTrans", "insert into aItem (ItemId) values (1) ",
                                        "select * from aItem", "delete from aItem",
                                        "RollbackTrans"}));
    EXPECT_TRUE(c.takeStatements().empty());
    c.recordStatements(false);
    c.Execute("select 1");
    c.recordStatements(true);
    EXPECT_TRUE(c.takeStatements().empty());
}

TEST(TraceTest, WritesEachCallWithItsTranslationRowsAndTime) {
    TempDatabase db;
    auto c = db.connect();
    std::string path = (db.folder() / "sql.trace").string();
    c.traceSql(path);
    c.BeginTrans();
    c.Execute("insert aItem (ItemId, itemcode) values (1, 'A')");
    {
        ado::Recordset rs;
        rs.Open("select itemcode from aItem where itemcode = 'a'", c, ado::adOpenKeyset,
                ado::adLockOptimistic);
        rs.Fields(0) = "B";
        rs.Update();
    }
    c.CommitTrans();
    errorOf([&] { c.Execute("delete nosuch where x = 1"); });
    c.traceSql("");
    c.Execute("select 1");

    std::string trace = readFile(path);
    for (std::string_view expected :
         {"begin transaction\n",
          "execute\nsent:    insert aItem (ItemId, itemcode) values (1, 'A')\n"
          "sqlite:  insert into aItem (ItemId, itemcode) values (1, 'A' COLLATE CITEXT)\n"
          "rows:    1 changed\ntime:    ",
          "open keyset optimistic\nsent:    select itemcode from aItem where itemcode = 'a'\n",
          "rows:    not read yet\n", "update aItem rowid 1 (recordset #",
          "\"itemcode\" = ?1 WHERE rowid = ?2\n         itemcode='B', rowid=1\n",
          "close\nrows:    1 read, 0 added, 1 changed\n", "commit transaction\n",
          "sqlite:  delete from nosuch where x = 1\nerror:   -2147217865 Invalid object name "
          "'nosuch'.\n"})
        EXPECT_NE(trace.find(expected), std::string::npos) << "missing: " << expected << "\n"
                                                           << trace;
    EXPECT_EQ(trace.find("select 1"), std::string::npos) << "traced after it was stopped";
}

TEST(TraceTest, AppendsAndRefusesAFileItCannotWrite) {
    TempDatabase db;
    auto c = db.connect();
    std::string path = (db.folder() / "sql.trace").string();
    std::ofstream(path) << "earlier\n";
    c.traceSql(path);
    auto cmd = ado::Command();
    cmd.ActiveConnection(c);
    cmd.CommandText("select 1");
    cmd.Execute();
    EXPECT_EQ(readFile(path).rfind("earlier\n#", 0), 0u);
    auto e = errorOf([&] { c.traceSql((db.folder() / "no" / "such" / "dir.txt").string()); });
    EXPECT_EQ(e.number(), 75);
}

} // namespace
