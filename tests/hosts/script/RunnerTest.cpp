#include "hosts/script/Runner.h"

#include "ScenarioHarness.h"

#include "vb/Clock.h"

#include <gtest/gtest.h>

namespace script::test {
namespace {

TEST(RunnerTest, DrivesFormsAndDialogsLineByLine) {
    Harness h;
    Result r = h.run(ordersScenario(
        R"(expect lblSession.Caption "company 1 user 2 godown 3 interface 1005 date 2026-11-22"
expect frmOrders.Caption "Orders"
expect focus txtCustomer
type "ACME"
expect txtCustomer.Text "ACME"
choose cboKind "Wholesale"
expect cboKind.ListIndex 1
click cmdLine
expect active frmLine
expect shown frmOrders
type "bolt"
press Tab
type 12
press Enter
expect closed frmLine
expect active frmOrders
expect lvwLines rows
bolt | 12

expect lvwLines cell 1 2 "12"
expect lvwLines.ListItems.Count 1
click cmdClose
expect closed frmOrders
)"));
    EXPECT_EQ(r.outcome, Outcome::Passed) << r.report;
}

TEST(RunnerTest, PressesNamedKeysAndShortcuts) {
    Harness h;
    Result r = h.run(ordersScenario(R"(press Ctrl+D
expect focus lvwLines
press Ctrl+Enter
expect active frmLine
press Escape
expect active frmOrders
click txtCustomer
type "A'B"
expect txtCustomer.Text "AB"
press Enter
expect focus cboKind
press Shift+Tab
expect focus txtCustomer
press Backspace Backspace
answer ok
press Alt+S
expect msgbox "Enter the customer." style 48 title "Orders"
expect focus txtCustomer
press Escape
)"));
    EXPECT_EQ(r.outcome, Outcome::Passed) << r.report;
}

TEST(RunnerTest, RightClickChoosesFromThePopupMenu) {
    Harness h;
    Result r = h.run(ordersScenario(R"(rightclick lvwLines choose mnuAdd
type "nut"
press Tab
type 3
press Enter
expect lvwLines rows
nut | 3

answer yes
rightclick lvwLines row 1 choose mnuRemove
expect msgbox "Delete line 1?" style 292 title "Orders"
expect lvwLines.ListItems.Count 0
rightclick lvwLines dismiss
click cmdClose
)"));
    EXPECT_EQ(r.outcome, Outcome::Passed) << r.report;
}

TEST(RunnerTest, MayEndWithFormsOpenOnlyWhenTheLastLineExpectsThem) {
    Harness h;
    Result open = h.run(ordersScenario("click cmdLine\nexpect shown frmLine\n"));
    EXPECT_EQ(open.outcome, Outcome::Passed) << open.report;

    Result left = h.run(ordersScenario("click cmdLine\n"));
    EXPECT_EQ(left.outcome, Outcome::Failed);
    EXPECT_NE(left.report.find(at(firstBodyLine) + " the scenario ended with forms still open"),
              std::string::npos)
        << left.report;
    EXPECT_NE(left.report.find("open: frmOrders, frmLine"), std::string::npos) << left.report;
}

TEST(RunnerTest, SessionClockAndDatePicker) {
    Harness h;
    Result r = h.run(ordersScenario(R"(choose dtpDue 2026-12-01
expect dtpDue.Value "2026-12-01"
expect lblDue.Caption "01/12/2026"
set clock 2026-11-22 10:30
click cmdClose
)"));
    EXPECT_EQ(r.outcome, Outcome::Passed) << r.report;

    Result defaultDate = h.run("set clock 2030-01-02\nshow orders\n"
                               "expect lblSession.Caption \"company 0 user 0 godown 0 interface "
                               "0 date 2030-01-02\"\nclick cmdClose\n");
    EXPECT_EQ(defaultDate.outcome, Outcome::Passed) << defaultDate.report;
}

TEST(RunnerTest, ClockIsGivenBackOnlyWhenTheScenarioSetIt) {
    Harness h;
    const vb::Date fixed = vb::DateSerial(2001, 2, 3);
    vb::setClock(fixed);
    EXPECT_EQ(h.run("db empty\n").outcome, Outcome::Passed);
    EXPECT_EQ(vb::Now(), fixed);
    EXPECT_EQ(h.run("set clock 2026-11-22\n").outcome, Outcome::Passed);
    EXPECT_NE(vb::Now(), fixed);
    EXPECT_NE(vb::Now(), vb::DateSerial(2026, 11, 22));
}

TEST(RunnerTest, DumpWritesTheFormsControls) {
    Harness h;
    Result r = h.run(ordersScenario("type \"ACME\"\ndump\nclick cmdClose\n"));
    ASSERT_EQ(r.outcome, Outcome::Passed) << r.report;
    std::string dump = h.dumped.str();
    EXPECT_NE(dump.find("form frmOrders \"Orders\" active modal"), std::string::npos) << dump;
    EXPECT_NE(dump.find("txtCustomer"), std::string::npos) << dump;
    EXPECT_NE(dump.find("\"ACME\""), std::string::npos) << dump;
    EXPECT_NE(dump.find("[Retail, Wholesale]"), std::string::npos) << dump;
    EXPECT_NE(dump.find("| Id | Customer | Kind |"), std::string::npos) << dump;
}

} // namespace
} // namespace script::test
