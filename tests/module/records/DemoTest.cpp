// The demo company: it loads, it is the same on every run, it follows its date, and its
// database file is made whole or not at all.
#include "TestDatabase.h"

#include "ado/sqlite/NativeStatement.h"
#include "module/records/DatabaseFile.h"
#include "vb/Conversion.h"

#include <gtest/gtest.h>

#include <fstream>

namespace records::testing {
namespace {

using Rows = std::vector<std::vector<ado::sqlite::StoredValue>>;

Rows rows(const ado::Connection &connection, const std::string &sql) {
    ado::sqlite::NativeStatement query(connection, sql);
    Rows result;
    while (query.step()) {
        result.emplace_back();
        for (int i = 0; i < query.columnCount(); ++i)
            result.back().push_back(query.stored(i));
    }
    return result;
}

std::string text(const ado::Connection &connection, const std::string &sql) {
    ado::sqlite::NativeStatement query(connection, sql);
    return query.step() ? query.text(0) : "(no row)";
}

// Every row of every table, in rowid order.
Rows everything(const ado::Connection &connection) {
    Rows all;
    for (const auto &table : rows(connection, "SELECT name FROM sqlite_master WHERE type = "
                                              "'table' ORDER BY name")) {
        const auto &name = std::get<std::string>(table[0]);
        for (auto &row : rows(connection, "SELECT * FROM " + name + " ORDER BY rowid"))
            all.push_back(std::move(row));
    }
    return all;
}

std::filesystem::path makeDemo(const TempFolder &folder, const std::string &name, int items,
                               std::chrono::sys_days date = DemoOptions{}.date) {
    DatabaseFileOptions options;
    options.demo = DemoOptions{date, items, {}};
    const auto path = folder.file(name);
    createDatabaseFile(path, options);
    return path;
}

TEST(DemoTest, HasTheDocumentedCompany) {
    auto c = connect(demoDatabase());
    EXPECT_EQ(text(c, "SELECT count(*) FROM aItem"), "12");
    EXPECT_EQ(text(c, "SELECT group_concat(userid || ':' || ifnull(functionrights, '-'), ' ') "
                      "FROM (SELECT u.userid, r.functionrights FROM lousers u LEFT JOIN "
                      "louserrights r ON r.userid = u.userid AND r.interfaceid = 1005 "
                      "WHERE u.GodownID = 1 ORDER BY u.userid)"),
              "1:NEDP 2:nep 3:ADMIN 4:-");
    EXPECT_EQ(text(c, "SELECT sum(gsStock) || '/' || sum(gsBadStock) FROM moigodownstock "
                      "WHERE gsGodownId = 1 AND gsItemId = 1"),
              "147/2");
    EXPECT_EQ(text(c, "SELECT group_concat(svhno, ' ') FROM (SELECT svhno FROM "
                      "loiStockVerificationHeader ORDER BY svhGodownid, svhid)"),
              "SVA1 SVA2 SVA3 SVA4 SVA5 TSA1 1 SVB1");
    EXPECT_EQ(text(c, "SELECT count(*) FROM loiVerificationNewStock"), "5")
        << "rows made by the plain entries' forward runs";
    EXPECT_EQ(text(c, "SELECT count(*) FROM loiTotalVerificationChange WHERE tvcGodownId = 2"), "1")
        << "the confirmed total count of godown 2, one item short";
}

TEST(DemoTest, IsTheSameOnEveryRun) {
    TempFolder folder;
    const auto a = makeDemo(folder, "a.db", 150);
    const auto b = makeDemo(folder, "b.db", 150);
    EXPECT_EQ(everything(connect(a)), everything(connect(b)));
}

TEST(DemoTest, AnItemIsTheSameWhateverTheNumberOfItems) {
    TempFolder folder;
    auto small = connect(makeDemo(folder, "small.db", 60));
    auto large = connect(makeDemo(folder, "large.db", 90));
    for (const char *table :
         {"aItem WHERE ItemId", "aitempackingdetail WHERE itemid", "agodowndetail WHERE itemid",
          "moigodownstock WHERE gsItemId", "loiLocationArrivalDetails WHERE ladItemId"}) {
        const std::string sql = std::string("SELECT * FROM ") + table + " = 57 ORDER BY rowid";
        EXPECT_FALSE(rows(small, sql).empty() && std::string(table).starts_with("aItem"));
        EXPECT_EQ(rows(small, sql), rows(large, sql)) << table;
    }
}

TEST(DemoTest, FollowsItsDate) {
    TempFolder folder;
    using namespace std::chrono;
    auto c = connect(makeDemo(folder, "dated.db", 12, sys_days{year{2025} / January / 10}));
    EXPECT_EQ(text(c, "SELECT svhdate FROM loiStockVerificationHeader WHERE svhid = 5 AND "
                      "svhGodownid = 1"),
              "2024-12-28 00:00:00");
    EXPECT_EQ(text(c, "SELECT FromDate || ' ' || ToDate FROM aFinancialYear WHERE "
                      "CurFinancialYear = 1"),
              "2024-04-01 00:00:00 2025-03-31 00:00:00");
    EXPECT_EQ(text(c, "SELECT closedate FROM vwGodownCloseDate WHERE GodownID = 1"),
              "2024-11-18 00:00:00");
}

TEST(DatabaseFileTest, LeavesAnExistingFileAloneUnlessToldToReplaceIt) {
    TempFolder folder;
    const auto path = folder.file("kept.db");
    std::ofstream(path) << "not a database";
    try {
        createDatabaseFile(path, {});
        FAIL() << "an existing file was replaced";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), fileerr::AlreadyExists);
        EXPECT_NE(e.description().find(path.string()), std::string::npos);
    }
    createDatabaseFile(path, {std::nullopt, true});
    EXPECT_EQ(text(connect(path), "SELECT count(*) FROM aItem"), "0");
}

TEST(DatabaseFileTest, NamesAMissingFolderOrAFolderInTheWay) {
    TempFolder folder;
    try {
        createDatabaseFile(folder.file("missing") / "x.db", {});
        FAIL();
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), fileerr::PathNotFound);
    }
    try {
        createDatabaseFile(folder.path(), {std::nullopt, true});
        FAIL();
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), fileerr::AccessError);
    }
}

TEST(DatabaseFileTest, AFailedLoadLeavesNoFileAndKeepsTheOldOne) {
    TempFolder folder;
    const auto path = makeDemo(folder, "old.db", 12);
    DatabaseFileOptions tooFew;
    tooFew.demo = DemoOptions{DemoOptions{}.date, demoFeaturedItems - 1, {}};
    tooFew.replace = true;
    EXPECT_THROW(createDatabaseFile(path, tooFew), vb::Error);
    EXPECT_EQ(text(connect(path), "SELECT count(*) FROM aItem"), "12");
    EXPECT_FALSE(std::filesystem::exists(path.string() + ".partial"));
    EXPECT_THROW(createDatabaseFile(folder.file("new.db"), {tooFew.demo, false}), vb::Error);
    EXPECT_FALSE(std::filesystem::exists(folder.file("new.db")));
}

} // namespace
} // namespace records::testing
