// Faults made on purpose, the statements sent, errors that reach the host,
// untitled boxes, columns and the focus kept off a control.
#include "hosts/script/Runner.h"

#include "ScenarioHarness.h"

#include <gtest/gtest.h>

namespace script::test {
namespace {

const std::string ordersTable = "db empty\n"
                                "sql create table orders (id integer primary key, customer "
                                "varchar(10), kind varchar(10), urgent int, lines int, saved "
                                "datetime)\n"
                                "set clock 2026-11-22 10:30:00\n";

/// Lines 1 to 3 make the table, 4 to 10 show the form: the body starts at 11.
constexpr int bodyLine = 11;

const std::string insertAcme = "insert into orders (customer, kind, urgent, lines, saved) values "
                               "('ACME', '', 0, 0, '2026-11-22 10:30:00')";

Result runOrders(std::string_view body) {
    Harness h;
    return h.run(ordersTable + ordersScenario(body));
}

::testing::AssertionResult failedWith(const Result &r, const std::string &part) {
    if (r.outcome != Outcome::Failed) {
        return ::testing::AssertionFailure() << "outcome " << exitCode(r.outcome) << "\n"
                                             << r.report;
    }
    if (r.report.find(part) == std::string::npos) {
        return ::testing::AssertionFailure() << "no \"" << part << "\" in\n" << r.report;
    }
    return ::testing::AssertionSuccess();
}

TEST(RunnerFaultTest, AStatementNamedByItsFirstWordsFailsAndTheSaveRollsBack) {
    // The scenario's own checks neither take the fault nor show in expect sql.
    Result r = runOrders(R"~(type "ACME"
mark sql
fail sql "SELECT  MAX(id)" error -2147217900 "Deadlock victim"
expect rows select count(*) from orders
0

answer ok
click cmdSave
expect msgbox "Could not save: Deadlock victim" style 16 title "Orders"
expect sql
BeginTrans
)~" + insertAcme + R"~(
select max(id) from orders
RollbackTrans

expect rows select count(*) from orders
0

expect sql

click cmdClose
)~");
    EXPECT_EQ(r.outcome, Outcome::Passed) << r.report;
}

TEST(RunnerFaultTest, TheNthStatementAndATransactionCallFailWithTheDefaultDescription) {
    Result second = runOrders(R"~(type "ACME"
fail sql 2 error 3021
mark sql
answer ok
click cmdSave
expect msgbox "Could not save: Fault made by line 12 of the scenario" style 16
expect sql
BeginTrans
)~" + insertAcme + R"~(
select max(id) from orders
RollbackTrans

click cmdClose
)~");
    EXPECT_EQ(second.outcome, Outcome::Passed) << second.report;

    Result commit = runOrders(R"~(type "ACME"
fail committrans error -2147467259 "Commit refused"
mark sql
answer ok
click cmdSave
expect msgbox "Could not save: Commit refused"
expect sql
BeginTrans
)~" + insertAcme + R"~(
select max(id) from orders
CommitTrans
RollbackTrans

expect rows select count(*) from orders
0

click cmdClose
)~");
    EXPECT_EQ(commit.outcome, Outcome::Passed) << commit.report;
}

TEST(RunnerFaultTest, AFaultNoCallTookFailsTheScenarioAtItsLine) {
    Result r = runOrders("fail sql \"delete from orders\" error 5\nclick cmdClose\n");
    EXPECT_TRUE(failedWith(r, at(bodyLine) + " a fault was armed and no call took it\n"
                                             "  expected: every fault armed (lines 11) taken by "
                                             "a call\n  found:    1 still waiting\n"));
}

TEST(RunnerFaultTest, ExpectSqlComparesLetterForLetterAndQuotesWhatBlanksWouldHide) {
    Result r = runOrders(R"~(type "ACME"
answer ok
click cmdSave
expect msgbox "Order saved."
expect sql
BeginTrans
insert into orders (customer, kind, urgent, lines, saved) values ('ACME', '',  0, 0, '2026-11-22 10:30:00')
select max(id) from orders
CommitTrans

click cmdClose
)~");
    ASSERT_EQ(r.outcome, Outcome::Failed) << r.report;
    EXPECT_NE(r.report.find("! insert into orders (customer, kind, urgent, lines, saved) values "
                            "('ACME', '',  0, 0,"),
              std::string::npos)
        << r.report;
    EXPECT_NE(r.report.find("  BeginTrans"), std::string::npos) << r.report;

    Harness h;
    Result quoted = h.run("db empty\nmark sql\nexpect sql\n\"select 1 \"\n");
    EXPECT_TRUE(failedWith(quoted, "! \"select 1 \" |\n"));
}

TEST(RunnerFaultTest, AnErrorThatReachesTheHostIsExpectedOnTheLineUnder) {
    const std::string saved = R"~(type "ACME"
answer ok
click cmdSave
expect msgbox "Order saved."
fail sql "select customer" error -2147217865 "Invalid object name 'orders'."
select flxOrders row 1
dblclick flxOrders row 1
)~";
    Result expected = runOrders(saved + R"~(expect error -2147217865 "Invalid object name 'orders'."
expect active frmOrders
expect flxOrders rows
1 | ACME | ""

click cmdClose
)~");
    EXPECT_EQ(expected.outcome, Outcome::Passed) << expected.report;

    Result unexpected = runOrders(saved + "click cmdClose\n");
    EXPECT_TRUE(failedWith(unexpected, at(bodyLine + 6) + " dblclick flxOrders row 1\n"
                                                          "  expected: no error\n"
                                                          "  found:    error -2147217865"));

    Result wrongNumber = runOrders(saved + "expect error 3021\nclick cmdClose\n");
    EXPECT_TRUE(failedWith(wrongNumber, "  expected: error 3021\n"
                                        "  found:    error -2147217865: Invalid object name"));

    Result none = runOrders("expect error 5\nclick cmdClose\n");
    EXPECT_TRUE(failedWith(none, "  expected: error 5\n  found:    no error\n"));

    Harness h;
    Result broken = h.run("show broken\nexpect error 5 \"Invalid procedure call or argument\"\n"
                          "expect closed frmBroken\n");
    EXPECT_EQ(broken.outcome, Outcome::Passed) << broken.report;
}

TEST(RunnerFaultTest, AnUntitledBoxIsToldFromOneTitledWithTheApplicationsTitle) {
    const std::string dblclick = R"~(type "ACME"
answer ok
click cmdSave
expect msgbox "Order saved." style 64 title "Orders"
answer ok
dblclick flxOrders row 1
)~";
    EXPECT_EQ(runOrders(dblclick + "expect msgbox \"Order of ACME\" style 64 untitled\n"
                                   "click cmdClose\n")
                  .outcome,
              Outcome::Passed);
    EXPECT_TRUE(failedWith(runOrders(dblclick + "expect msgbox \"Order of ACME\" title "
                                                "\"Orders\"\nclick cmdClose\n"),
                           "  expected: message box \"Order of ACME\" title \"Orders\"\n"
                           "  found:    message box \"Order of ACME\" style 64 untitled (shows "
                           "\"Orders\")\n"));
    Result titled = runOrders(R"~(answer ok
click cmdSave
expect msgbox "Enter the customer." untitled
click cmdClose
)~");
    EXPECT_TRUE(failedWith(titled, "found:    message box \"Enter the customer.\" style 48 "
                                   "title \"Orders\"\n"));
}

TEST(RunnerFaultTest, ColumnsShowTheirWidthAlignmentAndPlace) {
    Harness h;
    Result r = h.run(ordersScenario(R"~(expect lvwLines column 1 width 1440 alignment 0 position 1
expect lvwLines column 2 width 900 alignment 1 position 2
expect flxOrders column 0 width 0 position 0
expect flxOrders column 2 width 960 alignment 9 position 2
click cmdClose
)~"));
    EXPECT_EQ(r.outcome, Outcome::Passed) << r.report;

    Result wrong = h.run(ordersScenario("expect lvwLines column 2 alignment 0 width 900\n"));
    EXPECT_TRUE(failedWith(wrong, "  expected: width 900 alignment 0\n"
                                  "  found:    width 900 alignment 1\n"));
    EXPECT_TRUE(failedWith(h.run(ordersScenario("expect lvwLines column 3 width 1\n")),
                           "found:    2 columns, from 1"));
    EXPECT_TRUE(failedWith(h.run(ordersScenario("expect flxOrders column 3 width 1\n")),
                           "found:    3 columns, from 0"));
}

TEST(RunnerFaultTest, FocusNotOnAControl) {
    Harness h;
    EXPECT_EQ(h.run(ordersScenario("expect focus not cboKind\nexpect focus not none\n"
                                   "click cmdClose\n"))
                  .outcome,
              Outcome::Passed);
    Result r = h.run(ordersScenario("expect focus not txtCustomer\n"));
    EXPECT_TRUE(failedWith(r, "  expected: the focus anywhere but on txtCustomer\n"
                              "  found:    txtCustomer\n"));
}

TEST(RunnerFaultTest, BadFaultAndExpectationLinesAreBadScripts) {
    Harness h;
    for (const char *line :
         {"fail sql error 5", "fail sql \"update x\" 0 error 5", "fail commit error 5",
          "fail update 2", "mark rows", "expect msgbox \"x\" title \"t\" untitled",
          "expect lvwLines column 2", "expect error"}) {
        Result r = h.run(std::string(line) + "\n");
        EXPECT_EQ(r.outcome, Outcome::BadScript) << line << "\n" << r.report;
    }
}

} // namespace
} // namespace script::test
