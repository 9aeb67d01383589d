// Recordsets on the server read through a cursor there: what they do not read
// is never sent, and their count comes from the server.
#include "TempDatabase.h"
#include "ado/Connection.h"
#include "ado/Errors.h"
#include "ado/Recordset.h"
#include "ado/Session.h"
#include "ado/postgresql/PgProvider.h"
#include "pg/TestCluster.h"

#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <memory>
#include <string>

namespace {

using adotest::errorOf;

class PostgreSQLCursorTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string whyNot;
        uri = pgtest::clusterUri(whyNot);
        if (uri.empty())
            GTEST_SKIP() << whyNot;
        std::unique_ptr<PGconn, decltype(&PQfinish)> conn(PQconnectdb(uri.c_str()), &PQfinish);
        std::unique_ptr<PGresult, decltype(&PQclear)> r(
            PQexec(conn.get(), "set client_min_messages = warning; "
                               "drop table if exists svCursorRows; "
                               "create table svCursorRows (id int primary key, n int); "
                               "insert into svCursorRows select i, i from generate_series(1, 5000) i"),
            &PQclear);
        ASSERT_EQ(PQresultStatus(r.get()), PGRES_COMMAND_OK) << PQresultErrorMessage(r.get());
        c.Open(uri);
        other.Open(uri);
    }

    long roundTrips() {
        return dynamic_cast<ado::postgresql::PgProvider &>(c.session().provider())
            .connection()
            .roundTrips();
    }

    // The n of every row from the current one to the end, summed.
    static long sumToEnd(ado::Recordset &rs) {
        long sum = 0;
        for (; !rs.Eof(); rs.MoveNext())
            sum += static_cast<long>(rs.Fields("n").Value().number());
        return sum;
    }

    std::string uri;
    ado::Connection c, other;
};

TEST_F(PostgreSQLCursorTest, RecordCountComesFromTheServerAndAgreesWithTheRows) {
    ado::Recordset rs;
    rs.Open("select * from svCursorRows where n > 10 order by n", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    EXPECT_EQ(rs.Fields("n").Value().number(), 11);
    // Rows added after the open belong to another snapshot: neither counted nor read.
    other.Execute("insert svCursorRows (id, n) values (9001, 9001)");
    const long before = roundTrips();
    EXPECT_EQ(rs.RecordCount(), 4990);
    EXPECT_EQ(roundTrips() - before, 1);
    EXPECT_EQ(rs.Fields("n").Value().number(), 11); // still on the first row
    EXPECT_EQ(sumToEnd(rs), 5000L * 5001 / 2 - 55);
    EXPECT_EQ(rs.RecordCount(), 4990);
    rs.MoveFirst();
    EXPECT_EQ(rs.Fields("n").Value().number(), 11);
}

TEST_F(PostgreSQLCursorTest, ARecordsetOpenedToAddRowsReadsNone) {
    c.BeginTrans();
    ado::Recordset rs;
    rs.Open("select * from svCursorRows", c, ado::adOpenKeyset, ado::adLockOptimistic);
    rs.AddNew();
    rs.Fields("id") = vb::Variant(std::int32_t{7000});
    rs.Fields("n") = vb::Variant(std::int32_t{1});
    rs.Update();
    rs.Close();
    c.CommitTrans();
    ado::Recordset count = c.Execute("select count(*) from svCursorRows");
    EXPECT_EQ(count.Fields(0).Value().number(), 5001);
}

TEST_F(PostgreSQLCursorTest, ARecordsetOpenInATransactionKeepsItsRowsAfterTheEnd) {
    for (bool commit : {true, false}) {
        c.BeginTrans();
        c.Execute("update svCursorRows set n = n + 1 where id = 4000");
        ado::Recordset rs;
        rs.Open("select * from svCursorRows order by id", c, ado::adOpenForwardOnly,
                ado::adLockReadOnly);
        rs.MoveNext();
        if (commit)
            c.CommitTrans();
        else
            c.RollbackTrans();
        // The cursor ended with the transaction; its rows were taken before,
        // as the open saw them.
        EXPECT_EQ(sumToEnd(rs), 5000L * 5001 / 2 - 1 + (commit ? 1 : 2)) << commit;
    }
    ado::Recordset rs = c.Execute("select n from svCursorRows where id = 4000");
    EXPECT_EQ(rs.Fields(0).Value().number(), 4001);
}

TEST_F(PostgreSQLCursorTest, ARowThatFailsLaterIsRaisedWhenTheRecordsetReachesIt) {
    const char *sql = "select id, 10 / (3000 - n) as q from svCursorRows order by id";
    // Outside a transaction the statement runs whole at the open, as it always did.
    vb::Error whole = errorOf([&] {
        ado::Recordset rs;
        rs.Open(sql, c, ado::adOpenForwardOnly, ado::adLockReadOnly);
    });
    c.BeginTrans();
    ado::Recordset rs;
    rs.Open(sql, c, ado::adOpenForwardOnly, ado::adLockReadOnly);
    int read = 0;
    vb::Error e = errorOf([&] {
        for (; !rs.Eof(); rs.MoveNext())
            ++read;
    });
    EXPECT_EQ(e.number(), whole.number());
    EXPECT_EQ(e.description(), whole.description());
    EXPECT_GE(read, 100);
    EXPECT_LT(read, 3000);
    // The failed fetch is undone alone: the transaction goes on.
    c.Execute("update svCursorRows set n = 0 where id = 1");
    c.CommitTrans();
    ado::Recordset zero = c.Execute("select count(*) from svCursorRows where n = 0");
    EXPECT_EQ(zero.Fields(0).Value().number(), 1);
}

} // namespace
