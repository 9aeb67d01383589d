// Connections: opening, errors of the old data layer, transactions, two users on one file.
#include "ado/Connection.h"

#include "TempDatabase.h"
#include "ado/Errors.h"
#include "ado/sqlite/NativeStatement.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <thread>

namespace {

using adotest::errorOf;
using adotest::scalar;
using adotest::TempDatabase;

TEST(ConnectionTest, EmptyConnectionRaises3709OnEveryUse) {
    ado::Connection empty;
    EXPECT_EQ(empty.State(), ado::adStateClosed);
    auto e = errorOf([&] { empty.Execute("select 1"); });
    EXPECT_EQ(e.number(), 3709);
    EXPECT_EQ(e.description(), "The connection cannot be used to perform this operation. It is "
                               "either closed or invalid in this context.");
    EXPECT_EQ(errorOf([&] { empty.BeginTrans(); }).number(), 3709);
    ado::Recordset rs;
    EXPECT_EQ(errorOf([&] { rs.Open("select 1", empty); }).number(), 3709);
}

TEST(ConnectionTest, MissingFileIsAnErrorAndIsNotCreated) {
    TempDatabase db;
    std::string missing = (db.folder() / "nothere.db").string();
    ado::Connection c;
    auto e = errorOf([&] { c.Open("sqlite:" + missing); });
    EXPECT_EQ(e.number(), -2147467259);
    EXPECT_NE(e.description().find(missing), std::string::npos) << e.description();
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_EQ(c.State(), ado::adStateClosed);
}

TEST(ConnectionTest, FileThatIsNoDatabaseIsAClearError) {
    TempDatabase db;
    std::string text = (db.folder() / "notes.txt").string();
    std::ofstream(text) << "these are the minutes of the stock meeting, not a database\n";
    ado::Connection c;
    auto e = errorOf([&] { c.Open("sqlite:" + text); });
    EXPECT_EQ(e.number(), -2147467259);
    EXPECT_NE(e.description().find(text), std::string::npos) << e.description();
    EXPECT_NE(e.description().find("not a database"), std::string::npos) << e.description();
}

TEST(ConnectionTest, UnknownAndUnsupportedProvidersAreNamed) {
    ado::Connection c;
    auto odbc = errorOf([&] { c.Open("odbc:DSN=stock"); });
    EXPECT_EQ(odbc.number(), 3706);
    EXPECT_NE(odbc.description().find("odbc:DSN=stock"), std::string::npos);
    EXPECT_NE(odbc.description().find("not supported yet"), std::string::npos);
    EXPECT_EQ(errorOf([&] { c.Open("Provider=SQLOLEDB"); }).number(), 3706);
}

TEST(ConnectionTest, CopiesShareOneConnectionAndCloseTogether) {
    TempDatabase db;
    ado::Connection a = db.connect();
    ado::Connection b = a;
    EXPECT_TRUE(a == b);
    b.Close();
    EXPECT_EQ(a.State(), ado::adStateClosed);
    EXPECT_EQ(errorOf([&] { a.Execute("select 1"); }).number(), 3709);
    EXPECT_FALSE(a == db.connect());
}

TEST(ConnectionTest, ExecuteCountsChangedRowsOrGivesRows) {
    TempDatabase db;
    auto c = db.connect();
    long n = -5;
    c.Execute("insert aItem (ItemId, itemcode) values (1, 'A'), (2, 'B'), (3, 'C')", &n);
    EXPECT_EQ(n, 3);
    c.Execute("delete aItem where ItemId > 1", &n);
    EXPECT_EQ(n, 2);
    ado::Recordset closed = c.Execute("update aItem set itemrate = 2");
    EXPECT_EQ(closed.State(), ado::adStateClosed);

    ado::Recordset rows = c.Execute("select itemcode from aItem", &n);
    EXPECT_EQ(rows.State(), ado::adStateOpen);
    EXPECT_EQ(rows.RecordCount(), -1);
    EXPECT_EQ(rows.Fields("itemcode").Value(), vb::Variant("A"));
}

TEST(ConnectionTest, RefusedStatementsCarryTheOldNumbersAndSayWhatFailed) {
    TempDatabase db;
    auto c = db.connect();
    auto table = errorOf([&] { c.Execute("select * from aItems"); });
    EXPECT_EQ(table.number(), -2147217865);
    EXPECT_EQ(table.description(), "Invalid object name 'aItems'.");
    auto column = errorOf([&] { c.Execute("select itemname from aItem"); });
    EXPECT_EQ(column.number(), -2147217900);
    EXPECT_EQ(column.description(), "Invalid column name 'itemname'.");
    auto syntax = errorOf([&] { c.Execute("select * form aItem where 1 = 1"); });
    EXPECT_EQ(syntax.number(), -2147217900);
    EXPECT_NE(syntax.description().find("\"select * form aItem"), std::string::npos)
        << "[" << syntax.description() << "]";
    auto function = errorOf([&] { c.Execute("select datalength('x')"); });
    EXPECT_EQ(function.description(), "'datalength' is not a recognized built-in function name.");
}

// The user reads the statement as the module wrote it; the translation is for the trace.
TEST(ConnectionTest, ErrorsQuoteTheModulesTextAndOnlyTheTraceShowsTheTranslation) {
    TempDatabase db;
    auto c = db.connect();
    std::string trace = (db.folder() / "sql.trace").string();
    c.traceSql(trace);
    c.Execute("insert aItem (ItemId, itemcode) values (1, 'x')");
    auto key = errorOf([&] { c.Execute("insert aItem (ItemId, itemcode) values (1, 'y')"); });
    EXPECT_EQ(key.number(), -2147217873);
    EXPECT_NE(key.description().find("\"insert aItem (ItemId, itemcode) values (1, 'y')\""),
              std::string::npos)
        << key.description();
    EXPECT_EQ(key.description().find("COLLATE"), std::string::npos) << key.description();
    std::ifstream in(trace);
    std::string all((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_NE(all.find("insert into aItem (ItemId, itemcode) values (1, 'y' COLLATE CITEXT)"),
              std::string::npos)
        << all;
}

TEST(ConnectionTest, TransactionsCommitAndRollBack) {
    TempDatabase db;
    auto c = db.connect();
    c.BeginTrans();
    c.Execute("insert into aItem (ItemId) values (1)");
    c.RollbackTrans();
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "0");
    c.BeginTrans();
    c.Execute("insert into aItem (ItemId) values (2)");
    c.CommitTrans();
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "1");
}

TEST(ConnectionTest, TransactionMisuseRaisesAndLeavesTheOpenTransactionAsItWas) {
    TempDatabase db;
    auto c = db.connect();
    auto commit = errorOf([&] { c.CommitTrans(); });
    EXPECT_EQ(commit.number(), -2147168242);
    EXPECT_EQ(commit.description(), "No transaction is active.");
    EXPECT_EQ(errorOf([&] { c.RollbackTrans(); }).number(), -2147168242);

    c.BeginTrans();
    c.Execute("insert into aItem (ItemId) values (1)");
    auto second = errorOf([&] { c.BeginTrans(); });
    EXPECT_EQ(second.number(), -2147168237);
    EXPECT_EQ(second.description(), "Only one transaction can be active on this session.");
    EXPECT_EQ(errorOf([&] { c.Close(); }).number(), 3246);
    c.RollbackTrans();
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "0");
}

TEST(ConnectionTest, ClosingTheLastHandleTakesBackAnOpenTransaction) {
    TempDatabase db;
    {
        auto c = db.connect();
        c.BeginTrans();
        c.Execute("insert into aItem (ItemId) values (1)");
    }
    EXPECT_EQ(scalar(db.connect(), "select count(*) from aItem"), "0");
}

TEST(ConnectionTest, TwoUsersOnOneFileWaitForEachOther) {
    TempDatabase db;
    auto first = db.connect();
    auto second = db.connect();
    EXPECT_EQ(scalar(first, "PRAGMA journal_mode"), "wal");

    first.BeginTrans();
    first.Execute("insert into aItem (ItemId) values (1)");
    // The second user reads the last committed state while the first writes.
    EXPECT_EQ(scalar(second, "select count(*) from aItem"), "0");

    std::thread finisher([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        first.CommitTrans();
    });
    // Its own write waits until the first has committed, then goes on.
    second.BeginTrans();
    second.Execute("insert into aItem (ItemId) values (2)");
    finisher.join();
    second.CommitTrans();
    EXPECT_EQ(scalar(first, "select count(*) from aItem"), "2");
}

TEST(ConnectionTest, ATransactionThatOnlyReadsHoldsNoLock) {
    TempDatabase db;
    auto waiting = db.connect();
    auto other = db.connect();
    // A delete asks the user while its transaction is open; it has only read.
    waiting.BeginTrans();
    EXPECT_EQ(waiting.Execute("select count(*) from aItem").Fields(0).Value(), vb::Variant(0));
    other.BeginTrans();
    other.Execute("insert into aItem (ItemId) values (1)");
    other.CommitTrans(); // did not wait for the first user
    // The first user's write then sees what is committed, as read committed does.
    waiting.Execute("insert into aItem (ItemId) values (2)");
    EXPECT_EQ(waiting.Execute("select count(*) from aItem").Fields(0).Value(), vb::Variant(2));
    waiting.RollbackTrans();
    EXPECT_EQ(scalar(other, "select group_concat(ItemId) from aItem"), "1");
}

TEST(ConnectionTest, CommandTimeoutStopsALongStatement) {
    TempDatabase db;
    auto c = db.connect();
    c.CommandTimeout(1);
    auto e = errorOf([&] {
        c.Execute("with recursive n(i) as (select 1 union all select i + 1 from n) "
                  "select count(*) from n")
            .Eof();
    });
    EXPECT_EQ(e.number(), -2147217871);
    EXPECT_EQ(c.Execute("select 1").Fields(0).Value(), vb::Variant(1));
}

} // namespace
