// The three stored procedures as the module calls them: what they do to the book stock,
// and that each reversal takes back exactly what its forward run did. Every case runs on the
// embedded database and on a PostgreSQL server, where the same demo must end the same way.
#include "TestCluster.h"
#include "TestDatabase.h"

#include "ado/Command.h"
#include "ado/sqlite/NativeStatement.h"
#include "module/records/PostgresDatabase.h"
#include "module/records/ScratchServerDatabase.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace records::testing {
namespace {

enum class Engine { SQLite, PostgreSQL };

// A value as text that is the same on both engines: numbers by their value (the server
// writes 117.000 where SQLite writes 117), null as NULL.
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

// The demo with the hand-made items on the test cluster, made by the first test that asks
// and shared by all: each rolls back what it did.
std::string serverDemo(const std::string &clusterUri) {
    DemoOptions demo;
    demo.items = demoFeaturedItems;
    return PostgresDatabase::uriWithDatabase(
        clusterUri, keptServerDatabase(clusterUri, demo, "sv_procedure_test"));
}

using StockRow = std::vector<std::string>;

class ProcedureTest : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        if (GetParam() == Engine::SQLite) {
            connection = connect(demoDatabase());
            connection.BeginTrans();
            return;
        }
        std::string whyNot;
        const std::string cluster = pgtest::clusterUri(whyNot);
        if (cluster.empty())
            GTEST_SKIP() << whyNot;
        server = std::make_unique<PostgresDatabase>(serverDemo(cluster));
        server->execute("BEGIN");
    }
    void TearDown() override {
        if (server)
            server->execute("ROLLBACK");
        else if (connection.State() == ado::adStateOpen)
            connection.RollbackTrans();
    }

    void call(const char *procedure, int svhid, int godown, const char *mode = nullptr) {
        if (server) {
            // A refusal spoils the server's transaction; the savepoint keeps the test's own.
            std::string sql = "SELECT " + std::string(procedure) + "(" + std::to_string(svhid) +
                              ", " + std::to_string(godown);
            if (mode)
                sql += ", '" + std::string(mode) + "'";
            server->execute("SAVEPOINT call");
            try {
                server->value(sql + ")");
            } catch (const vb::Error &) {
                server->execute("ROLLBACK TO SAVEPOINT call");
                throw;
            }
            server->execute("RELEASE SAVEPOINT call");
            return;
        }
        ado::Command command;
        command.ActiveConnection(connection);
        command.CommandType(ado::adCmdStoredProc);
        command.CommandText(procedure);
        command.Parameters(1) = svhid;
        command.Parameters(2) = godown;
        if (mode)
            command.Parameters(3) = mode;
        command.Execute();
    }

    void exec(const std::string &sql) {
        if (server) {
            server->execute(sql);
            return;
        }
        ado::sqlite::NativeStatement statement(connection, sql);
        while (statement.step()) {
        }
    }

    std::vector<StockRow> rows(const std::string &sql) {
        std::vector<StockRow> found;
        if (server) {
            for (const auto &row : server->rows(sql)) {
                StockRow values;
                for (const auto &value : row)
                    values.push_back(comparable(value));
                found.push_back(values);
            }
            return found;
        }
        ado::sqlite::NativeStatement query(connection, sql);
        while (query.step()) {
            StockRow values;
            for (int i = 0; i < query.columnCount(); ++i)
                values.push_back(query.isNull(i) ? "NULL" : comparable(query.text(i)));
            found.push_back(values);
        }
        return found;
    }

    // Every stock row with its values exactly as stored.
    std::vector<StockRow> stock() {
        return rows("SELECT gsGodownId, gsItemId, gsShipmentId, gsLocationId, gsStock, "
                    "gsBadStock, gsItemCost FROM moigodownstock ORDER BY 1, 2, 3");
    }

    // Good and bad stock of one item and shipment; (NaN, NaN) when there is no row.
    std::pair<double, double> bucket(int godown, int item, int shipment) {
        const auto found = rows("SELECT gsStock, gsBadStock FROM moigodownstock WHERE "
                                "gsGodownId = " +
                                std::to_string(godown) + " AND gsItemId = " +
                                std::to_string(item) + " AND gsShipmentId = " +
                                std::to_string(shipment));
        if (found.empty())
            return {std::nan(""), std::nan("")};
        return {std::stod(found[0][0]), std::stod(found[0][1])};
    }

    std::vector<StockRow> badStock() {
        std::vector<StockRow> found;
        for (auto row : stock())
            found.push_back({row[0], row[1], row[2], row[5]});
        return found;
    }

    // A plain entry 20 of godown 1 with awkward decimals: two lines on one item and
    // shipment, a shipment the item has no row for, and a brand new item.
    void addAwkwardEntry() {
        exec("INSERT INTO loiStockVerificationDetail VALUES "
             "(20, 1, 1, 1, 2, 45.5, 45.6, 0.75, 0.7, 3.25),"
             "(20, 1, 1, 1, 2, 0, 0.2, 0, 0.05, 3.25),"
             "(20, 1, 3, 7, 4, 66, 65.333, 3, 2.1, 2.95),"
             "(20, 1, 2, 1, 5, 0, 123456.789, 0, 0.001, 1.75)");
    }

    ado::Connection connection;
    std::unique_ptr<PostgresDatabase> server;
};

INSTANTIATE_TEST_SUITE_P(Engines, ProcedureTest,
                         ::testing::Values(Engine::SQLite, Engine::PostgreSQL),
                         [](const auto &info) {
                             return info.param == Engine::SQLite ? std::string("SQLite")
                                                                 : std::string("PostgreSQL");
                         });

TEST_P(ProcedureTest, ForwardMovesEachItemAndShipmentByCountedLessBook) {
    addAwkwardEntry();
    call("spupdateGodownVerification", 20, 1, "F");
    EXPECT_EQ(bucket(1, 2, 1), std::make_pair(45.8, 0.75));
    EXPECT_EQ(bucket(1, 4, 7), std::make_pair(-0.667, -0.9));
    EXPECT_EQ(bucket(1, 5, 1), std::make_pair(123456.789, 0.001));
    EXPECT_EQ(bucket(1, 4, 1), std::make_pair(42.0, 3.0)) << "other shipments stay";
}

TEST_P(ProcedureTest, ForwardThenReverseLeavesTheStockExactly) {
    addAwkwardEntry();
    const auto before = stock();
    call("spupdateGodownVerification", 20, 1, "F");
    ASSERT_NE(stock(), before);
    call("spupdateGodownVerification", 20, 1, "R");
    EXPECT_EQ(stock(), before);
}

TEST_P(ProcedureTest, ReverseKeepsACreatedRowThatOthersMovedMeanwhile) {
    addAwkwardEntry();
    call("spupdateGodownVerification", 20, 1, "F");
    exec("UPDATE moigodownstock SET gsStock = gsStock + 4 WHERE gsGodownId = 1 AND "
         "gsItemId = 5 AND gsShipmentId = 1");
    call("spupdateGodownVerification", 20, 1, "R");
    EXPECT_EQ(bucket(1, 5, 1), std::make_pair(4.0, 0.0));
    EXPECT_TRUE(std::isnan(bucket(1, 4, 7).first)) << "an empty created row goes";
}

TEST_P(ProcedureTest, EditingAnEntryReversesItsOldLinesAndAppliesTheNew) {
    const auto before = stock();
    exec("INSERT INTO loiStockVerificationDetail VALUES (20, 1, 1, 1, 9, 22, 30, 0, 0, 2.1)");
    call("spupdateGodownVerification", 20, 1, "F");
    call("spupdateGodownVerification", 20, 1, "R");
    exec("DELETE FROM loiStockVerificationDetail WHERE svdid = 20 AND svdGodownID = 1");
    exec("INSERT INTO loiStockVerificationDetail VALUES (20, 1, 1, 1, 9, 22, 21, 0, 0, 2.1)");
    call("spupdateGodownVerification", 20, 1, "F");
    EXPECT_EQ(bucket(1, 9, 1), std::make_pair(21.0, 0.0));
    call("spupdateGodownVerification", 20, 1, "R");
    EXPECT_EQ(stock(), before);
}

TEST_P(ProcedureTest, AnUnknownModeIsRefusedAndMovesNothing) {
    addAwkwardEntry();
    const auto before = stock();
    try {
        call("spupdateGodownVerification", 20, 1, "X");
        FAIL() << "mode X ran";
    } catch (const vb::Error &e) {
        EXPECT_NE(e.description().find("mode must be F or R"), std::string::npos)
            << e.description();
    }
    EXPECT_EQ(stock(), before);
}

TEST_P(ProcedureTest, TotalSetsCountedItemsToTheCountAndTheRestOfTheGodownToZero) {
    call("spGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(bucket(1, 1, 1), std::make_pair(147.0, 2.0));
    EXPECT_EQ(bucket(1, 1, 3), std::make_pair(0.0, 0.0)) << "a shipment the count left out";
    EXPECT_EQ(bucket(1, 2, 1), std::make_pair(44.75, 0.75));
    EXPECT_EQ(bucket(1, 4, 1), std::make_pair(67.0, 3.0));
    EXPECT_EQ(bucket(1, 8, 4), std::make_pair(0.0, 0.0));
    EXPECT_EQ(bucket(1, 10, 2), std::make_pair(0.0, 0.0)) << "an item not counted";
    EXPECT_EQ(bucket(2, 10, 2), std::make_pair(119.0, 2.0)) << "another godown";
}

TEST_P(ProcedureTest, TotalThenReverseRestoresTheStockExactly) {
    exec("INSERT INTO loiStockVerificationDetail VALUES "
         "(21, 1, 1, 1, 2, 45.5, 0.1, 1, NULL, 3.25), (21, 1, 1, 1, 2, 0, 0.2, 1, NULL, 3.25),"
         "(21, 1, 4, 9, 8, 35, 33.333, 1, NULL, 0.95)");
    const auto before = stock();
    call("spGodownTotalStockVerification", 21, 1);
    EXPECT_EQ(bucket(1, 2, 1).first, 0.3);
    EXPECT_EQ(bucket(1, 8, 9).first, 33.333) << "a counted shipment without a row gets one";
    call("spReverseGodownTotalStockVerification", 21, 1);
    EXPECT_EQ(stock(), before);
}

TEST_P(ProcedureTest, TotalRecordsExactlyTheRowsItChangesAndCreates) {
    const double book = bucket(1, 1, 1).first;
    std::ostringstream lines;
    lines << "INSERT INTO loiStockVerificationDetail VALUES "
             "(22, 1, 3, 77, 2, 0, 1.5, 1, NULL, 2.0), (22, 1, 2, 77, 2, 0, 2.25, 1, NULL, 4.5),"
             "(22, 1, 1, 1, 1, 0, "
          << book << ", 1, NULL, 1.0)";
    exec(lines.str());
    auto changes = [this] {
        return rows("SELECT count(*), sum(tvcCreated), sum(tvcOldStock), sum(tvcNewStock), "
                    "sum(CASE WHEN tvcItemId = 1 AND tvcShipmentId = 1 THEN 1 ELSE 0 END) "
                    "FROM loiTotalVerificationChange WHERE tvcSvhId = 22")
            .at(0);
    };
    const auto others =
        rows("SELECT count(*), sum(gsStock) FROM moigodownstock WHERE gsGodownId = 1 AND "
             "gsStock <> 0 AND NOT (gsItemId = 1 AND gsShipmentId = 1)")
            .at(0);
    const long zeroed = std::stol(others[0]);
    const double zeroedStock = std::stod(others[1]);

    call("spGodownTotalStockVerification", 22, 1);
    // The new shipment's row stands at the lowest location of its lines, with the dearest
    // cost; the row counted as the book holds it is not recorded; every other row of the
    // godown with stock is recorded as it went to zero.
    const auto created = stock();
    const StockRow newRow{"1", "2", "77", "2", "3.75", "0", "4.5"};
    EXPECT_NE(std::find(created.begin(), created.end(), newRow), created.end());
    const auto first = changes();
    EXPECT_EQ(first[0], std::to_string(zeroed + 1));
    EXPECT_EQ(first[1], "1");
    EXPECT_EQ(std::stod(first[2]), zeroedStock);
    EXPECT_EQ(std::stod(first[3]), 3.75);
    EXPECT_EQ(first[4], "0");
    EXPECT_EQ(bucket(1, 1, 1).first, book);

    // Run again, the godown already holds the count: nothing more is recorded.
    call("spGodownTotalStockVerification", 22, 1);
    EXPECT_EQ(changes(), first);
    EXPECT_EQ(stock(), created);
}

TEST_P(ProcedureTest, TheTotalPairLeavesBadStockAlone) {
    const auto before = badStock();
    call("spGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(badStock(), before);
    call("spReverseGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(badStock(), before);
}

TEST_P(ProcedureTest, ReverseKeepsStockMovedSinceTheTotal) {
    call("spGodownTotalStockVerification", 6, 1);
    exec("UPDATE moigodownstock SET gsStock = gsStock + 5 WHERE gsGodownId = 1 AND "
         "gsItemId = 10 AND gsShipmentId = 2");
    call("spReverseGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(bucket(1, 10, 2).first, 245.0);
    EXPECT_EQ(bucket(1, 1, 3).first, 30.0);
}

TEST_P(ProcedureTest, ReversingAnUnconfirmedTotalMovesNothing) {
    const auto before = stock();
    call("spReverseGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(stock(), before);
}

TEST_P(ProcedureTest, TheDemoTotalCountOfGodownTwoCanBeReversed) {
    call("spReverseGodownTotalStockVerification", 1, 2);
    EXPECT_EQ(bucket(2, 10, 2).first, 120.0) << "the count was one short";
    EXPECT_EQ(bucket(2, 1, 2).first, 37.0) << "a later plain entry's move stays";
}

} // namespace
} // namespace records::testing
