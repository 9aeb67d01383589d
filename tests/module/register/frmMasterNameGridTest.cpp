#include "RegisterFixture.h"

#include "forms/MsgBox.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::ModuleSession;

std::vector<int> widths(const forms::FlexGrid &g) {
    std::vector<int> out;
    for (int c = 0; c < g.Cols(); ++c) {
        out.push_back(g.ColWidth(c));
    }
    return out;
}

TEST(frmMasterNameGridTest, WidthsFollowTheLongestTextAt130TwipsACharacter) {
    ModuleSession s;
    frmMaster &f = s.m.frmMaster();
    // "Verification No" 15, a date 10, "SUNITA IYER" 11, "Deleted" 7 (below the
    // 960 default), the longest remarks 32, "Posted" 6. Their sum passes the
    // grid's width, so nothing is shared out; the id column is hidden.
    EXPECT_EQ(widths(f.flexMaster), (std::vector<int>{0, 1950, 1300, 1430, 960, 4160, 960}));
}

TEST(frmMasterNameGridTest, SpareWidthIsSharedOutRoundingHalfToEven) {
    test::SessionValues v;
    v.godown = 2;
    ModuleSession s(v);
    s.execute("update loiStockVerificationHeader set svhremarks = 'Short', svhverificationby = "
              "'RAHUL MEHTA' where svhGodownid = 2");
    frmMaster &f = s.m.frmMaster();
    ASSERT_EQ(f.flexMaster.Width(), 9360);
    // 1950 + 1300 + 1430 + 3 * 960 = 7560; spare 9360 - 7560 - 315 = 1485;
    // 1485 / 6 = 247.5, which rounds to 248.
    EXPECT_EQ(widths(f.flexMaster), (std::vector<int>{0, 2198, 1548, 1678, 1208, 1208, 1208}));
}

TEST(frmMasterNameGridTest, TheUsersSavedProfileHasTheLastWord) {
    ModuleSession s;
    s.execute("insert into aGridColumnProfile (UserID, CompanyID, GridName, ColumnIndex, "
              "ColumnWidth) values (1, 1, 'frmMaster.flexMaster', 5, 2000)");
    frmMaster &f = s.m.frmMaster();
    EXPECT_EQ(f.flexMaster.ColWidth(5), 2000);
    EXPECT_EQ(f.flexMaster.ColWidth(1), 1950);
}

TEST(frmMasterNameGridTest, MoreHeaderRowsThanColumnsFailInNameGrid) {
    ModuleSession s;
    s.execute("insert into atablecolumns (tableid, columnorder, columnheader, columnname) values "
              "(1, 99, 'Extra', 'extra')");
    s.ui.queueAnswer(forms::vbOK);
    frmMaster &f = s.m.frmMaster();
    ASSERT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_NE(s.ui.boxes()[0].prompt.find("in NameGrid (frmMaster)"), std::string::npos)
        << s.ui.boxes()[0].prompt;
    // GridPopulate goes on after NameGrid's own report.
    EXPECT_EQ(f.flexMaster.ColWidth(0), 0);
    EXPECT_EQ(f.flexMaster.Row(), 4);
}

} // namespace
} // namespace tqsv2731
