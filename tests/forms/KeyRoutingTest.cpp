#include "SampleForm.h"
#include "forms/EventLoop.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

struct KeyRoutingTest : ::testing::Test {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    Input in{s.screen};

    void SetUp() override {
        form.onKeyDown = [this](int &KeyCode, int Shift) {
            log("Form.KeyDown " + std::to_string(KeyCode) + "/" + std::to_string(Shift));
        };
        form.onKeyPress = [this](int &KeyAscii) {
            log("Form.KeyPress " + std::to_string(KeyAscii));
        };
        form.onKeyUp = [this](int &KeyCode, int) { log("Form.KeyUp " + std::to_string(KeyCode)); };
        form.txtName.onKeyDown = [this](int &KeyCode, int) {
            log("txtName.KeyDown " + std::to_string(KeyCode));
        };
        form.txtName.onKeyPress = [this](int &KeyAscii) {
            log("txtName.KeyPress " + std::to_string(KeyAscii));
        };
        form.txtName.onKeyUp = [this](int &KeyCode, int) {
            log("txtName.KeyUp " + std::to_string(KeyCode));
        };
        form.Show();
        log.lines.clear();
    }
};

TEST_F(KeyRoutingTest, WithoutKeyPreviewOnlyTheControlSeesTheKey) {
    in.typeText("a");
    EXPECT_EQ(log.lines, (std::vector<std::string>{"txtName.KeyDown 65", "txtName.KeyPress 97",
                                                   "txtName.Change a", "txtName.KeyUp 65"}));
}

TEST_F(KeyRoutingTest, KeyPreviewLetsTheFormSeeEachKeyFirst) {
    form.setKeyPreview(true);
    in.typeText("a");
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"Form.KeyDown 65/0", "txtName.KeyDown 65",
                                        "Form.KeyPress 97", "txtName.KeyPress 97",
                                        "txtName.Change a", "Form.KeyUp 65", "txtName.KeyUp 65"}));
}

TEST_F(KeyRoutingTest, FormSettingTheKeyToZeroKeepsItFromTheControl) {
    form.setKeyPreview(true);
    form.onKeyPress = [this](int &KeyAscii) {
        log("Form.KeyPress " + std::to_string(KeyAscii));
        if (KeyAscii == 4) {
            KeyAscii = 0;
        }
    };
    in.keyStroke(vbKeyA + ('D' - 'A'), vbCtrlMask);
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{"Form.KeyDown 68/2", "txtName.KeyDown 68",
                                        "Form.KeyPress 4", "Form.KeyUp 68", "txtName.KeyUp 68"}));
}

TEST_F(KeyRoutingTest, KeyCodeZeroInKeyDownDoesNotStopKeyPress) {
    form.setKeyPreview(true);
    form.onKeyDown = [this](int &KeyCode, int) {
        log("Form.KeyDown " + std::to_string(KeyCode));
        KeyCode = 0;
    };
    in.typeText("b");
    EXPECT_EQ(log.lines, (std::vector<std::string>{"Form.KeyDown 66", "Form.KeyPress 98",
                                                   "txtName.KeyPress 98", "txtName.Change b",
                                                   "Form.KeyUp 66", "txtName.KeyUp 66"}));
}

TEST_F(KeyRoutingTest, EnterClicksTheDefaultButtonWithoutKeyEvents) {
    form.setKeyPreview(true);
    form.cmdOK.setDefault(true);
    in.keyStroke(vbKeyReturn);
    EXPECT_EQ(log.lines, std::vector<std::string>{"cmdOK.Click"});
    EXPECT_TRUE(form.txtName.hasFocus());
}

TEST_F(KeyRoutingTest, EnterWithoutADefaultButtonIsAnOrdinaryKey) {
    in.keyStroke(vbKeyReturn);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"txtName.KeyDown 13", "txtName.KeyPress 13",
                                                   "txtName.KeyUp 13"}));
}

TEST_F(KeyRoutingTest, EnterOnAFocusedButtonClicksThatButton) {
    form.cmdOK.setDefault(true);
    form.cmdCancel.SetFocus();
    log.lines.clear();
    in.keyStroke(vbKeyReturn);
    EXPECT_EQ(log.lines, std::vector<std::string>{"cmdCancel.Click"});
}

TEST_F(KeyRoutingTest, EscapeClicksTheCancelButtonUnlessItIsDisabled) {
    form.cmdCancel.setCancel(true);
    in.keyStroke(vbKeyEscape);
    EXPECT_EQ(log.lines, std::vector<std::string>{"cmdCancel.Click"});
    log.lines.clear();
    form.cmdCancel.setEnabled(false);
    in.keyStroke(vbKeyEscape);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"txtName.KeyDown 27", "txtName.KeyPress 27",
                                                   "txtName.KeyUp 27"}));
}

TEST_F(KeyRoutingTest, AltLetterPressesTheButtonWithThatAccessKey) {
    in.keyStroke(vbKeyA + ('O' - 'A'), vbAltMask);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"txtName.KeyDown 79", "txtName.LostFocus",
                                                   "cmdOK.GotFocus", "cmdOK.Click"}));
    log.lines.clear();
    form.cmdCancel.setEnabled(false); // a disabled button's letter does nothing
    in.keyStroke(vbKeyA + ('C' - 'A'), vbAltMask);
    EXPECT_EQ(log.lines, std::vector<std::string>{});
}

TEST_F(KeyRoutingTest, DisabledControlsAndHiddenFormsRefuseUserInput) {
    form.cmdOK.setEnabled(false);
    EXPECT_FALSE(in.click(form.cmdOK));
    form.fraOptions.setEnabled(false);
    EXPECT_FALSE(in.click(form.optAscend));
    EXPECT_TRUE(log.lines.empty());
    form.cmdOK.setValue(true); // code may still run the routine
    EXPECT_EQ(log.lines, std::vector<std::string>{"cmdOK.Click"});
    form.Hide();
    EXPECT_FALSE(in.keyStroke(vbKeyA));
}

TEST_F(KeyRoutingTest, FormWithNothingFocusedGetsTheKeysItself) {
    form.txtName.setEnabled(false);
    form.cboKind.setEnabled(false);
    form.fraOptions.setEnabled(false);
    form.chkDone.setEnabled(false);
    form.txtRemarks.setEnabled(false);
    form.cmdOK.setEnabled(false);
    form.cmdCancel.setEnabled(false);
    EXPECT_EQ(form.ActiveControl(), nullptr);
    log.lines.clear();
    in.keyStroke(vbKeyF1 + 2);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"Form.KeyDown 114/0", "Form.KeyUp 114"}));
}

TEST(KeyStrokeTest, CharactersOfKeysAndKeysOfCharacters) {
    EXPECT_EQ(keyStrokeFor(vbKeyA + 3, vbCtrlMask).character, 4U);
    EXPECT_EQ(keyStrokeFor(vbKeyReturn, vbCtrlMask).character, 10U);
    EXPECT_EQ(keyStrokeFor(vbKeyA, vbShiftMask).character, U'A');
    EXPECT_EQ(keyStrokeFor(vbKey0 + 1, vbShiftMask).character, U'!');
    EXPECT_EQ(keyStrokeFor(vbKeyF1 + 2).character, 0U);
    EXPECT_EQ(keyStrokeFor(vbKeyA, vbAltMask).character, 0U);
    EXPECT_EQ(keyStrokeForCharacter(U'.').keyCode, 190);
    EXPECT_EQ(keyStrokeForCharacter(U'Q'), (KeyStroke{vbKeyA + 16, vbShiftMask, U'Q'}));
    EXPECT_EQ(accessKeyOf("Ver &good Stock :"), U'G');
    EXPECT_EQ(accessKeyOf("Fish && &Chips"), U'C');
    EXPECT_EQ(accessKeyOf("No key"), 0U);
    EXPECT_EQ(displayCaption("Fish && &Chips"), "Fish & Chips");
}

} // namespace
