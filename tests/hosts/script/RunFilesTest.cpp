#include "hosts/script/Runner.h"

#include "testforms/TestTargets.h"

#include "module/records/DatabaseFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace script::test {
namespace {

class RunFilesTest : public ::testing::Test {
protected:
    std::filesystem::path dir_ = std::filesystem::path(::testing::TempDir()) / "run-files";

    void SetUp() override { std::filesystem::create_directories(dir_); }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    std::string write(const std::string &name, const std::string &text) {
        std::ofstream(dir_ / name) << text;
        return (dir_ / name).string();
    }

    int run(const std::vector<std::string> &files) {
        RunnerOptions options;
        options.targets = testTargets();
        return Runner(options).runFiles(files, out_, err_);
    }

    std::ostringstream out_;
    std::ostringstream err_;
};

TEST_F(RunFilesTest, CountsPassedAndFailedFilesAndGivesTheWorstExitCode) {
    std::string good = write("good.scn", "show orders\nclick cmdClose\n");
    std::string bad = write("bad.scn", "show orders\nexpect txtCustomer.Text \"x\"\n");
    EXPECT_EQ(run({good, bad, good}), 1);
    EXPECT_EQ(out_.str(), "2 passed, 1 failed\n");
    EXPECT_NE(err_.str().find(bad + ":2: expect txtCustomer.Text \"x\""), std::string::npos)
        << err_.str();
}

TEST_F(RunFilesTest, BadScriptsWinAndOneFilePrintsNoCount) {
    std::string broken = write("broken.scn", "show orders\nclick\n");
    EXPECT_EQ(run({broken}), 2);
    EXPECT_EQ(out_.str(), "");
    EXPECT_EQ(err_.str(), broken + ":2: bad script: missing a control\n");
    EXPECT_EQ(run({(dir_ / "missing.scn").string()}), 2);
}

TEST_F(RunFilesTest, DatabasePathsStartAtTheScenariosFolder) {
    records::createDatabaseFile(dir_ / "shop.db", {});
    std::string relative =
        write("relative.scn", "db shop.db\nsql insert into aUnit (UnitId, UnitCode, "
                              "UnitName) values (1, 'P', 'PCS')\n");
    std::string absolute =
        write("absolute.scn", "set connection sqlite:" + (dir_ / "shop.db").string() +
                                  "\nexpect rows select UnitName from aUnit\nPCS\n");
    EXPECT_EQ(run({relative, absolute}), 0) << err_.str();

    std::string missing = write("missing.scn", "db none.db\n");
    EXPECT_EQ(run({missing}), 1);
    EXPECT_NE(err_.str().find((dir_ / "none.db").string()), std::string::npos) << err_.str();
}

} // namespace
} // namespace script::test
