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
