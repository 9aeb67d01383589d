// The three stored procedures as the module calls them: what they do to the book stock,
// and that each reversal takes back exactly what its forward run did.
#include "TestDatabase.h"

#include "ado/Command.h"
#include "ado/sqlite/NativeStatement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

namespace records::testing {
namespace {

using Stored = ado::sqlite::StoredValue;
using StockRow = std::vector<Stored>;

class ProcedureTest : public ::testing::Test {
protected:
    void SetUp() override {
        connection = connect(demoDatabase());
        connection.BeginTrans();
    }
    void TearDown() override { connection.RollbackTrans(); }

    void call(const char *procedure, int svhid, int godown, const char *mode = nullptr) {
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
        ado::sqlite::NativeStatement statement(connection, sql);
        while (statement.step()) {
        }
    }

    // Every stock row with its values exactly as stored.
    std::vector<StockRow> stock() {
        ado::sqlite::NativeStatement query(
            connection, "SELECT gsGodownId, gsItemId, gsShipmentId, gsLocationId, gsStock, "
                        "gsBadStock, gsItemCost FROM moigodownstock ORDER BY 1, 2, 3");
        std::vector<StockRow> rows;
        while (query.step()) {
            StockRow row;
            for (int i = 0; i < 7; ++i)
                row.push_back(query.stored(i));
            rows.push_back(row);
        }
        return rows;
    }

    // Good and bad stock of one item and shipment; (NaN, NaN) when there is no row.
    std::pair<double, double> bucket(int godown, int item, int shipment) {
        ado::sqlite::NativeStatement query(
            connection, "SELECT gsStock, gsBadStock FROM moigodownstock WHERE gsGodownId = " +
                            std::to_string(godown) + " AND gsItemId = " + std::to_string(item) +
                            " AND gsShipmentId = " + std::to_string(shipment));
        if (!query.step())
            return {std::nan(""), std::nan("")};
        return {std::stod(query.text(0)), std::stod(query.text(1))};
    }

    std::vector<StockRow> badStock() {
        std::vector<StockRow> rows;
        for (auto row : stock())
            rows.push_back({row[0], row[1], row[2], row[5]});
        return rows;
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
};

TEST_F(ProcedureTest, ForwardMovesEachItemAndShipmentByCountedLessBook) {
    addAwkwardEntry();
    call("spupdateGodownVerification", 20, 1, "F");
    EXPECT_EQ(bucket(1, 2, 1), std::make_pair(45.8, 0.75));
    EXPECT_EQ(bucket(1, 4, 7), std::make_pair(-0.667, -0.9));
    EXPECT_EQ(bucket(1, 5, 1), std::make_pair(123456.789, 0.001));
    EXPECT_EQ(bucket(1, 4, 1), std::make_pair(42.0, 3.0)) << "other shipments stay";
}

TEST_F(ProcedureTest, ForwardThenReverseLeavesTheStockExactly) {
    addAwkwardEntry();
    const auto before = stock();
    call("spupdateGodownVerification", 20, 1, "F");
    ASSERT_NE(stock(), before);
    call("spupdateGodownVerification", 20, 1, "R");
    EXPECT_EQ(stock(), before);
}

TEST_F(ProcedureTest, ReverseKeepsACreatedRowThatOthersMovedMeanwhile) {
    addAwkwardEntry();
    call("spupdateGodownVerification", 20, 1, "F");
    exec("UPDATE moigodownstock SET gsStock = gsStock + 4 WHERE gsGodownId = 1 AND "
         "gsItemId = 5 AND gsShipmentId = 1");
    call("spupdateGodownVerification", 20, 1, "R");
    EXPECT_EQ(bucket(1, 5, 1), std::make_pair(4.0, 0.0));
    EXPECT_TRUE(std::isnan(bucket(1, 4, 7).first)) << "an empty created row goes";
}

TEST_F(ProcedureTest, EditingAnEntryReversesItsOldLinesAndAppliesTheNew) {
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

TEST_F(ProcedureTest, AnUnknownModeIsRefusedAndMovesNothing) {
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

TEST_F(ProcedureTest, TotalSetsCountedItemsToTheCountAndTheRestOfTheGodownToZero) {
    call("spGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(bucket(1, 1, 1), std::make_pair(147.0, 2.0));
    EXPECT_EQ(bucket(1, 1, 3), std::make_pair(0.0, 0.0)) << "a shipment the count left out";
    EXPECT_EQ(bucket(1, 2, 1), std::make_pair(44.75, 0.75));
    EXPECT_EQ(bucket(1, 4, 1), std::make_pair(67.0, 3.0));
    EXPECT_EQ(bucket(1, 8, 4), std::make_pair(0.0, 0.0));
    EXPECT_EQ(bucket(1, 10, 2), std::make_pair(0.0, 0.0)) << "an item not counted";
    EXPECT_EQ(bucket(2, 10, 2), std::make_pair(119.0, 2.0)) << "another godown";
}

TEST_F(ProcedureTest, TotalThenReverseRestoresTheStockExactly) {
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

TEST_F(ProcedureTest, TotalRecordsExactlyTheRowsItChangesAndCreates) {
    const double book = bucket(1, 1, 1).first;
    std::ostringstream lines;
    lines << "INSERT INTO loiStockVerificationDetail VALUES "
             "(22, 1, 3, 77, 2, 0, 1.5, 1, NULL, 2.0), (22, 1, 2, 77, 2, 0, 2.25, 1, NULL, 4.5),"
             "(22, 1, 1, 1, 1, 0, "
          << book << ", 1, NULL, 1.0)";
    exec(lines.str());
    auto changes = [this] {
        ado::sqlite::NativeStatement query(
            connection, "SELECT count(*), sum(tvcCreated), sum(tvcOldStock), sum(tvcNewStock), "
                        "sum(tvcItemId = 1 AND tvcShipmentId = 1) FROM loiTotalVerificationChange "
                        "WHERE tvcSvhId = 22");
        query.step();
        return std::vector<std::string>{query.text(0), query.text(1), query.text(2),
                                        query.text(3), query.text(4)};
    };
    ado::sqlite::NativeStatement others(
        connection, "SELECT count(*), sum(gsStock) FROM moigodownstock WHERE gsGodownId = 1 AND "
                    "gsStock <> 0 AND NOT (gsItemId = 1 AND gsShipmentId = 1)");
    others.step();
    const long zeroed = others.integer(0);
    const double zeroedStock = std::stod(others.text(1));

    call("spGodownTotalStockVerification", 22, 1);
    // The new shipment's row stands at the lowest location of its lines, with the dearest
    // cost; the row counted as the book holds it is not recorded; every other row of the
    // godown with stock is recorded as it went to zero.
    const auto created = stock();
    const StockRow newRow{Stored{std::int64_t{1}}, Stored{std::int64_t{2}}, Stored{std::int64_t{77}},
                          Stored{std::int64_t{2}}, Stored{3.75},           Stored{std::int64_t{0}},
                          Stored{4.5}};
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

TEST_F(ProcedureTest, TheTotalPairLeavesBadStockAlone) {
    const auto before = badStock();
    call("spGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(badStock(), before);
    call("spReverseGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(badStock(), before);
}

TEST_F(ProcedureTest, ReverseKeepsStockMovedSinceTheTotal) {
    call("spGodownTotalStockVerification", 6, 1);
    exec("UPDATE moigodownstock SET gsStock = gsStock + 5 WHERE gsGodownId = 1 AND "
         "gsItemId = 10 AND gsShipmentId = 2");
    call("spReverseGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(bucket(1, 10, 2).first, 245.0);
    EXPECT_EQ(bucket(1, 1, 3).first, 30.0);
}

TEST_F(ProcedureTest, ReversingAnUnconfirmedTotalMovesNothing) {
    const auto before = stock();
    call("spReverseGodownTotalStockVerification", 6, 1);
    EXPECT_EQ(stock(), before);
}

TEST_F(ProcedureTest, TheDemoTotalCountOfGodownTwoCanBeReversed) {
    call("spReverseGodownTotalStockVerification", 1, 2);
    EXPECT_EQ(bucket(2, 10, 2).first, 120.0) << "the count was one short";
    EXPECT_EQ(bucket(2, 1, 2).first, 37.0) << "a later plain entry's move stays";
}

} // namespace
} // namespace records::testing
