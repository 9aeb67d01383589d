#include "RegisterFixture.h"

#include "forms/MsgBox.h"
#include "module/register/frmcancelreason.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::ModuleSession;

/// The dialog shown as the delete shows it, `user` acting on it.
void showDialog(ModuleSession &s, const std::function<void(frmcancelreason &, forms::Input &)> &user) {
    s.m.frmMaster();
    s.ui.queueAction([&s, user](forms::Input &input) { user(s.m.frmcancelreason(), input); });
    s.m.frmcancelreason().Show(forms::vbModal);
}

TEST(frmcancelreasonTest, ActivationClearsTheReasonAndAnApostropheIsNotTyped) {
    ModuleSession s;
    s.m.strCancelReason = "left over";
    showDialog(s, [&](frmcancelreason &d, forms::Input &input) {
        EXPECT_EQ(s.m.strCancelReason, "");
        EXPECT_EQ(d.Caption(), "Reason for deletion");
        d.txtcanreason.SetFocus();
        input.typeText("rack's count ");
        EXPECT_EQ(d.txtcanreason.Text(), "racks count ");
        input.click(d.cmdOK);
    });
    EXPECT_EQ(s.m.strCancelReason, "racks count ") << "kept untrimmed";
    EXPECT_FALSE(s.m.slotOf<frmcancelreason>(s.m.frmcancelreason_).loaded());
}

TEST(frmcancelreasonTest, TheCloseBoxWithOkLiveAndAnEmptyBoxWarnsAndStays) {
    ModuleSession s;
    s.ui.queueAnswer(forms::vbOK, "Enter reason for deletion");
    showDialog(s, [&](frmcancelreason &d, forms::Input &input) {
        input.closeForm(d);
        EXPECT_TRUE(d.Visible()) << "the close is held up";
        d.txtcanreason.setText("found it");
        input.closeForm(d);
    });
    EXPECT_EQ(s.ui.boxes().size(), 1u);
    EXPECT_EQ(s.ui.boxes()[0].buttons, 64);
    EXPECT_EQ(s.m.strCancelReason, "found it") << "the close box worked as OK";
}

TEST(frmcancelreasonTest, BlanksSwitchOkOffSoTheCloseBoxEndsItWithNoReason) {
    ModuleSession s;
    showDialog(s, [&](frmcancelreason &d, forms::Input &input) {
        d.txtcanreason.SetFocus();
        input.typeText("   ");
        EXPECT_FALSE(d.cmdOK.Enabled());
        EXPECT_TRUE(input.closeForm(d));
    });
    EXPECT_TRUE(s.ui.boxes().empty());
    EXPECT_EQ(s.m.strCancelReason, "");
}

} // namespace
} // namespace tqsv2731
