#include "hosts/script/Runner.h"

#include "ScenarioHarness.h"

#include <gtest/gtest.h>

namespace script::test {
namespace {

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

TEST(RunnerFailureTest, WrongPropertyShowsExpectedAndFoundWithTheLine) {
    Harness h;
    Result r = h.run(ordersScenario("type \"ACME\"\nexpect txtCustomer.Text \"ACNE\"\n"));
    EXPECT_TRUE(failedWith(r, at(firstBodyLine + 1) + " expect txtCustomer.Text \"ACNE\"\n"
                                                      "  expected: \"ACNE\"\n"
                                                      "  found:    \"ACME\"\n"));
}

TEST(RunnerFailureTest, UnknownControlsAndPropertiesSayWhatThereIs) {
    Harness h;
    EXPECT_TRUE(
        failedWith(h.run(ordersScenario("expect txtNone.Text \"\"\n")), "frmOrders has none"));
    EXPECT_TRUE(failedWith(h.run(ordersScenario("expect txtCustomer.Caption \"\"\n")),
                           "one of Name, Index, Enabled"));
    EXPECT_TRUE(
        failedWith(h.run(ordersScenario("expect frmOther!txtA.Text \"\"\n")), "shown: frmOrders"));
}

TEST(RunnerFailureTest, UnexpectedMessageBoxFailsWithItsText) {
    Harness h;
    Result r = h.run(ordersScenario("click cmdSave\n"));
    EXPECT_TRUE(failedWith(r, at(firstBodyLine) + " unexpected message box"));
    EXPECT_TRUE(failedWith(r, "\"Enter the customer.\" style 48 title \"Orders\""));
}

TEST(RunnerFailureTest, EveryMessageBoxMustBeExpected) {
    Harness h;
    Result unchecked = h.run(ordersScenario("answer ok\nclick cmdSave\nclick cmdClose\n"));
    EXPECT_TRUE(failedWith(unchecked, at(firstBodyLine + 2) + " a message box was shown"));

    Result wrongStyle = h.run(ordersScenario(
        "answer ok\nclick cmdSave\nexpect msgbox \"Enter the customer.\" style 64\n"));
    EXPECT_TRUE(failedWith(wrongStyle, "expected: message box \"Enter the customer.\" style 64\n"
                                       "  found:    message box \"Enter the customer.\" style 48 "
                                       "title \"Orders\""));

    Result none = h.run(ordersScenario("expect msgbox \"Order saved.\"\nclick cmdClose\n"));
    EXPECT_TRUE(failedWith(none, "found:    no message box"));
}

TEST(RunnerFailureTest, AnswersMustFitAndBeUsed) {
    Harness h;
    Result unfit = h.run(ordersScenario("answer yes\nclick cmdSave\n"));
    EXPECT_TRUE(failedWith(unfit, "the answer queued at line 8 does not fit"));
    EXPECT_TRUE(failedWith(unfit, "expected: one of the buttons OK"));

    Result unused = h.run(ordersScenario("answer no\nclick cmdClose\n"));
    EXPECT_TRUE(failedWith(unused, at(firstBodyLine) + " an answer was queued and no message box"));
}

TEST(RunnerFailureTest, PopupMenusMustBeAskedFor) {
    Harness h;
    EXPECT_TRUE(failedWith(h.run(ordersScenario("rightclick lvwLines\n")),
                           "found:    popup menu mnuPopup (mnuAdd, mnuRemove)"));
    EXPECT_TRUE(failedWith(h.run(ordersScenario("rightclick lvwLines choose mnuEdit\n")),
                           "the popup menu has no item mnuEdit"));
    EXPECT_TRUE(failedWith(h.run(ordersScenario("rightclick txtCustomer choose mnuAdd\n")),
                           "no popup menu came"));
}

TEST(RunnerFailureTest, InputThatReachesNothingFails) {
    Harness h;
    Result r = h.run(ordersScenario("click cmdLine\nclick frmOrders!cmdSave\n"));
    EXPECT_TRUE(failedWith(r, at(firstBodyLine + 1) +
                                  " click frmOrders!cmdSave: the input reached nothing"));
    EXPECT_TRUE(failedWith(r, "cmdSave is on frmOrders, below the active form frmLine"));

    EXPECT_TRUE(failedWith(h.run(ordersScenario("choose cboKind \"Export\"\n")),
                           "items: \"Retail\", \"Wholesale\""));
    EXPECT_TRUE(failedWith(h.run(ordersScenario("select lvwLines row 1\n")), "a row from 1 to 0"));
    EXPECT_TRUE(failedWith(h.run("click cmdSave\n"), "no form is shown"));
}

TEST(RunnerFailureTest, ErrorsThatEscapeTheFormsFailTheLine) {
    Harness h;
    Result r = h.run("set title \"x\"\nshow broken\n");
    EXPECT_TRUE(failedWith(r, at(2) + " show broken\n  expected: no error\n"
                                      "  found:    error 5: Invalid procedure call or argument"));
}

TEST(RunnerFailureTest, WatchdogStopsALoopThatNeverWaits) {
    Harness h;
    Result r = h.run("show restless\nexpect shown frmRestless\n", 50);
    EXPECT_TRUE(failedWith(r, at(1) + " watchdog: the modal loop of frmRestless turned 50 times"));
}

TEST(RunnerFailureTest, SessionValuesCannotChangeUnderOpenForms) {
    Harness h;
    EXPECT_TRUE(failedWith(h.run(ordersScenario("set company 9\n")),
                           "session values cannot change while forms are open"));
    EXPECT_TRUE(failedWith(h.run(ordersScenario("show orders\n")), "open: frmOrders"));
}

TEST(RunnerFailureTest, FormExpectationsNameWhatIsShown) {
    Harness h;
    EXPECT_TRUE(failedWith(h.run(ordersScenario("expect active frmLine\n")),
                           "expected: frmLine active\n  found:    active: frmOrders"));
    EXPECT_TRUE(failedWith(h.run(ordersScenario("expect closed frmOrders\n")),
                           "found:    shown: frmOrders"));
    EXPECT_TRUE(failedWith(h.run(ordersScenario("expect focus cmdSave\n")),
                           "expected: cmdSave\n  found:    txtCustomer"));
}

} // namespace
} // namespace script::test
