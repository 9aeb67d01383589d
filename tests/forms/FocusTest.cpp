#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

struct FocusTest : ::testing::Test {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    Input in{s.screen};

    std::vector<std::string> tabNames() {
        std::vector<std::string> names;
        for (Control *c : form.tabOrder()) {
            names.push_back(c->Name());
        }
        return names;
    }
};

TEST_F(FocusTest, ShowGivesTheFirstTabStopTheFocusAfterActivate) {
    form.Show();
    EXPECT_EQ(log.lines, (std::vector<std::string>{"frmSample.Load", "frmSample.Activate",
                                                   "txtName.GotFocus"}));
    EXPECT_EQ(s.screen.ActiveControl(), &form.txtName);
}

TEST_F(FocusTest, TabOrderSkipsWhatCannotTakeTheFocus) {
    form.Show();
    EXPECT_EQ(tabNames(), (std::vector<std::string>{"txtName", "cboKind", "optAscend", "chkDone",
                                                    "txtRemarks", "cmdOK", "cmdCancel"}));
    form.optDescend.setValue(true); // the group's stop is the button that is on
    form.cboKind.setEnabled(false);
    form.txtRemarks.setVisible(false);
    form.cmdOK.setTabStop(false);
    EXPECT_EQ(tabNames(),
              (std::vector<std::string>{"txtName", "optDescend", "chkDone", "cmdCancel"}));
    form.fraOptions.setEnabled(false); // a disabled frame takes its controls out
    EXPECT_EQ(tabNames(), (std::vector<std::string>{"txtName", "chkDone", "cmdCancel"}));
}

TEST_F(FocusTest, TabAndShiftTabWalkTheOrderAndWrap) {
    form.Show();
    form.cmdCancel.SetFocus();
    log.lines.clear();
    in.keyStroke(vbKeyTab);
    EXPECT_TRUE(form.txtName.hasFocus());
    EXPECT_EQ(log.lines, (std::vector<std::string>{"cmdCancel.LostFocus", "txtName.GotFocus"}));
    in.keyStroke(vbKeyTab, vbShiftMask);
    EXPECT_TRUE(form.cmdCancel.hasFocus());
}

TEST_F(FocusTest, SettingTabIndexRenumbersTheOthers) {
    form.cmdOK.setTabIndex(0);
    EXPECT_EQ(form.cmdOK.TabIndex(), 0);
    EXPECT_EQ(form.lblName.TabIndex(), 1);
    EXPECT_EQ(form.txtName.TabIndex(), 2);
    form.Show();
    EXPECT_TRUE(form.cmdOK.hasFocus());
    form.cmdOK.setTabIndex(99); // past the end: the last place
    EXPECT_EQ(form.cmdOK.TabIndex(), static_cast<int>(form.controlsInTabOrder().size()) - 1);
}

TEST_F(FocusTest, SetFocusRaisesFiveWhenTheControlCannotTakeIt) {
    auto expectError5 = [](Control &c) {
        try {
            c.SetFocus();
            ADD_FAILURE() << c.Name() << " took the focus";
        } catch (const vb::Error &e) {
            EXPECT_EQ(e.number(), 5);
            EXPECT_EQ(e.description(), "Invalid procedure call or argument");
        }
    };
    expectError5(form.txtName); // the form is not shown yet
    form.Show();
    form.txtRemarks.setEnabled(false);
    expectError5(form.txtRemarks);
    form.chkDone.setVisible(false);
    expectError5(form.chkDone);
    form.fraOptions.setVisible(false);
    expectError5(form.optAscend);
    form.setEnabled(false);
    expectError5(form.txtName);
}

TEST_F(FocusTest, ValidateCancelKeepsTheFocus) {
    form.Show();
    form.txtName.onValidate = [](bool &Cancel) { Cancel = true; };
    log.lines.clear();
    in.click(form.cmdOK);
    EXPECT_TRUE(form.txtName.hasFocus());
    EXPECT_TRUE(log.lines.empty()); // no focus events, and the button is not clicked
    form.cmdOK.setCausesValidation(false);
    in.click(form.cmdOK);
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"txtName.LostFocus", "cmdOK.GotFocus", "cmdOK.Click"}));
}

TEST_F(FocusTest, DisablingTheFocusedControlPassesTheFocusOn) {
    form.Show();
    form.cmdOK.SetFocus();
    log.lines.clear();
    form.cmdOK.setEnabled(false);
    EXPECT_TRUE(form.cmdCancel.hasFocus());
    EXPECT_EQ(log.lines, (std::vector<std::string>{"cmdOK.LostFocus", "cmdCancel.GotFocus"}));
}

TEST_F(FocusTest, LabelAccessKeyFocusesTheNextControl) {
    form.Show();
    form.cmdOK.SetFocus();
    in.keyStroke(vbKeyA + ('N' - 'A'), vbAltMask);
    EXPECT_TRUE(form.txtName.hasFocus());
}

} // namespace
