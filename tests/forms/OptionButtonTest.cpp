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

} // namespace
