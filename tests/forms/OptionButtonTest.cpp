#include "forms/OptionButton.h"

#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

struct OptionButtonTest : ::testing::Test {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    // A second group, directly on the form.
    OptionButton optScreen{form, "optScreen"};
    OptionButton optPrinter{form, "optPrinter"};
    Input in{s.screen};
};

TEST_F(OptionButtonTest, SettingOnClicksItAndTurnsItsGroupOffSilently) {
    form.optAscend.setValue(true);
    optScreen.setValue(true);
    log.lines.clear();
    form.optDescend.setValue(true);
    EXPECT_EQ(log.lines, std::vector<std::string>{"optDescend.Click"});
    EXPECT_FALSE(form.optAscend.Value());
    EXPECT_TRUE(optScreen.Value()); // another container, another group
}

TEST_F(OptionButtonTest, SettingOnWhenAlreadyOnRaisesNothing) {
    form.optAscend.setValue(true);
    log.lines.clear();
    form.optAscend.setValue(true);
    form.optDescend.setValue(false);
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(OptionButtonTest, UserClickOnTheChosenButtonClicksAgain) {
    form.Show();
    form.optAscend.setValue(true);
    log.lines.clear();
    in.click(form.optAscend);
    EXPECT_EQ(log.lines.back(), "optAscend.Click");
    EXPECT_TRUE(form.optAscend.Value());
}

TEST_F(OptionButtonTest, ArrowKeysMoveWithinTheGroupAndTurnOn) {
    form.Show();
    form.optAscend.setValue(true);
    form.optAscend.SetFocus();
    log.lines.clear();
    in.keyStroke(vbKeyDown);
    EXPECT_TRUE(form.optDescend.Value());
    EXPECT_TRUE(form.optDescend.hasFocus());
    EXPECT_EQ(log.lines, (std::vector<std::string>{"optAscend.LostFocus", "optDescend.GotFocus",
                                                   "optDescend.Click"}));
}

TEST(CheckBoxTest, SettingADifferentValueClicks) {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    form.chkDone.setValue(vbChecked);
    form.chkDone.setValue(vbChecked);
    form.chkDone.setValue(vbUnchecked);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"chkDone.Click", "chkDone.Click"}));
    EXPECT_THROW(form.chkDone.setValue(3), vb::Error);
}

TEST(CheckBoxTest, UserClickSpaceAndAccessKeyToggle) {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    form.Show();
    Input in(s.screen);
    in.click(form.chkDone);
    EXPECT_EQ(form.chkDone.Value(), vbChecked);
    in.keyStroke(vbKeySpace);
    EXPECT_EQ(form.chkDone.Value(), vbUnchecked);
    form.txtName.SetFocus();
    in.keyStroke(vbKeyF1 + 0, 0); // a key with no meaning changes nothing
    in.keyStroke(vbKeyA + ('F' - 'A'), vbAltMask);
    EXPECT_EQ(form.chkDone.Value(), vbChecked);
    EXPECT_TRUE(form.chkDone.hasFocus());
    form.chkDone.setValue(vbGrayed);
    in.click(form.chkDone);
    EXPECT_EQ(form.chkDone.Value(), vbChecked);
}

TEST(CommandButtonTest, ValueTrueClicksAndDefaultIsOnePerForm) {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    form.cmdOK.setValue(true);
    EXPECT_EQ(log.lines, std::vector<std::string>{"cmdOK.Click"});
    form.cmdOK.setDefault(true);
    form.cmdCancel.setDefault(true);
    EXPECT_FALSE(form.cmdOK.Default());
    EXPECT_EQ(form.defaultButton(), &form.cmdCancel);
}

} // namespace
