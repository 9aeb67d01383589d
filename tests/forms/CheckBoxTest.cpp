#include "forms/CheckBox.h"

#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

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

} // namespace
