#include "forms/Form.h"

#include "SampleForm.h"
#include "forms/FormSlot.h"
#include "forms/Input.h"
#include "forms/Menu.h"
#include "forms/MsgBox.h"

#include <gtest/gtest.h>

#include <memory>

using namespace forms;
using namespace forms::test;

namespace {

/// Two forms of a module, each held in a slot, as the module holds its forms.
struct Module {
    Session s;
    Log log;
    FormSlot<SampleForm> main{
        [this] { return std::make_unique<SampleForm>(s.screen, log, "frmMain"); }};
    FormSlot<SampleForm> entry{
        [this] { return std::make_unique<SampleForm>(s.screen, log, "frmEntry"); }};
};

TEST(FormTest, ModalShowReturnsAfterTheFormIsUnloaded) {
    Module m;
    SampleForm &f = m.main.get();
    f.cmdCancel.onClick = [&] {
        f.Unload();
        m.log("after Unload"); // the handler goes on after its form is gone
    };
    m.s.ui.queueAction([&](Input &in) { in.click(f.cmdCancel); });
    f.Show(vbModal);
    m.log("Show returned");
    EXPECT_FALSE(f.Loaded());
    EXPECT_FALSE(f.Visible());
    EXPECT_EQ(m.log.lines.back(), "Show returned");
    EXPECT_EQ(*(m.log.lines.end() - 2), "after Unload");
    EXPECT_EQ(m.s.screen.ActiveForm(), nullptr);
}

TEST(FormTest, AFormHandedItsDataBeforeLoadingIsTheOneThatLoads) {
    Module m;
    SampleForm &first = m.entry.unloaded();
    first.setTag("rows");
    EXPECT_FALSE(first.Loaded());
    EXPECT_TRUE(m.log.lines.empty()) << "no Form_Load yet";
    EXPECT_EQ(&m.entry.unloaded(), &first);
    EXPECT_EQ(&m.entry.get(), &first);
    EXPECT_EQ(m.log.lines, (std::vector<std::string>{"frmEntry.Load"}));
    EXPECT_EQ(first.Tag(), "rows");

    // After an Unload the next form is a fresh one, with nothing handed over.
    first.Unload();
    SampleForm &second = m.entry.unloaded();
    EXPECT_FALSE(second.LoadedOnce());
    EXPECT_EQ(second.Tag(), "");
    second.Show(vbModeless);
    EXPECT_TRUE(second.Loaded());
    EXPECT_EQ(&m.entry.get(), &second);
}

TEST(FormTest, NestedModalFormsReturnInOrderAndReactivateTheOwner) {
    Module m;
    SampleForm &main = m.main.get();
    main.cmdOK.onClick = [&] {
        m.entry.get().Show(vbModal, &main);
        m.log("entry closed");
    };
    m.s.ui.queueAction([&](Input &in) { in.click(main.cmdOK); });
    m.s.ui.queueAction([&](Input &in) { in.closeForm(*m.entry.peek()); });
    m.s.ui.queueAction([&](Input &in) { in.closeForm(main); });
    main.Show(vbModal);
    EXPECT_EQ(m.s.ui.modalForms(), (std::vector<std::string>{"frmMain", "frmEntry"}));
    auto at = std::find(m.log.lines.begin(), m.log.lines.end(), "frmEntry.Unload");
    ASSERT_NE(at, m.log.lines.end());
    EXPECT_EQ(*(at + 1), "frmMain.Activate"); // the owner is active again before Show returns
    EXPECT_EQ(*(at + 2), "entry closed");
}

TEST(FormTest, QueryUnloadCanCancelAndKnowsTheCloseBox) {
    Module m;
    SampleForm &f = m.main.get();
    int mode = -1;
    f.onQueryUnload = [&](int &Cancel, int UnloadMode) {
        mode = UnloadMode;
        Cancel = f.txtName.Text().empty() ? 1 : 0;
    };
    f.Show();
    Input in(m.s.screen);
    in.closeForm(f);
    EXPECT_EQ(mode, vbFormControlMenu);
    EXPECT_TRUE(f.Loaded());
    f.txtName.setText("x");
    EXPECT_TRUE(f.Unload());
    EXPECT_EQ(mode, vbFormCode);
    EXPECT_FALSE(f.Loaded());
}

TEST(FormTest, SlotLoadsOnFirstTouchAndFreshAfterUnload) {
    Module m;
    EXPECT_EQ(m.entry.peek(), nullptr);
    SampleForm &first = m.entry.get();
    EXPECT_EQ(m.log.lines, std::vector<std::string>{"frmEntry.Load"});
    first.txtName.setText("typed");
    EXPECT_EQ(&m.entry.get(), &first); // a loaded form is touched, not reloaded
    first.Unload();
    EXPECT_EQ(m.entry.peek(), &first); // kept until the next touch
    SampleForm &second = m.entry.get();
    EXPECT_EQ(second.txtName.Text(), "");
    EXPECT_EQ(m.entry.retiredCount(), 0U);
}

TEST(FormTest, SlotKeepsAFormWhoseHandlerIsStillRunning) {
    Module m;
    SampleForm &f = m.entry.get();
    f.Show();
    std::string seen;
    f.cmdOK.onClick = [&] {
        f.Unload();
        SampleForm &fresh = m.entry.get(); // touched again inside the old form's handler
        fresh.txtName.setText("new");
        seen = f.Name() + "/" + f.cmdOK.Name(); // the old form is still there
    };
    f.cmdOK.setValue(true);
    EXPECT_EQ(seen, "frmEntry/cmdOK");
    EXPECT_EQ(m.entry.retiredCount(), 1U);
    m.entry.get().Unload();
    (void)m.entry.get();
    EXPECT_EQ(m.entry.retiredCount(), 0U); // freed once no handler of it runs
}

TEST(FormTest, FailedFormLoadLeavesTheFormUnloaded) {
    Session s;
    Log log;
    SampleForm f(s.screen, log);
    f.onLoad = [&] {
        EXPECT_TRUE(f.Loaded());
        throw vb::Error::standard(13);
    };
    EXPECT_THROW(f.Load(), vb::Error);
    EXPECT_FALSE(f.Loaded());
}

TEST(FormTest, ShowingModallyTwiceIsError400) {
    Module m;
    SampleForm &f = m.main.get();
    f.Show();
    try {
        f.Show(vbModal);
        FAIL() << "no error";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 400);
    }
}

TEST(FormTest, InputReachesOnlyTheTopModalForm) {
    Module m;
    SampleForm &main = m.main.get();
    bool clickedBelow = true;
    main.cmdOK.onClick = [&] { m.entry.get().Show(vbModal, &main); };
    main.cmdCancel.onClick = [&] { clickedBelow = true; };
    m.s.ui.queueAction([&](Input &in) { in.click(main.cmdOK); });
    m.s.ui.queueAction([&](Input &in) {
        clickedBelow = false;
        EXPECT_FALSE(in.click(main.cmdCancel));
        in.closeForm(*m.entry.peek());
    });
    m.s.ui.queueAction([&](Input &in) { in.closeForm(main); });
    main.Show(vbModal);
    EXPECT_FALSE(clickedBelow);
}

TEST(FormTest, PopupMenuRunsTheChosenItemBeforeReturning) {
    Session s;
    Log log;
    SampleForm f(s.screen, log);
    Menu mnuPopup(f, "mnuPopup");
    Menu mnuadd(mnuPopup, "mnuadd");
    Menu mnuDelete(mnuPopup, "mnuDelete");
    mnuadd.onClick = [&] { log("mnuadd.Click"); };
    f.Show();
    s.ui.queuePopupChoice("mnuadd");
    s.ui.queuePopupChoice("");
    f.PopupMenu(mnuPopup);
    log("after PopupMenu");
    f.PopupMenu(mnuPopup);
    EXPECT_EQ(log.lines.back(), "after PopupMenu");
    EXPECT_EQ(*(log.lines.end() - 2), "mnuadd.Click");
    mnuDelete.setEnabled(false);
    s.ui.queuePopupChoice("mnuDelete");
    EXPECT_THROW(f.PopupMenu(mnuPopup), ScriptFailure);
}

TEST(TestUiTest, WatchdogEndsALoopThatNeverCloses) {
    Session s{TestUi(5)};
    Log log;
    SampleForm f(s.screen, log);
    for (int i = 0; i < 10; ++i) {
        s.ui.queueAction([&](Input &in) { in.click(f.cmdOK); });
    }
    EXPECT_THROW(f.Show(vbModal), ScriptFailure);
    ASSERT_EQ(s.ui.failures().size(), 1U);
    EXPECT_NE(s.ui.failures()[0].find("watchdog"), std::string::npos);
}

TEST(TestUiTest, ModalLoopWithNothingQueuedFails) {
    Session s;
    Log log;
    SampleForm f(s.screen, log);
    EXPECT_THROW(f.Show(vbModal), ScriptFailure);
}

TEST(TestUiTest, UnexpectedMessageBoxIsRecordedEvenWhenSwallowed) {
    Session s;
    try {
        MsgBox(s.screen, "Save Changes?", 67, "Stock");
    } catch (const ScriptFailure &) {
        // a module handler could not catch this, but a test harness might
    }
    ASSERT_EQ(s.ui.failures().size(), 1U);
    EXPECT_NE(s.ui.failures()[0].find("Save Changes?"), std::string::npos);
}

TEST(MsgBoxTest, AnswersAreRecordedAndCheckedAgainstTheStyle) {
    Session s;
    s.screen.setAppTitle("tqsv2731");
    s.ui.queueAnswer(vbNo, "Do you want to remove?");
    s.ui.queueAnswer(vbOK);
    s.ui.queueAnswer(vbYes);
    EXPECT_EQ(MsgBox(s.screen, "Do you want to remove?", 324), vbNo);
    EXPECT_EQ(MsgBox(s.screen, "Entry Posted, Cannot Modify", 64, "Stock"), vbOK);
    EXPECT_THROW(MsgBox(s.screen, "OK only", vbOKOnly), vb::Error); // Yes is not offered
    ASSERT_EQ(s.ui.boxes().size(), 3U);
    EXPECT_EQ(s.ui.boxes()[0].title, "tqsv2731");
    EXPECT_EQ(s.ui.boxes()[1].title, "Stock");
}

TEST(MsgBoxTest, StyleHelpersSplitTheStyleNumber) {
    EXPECT_EQ(msgBoxAnswers(67), (std::vector<int>{vbYes, vbNo, vbCancel}));
    EXPECT_EQ(msgBoxDefaultAnswer(324), vbNo);
    EXPECT_EQ(msgBoxDefaultAnswer(4), vbYes);
    EXPECT_EQ(msgBoxEscapeAnswer(4), 0);
    EXPECT_EQ(msgBoxEscapeAnswer(67), vbCancel);
    EXPECT_EQ(msgBoxIcon(276), vbCritical);
    EXPECT_EQ(msgBoxIcon(324), vbInformation);
}

TEST(ScreenTest, MousePointerChangesReachTheHost) {
    Session s;
    Log log;
    SampleForm f(s.screen, log);
    f.Show();
    s.screen.setMousePointer(vbHourglass);
    s.screen.setMousePointer(vbDefault);
    f.setMousePointer(vbHourglass);
    EXPECT_EQ(s.screen.effectivePointer(), vbHourglass);
    f.setMousePointer(vbDefault);
    EXPECT_EQ(s.ui.pointerHistory(), (std::vector<int>{11, 0, 11, 0}));
}

} // namespace
