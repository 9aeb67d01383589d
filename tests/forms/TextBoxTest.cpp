#include "forms/TextBox.h"

#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

struct TextBoxTest : ::testing::Test {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    TextBox &txt = form.txtName;
    Input in{s.screen};
};

TEST_F(TextBoxTest, SettingTextRaisesChangeOnlyWhenItDiffers) {
    txt.setText("ab");
    txt.setText("ab");
    txt.setText("");
    EXPECT_EQ(log.lines, (std::vector<std::string>{"txtName.Change ab", "txtName.Change "}));
}

TEST_F(TextBoxTest, CodeIsNotLimitedByMaxLengthButTypingIs) {
    txt.setText("1234567");
    EXPECT_EQ(txt.Text(), "1234567");
    txt.setText("");
    form.Show();
    txt.SetFocus();
    int presses = 0;
    txt.onKeyPress = [&](int &) { ++presses; };
    in.typeText("abcdefg");
    EXPECT_EQ(txt.Text(), "abcde");
    EXPECT_EQ(presses, 7); // KeyPress still fires for the refused keys
}

TEST_F(TextBoxTest, TypedCharacterReplacesTheSelectionWithinMaxLength) {
    form.Show();
    txt.SetFocus();
    txt.setText("abcde");
    txt.setSelStart(1);
    txt.setSelLength(3);
    EXPECT_EQ(txt.SelText(), "bcd");
    in.typeText("X");
    EXPECT_EQ(txt.Text(), "aXe");
    EXPECT_EQ(txt.SelStart(), 2);
}

TEST_F(TextBoxTest, KeyPressHandlerCanDropOrChangeTheKey) {
    form.Show();
    txt.SetFocus();
    txt.onKeyPress = [](int &KeyAscii) {
        if (KeyAscii == '\'') {
            KeyAscii = 0;
        } else if (KeyAscii == 'a') {
            KeyAscii = 'A';
        }
    };
    in.typeText("a'b");
    EXPECT_EQ(txt.Text(), "Ab");
}

TEST_F(TextBoxTest, BackspaceDeleteAndCaretKeys) {
    form.Show();
    txt.SetFocus();
    in.typeText("abcd");
    in.keyStroke(vbKeyBack);
    EXPECT_EQ(txt.Text(), "abc");
    in.keyStroke(vbKeyHome);
    in.keyStroke(vbKeyDelete);
    EXPECT_EQ(txt.Text(), "bc");
    in.keyStroke(vbKeyEnd);
    in.keyStroke(vbKeyLeft);
    in.typeText("Z");
    EXPECT_EQ(txt.Text(), "bZc");
}

TEST_F(TextBoxTest, EnterAndControlCharactersNeverEnterTheText) {
    form.Show();
    txt.SetFocus();
    in.typeText("ab");
    in.keyStroke(vbKeyReturn);
    in.keyStroke(vbKeyA, vbCtrlMask);
    EXPECT_EQ(txt.Text(), "ab");
}

TEST_F(TextBoxTest, LockedBoxRaisesKeysButKeepsItsText) {
    form.Show();
    txt.SetFocus();
    txt.setText("ab");
    txt.setLocked(true);
    int presses = 0;
    txt.onKeyPress = [&](int &) { ++presses; };
    in.typeText("c");
    in.keyStroke(vbKeyBack);
    EXPECT_EQ(txt.Text(), "ab");
    EXPECT_EQ(presses, 2);
}

TEST_F(TextBoxTest, LengthsCountCharactersNotBytes) {
    form.Show();
    txt.SetFocus();
    in.typeText("çé€");
    EXPECT_EQ(txt.Text(), "çé€");
    EXPECT_EQ(txt.SelStart(), 3);
    in.typeText("abc");
    EXPECT_EQ(txt.Text(), "çé€ab");
}

TEST_F(TextBoxTest, SelectionPropertiesClampAndRefuseNegatives) {
    txt.setText("abc");
    txt.setSelStart(10);
    EXPECT_EQ(txt.SelStart(), 3);
    txt.setSelStart(0);
    txt.setSelLength(10);
    EXPECT_EQ(txt.SelLength(), 3);
    EXPECT_THROW(txt.setSelStart(-1), vb::Error);
    txt.setText("xyz");
    EXPECT_EQ(txt.SelStart(), 0);
    EXPECT_EQ(txt.SelLength(), 0);
}

} // namespace
