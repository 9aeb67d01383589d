#include "RegisterFixture.h"

#include "forms/Colors.h"
#include "forms/MsgBox.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::ModuleSession;
using test::SessionValues;
using test::showRegister;

SessionValues asUser(std::int32_t user) {
    SessionValues v;
    v.user = user;
    return v;
}

/// New, Edit, Delete, Print as "1" (enabled) or "0".
std::string buttons(const frmMaster &f) {
    std::string out;
    for (const forms::CommandButton *b : {&f.cmdnew, &f.CmdEdit, &f.CmdDelete, &f.cmdPreview}) {
        out += b->Enabled() ? '1' : '0';
    }
    return out;
}

TEST(frmMasterGateTest, FullRightsOnALiveLastRowEnableEverything) {
    ModuleSession s;
    std::string seen;
    showRegister(s, [&](frmMaster &f, forms::Input &) { seen = buttons(f); });
    EXPECT_EQ(seen, "1111");
}

TEST(frmMasterGateTest, AdminRightsGrantNothing) {
    ModuleSession s(asUser(3));
    std::string seen;
    showRegister(s, [&](frmMaster &f, forms::Input &) { seen = buttons(f); });
    EXPECT_EQ(seen, "0000");
    EXPECT_EQ(s.m.strFunctionRights, "ADMIN");
}

TEST(frmMasterGateTest, LowerCaseRightsAreUpperCasedAndGrantTheirLetters) {
    ModuleSession s(asUser(2));
    std::string seen;
    showRegister(s, [&](frmMaster &f, forms::Input &) { seen = buttons(f); });
    EXPECT_EQ(seen, "1101");
    EXPECT_EQ(s.m.strFunctionRights, "NEP");
}

TEST(frmMasterGateTest, AUserWithoutRightsKeepsNewAsDesignedAndLosesTheRest) {
    ModuleSession s(asUser(4));
    std::string seen;
    showRegister(s, [&](frmMaster &f, forms::Input &) { seen = buttons(f); });
    EXPECT_EQ(seen, "1000");
    EXPECT_EQ(s.m.strFunctionRights, "");
}

TEST(frmMasterGateTest, RightsTextKeepsItsOldValueWhenTheUserHasNoRow) {
    ModuleSession s(asUser(4));
    s.m.strFunctionRights = " ep ";
    std::string seen;
    showRegister(s, [&](frmMaster &f, forms::Input &) { seen = buttons(f); });
    EXPECT_EQ(seen, "1101");
    EXPECT_EQ(s.m.strFunctionRights, "EP");
}

TEST(frmMasterGateTest, TheRightTestUpperCasesItsArgumentForTheCaller) {
    ModuleSession s;
    frmMaster &f = s.m.frmMaster();
    std::string letter = " d ";
    EXPECT_TRUE(f.fnUSerRights(letter));
    EXPECT_EQ(letter, "D");
    s.m.strFunctionRights = "admin";
    for (std::string l : {"A", "D", "M", "N"}) {
        EXPECT_FALSE(f.fnUSerRights(l)) << l;
    }
    s.m.strFunctionRights = "";
    std::string n = "N";
    EXPECT_FALSE(f.fnUSerRights(n));
}

TEST(frmMasterGateTest, TheGateFollowsTheSelectionOverACancelledRow) {
    ModuleSession s;
    std::vector<std::string> seen;
    showRegister(s, [&](frmMaster &f, forms::Input &input) {
        input.clickCell(f.flexMaster, 2, 1); // SVA3, cancelled
        seen.push_back(buttons(f));
        input.clickCell(f.flexMaster, 3, 1); // SVA4, posted but not cancelled
        seen.push_back(buttons(f));
        input.keyStroke(forms::vbKeyUp);
        seen.push_back(buttons(f));
    });
    EXPECT_EQ(seen, (std::vector<std::string>{"1101", "1111", "1101"}));
}

TEST(frmMasterGateTest, NoEntryAfterTheFloorLeavesOneBlankRowAndOnlyNew) {
    ModuleSession s;
    s.execute("update LOiSettings set sNoBackDays = 0 where GodownID = 1");
    std::string seen;
    showRegister(s, [&](frmMaster &f, forms::Input &) { seen = buttons(f); });
    frmMaster &f = *s.m.frmMasterSlot().peek();
    EXPECT_EQ(seen, "1000");
    EXPECT_EQ(f.flexMaster.Rows(), 2);
    EXPECT_EQ(f.flexMaster.Cols(), 7) << "columns from the field count";
    EXPECT_EQ(test::gridRows(f.flexMaster).at(0),
              "|Verification No|Date|Verified By|Deleted|Remarks|Posted");
    EXPECT_EQ(test::gridRows(f.flexMaster).at(1), "||||||");
}

TEST(frmMasterGateTest, AnEntryDatedOnTheFloorIsNotListed) {
    ModuleSession s;
    s.execute("update loiStockVerificationHeader set svhdate = '2026-09-30 00:00:00' where "
              "svhid = 5 and svhGodownid = 1");
    s.execute("update loiStockVerificationHeader set svhdate = '2026-10-01 00:00:00' where "
              "svhid = 1 and svhGodownid = 1");
    frmMaster &f = s.m.frmMaster();
    std::vector<std::string> ids;
    for (int r = 1; r < f.flexMaster.Rows(); ++r) {
        ids.push_back(f.flexMaster.TextMatrix(r, 0));
    }
    EXPECT_EQ(ids, (std::vector<std::string>{"1", "2", "3", "4"}));
}

TEST(frmMasterGateTest, AFailingFloorDateReadListsEverything) {
    ModuleSession s;
    // Back days past the 16-bit range overflow on the read.
    s.execute("update LOiSettings set sNoBackDays = 40000 where GodownID = 1");
    s.ui.queueAnswer(forms::vbOK);
    frmMaster &f = s.m.frmMaster();
    ASSERT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_EQ(s.ui.boxes()[0].prompt.rfind("Error 6 in fnPopulateDate (frmMaster)", 0), 0u)
        << s.ui.boxes()[0].prompt;
    EXPECT_NE(s.m.strRegisterSql.find("svhDate>'18991230'"), std::string::npos);
    EXPECT_EQ(f.flexMaster.TextMatrix(1, 1), "SVA1");
    EXPECT_EQ(f.flexMaster.Rows(), 6);
}

TEST(frmMasterGateTest, ASelectedDeletedRowStaysRed) {
    ModuleSession s;
    frmMaster &f = s.m.frmMaster();
    f.flexMaster.setRow(2);
    EXPECT_EQ(f.flexMaster.ForeColorSel(), 255u);
    // The screen palette gave the grid a colour of its own, which the
    // selection of a live row then takes too.
    f.flexMaster.setRow(1);
    EXPECT_EQ(f.flexMaster.ForeColorSel(), f.flexMaster.ForeColor());
    f.flexMaster.setForeColor(forms::vbWindowText);
    f.flexMaster.setRow(3);
    EXPECT_EQ(f.flexMaster.ForeColorSel(), forms::vbHighlightText);
    f.flexMaster.setRowSel(4);
    EXPECT_EQ(f.flexMaster.ForeColorSel(), forms::vbHighlightText) << "two rows: difference 1";
    f.flexMaster.setRowSel(1);
    EXPECT_EQ(f.flexMaster.ForeColorSel(), 0xFFFF00u);
}

} // namespace
} // namespace tqsv2731
