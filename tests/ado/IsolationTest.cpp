// Two users on one file: a reader waits for another user's uncommitted write,
// lock waits end at the command timeout, half-read rows pin nothing.
#include "TempDatabase.h"
#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "vb/Conversion.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

using adotest::errorOf;
using adotest::scalar;
using adotest::TempDatabase;
using namespace std::chrono_literals;

constexpr std::int32_t timeoutError = -2147217871;

vb::Variant firstValue(const ado::Connection &c, std::string_view sql) {
    return c.Execute(sql).Fields(0).Value();
}

// The fault that changed stock: the second clerk read the next number while
// the first clerk's header was still uncommitted.
TEST(IsolationTest, AReaderWaitsForAnotherUsersUncommittedWriteAndReadsIt) {
    TempDatabase db;
    auto first = db.connect();
    auto second = db.connect();
    first.Execute("insert into loiStockVerificationHeader (svhid, svhGodownid) values (1, 1)");

    first.BeginTrans();
    vb::Variant next = firstValue(
        first, "select isnull(max(svhid),0) + 1 from loiStockVerificationHeader where svhGodownid = 1");
    first.Execute("insert into loiStockVerificationHeader (svhid, svhGodownid) values (" +
                  vb::CStr(next) + ", 1)");
    std::thread committer([&] {
        std::this_thread::sleep_for(300ms);
        first.CommitTrans();
    });
    second.BeginTrans();
    vb::Variant seen = firstValue(
        second, "select isnull(max(svhid),0) + 1 from loiStockVerificationHeader where svhGodownid = 1");
    committer.join();
    second.RollbackTrans();
    EXPECT_EQ(next, vb::Variant(2));
    EXPECT_EQ(seen, vb::Variant(3)); // a snapshot reader would have read 2 again
}

TEST(IsolationTest, AReaderAndAWriterGiveUpAtTheCommandTimeoutQuotingTheStatement) {
    TempDatabase db;
    auto holder = db.connect();
    auto other = db.connect();
    holder.BeginTrans();
    holder.Execute("insert into aItem (ItemId) values (1)");

    other.CommandTimeout(1);
    auto read = errorOf([&] { other.Execute("select count(*) from aItem where itemcode = 'x'"); });
    EXPECT_EQ(read.number(), timeoutError);
    EXPECT_NE(read.description().find("select count(*) from aItem where itemcode = 'x'"),
              std::string::npos)
        << read.description();
    EXPECT_EQ(read.description().find("COLLATE"), std::string::npos) << read.description();

    ado::Recordset rs;
    EXPECT_EQ(errorOf([&] { rs.Open("select * from aItem", other); }).number(), timeoutError);
    EXPECT_EQ(rs.State(), ado::adStateClosed);

    other.BeginTrans();
    auto write = errorOf([&] { other.Execute("update aItem set itemrate = 1"); });
    EXPECT_EQ(write.number(), timeoutError);
    other.RollbackTrans();

    // Once the holder has committed, the same statements go through.
    holder.CommitTrans();
    EXPECT_EQ(firstValue(other, "select count(*) from aItem"), vb::Variant(1));
    EXPECT_EQ(scalar(other, "select count(*) from aItem"), "1");
}

// The old fixed wait of five seconds lost saves on a busy godown: the wait is
// the command's, and 0 waits as long as it takes.
TEST(IsolationTest, NoCommandTimeoutWaitsPastFiveSecondsForAWriter) {
    TempDatabase db;
    auto holder = db.connect();
    auto other = db.connect();
    holder.BeginTrans();
    holder.Execute("insert into aItem (ItemId) values (1)");
    std::thread committer([&] {
        std::this_thread::sleep_for(5500ms);
        holder.CommitTrans();
    });
    other.CommandTimeout(0);
    other.BeginTrans();
    long changed = 0;
    other.Execute("update aItem set itemrate = 2", &changed);
    committer.join();
    other.CommitTrans();
    EXPECT_EQ(changed, 1);
}

TEST(IsolationTest, AHalfReadForwardOnlyRecordsetPinsNoOldSnapshot) {
    TempDatabase db;
    auto c = db.connect();
    auto other = db.connect();
    for (int id : {1, 2, 3})
        c.Execute("insert into aItem (ItemId, itemcode) values (" + std::to_string(id) + ", 'I" +
                  std::to_string(id) + "')");
    ado::Recordset rs;
    rs.Open("select ItemId from aItem order by ItemId", c);
    ASSERT_FALSE(rs.Eof());
    EXPECT_EQ(rs.Fields(0).Value(), vb::Variant(1));

    other.Execute("insert into aItem (ItemId) values (4)");
    // Later reads on the connection see what the other user committed ...
    EXPECT_EQ(firstValue(c, "select count(*) from aItem"), vb::Variant(4));
    // ... and a write can start, where a stale snapshot would refuse it.
    c.BeginTrans();
    c.Execute("update aItem set itemrate = 5 where ItemId = 4");
    c.CommitTrans();

    // The recordset goes on with the rows of its own statement, in order.
    std::vector<vb::Variant> rest;
    for (rs.MoveNext(); !rs.Eof(); rs.MoveNext())
        rest.push_back(rs.Fields(0).Value());
    EXPECT_EQ(rest, (std::vector<vb::Variant>{vb::Variant(2), vb::Variant(3)}));
    // Read again from the start, it runs the statement again and sees the new row.
    rs.MoveFirst();
    int rows = 0;
    for (; !rs.Eof(); rs.MoveNext())
        ++rows;
    EXPECT_EQ(rows, 4);
}

} // namespace
