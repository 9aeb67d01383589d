#include "vb/WindowsPath.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class WindowsPathTest : public ::testing::Test {
protected:
    WindowsPathTest() {
        dir_ = fs::temp_directory_path() / ("vb-paths-" + std::to_string(::getpid()));
        fs::create_directories(dir_ / "Reports");
    }
    ~WindowsPathTest() override { fs::remove_all(dir_); }
    fs::path dir_;
};

TEST_F(WindowsPathTest, BothSpellingsOfADriveFileNameOneFile) {
    EXPECT_EQ(vb::DrivePath(dir_, "C:\\StockVer.txt"), dir_ / "StockVer.txt")
        << "a file still to be made keeps its spelling";
    std::ofstream(dir_ / "StockVer.txt") << "slip";
    EXPECT_EQ(vb::DrivePath(dir_, "c:\\stockver.txt"), dir_ / "StockVer.txt");
    EXPECT_EQ(vb::DrivePath(dir_, "\\STOCKVER.TXT"), dir_ / "StockVer.txt");
}

TEST_F(WindowsPathTest, EachPartOfAPathIsFoundIgnoringCase) {
    std::ofstream(dir_ / "Reports" / "rptUnProcessedQuantities.rpt") << "x";
    const std::string upper = dir_.string() + "\\REPORTS\\RPTUNPROCESSEDQUANTITIES.RPT";
    EXPECT_EQ(vb::PathIgnoringCase(upper), dir_ / "Reports" / "rptUnProcessedQuantities.rpt");
    EXPECT_EQ(vb::PathIgnoringCase(dir_.string() + "/reports/missing.rpt"),
              dir_ / "Reports" / "missing.rpt");
}

TEST(WindowsDirectoryTest, WritesTheFolderAndItsZeroOverTheBuffer) {
    std::string buffer(260, ' ');
    EXPECT_EQ(vb::GetWindowsDirectoryA(buffer, 260), 10);
    EXPECT_EQ(buffer.substr(0, 11), std::string("C:\\WINDOWS\0", 11));
    EXPECT_EQ(buffer.size(), 260u);
    std::string small(5, ' ');
    EXPECT_EQ(vb::GetWindowsDirectoryA(small, 5), 11) << "too small: the size needed";
    EXPECT_EQ(small, "     ");
}

} // namespace
