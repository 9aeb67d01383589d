// Rows added through recordsets inside a transaction go to the server without
// waiting for each one; a refused row must still reach the caller whole.
#include "TempDatabase.h"
#include "ado/Connection.h"
#include "ado/Errors.h"
#include "ado/Recordset.h"
#include "ado/Session.h"
#include "ado/postgresql/PgProvider.h"
#include "pg/TestCluster.h"
#include "vb/Conversion.h"

#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace {

using adotest::errorOf;

// Runs a statement on its own connection, past the module's provider (and
// its writer's lock).
void native(const std::string &uri, const std::string &sql) {
    std::unique_ptr<PGconn, decltype(&PQfinish)> conn(PQconnectdb(uri.c_str()), &PQfinish);
    ASSERT_EQ(PQstatus(conn.get()), CONNECTION_OK) << PQerrorMessage(conn.get());
    std::unique_ptr<PGresult, decltype(&PQclear)> r(PQexec(conn.get(), sql.c_str()), &PQclear);
    auto status = PQresultStatus(r.get());
    ASSERT_TRUE(status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK)
        << PQresultErrorMessage(r.get());
}

class PostgreSQLPipelineTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string whyNot;
        uri = pgtest::clusterUri(whyNot);
        if (uri.empty())
            GTEST_SKIP() << whyNot;
        native(uri, "set client_min_messages = warning; "
                    "drop table if exists svPipeKeyed, svPipeLines");
        c.Open(uri);
        c.Execute("create table svPipeKeyed (id int primary key, code varchar(8), "
                  "qty numeric(18,3), flag int not null default 7)");
        c.Execute("create table svPipeLines (entry int, line int, qty numeric(18,3), "
                  "note varchar(4))");
    }

    long roundTrips() {
        return dynamic_cast<ado::postgresql::PgProvider &>(c.session().provider())
            .connection()
            .roundTrips();
    }

    long count(const std::string &where) {
        ado::Recordset rs = c.Execute("select count(*) from svPipeKeyed where " + where);
        return static_cast<long>(rs.Fields(0).Value().number());
    }

    // Adds rows 1..n to svPipeKeyed as the module's save adds its lines, row
    // `refused` with a code too long for its column; stops at the first error
    // as the save's loop does and gives it, with the row whose Update raised it.
    std::optional<std::pair<int, vb::Error>> addRows(ado::Recordset &rs, int n, int refused) {
        for (int i = 1; i <= n; ++i) {
            try {
                rs.AddNew();
                rs.Fields("id") = vb::Variant(std::int32_t{i});
                rs.Fields("code") = vb::Variant(i == refused ? "much too long" : "ok");
                rs.Fields("qty") = vb::Variant(i * 1.5);
                rs.Update();
            } catch (const vb::Error &e) {
                rs.CancelUpdate();
                return std::make_pair(i, e);
            }
        }
        return std::nullopt;
    }

    std::string uri;
    ado::Connection c;
};

TEST_F(PostgreSQLPipelineTest, RowsAddedInATransactionCostOneRoundTripPerBatch) {
    c.BeginTrans();
    ado::Recordset rs;
    rs.Open("select * from svPipeLines", c, ado::adOpenKeyset, ado::adLockOptimistic);
    const long before = roundTrips();
    for (int i = 1; i <= 300; ++i) {
        rs.AddNew();
        rs.Fields("entry") = vb::Variant(std::int32_t{1});
        rs.Fields("line") = vb::Variant(std::int32_t{i});
        rs.Fields("qty") = vb::Variant("2.5");
        rs.Update();
    }
    rs.Close();
    // The writer's lock, the one prepare (savepoint, prepare, release) and
    // the batch itself: nothing per row.
    EXPECT_LE(roundTrips() - before, 6);
    c.CommitTrans();
    ado::Recordset sum = c.Execute("select count(*), sum(qty) from svPipeLines");
    EXPECT_EQ(sum.Fields(0).Value().number(), 300);
    EXPECT_EQ(sum.Fields(1).Value().number(), 750);
}

TEST_F(PostgreSQLPipelineTest, ARefusedRowIsRaisedByCloseWithItsOwnErrorAndUndoneAlone) {
    // The same refusal outside a transaction, where every row waits for its answer.
    ado::Recordset alone;
    alone.Open("select * from svPipeKeyed", c, ado::adOpenKeyset, ado::adLockOptimistic);
    auto plain = addRows(alone, 1, 1);
    ASSERT_TRUE(plain);
    alone.Close();

    c.BeginTrans();
    ado::Recordset rs;
    rs.Open("select * from svPipeKeyed", c, ado::adOpenKeyset, ado::adLockOptimistic);
    EXPECT_FALSE(addRows(rs, 10, 4)); // every Update returns before the server answers
    vb::Error e = errorOf([&] { rs.Close(); });
    EXPECT_EQ(e.number(), plain->second.number());
    EXPECT_EQ(e.description(), plain->second.description());
    EXPECT_EQ(e.source(), plain->second.source());
    EXPECT_EQ(rs.State(), ado::adStateClosed);
    // Rows 1 to 3 stand; the refused row is undone and the ones after it never ran,
    // as when the loop stops at the refused row. The transaction goes on.
    EXPECT_EQ(count("id > 0"), 3);
    c.Execute("insert svPipeKeyed (id, code) values (50, 'after')");
    c.CommitTrans();
    EXPECT_EQ(count("id in (1, 2, 3, 50)"), 4);
    EXPECT_EQ(count("id > 0"), 4);
}

TEST_F(PostgreSQLPipelineTest, ARefusedRowIsMetBeforeAnythingReadsOrCommits) {
    c.BeginTrans();
    ado::Recordset rs;
    rs.Open("select * from svPipeKeyed", c, ado::adOpenKeyset, ado::adLockOptimistic);
    EXPECT_FALSE(addRows(rs, 5, 2));
    // The recordset is left open: the next statement meets the refusal in
    // its place, before it reads.
    vb::Error e = errorOf([&] { c.Execute("select count(*) from svPipeKeyed"); });
    EXPECT_EQ(e.number(), ado::errnum::Truncation);
    EXPECT_EQ(count("id > 0"), 1);

    EXPECT_FALSE(addRows(rs, 0, 0));
    rs.AddNew();
    rs.Fields("id") = vb::Variant(std::int32_t{60});
    rs.Fields("code") = vb::Variant("far too long");
    rs.Update();
    EXPECT_EQ(errorOf([&] { c.CommitTrans(); }).number(), ado::errnum::Truncation);
    // The commit did not happen: the caller's handler rolls back, and that
    // raises nothing more.
    c.RollbackTrans();
    EXPECT_EQ(count("id > 0"), 0);
}

TEST_F(PostgreSQLPipelineTest, ARollbackDropsTheRowsStillInThePipelineSilently) {
    c.BeginTrans();
    ado::Recordset rs;
    rs.Open("select * from svPipeKeyed", c, ado::adOpenKeyset, ado::adLockOptimistic);
    EXPECT_FALSE(addRows(rs, 6, 3));
    rs.CancelUpdate();
    c.RollbackTrans();
    EXPECT_EQ(count("id > 0"), 0);
    // The connection is whole afterwards.
    c.BeginTrans();
    c.Execute("insert svPipeKeyed (id, code) values (1, 'x')");
    c.CommitTrans();
    EXPECT_EQ(count("id > 0"), 1);
}

TEST_F(PostgreSQLPipelineTest, ALongSaveMeetsARefusedRowInsideItsLoop) {
    c.BeginTrans();
    ado::Recordset rs;
    rs.Open("select * from svPipeKeyed", c, ado::adOpenKeyset, ado::adLockOptimistic);
    auto failure = addRows(rs, 2000, 3);
    ASSERT_TRUE(failure);
    EXPECT_EQ(failure->second.number(), ado::errnum::Truncation);
    // Raised by a later row of the same loop, never after it: the rows
    // between were not written.
    EXPECT_GT(failure->first, 3);
    EXPECT_LT(failure->first, 2000);
    rs.Close();
    EXPECT_EQ(count("id > 0"), 2);
    c.CommitTrans();
    EXPECT_EQ(count("id > 0"), 2);
}

TEST_F(PostgreSQLPipelineTest, RowsStillInThePipelineCanBeReadBackAndChanged) {
    c.BeginTrans();
    ado::Recordset keyed;
    keyed.Open("select * from svPipeKeyed", c, ado::adOpenKeyset, ado::adLockOptimistic);
    EXPECT_FALSE(addRows(keyed, 3, 0));
    // The default comes from the server, and the row can be changed again.
    EXPECT_EQ(keyed.Fields("flag").Value().number(), 7);
    keyed.Fields("qty") = vb::Variant(9.0);
    keyed.Update();
    keyed.Close();

    // Without a key the row is known by its ctid, which the server gives
    // only when the insert has run.
    ado::Recordset lines;
    lines.Open("select * from svPipeLines", c, ado::adOpenKeyset, ado::adLockOptimistic);
    for (int i = 1; i <= 3; ++i) {
        lines.AddNew();
        lines.Fields("entry") = vb::Variant(std::int32_t{2});
        lines.Fields("line") = vb::Variant(std::int32_t{i});
        lines.Update();
    }
    lines.MoveFirst();
    lines.Fields("qty") = vb::Variant(4.0);
    lines.Update();
    lines.MoveLast();
    lines.Fields("qty") = vb::Variant(5.0);
    lines.Update();
    lines.Close();
    c.CommitTrans();

    EXPECT_EQ(count("id = 3 and qty = 9"), 1);
    EXPECT_EQ(count("qty = 9"), 1);
    ado::Recordset rs = c.Execute("select line, qty from svPipeLines order by line");
    std::string seen;
    for (; !rs.Eof(); rs.MoveNext())
        seen += vb::CStr(rs.Fields(0).Value()) + "=" +
                (rs.Fields(1).Value().isNull() ? "null" : vb::CStr(rs.Fields(1).Value())) + " ";
    EXPECT_EQ(seen, "1=4 2=null 3=5 ");
}

TEST_F(PostgreSQLPipelineTest, RowsBeforeARefusedOneAreWrittenAgainAndStillFound) {
    c.BeginTrans();
    ado::Recordset lines;
    lines.Open("select * from svPipeLines", c, ado::adOpenKeyset, ado::adLockOptimistic);
    for (int i = 1; i <= 5; ++i) {
        lines.AddNew();
        lines.Fields("line") = vb::Variant(std::int32_t{i});
        lines.Fields("note") = vb::Variant(i == 4 ? "too long" : "ok");
        lines.Update();
    }
    // Reading the first row back meets the refusal first; then the row is
    // found where the server wrote it again.
    lines.MoveFirst();
    EXPECT_EQ(errorOf([&] { lines.Fields("qty") = vb::Variant(4.0); }).number(),
              ado::errnum::Truncation);
    lines.Fields("qty") = vb::Variant(4.0);
    lines.Update();
    lines.Close();
    c.CommitTrans();
    ado::Recordset rs = c.Execute("select line, qty from svPipeLines order by line");
    std::string seen;
    for (; !rs.Eof(); rs.MoveNext())
        seen += vb::CStr(rs.Fields(0).Value()) + "=" +
                (rs.Fields(1).Value().isNull() ? "null" : vb::CStr(rs.Fields(1).Value())) + " ";
    EXPECT_EQ(seen, "1=4 2=null 3=null ");
}

TEST_F(PostgreSQLPipelineTest, AKilledBackendInTheMiddleOfTheRowsLosesThemAll) {
    ado::Recordset backend = c.Execute("select pg_backend_pid()");
    const std::string pid = vb::CStr(backend.Fields(0).Value());
    c.BeginTrans();
    ado::Recordset rs;
    rs.Open("select * from svPipeKeyed", c, ado::adOpenKeyset, ado::adLockOptimistic);
    EXPECT_FALSE(addRows(rs, 5, 0));
    native(uri, "select pg_terminate_backend(" + pid + ")");
    vb::Error e = errorOf([&] { rs.Close(); });
    EXPECT_EQ(e.number(), ado::errnum::Unspecified);
    EXPECT_NE(e.description().find("General network error"), std::string::npos);
    c.RollbackTrans();
    ado::Connection after;
    after.Open(uri);
    ado::Recordset left = after.Execute("select count(*) from svPipeKeyed");
    EXPECT_EQ(left.Fields(0).Value().number(), 0);
}

} // namespace
