#include "hosts/script/Runner.h"

#include "ScenarioHarness.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace script::test {
namespace {

/// A file of expected text beside the harness's scenarios, removed afterwards.
class ExpectedText {
public:
    explicit ExpectedText(const std::string &text)
        : path_(std::filesystem::temp_directory_path() /
                ("expected-" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                 "-" + ::testing::UnitTest::GetInstance()->current_test_info()->name())) {
        std::ofstream(path_, std::ios::binary) << text;
    }
    ~ExpectedText() { std::filesystem::remove(path_); }
    std::string name() const { return path_.filename().string(); }

private:
    std::filesystem::path path_;
};

const char *slipOfAcme = R"(type "ACME"
click cmdLine
type "bolt"
press Tab
type 12
press Enter
)";

TEST(RunnerOutputTest, TextThatDiffersStandsSideBySideWithControlCharactersShown) {
    Harness h;
    ExpectedText expected("ORDER\f\nCustomer: ACME\nbolt x 12\n");
    Result r = h.run(ordersScenario(std::string(slipOfAcme) + "click cmdPrint\nexpect viewer " +
                                    expected.name() + "\n"));
    ASSERT_EQ(r.outcome, Outcome::Failed);
    EXPECT_NE(r.report.find("! ORDER\\x0C      | ORDER\n"
                            "  Customer: ACME | Customer: ACME\n"),
              std::string::npos)
        << r.report;
}

TEST(RunnerOutputTest, PrinterOutputIsTakenOncePerCheck) {
    Harness h;
    ExpectedText expected("ORDER\nCustomer: ACME\nbolt x 12\n");
    std::string check = "expect printed LPT1 " + expected.name() + "\n";
    Result r = h.run(ordersScenario(std::string(slipOfAcme) + "click chkUrgent\nclick cmdPrint\n" +
                                    check + check));
    ASSERT_EQ(r.outcome, Outcome::Failed);
    EXPECT_NE(r.report.find(at(firstBodyLine + 9) + " expect printed LPT1"), std::string::npos)
        << r.report;
}

TEST(RunnerOutputTest, MissingOutputsAndFilesFail) {
    Harness h;
    Result noViewer = h.run(ordersScenario("expect viewer none.txt\n"));
    EXPECT_NE(noViewer.report.find("expected: a text file shown in the viewer"), std::string::npos)
        << noViewer.report;
    Result noFile = h.run(ordersScenario("click cmdPrint\nexpect viewer none.txt\n"));
    EXPECT_NE(noFile.report.find("none.txt\n  found:    no such file"), std::string::npos)
        << noFile.report;
    Result wrongReport =
        h.run("set home /h\nshow orders\nclick cmdReport\nexpect report \"/h/reports/x.rpt\"\n");
    EXPECT_NE(wrongReport.report.find("found:    report \"/h/reports/orders.rpt\" title "
                                      "\"Orders of \" parameters 0"),
              std::string::npos)
        << wrongReport.report;
}

} // namespace
} // namespace script::test
