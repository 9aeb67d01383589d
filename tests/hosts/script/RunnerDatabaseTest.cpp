#include "hosts/script/Runner.h"

#include "ScenarioHarness.h"

#include <gtest/gtest.h>

namespace script::test {
namespace {

const char *ordersTable = "sql create table orders (id integer primary key, customer "
                          "varchar(10), kind varchar(10), urgent int, lines int, saved datetime)\n";

TEST(RunnerDatabaseTest, FormsWriteWhatExpectRowsReads) {
    Harness h;
    Result r = h.run(std::string("db empty\n") + ordersTable +
                     ordersScenario(R"(set clock 2026-11-22 10:30:15
type "ACME"
choose cboKind "Retail"
click chkUrgent
click cmdLine
type "bolt"
press Tab
type 2
press Enter
answer ok
click cmdSave
expect msgbox "Order saved." style 64 title "Orders"
expect pointer default
expect flxOrders rows
1 | ACME | Retail

select flxOrders row 1
expect flxOrders.Col 1
answer ok
dblclick flxOrders row 1
expect msgbox "Order of ACME"
click cmdClose
expect rows select id, customer, kind, urgent, lines, saved, null from orders
1	ACME	Retail	1	1	2026-11-22 10:30:15	NULL
)"));
    EXPECT_EQ(r.outcome, Outcome::Passed) << r.report;
}

TEST(RunnerDatabaseTest, WrongRowsStandSideBySide) {
    Harness h;
    Result r = h.run("db empty\nsql create table t (a int, b varchar(5))\n"
                     "sql insert into t values (1, 'x')\nsql insert into t values (2, 'y')\n"
                     "expect rows select a, b from t order by a\n1 | x\n2 | z\n3 | w\n");
    ASSERT_EQ(r.outcome, Outcome::Failed);
    EXPECT_EQ(r.report, "t.scn:5: expect rows select a, b from t order by a\n"
                        "  expected | found\n"
                        "  1|x      | 1|x\n"
                        "! 2|z      | 2|y\n"
                        "! 3|w      |\n");
}

TEST(RunnerDatabaseTest, AFailedSaveLeavesTheHourglass) {
    Harness h;
    Result r = h.run("db empty\n" + ordersScenario(R"(type "ACME"
answer ok
click cmdSave
expect msgbox "Could not save: Invalid object name 'orders'." style 16
expect pointer hourglass
click cmdClose
)"));
    EXPECT_EQ(r.outcome, Outcome::Passed) << r.report;
}

TEST(RunnerDatabaseTest, DemoDatabaseIsMadeFresh) {
    Harness h;
    Result r = h.run("db demo items 12\nexpect rows select count(*) from aItem\n12\n\n"
                     "sql delete from aItem\n"
                     "db demo items 12\nexpect rows select count(*) from aItem\n12\n");
    EXPECT_EQ(r.outcome, Outcome::Passed) << r.report;
}

TEST(RunnerDatabaseTest, SqlErrorsFailTheirLine) {
    Harness h;
    Result r = h.run("db empty\nsql insert into nowhere values (1)\n");
    ASSERT_EQ(r.outcome, Outcome::Failed);
    EXPECT_NE(r.report.find("t.scn:2: sql insert into nowhere values (1)\n"
                            "  expected: no error\n  found:    error "),
              std::string::npos)
        << r.report;
    Result missing = h.run("db no-such-folder/none.db\n");
    EXPECT_EQ(missing.outcome, Outcome::Failed) << missing.report;
}

} // namespace
} // namespace script::test
