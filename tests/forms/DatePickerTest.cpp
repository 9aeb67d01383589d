#include "forms/DatePicker.h"

#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

TEST(DatePickerTest, ChangeOnlyForAnotherDateAndArrowsStepADay) {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    DatePicker dtp{form, "dtpExpiry"};
    std::vector<double> changes;
    dtp.onChange = [&] { changes.push_back(dtp.Value().serial); };
    dtp.setValue(vb::DateSerial(2024, 3, 1) + 0.75); // the time of day is dropped
    dtp.setValue(vb::DateSerial(2024, 3, 1));
    ASSERT_EQ(changes.size(), 1U);
    EXPECT_EQ(dtp.Value(), vb::DateSerial(2024, 3, 1));
    form.Show();
    Input in(s.screen);
    ASSERT_TRUE(in.setDate(dtp, vb::DateSerial(2024, 2, 28)));
    in.keyStroke(vbKeyUp);
    EXPECT_EQ(dtp.Value(), vb::DateSerial(2024, 2, 29));
    EXPECT_EQ(changes.size(), 3U);
}

} // namespace
