// Statements the connection refuses, and their neighbours that it runs, case by case from
// tests/ado/data/refusals.cases.
#include "TempDatabase.h"
#include "ado/Connection.h"
#include "ado/Recordset.h"
#include "ado/sqlite/Script.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace {

using adotest::scalar;
using adotest::TempDatabase;

struct Case {
    int line;
    std::string sql;
    bool refused = false;
    std::int32_t number = 0;
    std::string description;
};

std::vector<Case> load() {
    std::vector<Case> cases;
    std::ifstream in(std::string(TEST_DATA_DIR) + "/refusals.cases");
    EXPECT_TRUE(in) << "refusals.cases not found";
    std::string text;
    for (int n = 1; std::getline(in, text); ++n) {
        if (text.empty() || text[0] == '#')
            continue;
        auto arrow = text.rfind(" => ");
        EXPECT_NE(arrow, std::string::npos) << "line " << n << ": no \" => \"";
        if (arrow == std::string::npos)
            continue;
        Case c;
        c.line = n;
        c.sql = text.substr(0, arrow);
        std::string outcome = text.substr(arrow + 4);
        if (outcome != "ok") {
            auto blank = outcome.find(' ');
            c.refused = true;
            c.number = std::stoi(outcome.substr(0, blank));
            c.description = outcome.substr(blank + 1);
        }
        cases.push_back(std::move(c));
    }
    return cases;
}

// Everything the statements could change, as one text.
std::string contents(const ado::Connection &c) {
    return scalar(c, "select (select group_concat(ItemId || ':' || ifnull(itemcode, '') || ':' || "
                     "ifnull(itemrate, ''), ',') from aItem) || '|' || "
                     "(select group_concat(svdid || ':' || ifnull(svdAvailStock, '') || ':' || "
                     "ifnull(svdVerifiedStock, '') || ':' || ifnull(svdcostprice, ''), ',') "
                     "from loiStockVerificationDetail)");
}

TEST(RefusalTest, EachCaseIsRefusedWithItsNumberAndTextAndRunsNothingOrRuns) {
    TempDatabase db;
    auto c = db.connect();
    ado::sqlite::executeScript(
        c, "insert into aItem (ItemId, itemcode, itemrate) values (1, 'A1', 2.5), (2, 'A2', 1), "
           "(3, 'B1', 4);"
           "insert into loiStockVerificationDetail (svdid, svdItemID, svdAvailStock, "
           "svdVerifiedStock, svdcostprice) values (1, 1, 10, 12, 2.5), (1, 2, 0.5, 0.5, 1);");
    auto cases = load();
    ASSERT_GT(cases.size(), 20u);
    for (const auto &k : cases) {
        SCOPED_TRACE("refusals.cases line " + std::to_string(k.line) + ": " + k.sql);
        std::string before = contents(c);
        c.BeginTrans();
        try {
            c.Execute(k.sql);
            EXPECT_FALSE(k.refused) << "ran, where it should be refused";
        } catch (const vb::Error &e) {
            EXPECT_TRUE(k.refused) << "refused: " << e.number() << " " << e.description();
            EXPECT_EQ(e.number(), k.number);
            EXPECT_EQ(e.description(), k.description);
            EXPECT_EQ(contents(c), before) << "a refused statement changed rows";
        }
        c.RollbackTrans();
    }
}

TEST(RefusalTest, TextLongerThanItsColumnIsRefusedThroughARecordsetToo) {
    TempDatabase db;
    auto c = db.connect();
    ado::Recordset rs;
    rs.Open("select * from aItem", c, ado::adOpenKeyset, ado::adLockOptimistic);
    rs.AddNew();
    rs.Fields("ItemId") = 1;
    rs.Fields("itemcode") = "12345678901234567890  "; // blanks past the end go quietly
    rs.Update();
    EXPECT_EQ(scalar(c, "select '[' || itemcode || ']' from aItem"), "[12345678901234567890]");
    rs.AddNew();
    rs.Fields("ItemId") = 2;
    rs.Fields("itemcode") = "123456789012345678901";
    auto e = adotest::errorOf([&] { rs.Update(); });
    EXPECT_EQ(e.number(), -2147217833);
    EXPECT_EQ(e.description().rfind("String or binary data would be truncated.", 0), 0u)
        << e.description();
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "1");
}

TEST(RefusalTest, TwentyThousandNestedParenthesesAreAClearErrorNotACrash) {
    TempDatabase db;
    auto c = db.connect();
    const std::string deep = "select " + std::string(20000, '(') + "1" + std::string(20000, ')');
    auto e = adotest::errorOf([&] { c.Execute(deep); });
    EXPECT_EQ(e.number(), -2147217900);
    EXPECT_EQ(e.description(), "Some part of your SQL statement is nested too deeply. Rewrite the "
                               "query or break it up into smaller queries.");
    // Nesting as deep as a person writes runs.
    const std::string fair = "select " + std::string(60, '(') + "1" + std::string(60, ')');
    EXPECT_EQ(c.Execute(fair).Fields(0).Value(), vb::Variant(1));
}

} // namespace
