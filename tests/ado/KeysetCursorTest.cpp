// Keyset recordsets read their rows as far as they move, and still count, end and place
// rows as a keyset cursor does.
#include "ado/Recordset.h"

#include "TempDatabase.h"
#include "ado/Connection.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using adotest::scalar;
using adotest::TempDatabase;

std::string readFile(const std::string &path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

// The rows the trace says the recordset read before it closed.
std::string rowsReadWhenClosed(const std::string &trace) {
    auto at = trace.rfind(" read, ");
    if (at == std::string::npos)
        return "no close in the trace:\n" + trace;
    auto start = trace.rfind(' ', at - 1) + 1;
    return trace.substr(start, at - start);
}

long id(const ado::Recordset &rs) {
    return static_cast<long>(rs.Fields("ItemId").Value().number());
}

class KeysetCursorTest : public ::testing::Test {
protected:
    void SetUp() override {
        ado::Connection setup = db.connect();
        setup.BeginTrans();
        for (int i = 1; i <= 1000; ++i)
            setup.Execute("insert into aItem (ItemId, itemcode, itemrate) values (" +
                          std::to_string(i) + ", 'C" + std::to_string(i) + "', " +
                          std::to_string(i) + ")");
        setup.CommitTrans();
        c = db.connect();
    }
    TempDatabase db;
    ado::Connection c;
};

TEST_F(KeysetCursorTest, AGridOfTheFirstRowsReadsOnlyThoseRows) {
    std::string path = (db.folder() / "sql.trace").string();
    c.traceSql(path);
    ado::Recordset rs;
    rs.Open("select * from aItem order by ItemId desc", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    int shown = 0;
    while (!rs.Eof() && shown < 5) {
        ++shown;
        rs.MoveNext(); // leaving a row reads the next one, to know whether it is the last
    }
    EXPECT_EQ(id(rs), 995);
    rs.Close();
    c.traceSql("");
    EXPECT_EQ(rowsReadWhenClosed(readFile(path)), "6");
}

TEST_F(KeysetCursorTest, RecordCountIsKnownAtOnceAndAgreesWithTheRows) {
    std::string path = (db.folder() / "sql.trace").string();
    c.traceSql(path);
    ado::Recordset rs;
    rs.Open("select ItemId from aItem where ItemId > 10 -- the rest", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    rs.MoveNext();
    rs.MoveNext();
    EXPECT_EQ(rs.RecordCount(), 990);
    EXPECT_EQ(rs.AbsolutePosition(), 3);
    EXPECT_EQ(id(rs), 13);
    rs.Close();
    c.traceSql("");
    std::string trace = readFile(path);
    EXPECT_EQ(rowsReadWhenClosed(trace), "3");
    // The count is the provider's own business, not a statement of the module's.
    EXPECT_EQ(trace.find("count(*)"), std::string::npos) << trace;

    // Counted before a row is read, counted after all are: the same rows.
    ado::Recordset early;
    early.Open("select ItemId from aItem where itemcode like 'C1%'", c, ado::adOpenKeyset,
               ado::adLockOptimistic);
    EXPECT_EQ(early.RecordCount(), 112);
    early.MoveLast();
    EXPECT_EQ(early.AbsolutePosition(), 112);
    EXPECT_EQ(early.RecordCount(), 112);
}

TEST_F(KeysetCursorTest, TheRowsAreThoseOfTheFirstReadWhateverIsWrittenAfter) {
    ado::Connection other = db.connect();
    ado::Recordset rs;
    rs.Open("select ItemId from aItem where ItemId <= 3", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    EXPECT_EQ(id(rs), 1);
    EXPECT_EQ(rs.RecordCount(), 3);
    // A row added by the same connection, and one by another user, after the first read.
    c.Execute("insert into aItem (ItemId, itemcode) values (0, 'Z0')");
    other.Execute("delete from aItem where ItemId = 3");
    rs.MoveLast();
    EXPECT_EQ(id(rs), 3);
    EXPECT_EQ(rs.RecordCount(), 3);
    EXPECT_EQ(scalar(c, "select count(*) from aItem where ItemId <= 3"), "3");
}

TEST_F(KeysetCursorTest, CountAndRowsAgreeWhenTheSameTransactionWritesUnderThem) {
    c.BeginTrans();
    c.Execute("delete from aItem where ItemId = 1000");
    ado::Recordset rs;
    rs.Open("select ItemId from aItem where ItemId > 995 order by ItemId", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    EXPECT_EQ(rs.RecordCount(), 4); // the transaction's own delete counts
    EXPECT_EQ(id(rs), 996);
    c.Execute("insert into aItem (ItemId, itemcode) values (2000, 'N')");
    c.Execute("delete from aItem where ItemId = 998");
    long rows = 0;
    std::string seen;
    for (rs.MoveFirst(); !rs.Eof(); rs.MoveNext()) {
        ++rows;
        seen += std::to_string(id(rs)) + " ";
    }
    EXPECT_EQ(seen, "996 997 998 999 ");
    EXPECT_EQ(rows, rs.RecordCount());
    c.RollbackTrans();
}

TEST_F(KeysetCursorTest, MoveLastThenBackwardsAndTheEnds) {
    ado::Recordset rs;
    rs.Open("select ItemId from aItem where ItemId between 5 and 7", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    EXPECT_FALSE(rs.Bof());
    EXPECT_EQ(rs.AbsolutePosition(), 1);
    rs.MoveLast();
    EXPECT_EQ(id(rs), 7);
    rs.MovePrevious();
    EXPECT_EQ(id(rs), 6);
    rs.MovePrevious();
    rs.MovePrevious();
    EXPECT_TRUE(rs.Bof());
    EXPECT_FALSE(rs.Eof());
    EXPECT_EQ(rs.AbsolutePosition(), ado::adPosBOF);
    rs.MoveNext();
    EXPECT_EQ(id(rs), 5);
    rs.MoveNext();
    rs.MoveNext();
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(rs.AbsolutePosition(), ado::adPosEOF);
    EXPECT_EQ(rs.RecordCount(), 3);

    ado::Recordset none;
    none.Open("select ItemId from aItem where ItemId < 0", c, ado::adOpenKeyset,
              ado::adLockOptimistic);
    EXPECT_EQ(none.RecordCount(), 0);
    EXPECT_TRUE(none.Eof());
    EXPECT_TRUE(none.Bof());
    EXPECT_EQ(none.AbsolutePosition(), ado::adPosUnknown);
}

TEST_F(KeysetCursorTest, AddedRowsStandAfterEveryRowOfTheStatement) {
    ado::Recordset rs;
    rs.Open("select * from aItem where ItemId > 997 or ItemId < 0", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    EXPECT_EQ(id(rs), 998); // one row read, two left unread
    rs.AddNew();
    rs.Fields("ItemId") = -1;
    rs.Fields("itemcode") = "NEW";
    rs.Update();
    EXPECT_EQ(rs.AbsolutePosition(), 4);
    EXPECT_EQ(rs.RecordCount(), 4);
    // Back from the added row: the statement's last row, not the last one read.
    rs.MovePrevious();
    EXPECT_EQ(id(rs), 1000);
    rs.MoveNext();
    EXPECT_EQ(id(rs), -1);
    EXPECT_EQ(rs.Fields("itemcode").Value(), vb::Variant("NEW"));
    rs.MoveFirst();
    std::string order;
    for (; !rs.Eof(); rs.MoveNext())
        order += std::to_string(id(rs)) + " ";
    EXPECT_EQ(order, "998 999 1000 -1 "); // the statement sees the added row: not taken twice

    // Added before any row is read: the statement's rows still come first.
    ado::Recordset fresh;
    fresh.Open("select * from aItem where ItemId in (1, 2, -2)", c, ado::adOpenKeyset,
               ado::adLockOptimistic);
    fresh.AddNew();
    fresh.Fields("ItemId") = -2;
    fresh.Update();
    EXPECT_EQ(id(fresh), -2);
    fresh.MoveFirst();
    EXPECT_EQ(id(fresh), 1);
    EXPECT_EQ(fresh.RecordCount(), 3);
}

TEST_F(KeysetCursorTest, ForwardOnlyKnowsNoPosition) {
    ado::Recordset rs;
    rs.Open("select ItemId from aItem", c);
    EXPECT_EQ(rs.AbsolutePosition(), ado::adPosUnknown);
    EXPECT_EQ(rs.RecordCount(), -1);
}

} // namespace
