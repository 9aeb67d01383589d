#include "forms/EventLoop.h"

#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

struct EventLoopTest : ::testing::Test {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    Input in{s.screen};

    void SetUp() override {
        // Enter moves on as Tab does, the key rule of nearly every form.
        form.txtName.onKeyPress = [this](int &KeyAscii) {
            if (KeyAscii == 13) {
                SendKeys(s.screen, "{TAB}");
                log("handler goes on");
            }
        };
        form.Show();
        log.lines.clear();
    }
};

TEST_F(EventLoopTest, SendKeysRunsAfterTheHandlerHasReturned) {
    in.keyStroke(vbKeyReturn);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"handler goes on", "txtName.LostFocus",
                                                   "cboKind.GotFocus"}));
    EXPECT_FALSE(s.screen.hasQueuedKeys());
}

TEST_F(EventLoopTest, QueuedKeysGoWhereTheFocusIsWhenTheirTurnComes) {
    form.txtName.onKeyPress = [this](int &KeyAscii) {
        if (KeyAscii == 13) {
            SendKeys(s.screen, "x{TAB}y");
            form.txtRemarks.SetFocus();
        }
    };
    in.keyStroke(vbKeyReturn);
    EXPECT_EQ(form.txtRemarks.Text(), "x");
    EXPECT_EQ(form.txtName.Text(), "");
    EXPECT_TRUE(form.cmdOK.hasFocus()); // the "y" went to the button and did nothing
}

TEST_F(EventLoopTest, DoEventsRunsTheQueueInsideTheHandler) {
    form.txtName.onKeyPress = [this](int &KeyAscii) {
        if (KeyAscii == 13) {
            SendKeys(s.screen, "{TAB}");
            DoEvents(s.screen);
            log(form.cboKind.hasFocus() ? "moved already" : "not yet");
        }
    };
    in.keyStroke(vbKeyReturn);
    EXPECT_EQ(log.lines.back(), "moved already");
}

TEST_F(EventLoopTest, KeysQueuedWhileTheQueueRunsWaitForTheNextTurn) {
    // A control that answers every Tab-in with another Tab would loop for ever
    // if the queue ran until empty; each turn runs only what was waiting.
    form.cboKind.onGotFocus = [this] { SendKeys(s.screen, "{TAB}"); };
    SendKeys(s.screen, "{TAB}");
    EXPECT_EQ(in.processQueued(), 1);
    EXPECT_TRUE(form.cboKind.hasFocus());
    EXPECT_EQ(s.screen.queuedKeyCount(), 1U);
    EXPECT_EQ(in.processQueued(), 1);
    EXPECT_TRUE(form.optAscend.hasFocus());
}

TEST(SendKeysTest, ParsesBracedNamesPrefixesAndLiterals) {
    auto keys = parseSendKeys("{Tab}~+{TAB}^d{F3}{+}a");
    ASSERT_EQ(keys.size(), 7U);
    EXPECT_EQ(keys[0].keyCode, vbKeyTab);
    EXPECT_EQ(keys[1], keyStrokeFor(vbKeyReturn));
    EXPECT_EQ(keys[2], (KeyStroke{vbKeyTab, vbShiftMask, 0}));
    EXPECT_EQ(keys[3].character, 4U);
    EXPECT_EQ(keys[4].keyCode, vbKeyF1 + 2);
    EXPECT_EQ(keys[5].character, U'+');
    EXPECT_EQ(keys[6].character, U'a');
    EXPECT_THROW(parseSendKeys("{NOSUCHKEY}"), vb::Error);
    EXPECT_THROW(parseSendKeys("{TAB"), vb::Error);
}

} // namespace
