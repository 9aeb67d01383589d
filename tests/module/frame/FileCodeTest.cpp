#include "ModuleSession.h"

#include "forms/MsgBox.h"
#include "module/frame/basStockVerification.h"
#include "vb/Conversion.h"
#include "vb/FileChannels.h"

#include <fstream>
#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

class FileCodeTest : public ::testing::Test {
protected:
    ~FileCodeTest() override { vb::FileCloseAll(); }

    std::string write(const std::string &text) {
        const std::string path = (s.folder.path() / "ShopSetting.txt").string();
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }

    test::ModuleSession s;
};

TEST_F(FileCodeTest, FindsAKeyIgnoringCaseAndFillerEvenOnALastLineWithoutLineEnd) {
    const std::string file = write("PageLength :=60\r\nPRINTERPORT :=LPT1\r\nFooter :=Thank you");
    EXPECT_EQ(FileCode(s.m, "pagelength", file), vb::Variant("60"));
    EXPECT_EQ(FileCode(s.m, "PrinterPort", file), vb::Variant("LPT1"));
    EXPECT_EQ(FileCode(s.m, "FOOTER", file), vb::Variant("Thank you"));
    EXPECT_TRUE(s.ui.boxes().empty());
}

TEST_F(FileCodeTest, TheValueIsTheWholeRestAfterTheFirstMarker) {
    const std::string file = write("Title :=a:=b \n");
    EXPECT_EQ(FileCode(s.m, "Title", file), vb::Variant("a:=b "));
}

TEST_F(FileCodeTest, EmptyAndUpperNotFoundValuesGiveEmptyText) {
    const std::string file = write("Blank :=\nGone :=NOTFOUND\nKept :=NotFound\n");
    EXPECT_EQ(FileCode(s.m, "Blank", file), vb::Variant(""));
    EXPECT_EQ(FileCode(s.m, "Gone", file), vb::Variant(""));
    // The test is case-sensitive.
    EXPECT_EQ(FileCode(s.m, "Kept", file), vb::Variant("NotFound"));
}

TEST_F(FileCodeTest, AMissingKeyIsShownAndGivesNotFound) {
    const std::string file = write("PageLength :=60\n");
    s.ui.queueAnswer(forms::vbOK, "Width  invalid parameter in Settings.ini file");
    EXPECT_EQ(FileCode(s.m, "Width", file), vb::Variant("NotFound"));
    ASSERT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_EQ(s.ui.boxes()[0].buttons, forms::vbCritical);
    EXPECT_EQ(s.ui.boxes()[0].title, "Stock Verification");
    // The channel was closed: the next read works.
    EXPECT_EQ(FileCode(s.m, "PageLength", file), vb::Variant("60"));
}

TEST_F(FileCodeTest, AnEmptyFileHasNoKey) {
    const std::string file = write("");
    s.ui.queueAnswer(forms::vbOK, "Copies  invalid parameter in Settings.ini file");
    EXPECT_EQ(FileCode(s.m, "Copies", file), vb::Variant("NotFound"));
}

TEST_F(FileCodeTest, AMissingFileIsShownReportedAndGivesEmpty) {
    s.ui.queueAnswer(forms::vbOK, " Settings.ini file not found");
    s.ui.queueAnswer(forms::vbOK);
    const vb::Variant value =
        FileCode(s.m, "PageLength", (s.folder.path() / "nothing.txt").string());
    EXPECT_TRUE(value.isEmpty());
    ASSERT_EQ(s.ui.boxes().size(), 2u);
    EXPECT_EQ(s.ui.boxes()[0].buttons, forms::vbCritical);
    EXPECT_EQ(s.ui.boxes()[1].prompt.rfind("Error 53 in FileCode (basStockVerification)", 0), 0u);
}

TEST_F(FileCodeTest, ALineWithoutMarkerFailsAndLeavesTheChannelOpen) {
    const std::string file = write("PageLength :=60\nno marker here\nWidth :=40\n");
    s.ui.queueAnswer(forms::vbOK);
    EXPECT_TRUE(FileCode(s.m, "Width", file).isEmpty());
    ASSERT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_EQ(s.ui.boxes()[0].prompt.rfind("Error 5 in FileCode", 0), 0u) << s.ui.boxes()[0].prompt;

    // Channel 3 stayed open, so the next call fails on its open.
    s.ui.queueAnswer(forms::vbOK);
    EXPECT_TRUE(FileCode(s.m, "PageLength", file).isEmpty());
    ASSERT_EQ(s.ui.boxes().size(), 2u);
    EXPECT_EQ(s.ui.boxes()[1].prompt.rfind("Error 55 in FileCode", 0), 0u)
        << s.ui.boxes()[1].prompt;
}

TEST_F(FileCodeTest, AMarkerAtTheStartOfALineFailsToo) {
    const std::string file = write(":=60\n");
    s.ui.queueAnswer(forms::vbOK);
    EXPECT_TRUE(FileCode(s.m, "PageLength", file).isEmpty());
    EXPECT_EQ(s.ui.boxes().at(0).prompt.rfind("Error 5 in FileCode", 0), 0u);
}

} // namespace
} // namespace tqsv2731
