// The server provider against the throwaway cluster, on tables of its own.
#include "TempDatabase.h"
#include "ado/Command.h"
#include "ado/Connection.h"
#include "ado/Errors.h"
#include "ado/Recordset.h"
#include "ado/postgresql/WrittenNames.h"
#include "vb/Clock.h"
#include "pg/TestCluster.h"

#include <gtest/gtest.h>
#include <libpq-fe.h>

#include <charconv>
#include <chrono>
#include <memory>

namespace {

using adotest::errorOf;

// Tables as a database for this module declares them on the server: text
// columns sv_text with a length check, bit columns the domain sv_bit.
constexpr const char *schema = R"(
drop table if exists loiStockVerificationHeader, loiStockVerificationDetail, aItem cascade;
drop function if exists sv_test_add(integer, sv_text);
do $$ begin
  if not exists (select 1 from pg_type where typname = 'sv_bit') then
    create domain sv_bit as smallint check (value in (0, 1));
  end if;
  if not exists (select 1 from pg_type where typname = 'sv_text') then
    create collation sv_ci (provider = icu, locale = 'und-u-ks-level2', deterministic = false);
    create domain sv_text as bpchar collate sv_ci;
    create function sv_concat(a bpchar, b bpchar) returns bpchar language sql immutable strict
        as $f$ select (textin(bpcharout(a)) || textin(bpcharout(b)))::bpchar $f$;
    create operator || (leftarg = bpchar, rightarg = bpchar, function = sv_concat);
    create function sv_concat(a bpchar, b text) returns bpchar language sql immutable strict
        as $f$ select (textin(bpcharout(a)) || b)::bpchar $f$;
    create operator || (leftarg = bpchar, rightarg = text, function = sv_concat);
    create function sv_concat(a text, b bpchar) returns bpchar language sql immutable strict
        as $f$ select (a || textin(bpcharout(b)))::bpchar $f$;
    create operator || (leftarg = text, rightarg = bpchar, function = sv_concat);
  end if;
end $$;
create table loiStockVerificationHeader (
    svhid int primary key,
    svhno sv_text constraint svhno_length check (length(svhno) <= 20),
    svhdate timestamp(3), svhGodownid int not null,
    svhcancelled int not null default 0, svhposted sv_bit not null default 0);
create table loiStockVerificationDetail (svdid int, svdItemID int,
    svdAvailStock numeric(18,3), svdVerifiedStock numeric(18,3), svdcostprice numeric(19,4));
create table aItem (ItemId int primary key,
    itemcode sv_text constraint itemcode_length check (length(itemcode) <= 20),
    itemrate float, Active sv_bit default 1);
create function sv_test_add(p_id integer, p_code sv_text) returns integer language plpgsql as $f$
begin
  insert into aItem (ItemId, itemcode) values (p_id, p_code);
  return p_id * 10;
end $f$;
)";

// Runs native statements on the cluster, outside the module's provider.
void native(const std::string &uri, const std::string &sql) {
    std::unique_ptr<PGconn, decltype(&PQfinish)> conn(PQconnectdb(uri.c_str()), &PQfinish);
    ASSERT_EQ(PQstatus(conn.get()), CONNECTION_OK) << PQerrorMessage(conn.get());
    std::unique_ptr<PGresult, decltype(&PQclear)> r(PQexec(conn.get(), sql.c_str()), &PQclear);
    auto status = PQresultStatus(r.get());
    ASSERT_TRUE(status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK)
        << PQresultErrorMessage(r.get());
}

class PostgreSQLProviderTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::string whyNot;
        uri = pgtest::clusterUri(whyNot);
        if (uri.empty())
            GTEST_SKIP() << whyNot;
        native(uri, schema);
        c.Open(uri);
        c.Execute("insert aItem (ItemId, itemcode, itemrate) values (1, 'AbC', 2.5), "
                  "(2, 'x', 1), (3, null, 0)");
        c.Execute("insert loiStockVerificationHeader (svhid, svhno, svhdate, svhGodownid) values "
                  "(1, 'SV/0009', '20261121', 1), (2, 'SV/0010', '2026/11/22', 1), "
                  "(3, 'SV/0011', '2026/Nov/23 09:30', 1)");
    }

    // The first field of the first row, as text ("<eof>" for none).
    std::string first(std::string_view sql) {
        ado::Recordset rs = c.Execute(sql);
        if (rs.Eof())
            return "<eof>";
        vb::Variant v = rs.Fields(0).Value();
        if (v.isNull())
            return "<null>";
        if (v.isString())
            return v.asString();
        char buffer[32];
        return std::string(buffer, std::to_chars(buffer, buffer + 32, v.number()).ptr);
    }

    std::string uri;
    ado::Connection c;
};

TEST_F(PostgreSQLProviderTest, ReadsValuesAsTheOldDataLayerDid) {
    ado::Recordset rs;
    rs.Open("select ItemId, itemcode, itemrate, Active, itemrate * 2 from aItem order by ItemId", c,
            ado::adOpenKeyset, ado::adLockOptimistic);
    EXPECT_EQ(rs.RecordCount(), 3);
    EXPECT_EQ(rs.Fields(0).Value().type(), vb::VarType::Long);
    EXPECT_EQ(rs.Fields(1).Value().asString(), "AbC");
    EXPECT_EQ(rs.Fields(2).Value().type(), vb::VarType::Double);
    EXPECT_EQ(rs.Fields(3).Value().type(), vb::VarType::Boolean); // sv_bit reads as bit did
    EXPECT_EQ(rs.Fields(4).Name(), "");                           // an expression has no name
    EXPECT_EQ(rs.Fields(0).Name(), "ItemId"); // spelled as the statement spells it
    ado::Recordset dates =
        c.Execute("select svhdate from loiStockVerificationHeader order by svhid");
    EXPECT_EQ(dates.Fields(0).Value().type(), vb::VarType::Date);
    ado::Recordset forward = c.Execute("select * from aItem");
    EXPECT_EQ(forward.RecordCount(), -1);
    // The short scheme names the same server.
    ado::Connection shorter;
    shorter.Open("postgres://" + uri.substr(std::string_view("postgresql://").size()));
    EXPECT_EQ(shorter.Execute("select count(*) from aItem").Fields(0).Value(), vb::Variant(3));
}

TEST_F(PostgreSQLProviderTest, TextComparesIgnoringCaseAndLikeStaysCaseInsensitive) {
    EXPECT_EQ(first("select ItemId from aItem where itemcode = 'abc'"), "1");
    EXPECT_EQ(first("select ItemId from aItem where itemcode like 'aB%'"), "1");
    EXPECT_EQ(first("select count(*) from aItem where itemcode <> 'ABC'"), "1");
    c.Execute("insert aItem (ItemId, itemcode) values (4, 'CAFÉ')");
    EXPECT_EQ(first("select ItemId from aItem where itemcode = 'café'"), "4");
}

TEST_F(PostgreSQLProviderTest, DateLiteralsInTheModulesForms) {
    EXPECT_EQ(first("select svhid from loiStockVerificationHeader where svhdate = '20261121'"),
              "1");
    EXPECT_EQ(first("select count(*) from loiStockVerificationHeader "
                    "where svhdate between '2026/11/22' and '2026/Nov/23 23:59'"),
              "2");
    EXPECT_EQ(first("select count(*) from loiStockVerificationHeader "
                    "where isnull(svhdate, '19000101') > '20261121'"),
              "2");
    auto e = errorOf([&] {
        c.Execute("select * from loiStockVerificationHeader where svhdate = '2026/13/40'");
    });
    EXPECT_EQ(e.number(), ado::errnum::Conversion);
}

TEST_F(PostgreSQLProviderTest, SqlServersFunctions) {
    EXPECT_EQ(first("select isnull(itemcode, 'none') from aItem where ItemId = 3"), "none");
    EXPECT_EQ(first("select len('ab  ')"), "2");
    EXPECT_EQ(first("select left(itemcode, 2) + right('xyz', 1) from aItem where ItemId = 1"),
              "Abz");
    EXPECT_EQ(first("select substring('abcdef', 2, 3)"), "bcd");
    EXPECT_EQ(first("select convert(int, '12') + 1"), "13");
    EXPECT_EQ(first("select convert(varchar, ItemId) + '-' from aItem where ItemId = 2"), "2-");
    EXPECT_EQ(first("select isnumeric('$12.5')"), "1");
    EXPECT_EQ(first("select isnumeric('12abc')"), "0");
    EXPECT_EQ(first("select charindex('B', itemcode) from aItem where ItemId = 1"), "2");
    EXPECT_NE(first("select getdate()"), "<null>");
    EXPECT_EQ(first("select top 1 ItemId from aItem order by ItemId desc"), "3");
    long changed = 0;
    c.Execute("delete aItem where ItemId = 3", &changed);
    EXPECT_EQ(changed, 1);
}

TEST_F(PostgreSQLProviderTest, RefusalsCarryTheOldNumbersAndTexts) {
    auto tooLong = errorOf(
        [&] { c.Execute("update aItem set itemcode = '123456789012345678901' where ItemId = 1"); });
    EXPECT_EQ(tooLong.number(), ado::errnum::Truncation);
    EXPECT_EQ(tooLong.description(), "String or binary data would be truncated.");
    auto text = errorOf([&] { c.Execute("update aItem set itemrate = 1 where ItemId = 'abc'"); });
    EXPECT_EQ(text.number(), ado::errnum::Conversion);
    EXPECT_EQ(text.description(),
              "Conversion failed when converting the varchar value 'abc' to data type int.");
    auto overflow = errorOf([&] {
        c.Execute("insert loiStockVerificationDetail (svdid, svdAvailStock) values "
                  "(1, 1000000000000000)");
    });
    EXPECT_EQ(overflow.number(), ado::errnum::Conversion);
    EXPECT_EQ(errorOf([&] { c.Execute("select 1 / 0"); }).description(),
              "Divide by zero error encountered.");
    auto missing = errorOf([&] { c.Execute("select * from nosuch"); });
    EXPECT_EQ(missing.number(), ado::errnum::InvalidObject);
    EXPECT_EQ(missing.description(), "Invalid object name 'nosuch'.");
    auto grouped = errorOf([&] { c.Execute("select itemcode, count(*) from aItem"); });
    EXPECT_EQ(grouped.number(), ado::errnum::Statement);
    // A second statement in the text runs nothing, the first one neither.
    auto injected = errorOf(
        [&] { c.Execute("delete aItem where ItemId = 1; update aItem set itemrate = 0; --"); });
    EXPECT_EQ(injected.number(), ado::errnum::Statement);
    EXPECT_EQ(first("select count(*) from aItem where itemrate <> 0"), "2");
}

TEST_F(PostgreSQLProviderTest, DecimalsAreExactToTheColumnsScale) {
    c.Execute("insert loiStockVerificationDetail (svdid, svdAvailStock, svdVerifiedStock) values "
              "(1, 1.23456, 0.1), (2, 0, 0.2), (3, 0, -0.3)");
    EXPECT_EQ(first("select svdAvailStock from loiStockVerificationDetail where svdid = 1"),
              "1.235");
    EXPECT_EQ(first("select count(*) from loiStockVerificationDetail "
                    "having sum(svdVerifiedStock) <> 0"),
              "<eof>");
}

TEST_F(PostgreSQLProviderTest, AddNewAndUpdateFindTheRowByItsKey) {
    ado::Recordset rs;
    rs.Open("select * from aItem where 1 = 0", c, ado::adOpenKeyset, ado::adLockOptimistic);
    rs.AddNew();
    rs.Fields("ItemId") = vb::Variant(std::int32_t{7});
    rs.Fields("itemcode") = vb::Variant("new");
    rs.Fields("itemrate") = vb::Variant(0.1);
    rs.Update();
    EXPECT_EQ(rs.Fields("Active").Value().asBoolean(), true); // the default, read back
    rs.Close();
    EXPECT_EQ(first("select itemcode from aItem where ItemId = 7"), "new");

    ado::Recordset edit;
    edit.Open("select itemcode from aItem where ItemId = 2", c, ado::adOpenKeyset,
              ado::adLockOptimistic);
    edit.Fields("itemcode") = vb::Variant("changed");
    edit.Update();
    edit.Close();
    EXPECT_EQ(first("select itemcode from aItem where ItemId = 2"), "changed");

    // Without a key a row is found by its ctid, which moves at every write:
    // the second and third change must still find it, and only it.
    c.Execute("insert loiStockVerificationDetail (svdid, svdAvailStock) values (8, 1)");
    ado::Recordset detail;
    detail.Open("select * from loiStockVerificationDetail", c, ado::adOpenKeyset,
                ado::adLockOptimistic);
    detail.AddNew();
    detail.Fields("svdid") = vb::Variant(std::int32_t{9});
    detail.Fields("svdAvailStock") = vb::Variant("2.5");
    detail.Update();
    EXPECT_EQ(detail.Fields("svdAvailStock").Value(), vb::Variant(2.5)); // read back
    for (double stock : {3.0, 4.0}) {
        detail.Fields("svdAvailStock") = vb::Variant(stock);
        detail.Update();
    }
    detail.MoveFirst();
    detail.Fields("svdVerifiedStock") = vb::Variant(1.5);
    detail.Update();
    detail.Close();
    EXPECT_EQ(first("select svdAvailStock * 2 from loiStockVerificationDetail where svdid = 9"),
              "8");
    EXPECT_EQ(first("select count(*) from loiStockVerificationDetail where svdVerifiedStock = 1.5"),
              "1");
}

TEST_F(PostgreSQLProviderTest, TheSlotAChangedRowLeftIsNotMistakenForItLater) {
    c.Execute("insert loiStockVerificationDetail (svdid, svdAvailStock) values (1, 1), (2, 2)");
    ado::Recordset moved;
    moved.Open("select * from loiStockVerificationDetail where svdid = 1", c, ado::adOpenKeyset,
               ado::adLockOptimistic);
    moved.Fields("svdAvailStock") = vb::Variant(10.0);
    moved.Update();
    moved.Close();
    // The row goes and vacuum frees the slot it first stood in, which the next row takes:
    // a row found there later is that row, not the one this connection once moved away.
    native(uri, "delete from loiStockVerificationDetail where svdid = 1");
    native(uri, "vacuum loiStockVerificationDetail");
    c.Execute("insert loiStockVerificationDetail (svdid, svdAvailStock) values (3, 3)");
    ado::Recordset later;
    later.Open("select * from loiStockVerificationDetail where svdid = 3", c, ado::adOpenKeyset,
               ado::adLockOptimistic);
    later.Fields("svdAvailStock") = vb::Variant(30.0);
    later.Update();
    later.Close();
    EXPECT_EQ(first("select svdAvailStock from loiStockVerificationDetail where svdid = 3"), "30");
    EXPECT_EQ(first("select svdAvailStock from loiStockVerificationDetail where svdid = 2"), "2");
    EXPECT_EQ(first("select count(*) from loiStockVerificationDetail"), "2");
}

TEST_F(PostgreSQLProviderTest, AFailedStatementLeavesTheTransactionOpen) {
    c.BeginTrans();
    c.Execute("insert aItem (ItemId, itemcode) values (10, 'a')");
    auto duplicate =
        errorOf([&] { c.Execute("insert aItem (ItemId, itemcode) values (10, 'b')"); });
    EXPECT_EQ(duplicate.number(), ado::errnum::Constraint);
    c.Execute("insert aItem (ItemId, itemcode) values (11, 'c')");
    c.CommitTrans();
    EXPECT_EQ(first("select count(*) from aItem where ItemId >= 10"), "2");

    c.BeginTrans();
    c.Execute("delete aItem where ItemId >= 10");
    c.RollbackTrans();
    EXPECT_EQ(first("select count(*) from aItem where ItemId >= 10"), "2");
}

TEST_F(PostgreSQLProviderTest, AWriterWaitsUpToTheCommandTimeout) {
    ado::Connection other;
    other.Open(uri);
    c.BeginTrans();
    c.Execute("update aItem set itemrate = 5 where ItemId = 1");
    other.CommandTimeout(1);
    auto start = std::chrono::steady_clock::now();
    auto e = errorOf([&] { other.Execute("update aItem set itemrate = 6 where ItemId = 1"); });
    EXPECT_EQ(e.number(), ado::errnum::Timeout);
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(900));
    c.CommitTrans();
    // Read committed: the other connection now sees the committed write.
    ado::Recordset rs = other.Execute("select itemrate from aItem where ItemId = 1");
    EXPECT_EQ(rs.Fields(0).Value().asDouble(), 5.0);
}

TEST_F(PostgreSQLProviderTest, StoredProceduresRunInTheCallersTransaction) {
    ado::Command cmd;
    cmd.ActiveConnection(c);
    cmd.CommandType(ado::adCmdStoredProc);
    cmd.CommandText("sv_test_add");
    cmd.Parameters(1) = vb::Variant(std::int32_t{20});
    cmd.Parameters(2) = vb::Variant("P");
    EXPECT_EQ(cmd.Parameters(1).Name(), "@p_id");
    EXPECT_EQ(cmd.Parameters(2).TypeName(), "varchar");
    c.BeginTrans();
    cmd.Execute();
    EXPECT_EQ(first("select itemcode from aItem where ItemId = 20"), "P");
    c.RollbackTrans();
    EXPECT_EQ(first("select count(*) from aItem where ItemId = 20"), "0");

    ado::Command missing;
    missing.ActiveConnection(c);
    missing.CommandType(ado::adCmdStoredProc);
    missing.CommandText("spNoSuch");
    EXPECT_EQ(errorOf([&] { missing.Execute(); }).description(),
              "Could not find stored procedure 'spNoSuch'.");
}

// The names of a result's fields, joined by |.
std::string fieldNames(const ado::Recordset &rs) {
    std::string out;
    for (int i = 0; i < rs.Fields().Count(); ++i)
        out += (i ? "|" : "") + rs.Fields(i).Name();
    return out;
}

TEST_F(PostgreSQLProviderTest, ResultsNameColumnsAsTheStatementAndTheSchemaWriteThem) {
    const std::string view = "create view vwItemCodes as select i.ItemId, i.itemcode as "
                             "ItemCode, i.itemrate * 2 as DoubleRate from aItem i;";
    native(uri, view + ado::postgresql::writtenNameComments(std::string(schema) + view));
    ado::Connection fresh; // reads the catalog with the view and its comments
    fresh.Open(uri);
    EXPECT_EQ(fieldNames(fresh.Execute("select * from aItem where ItemId = 1")),
              "ItemId|itemcode|itemrate|Active");
    EXPECT_EQ(fieldNames(fresh.Execute("select v.*, v.itemcode from vwItemCodes v")),
              "ItemId|ItemCode|DoubleRate|itemcode");
    EXPECT_EQ(fieldNames(fresh.Execute("select ItemId as Id, itemcode Code, 'x' \"Quoted\", "
                                       "itemrate as [Rate], ItemId ITEMID, Active from aItem")),
              "Id|Code|Quoted|Rate|ITEMID|Active");
    ado::Recordset keyset;
    keyset.Open("select i.ItemId RowKey, * from aItem i", fresh, ado::adOpenKeyset,
                ado::adLockOptimistic);
    EXPECT_EQ(fieldNames(keyset), "RowKey|ItemId|itemcode|itemrate|Active");
}

TEST_F(PostgreSQLProviderTest, UnknownNamesAreNamedAsTheStatementWritesThem) {
    for (auto [sql, expected] :
         {std::pair{"select a.ItemCodeX from aItem a", "Invalid column name 'a.ItemCodeX'."},
          {"select ItemId from aItem order by svdItemCost", "Invalid column name 'svdItemCost'."},
          {"update aItem set NoSuchRate = 1", "Invalid column name 'NoSuchRate'."},
          {"select 'ItemCodeX', x.ItemCodeX from aItem x", "Invalid column name 'x.ItemCodeX'."},
          {"select * from aItems", "Invalid object name 'aItems'."}}) {
        auto e = errorOf([&] { c.Execute(sql); });
        EXPECT_EQ(e.description(), expected) << sql;
    }
    EXPECT_EQ(errorOf([&] { c.Execute("select ItemCodeX from aItem"); }).number(),
              ado::errnum::Statement);
}

TEST_F(PostgreSQLProviderTest, ProceduresThatReadTheClockReadTheProgramsClock) {
    native(uri, R"(
create or replace function sv_getdate() returns timestamp(3) language sql stable
    as $$ select coalesce(nullif(current_setting('stockverify.now', true), '')::timestamp(3),
                          localtimestamp(3)) $$;
create or replace function sv_test_stamp(p_id integer) returns integer language plpgsql as $f$
begin
  update loiStockVerificationHeader set svhdate = sv_getdate() where svhid = p_id;
  return 0;
end $f$;)");
    ado::Command stamp;
    stamp.ActiveConnection(c);
    stamp.CommandType(ado::adCmdStoredProc);
    stamp.CommandText("sv_test_stamp");
    stamp.Parameters(1) = vb::Variant(std::int32_t{1});
    const vb::Date noon{vb::DateSerial(2026, 11, 22).serial + 0.5};
    vb::setClock(noon);
    stamp.Execute();
    EXPECT_EQ(c.Execute("select svhdate from loiStockVerificationHeader where svhid = 1")
                  .Fields(0)
                  .Value(),
              vb::Variant(noon));
    // The clock moves between calls, and the next call reads it again.
    const vb::Date later{vb::DateSerial(2026, 11, 23).serial + 0.25};
    vb::setClock(later);
    stamp.Execute();
    vb::setClock(std::nullopt);
    EXPECT_EQ(c.Execute("select svhdate from loiStockVerificationHeader where svhid = 1")
                  .Fields(0)
                  .Value(),
              vb::Variant(later));
}

TEST_F(PostgreSQLProviderTest, AKilledBackendLosesTheWholeTransaction) {
    c.BeginTrans();
    c.Execute("insert aItem (ItemId, itemcode) values (30, 'half')");
    std::string pid = first("select pg_backend_pid()");
    native(uri, "select pg_terminate_backend(" + pid + ")");
    auto e = errorOf([&] { c.Execute("insert aItem (ItemId, itemcode) values (31, 'rest')"); });
    EXPECT_EQ(e.number(), ado::errnum::Unspecified);
    EXPECT_NE(e.description().find("General network error"), std::string::npos);
    c.RollbackTrans(); // the server has rolled it back already: nothing more to fail
    EXPECT_EQ(errorOf([&] { c.Execute("select 1"); }).number(), ado::errnum::Unspecified);
    ado::Connection after;
    after.Open(uri);
    ado::Recordset rs = after.Execute("select count(*) from aItem where ItemId >= 30");
    EXPECT_EQ(rs.Fields(0).Value().number(), 0);
}

TEST_F(PostgreSQLProviderTest, AServerThatIsNotThereIsAClearError) {
    ado::Connection nowhere;
    auto down = errorOf([&] { nowhere.Open("postgresql://postgres@%2Fnonexistent%2Fsocket/x"); });
    EXPECT_EQ(down.number(), ado::errnum::Unspecified);
    EXPECT_NE(down.description().find("SQL Server does not exist or access denied"),
              std::string::npos);
    EXPECT_EQ(nowhere.State(), ado::adStateClosed);
    std::string noDatabase = uri.substr(0, uri.rfind('/')) + "/nosuchdb";
    auto missing = errorOf([&] { nowhere.Open(noDatabase); });
    EXPECT_NE(missing.description().find("Cannot open database"), std::string::npos);
}

} // namespace
