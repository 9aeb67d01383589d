#include "ModuleSession.h"

#include "forms/MsgBox.h"
#include "module/frame/TrackError.h"
#include "vb/Error.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

TEST(TrackErrorTest, ShortensLongNumbersToTheirLastFiveCharacters) {
    EXPECT_EQ(ShortErrorNumber(-2147217900), 17900);
    EXPECT_EQ(ShortErrorNumber(-2147467259), 67259);
    EXPECT_EQ(ShortErrorNumber(-2147217865), 17865);
    EXPECT_EQ(ShortErrorNumber(-2147400005), 5);
    EXPECT_EQ(ShortErrorNumber(123456), 23456);
    // Five characters or fewer stay, so a short negative number keeps its sign.
    EXPECT_EQ(ShortErrorNumber(3021), 3021);
    EXPECT_EQ(ShortErrorNumber(94), 94);
    EXPECT_EQ(ShortErrorNumber(0), 0);
    EXPECT_EQ(ShortErrorNumber(-1234), -1234);
    EXPECT_EQ(ShortErrorNumber(99999), 99999);
    // Six characters: the sign is the one cut off.
    EXPECT_EQ(ShortErrorNumber(-12345), 12345);
}

TEST(TrackErrorTest, ReportsToTheFaultDeskWithTheUsersNameAndShortNumber) {
    test::ModuleSession s;
    s.m.strTransactionMode = "E";
    s.ui.queueAnswer(forms::vbOK);
    std::int32_t number = -2147217900;
    TrackError(s.m, "frmMaster", 2, "GridPopulate", number, "Microsoft OLE DB Provider",
               "Invalid column name 'x'.", s.m.strTransactionMode, false);

    EXPECT_EQ(number, 17900) << "the caller's variable is shortened";
    EXPECT_EQ(s.sent().front(), "select username from LOUSERS where userid=2 and GodownID = 1");
    ASSERT_EQ(s.ui.boxes().size(), 1u) << "the desk always shows, whatever the caller asked";
    EXPECT_EQ(s.ui.boxes()[0].prompt,
              "Error 17900 in GridPopulate (frmMaster):\nInvalid column name 'x'.");
    ASSERT_EQ(s.faultLog().size(), 1u);
    const std::string line = s.faultLog()[0];
    EXPECT_NE(line.find("SUNITA IYER"), std::string::npos) << line;
    EXPECT_NE(line.find("\tE\t"), std::string::npos) << line;
}

TEST(TrackErrorTest, HandlerFormTakesSessionUserAndMode) {
    test::ModuleSession s;
    s.ui.queueAnswer(forms::vbOK);
    TrackError(s.m, "basStockVerification", "FileCode ", vb::Error::standard(3021, "DAO"));
    ASSERT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_EQ(s.ui.boxes()[0].prompt.rfind("Error 3021 in FileCode (basStockVerification)", 0), 0u);
    EXPECT_EQ(s.sent().front(), "select username from LOUSERS where userid=1 and GodownID = 1");
}

TEST(TrackErrorTest, AGoneDatabaseMakesTheReportItselfFail) {
    test::ModuleSession s;
    s.m.adocon = ado::Connection();
    try {
        TrackError(s.m, "frmMaster", "Form_Load", vb::Error::standard(94));
        FAIL() << "the user look-up should have failed";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 3709);
    }
    EXPECT_TRUE(s.ui.boxes().empty());
}

} // namespace
} // namespace tqsv2731
