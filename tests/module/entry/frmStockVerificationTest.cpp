#include "EntrySession.h"

#include "forms/Input.h"
#include "forms/MsgBox.h"
#include "module/frame/Module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqsv2731 {
namespace {

const std::vector<std::string> rowsOf(frmStockVerification &f) {
    std::vector<std::string> out;
    for (int i = 1; i <= f.lvwRequest.ListItems().Count(); ++i) {
        out.push_back(f.lvwRequest.ListItems()(i).Text() + " " +
                      f.lvwRequest.ListItems()(i).SubItems(3));
    }
    return out;
}

TEST(EntryLoadTest, ReadsRatesAccountsDepartmentAndUserInThatOrder) {
    test::ModuleSession s;
    s.m.frmMaster();
    s.m.strTransactionMode = "N";
    s.forget();
    frmStockVerification &f = s.m.frmStockVerification();

    const std::vector<std::string> sent = s.sent();
    ASSERT_EQ(sent.size(), 10u);
    EXPECT_EQ(sent[4], "select InventoryID,stocktransfercontrolacc from apackagesettings where "
                       "companyid=1");
    EXPECT_EQ(s.sentHow()[4], "open forward-only read-only");
    EXPECT_EQ(sent[7], "select DepartmentId from agodown where GodownID = 1");
    EXPECT_EQ(sent[9], "select UserName from loUsers where UserId = 1");
    EXPECT_EQ(s.m.lngInventoryAccountId, 1001);
    EXPECT_EQ(s.m.lngStockTransferAccountId, 1002);
    EXPECT_EQ(s.m.lngDepartmentId, 1);
    EXPECT_EQ(s.m.strExchangeRates, "1:-1:");
    EXPECT_EQ(f.txtVby.Text(), "RAHUL MEHTA");
    EXPECT_FALSE(f.chkConfirm.Visible());
    EXPECT_EQ(f.lvwRequest.ColumnHeaders()(14).Position(), 13);
    EXPECT_EQ(f.lvwRequest.ColumnHeaders()(4).Width(), 4800) << "the layout table decides";
    EXPECT_EQ(f.cboSearch.ItemData(5), 6);
}

TEST(EntryLoadTest, TotalInterfaceHidesTheBadStockUnlessTheLayoutTableShowsIt) {
    test::SessionValues total;
    total.interfaceId = 1013;
    test::ModuleSession s(total);
    s.m.frmMaster();
    EXPECT_TRUE(s.m.frmStockVerification().chkConfirm.Visible());
    // The layout is applied after the widths are cleared, so its rows win.
    EXPECT_EQ(s.m.frmStockVerification().lvwRequest.ColumnHeaders()(7).Width(), 1400);
    s.m.frmStockVerification().Unload();

    s.execute("delete from alistviewdetails");
    frmStockVerification &f = s.m.frmStockVerification();
    EXPECT_EQ(f.lvwRequest.ColumnHeaders()(7).Width(), 0);
    EXPECT_EQ(f.lvwRequest.ColumnHeaders()(8).Width(), 0);
    EXPECT_EQ(f.lvwRequest.ColumnHeaders()(4).Width(), 10760);
}

TEST(EntryLoadTest, AFailureEndsTheLoadWhereItStandsAndIsReported) {
    test::ModuleSession s;
    s.m.lngInventoryAccountId = 77;
    // Without the register there is no screen palette: the second step fails.
    s.ui.queueAnswer(forms::vbOK);
    frmStockVerification &f = s.m.frmStockVerification();
    EXPECT_TRUE(f.Loaded());
    EXPECT_EQ(f.cboColNames.ListCount(), 0);
    EXPECT_EQ(s.m.lngInventoryAccountId, 77);
    ASSERT_EQ(s.faultLog().size(), 1u);
    EXPECT_NE(s.faultLog()[0].find("Form_Load"), std::string::npos);
}

TEST(EntryListTest, RemovingARowAsksWithoutTheTitleAndRenumbers) {
    test::EntrySession e;
    frmStockVerification &f = e.entry();
    e.addRow({"Basmati Rice 5 kg bag", "147", "147", "2", "2", "1"});
    e.addRow({"Toor Dal 1 kg", "45.5", "45", "0.75", "0.75", "2"});
    e.addRow({"Green Tea 25 bags", "66", "66", "3", "3", "4"});
    f.lvwRequest.ListItems()(2).setSelected(true);

    e.s.ui.queueAnswer(forms::vbNo);
    f.mnuDelete_Click();
    EXPECT_EQ(f.lvwRequest.ListItems().Count(), 3);
    e.s.ui.queueAnswer(forms::vbYes);
    f.mnuDelete_Click();

    const auto &box = e.s.ui.boxes().back();
    EXPECT_EQ(box.prompt, "Do you want to remove" + std::string(22, ' ') + "\r\nToor Dal 1 kg?");
    EXPECT_EQ(box.buttons, 324);
    EXPECT_EQ(box.title, "stockverify");
    EXPECT_EQ(rowsOf(f),
              (std::vector<std::string>{"1 Basmati Rice 5 kg bag", "2 Green Tea 25 bags"}));
    EXPECT_FALSE(e.s.m.blnEntryChanged);
}

TEST(EntryListTest, PopupOffersOnlyAddOnAnEmptyListAndNothingWhenLocked) {
    test::EntrySession e;
    frmStockVerification &f = e.entry();
    f.Show();
    forms::Input input(e.s.screen);
    e.s.ui.queuePopupChoice("");
    ASSERT_TRUE(input.rightClick(f.lvwRequest));
    EXPECT_TRUE(f.mnuadd.Enabled());
    EXPECT_FALSE(f.mnuEdit.Enabled());
    EXPECT_FALSE(f.mnuDelete.Enabled());

    // The odd rule: the entry whose id is 1005 loses "&Add" for good.
    e.s.m.strTransactionMode = "E";
    e.s.m.lngVerificationId = 1005;
    e.addRow({"Toor Dal 1 kg", "45.5", "45", "0.75", "0.75", "2"});
    e.s.ui.queuePopupChoice("");
    input.rightClick(f.lvwRequest);
    EXPECT_FALSE(f.mnuadd.Enabled());
    EXPECT_TRUE(f.mnuEdit.Enabled());

    f.cmdOK.setEnabled(false);
    input.rightClick(f.lvwRequest);
    EXPECT_EQ(e.s.ui.pendingActions(), 0u);
    EXPECT_TRUE(e.s.ui.failures().empty()) << "no popup on a locked entry";
}

TEST(EntryListTest, KeysOpenTheDetailFormAddingOrChangingAndDeleteWorksWhenLocked) {
    test::EntrySession e;
    frmStockVerification &f = e.entry();
    f.Show();
    forms::Input input(e.s.screen);
    const auto closeDetail = [&e] {
        e.s.ui.queueAction([&e](forms::Input &in) { in.closeForm(*e.s.screen.ActiveForm()); });
    };
    f.lvwRequest.SetFocus();
    closeDetail();
    input.keyStroke(forms::vbKeyReturn);
    EXPECT_EQ(e.s.m.strDetailMode, "N") << "Enter on an empty list adds";

    e.addRow({"Basmati Rice 5 kg bag", "147", "147", "2", "2", "1"});
    e.addRow({"Toor Dal 1 kg", "45.5", "45", "0.75", "0.75", "2"});
    f.lvwRequest.ListItems()(2).setSelected(true);
    closeDetail();
    input.keyStroke(forms::vbKeyReturn);
    EXPECT_EQ(e.s.m.strDetailMode, "E");
    EXPECT_EQ(f.intSelectedItem, 2);
    closeDetail();
    input.keyStroke(forms::vbKeyReturn, forms::vbCtrlMask);
    EXPECT_EQ(e.s.m.strDetailMode, "N") << "Ctrl+Enter adds while rows stand";
    EXPECT_EQ(e.s.ui.modalForms().size(), 3u);

    f.cmdOK.setEnabled(false);
    input.keyStroke(forms::vbKeyReturn);
    EXPECT_EQ(e.s.ui.modalForms().size(), 3u);
    e.s.ui.queueAnswer(forms::vbYes);
    input.keyStroke(forms::vbKeyDelete);
    EXPECT_EQ(f.lvwRequest.ListItems().Count(), 1);
}

TEST(EntryListTest, ClosingAsksOnlyAfterAChangeAndYesSavesOrStays) {
    test::EntrySession e;
    frmStockVerification &f = e.entry();
    f.Show();
    EXPECT_EQ(f.Tag(), "loaded");
    e.s.m.blnEntryChanged = true;
    e.s.ui.queueAnswer(forms::vbCancel, "Save Changes?");
    EXPECT_FALSE(f.Unload());
    EXPECT_EQ(e.s.ui.boxes().back().buttons, 67);
    EXPECT_EQ(e.s.ui.boxes().back().title, "Stock Verification");

    // Yes runs the save, which stops on the empty list: the form stays.
    e.s.ui.queueAnswer(forms::vbYes, "Save Changes?");
    e.s.ui.queueAnswer(forms::vbOK, "Atleast one detail needed");
    EXPECT_FALSE(f.Unload());
    e.s.ui.queueAnswer(forms::vbNo, "Save Changes?");
    EXPECT_TRUE(f.Unload());
    EXPECT_TRUE(e.s.ui.failures().empty());
}

TEST(EntryListTest, ClickingARowPutsItsFiguresInTheToolTips) {
    test::EntrySession e;
    e.addRow({"Basmati Rice 5 kg bag", "1234.5", "", "2", "abc", "1"});
    forms::ListItem &row = e.entry().lvwRequest.ListItems()(1);
    e.entry().lvwRequest_ItemClick(row);
    EXPECT_EQ(row.ListSubItems(3).ToolTipText(), "Basmati Rice 5 kg bag");
    EXPECT_EQ(row.ListSubItems(4).ToolTipText(), "1,234.500");
    EXPECT_EQ(row.ListSubItems(5).ToolTipText(), "");
    EXPECT_EQ(row.ListSubItems(6).ToolTipText(), "2.000");
    EXPECT_EQ(row.ListSubItems(7).ToolTipText(), "abc");
}

} // namespace
} // namespace tqsv2731
