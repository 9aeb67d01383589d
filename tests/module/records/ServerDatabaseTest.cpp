// The module's database on a PostgreSQL server: what init-db makes there, what it refuses,
// and that the demo it loads is the embedded database's, row for row.
#include "TestCluster.h"
#include "TestDatabase.h"

#include "ado/Connection.h"
#include "ado/Errors.h"
#include "ado/Recordset.h"
#include "ado/sqlite/NativeStatement.h"
#include "module/records/PostgresDatabase.h"
#include "module/records/ScratchServerDatabase.h"
#include "module/records/ServerDatabase.h"

#include "vb/Conversion.h"

#include <gtest/gtest.h>

#include <charconv>
#include <memory>

namespace records::testing {
namespace {

std::string comparable(const std::optional<std::string> &text) {
    if (!text)
        return "NULL";
    double number = 0;
    const auto [end, ec] = std::from_chars(text->data(), text->data() + text->size(), number);
    if (ec != std::errc() || end != text->data() + text->size())
        return *text;
    char buffer[32];
    return std::string(buffer, std::to_chars(buffer, buffer + sizeof buffer, number).ptr);
}

class ServerDatabasePostgreSQL : public ::testing::Test {
protected:
    void SetUp() override {
        std::string whyNot;
        cluster = pgtest::clusterUri(whyNot);
        if (cluster.empty())
            GTEST_SKIP() << whyNot;
    }

    // The rows of a query on both databases, values made comparable.
    static std::vector<std::string> onServer(PostgresDatabase &server, const std::string &sql) {
        std::vector<std::string> lines;
        for (const auto &row : server.rows(sql)) {
            std::string line;
            for (const auto &value : row)
                line += comparable(value) + "|";
            lines.push_back(line);
        }
        return lines;
    }
    static std::vector<std::string> embedded(const std::string &sql) {
        ado::Connection connection = connect(demoDatabase());
        ado::sqlite::NativeStatement query(connection, sql);
        std::vector<std::string> lines;
        while (query.step()) {
            std::string line;
            for (int i = 0; i < query.columnCount(); ++i)
                line += (query.isNull(i) ? std::string("NULL") : comparable(query.text(i))) + "|";
            lines.push_back(line);
        }
        return lines;
    }

    std::int32_t failureOf(const std::function<void()> &action) {
        try {
            action();
        } catch (const vb::Error &e) {
            description = e.description();
            return e.number();
        }
        return 0;
    }

    std::string cluster;
    std::string description;
};

TEST_F(ServerDatabasePostgreSQL, TheDemoEndsAsTheEmbeddedDemoEnds) {
    DemoOptions demo;
    demo.items = demoFeaturedItems;
    ScratchServerDatabase scratch(cluster, demo);
    PostgresDatabase server(scratch.uri());
    // Stock after every entry's procedure ran, the lines they ran on, what the total count
    // recorded, the headers, and the ledgers in sum.
    for (const char *sql :
         {"SELECT gsGodownId, gsItemId, gsShipmentId, gsLocationId, gsStock, gsBadStock, "
          "gsItemCost FROM moigodownstock ORDER BY 1, 2, 3",
          "SELECT svdGodownID, svdid, svdItemID, svdShipmentID, svdLocationid, svdAvailStock, "
          "svdVerifiedStock, svdavailbadstock, svdverifiedbadstock, svdcostprice "
          "FROM loiStockVerificationDetail ORDER BY 1, 2, 3, 4",
          "SELECT tvcGodownId, tvcSvhId, tvcItemId, tvcShipmentId, tvcCreated, tvcOldStock, "
          "tvcNewStock FROM loiTotalVerificationChange ORDER BY 1, 2, 3, 4",
          "SELECT vnsGodownId, vnsSvhId, vnsItemId, vnsShipmentId FROM loiVerificationNewStock "
          "ORDER BY 1, 2, 3, 4",
          "SELECT svhGodownid, svhid, svhno, svhFutureVc, svhposted, svhcancelled, "
          "svhexchangerates, svhdepexrate FROM loiStockVerificationHeader ORDER BY 1, 2",
          "SELECT ladGodownId, count(*), sum(ladItemQty) FROM loiLocationArrivalDetails "
          "GROUP BY ladGodownId ORDER BY 1",
          "SELECT eidGodownId, count(*), sum(eidItemQty) FROM loiExpiryIssueDetails "
          "GROUP BY eidGodownId ORDER BY 1"}) {
        const auto expected = embedded(sql);
        ASSERT_FALSE(expected.empty()) << sql;
        EXPECT_EQ(onServer(server, sql), expected) << sql;
    }
}

TEST_F(ServerDatabasePostgreSQL, ASecondCreationIsRefusedAndTouchesNothing) {
    DemoOptions demo;
    demo.items = demoFeaturedItems;
    ScratchServerDatabase scratch(cluster, demo);
    PostgresDatabase server(scratch.uri());
    server.execute("DELETE FROM loiStockVerificationHeader WHERE svhGodownid = 2");
    EXPECT_EQ(failureOf([&] { createServerDatabase(scratch.uri(), demo); }), schemaExists);
    EXPECT_NE(description.find("holds the stock verification tables already"),
              std::string::npos)
        << description;
    EXPECT_EQ(server.value("SELECT count(*) FROM loiStockVerificationHeader"), "6");
}

TEST_F(ServerDatabasePostgreSQL, AFailedCreationLeavesTheDatabaseEmpty) {
    ScratchServerDatabase scratch(cluster, std::nullopt);
    PostgresDatabase server(scratch.uri());
    server.execute("DROP TABLE loiStockVerificationHeader CASCADE");
    server.execute("DROP TABLE loiStockVerificationDetail CASCADE");
    const auto tables = "SELECT count(*) FROM pg_tables WHERE schemaname = 'public'";
    const auto before = server.value(tables);
    DemoOptions tooSmall;
    tooSmall.items = demoFeaturedItems - 1; // refused after the schema went in
    EXPECT_NE(failureOf([&] { createServerDatabase(scratch.uri(), tooSmall); }), 0);
    EXPECT_EQ(server.value(tables), before) << "the half-made schema was rolled back";
}

TEST_F(ServerDatabasePostgreSQL, AServerThatCannotBeReachedIsToldWithTheOldNumber) {
    const std::string nowhere = "postgresql://postgres@%2Fnonexistent-socket-folder/stockverify";
    EXPECT_EQ(failureOf([&] { createServerDatabase(nowhere, std::nullopt); }),
              ado::errnum::Unspecified);
    EXPECT_NE(description.find("Cannot connect to " + nowhere), std::string::npos)
        << description;
}

// Through the module's own data layer, as the forms reach the server.
TEST_F(ServerDatabasePostgreSQL, EveryTableAndViewNamesItsColumnsAsTheEmbeddedOneDoes) {
    ScratchServerDatabase scratch(cluster, std::nullopt);
    PostgresDatabase server(scratch.uri());
    ado::Connection onServer;
    onServer.Open(scratch.uri());
    ado::Connection onFile = connect(demoDatabase());
    auto names = [](const ado::Connection &c, const std::string &relation) {
        ado::Recordset rs;
        rs.Open("select * from " + relation, c);
        std::string out;
        for (int i = 0; i < rs.Fields().Count(); ++i)
            out += rs.Fields(i).Name() + "|";
        return out;
    };
    int compared = 0;
    for (const auto &row : embedded("SELECT name FROM sqlite_master WHERE type IN ('table', "
                                    "'view') AND name NOT LIKE 'sqlite%' ORDER BY name")) {
        const std::string relation = row.substr(0, row.size() - 1);
        if (!server.value("SELECT to_regclass('" + relation + "')::text"))
            continue; // the embedded database's own bookkeeping
        EXPECT_EQ(names(onServer, relation), names(onFile, relation)) << relation;
        ++compared;
    }
    EXPECT_GT(compared, 30);
}

TEST_F(ServerDatabasePostgreSQL, TextComparesIgnoringCaseAndKeepsItsWidth) {
    ScratchServerDatabase scratch(cluster, std::nullopt);
    ado::Connection connection;
    connection.Open(scratch.uri());
    connection.Execute("insert into aUnit (UnitId, UnitCode, UnitName) values (1, 'Kg', 'Kilo')");
    auto first = [&](const std::string &sql) {
        ado::Recordset rs;
        rs.Open(sql, connection);
        return rs.Eof() ? std::string("no row") : vb::CStr(rs.Fields(0).Value());
    };
    EXPECT_EQ(first("select UnitId from aUnit where UnitCode = 'KG'"), "1");
    EXPECT_EQ(first("select UnitId from aUnit where UnitName like 'kil%'"), "1");
    EXPECT_EQ(failureOf([&] {
                  connection.Execute("insert into aUnit (UnitId, UnitCode, UnitName) values "
                                     "(2, 'ABCDEFGHIJK', 'Eleven')");
              }),
              ado::errnum::Truncation);
    EXPECT_NE(description.find("String or binary data would be truncated."), std::string::npos)
        << description;
    // Ten characters and blanks past them fit, as SQL Server drops such blanks.
    connection.Execute("insert into aUnit (UnitId, UnitCode, UnitName) values "
                       "(3, 'ABCDEFGHIJ  ', 'Ten')");
    EXPECT_EQ(first("select count(*) from aUnit"), "2");
}

TEST_F(ServerDatabasePostgreSQL, ANewEntryIsNeitherPostedNorCancelled) {
    ScratchServerDatabase scratch(cluster, std::nullopt);
    PostgresDatabase server(scratch.uri());
    server.execute("INSERT INTO loiStockVerificationHeader (svhid, svhGodownid, svhno) "
                   "VALUES (1, 1, 'SVA1')");
    EXPECT_EQ(server.value("SELECT svhposted || '/' || svhcancelled "
                           "FROM loiStockVerificationHeader"),
              "0/0");
}

TEST(ServerDatabaseUri, TheDatabaseNameIsReplacedAndTheRestKept) {
    EXPECT_EQ(PostgresDatabase::uriWithDatabase("postgresql://u@%2Ftmp%2Fpg/stockverify", "x"),
              "postgresql://u@%2Ftmp%2Fpg/x");
    EXPECT_EQ(PostgresDatabase::uriWithDatabase("postgresql://u@host:5433/db?sslmode=disable",
                                                "x"),
              "postgresql://u@host:5433/x?sslmode=disable");
    EXPECT_EQ(PostgresDatabase::uriWithDatabase("postgresql://host", "x"), "postgresql://host/x");
}

} // namespace
} // namespace records::testing
