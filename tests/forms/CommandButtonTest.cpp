#include "forms/CommandButton.h"

#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

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
