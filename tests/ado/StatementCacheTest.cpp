// Prepared statements kept between calls: reused, bounded, never stale, never shared.
#include "ado/sqlite/StatementCache.h"

#include "TempDatabase.h"
#include "ado/Recordset.h"
#include "ado/Session.h"
#include "ado/sqlite/Database.h"
#include "ado/sqlite/SqliteProvider.h"
#include "vb/Conversion.h"

#include <gtest/gtest.h>

namespace {

using ado::sqlite::NativeStatement;
using ado::sqlite::StatementCache;
using adotest::errorOf;
using adotest::TempDatabase;

std::size_t kept(const ado::Connection &c) {
    return dynamic_cast<ado::sqlite::SqliteProvider &>(c.session().provider()).keptStatements();
}

std::string column(const ado::Connection &c, const std::string &sql) {
    ado::Recordset rs;
    rs.Open(sql, c, ado::adOpenForwardOnly, ado::adLockReadOnly);
    std::string out;
    for (; !rs.Eof(); rs.MoveNext())
        out += (out.empty() ? "" : ",") + vb::CStr(rs.Fields(0).Value());
    return out;
}

TEST(StatementCacheTest, KeepsTheLatestUpToItsCapacityAndForgetsOlderGenerations) {
    TempDatabase db;
    auto c = db.connect();
    ado::sqlite::Database &d = ado::sqlite::databaseOf(c);
    StatementCache cache(2);
    cache.give("select 1", NativeStatement(d, "select 1"), 0);
    cache.give("select 2", NativeStatement(d, "select 2"), 0);
    cache.give("select 1", NativeStatement(d, "select 1"), 0);
    // The first "select 1" was the oldest: it went, its twin given last stays.
    EXPECT_EQ(cache.size(), 2u);
    EXPECT_FALSE(cache.take("select 3"));
    auto one = cache.take("select 1");
    ASSERT_TRUE(one);
    EXPECT_FALSE(cache.take("select 1"));
    ASSERT_TRUE(one->step());
    EXPECT_EQ(one->integer(0), 1);

    // Given back half read, it comes out again from its first row.
    cache.give("select 1", std::move(*one), 0);
    auto again = cache.take("select 1");
    ASSERT_TRUE(again && again->step());
    EXPECT_EQ(again->integer(0), 1);

    std::uint64_t before = cache.generation();
    cache.clear();
    EXPECT_EQ(cache.size(), 0u);
    cache.give("select 1", std::move(*again), before);
    EXPECT_EQ(cache.size(), 0u);
    EXPECT_FALSE(cache.take("select 1"));
}

TEST(StatementCacheTest, ATextRunAgainReusesItsStatement) {
    TempDatabase db;
    auto c = db.connect();
    c.Execute("insert into aItem (ItemId, itemcode) values (1, 'A'), (2, 'B')");
    std::size_t before = kept(c);
    EXPECT_EQ(column(c, "select itemcode from aItem order by ItemId"), "A,B");
    EXPECT_EQ(kept(c), before + 1);
    EXPECT_EQ(column(c, "select itemcode from aItem order by ItemId"), "A,B");
    EXPECT_EQ(kept(c), before + 1);
    c.Execute("update aItem set itemcode = 'C' where ItemId = 2");
    EXPECT_EQ(column(c, "select itemcode from aItem order by ItemId"), "A,C");
}

TEST(StatementCacheTest, ATableDroppedAndMadeAgainIsReadAsItIsNow) {
    TempDatabase db;
    auto c = db.connect();
    c.Execute("create table shelf (code varchar(10), qty int)");
    c.Execute("insert into shelf (code, qty) values ('A', 1)");
    EXPECT_EQ(column(c, "select * from shelf"), "A");
    c.Execute("drop table shelf");
    EXPECT_EQ(errorOf([&] { column(c, "select * from shelf"); }).description(),
              "Invalid object name 'shelf'.");
    // Made again with its columns the other way round and a date among them:
    // the same text must read the new first column, typed as it is now.
    c.Execute("create table shelf (counted datetime, code varchar(10))");
    c.Execute("insert into shelf (counted, code) values ('2026-11-22', 'B')");
    ado::Recordset rs;
    rs.Open("select * from shelf", c, ado::adOpenForwardOnly, ado::adLockReadOnly);
    EXPECT_EQ(rs.Fields(0).Value().type(), vb::VarType::Date);
    EXPECT_EQ(vb::CStr(rs.Fields(1).Value()), "B");
    EXPECT_EQ(rs.Fields().Count(), 2);
}

TEST(StatementCacheTest, ATextIsTranslatedAgainForTheColumnsATableHasNow) {
    TempDatabase db;
    auto c = db.connect();
    const std::string sum = "select a + b from pair";
    c.Execute("create table pair (a varchar(5), b varchar(5))");
    c.Execute("insert into pair (a, b) values ('1', '2')");
    EXPECT_EQ(column(c, sum), "12"); // + joins text
    c.Execute("drop table pair");
    c.Execute("create table pair (a int, b int)");
    c.Execute("insert into pair (a, b) values (1, 2)");
    EXPECT_EQ(column(c, sum), "3"); // and adds numbers
}

TEST(StatementCacheTest, AFailedStatementLeavesTheTextUsable) {
    TempDatabase db;
    auto c = db.connect();
    const std::string insert = "insert into aItem (ItemId, itemcode) values (7, 'X')";
    c.Execute(insert);
    // aItem.ItemId is the primary key: the second run fails in the engine.
    EXPECT_EQ(errorOf([&] { c.Execute(insert); }).number(), -2147217873);
    c.Execute("delete from aItem");
    long affected = 0;
    c.Execute(insert, &affected);
    EXPECT_EQ(affected, 1);
    EXPECT_EQ(column(c, "select itemcode from aItem"), "X");

    // A text that cannot be prepared yet keeps nothing that would stand in
    // for it once its table exists.
    const std::string query = "select note from later";
    EXPECT_EQ(errorOf([&] { column(c, query); }).description(), "Invalid object name 'later'.");
    c.Execute("create table later (note varchar(10))");
    c.Execute("insert into later (note) values ('now')");
    EXPECT_EQ(column(c, query), "now");
}

TEST(StatementCacheTest, TwoRecordsetsOnOneTextEachReadTheirOwnRows) {
    TempDatabase db;
    auto c = db.connect();
    c.Execute("insert into aItem (ItemId, itemcode) values (1, 'A'), (2, 'B'), (3, 'C')");
    const std::string sql = "select itemcode from aItem order by ItemId";
    EXPECT_EQ(column(c, sql), "A,B,C"); // leaves its statement in the cache
    // Inside a write transaction the two read side by side from the engine.
    c.BeginTrans();
    c.Execute("update aItem set itemrate = 1");
    ado::Recordset first;
    first.Open(sql, c, ado::adOpenForwardOnly, ado::adLockReadOnly);
    first.MoveNext();
    ado::Recordset second;
    second.Open(sql, c, ado::adOpenForwardOnly, ado::adLockReadOnly);
    EXPECT_EQ(vb::CStr(second.Fields(0).Value()), "A");
    EXPECT_EQ(vb::CStr(first.Fields(0).Value()), "B");
    second.MoveNext();
    second.MoveNext();
    first.MoveNext();
    EXPECT_EQ(vb::CStr(second.Fields(0).Value()), "C");
    EXPECT_EQ(vb::CStr(first.Fields(0).Value()), "C");
    first.MoveNext();
    EXPECT_TRUE(first.Eof());
    EXPECT_FALSE(second.Eof());
    first.Close();
    second.Close();
    c.CommitTrans();
    // Both statements wait for the text now; each next reader takes one.
    std::size_t both = kept(c);
    EXPECT_EQ(column(c, sql), "A,B,C");
    EXPECT_EQ(kept(c), both);
}

} // namespace
