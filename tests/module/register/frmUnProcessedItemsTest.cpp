#include "RegisterFixture.h"

#include "forms/MsgBox.h"
#include "module/entry/frmStockVerification.h"
#include "module/register/frmUnProcessedItems.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tqsv2731 {
namespace {

using test::ModuleSession;
using test::SessionValues;

SessionValues total(std::int32_t godown) {
    SessionValues v;
    v.godown = godown;
    v.interfaceId = 1013;
    return v;
}

TEST(frmUnProcessedItemsTest, NewTotalCountIsRefusedWhileTransfersAreUnderWay) {
    ModuleSession s(total(2));
    frmMaster &f = s.m.frmMaster();
    std::vector<std::string> listed;
    std::string ids;
    s.ui.queueAction([&](forms::Input &input) {
        frmUnProcessedItems &d = s.m.frmUnProcessedItems();
        for (int i = 1; i <= d.lvwUnProcessed.ListItems().Count(); ++i) {
            const forms::ListItem &it = d.lvwUnProcessed.ListItems()(i);
            listed.push_back(it.Text() + "|" + it.SubItems(4) + "|" + it.SubItems(5) + "|" +
                             it.SubItems(7));
        }
        ids = d.GetItemIdString();
        input.click(d.cmdOK);
    });
    s.m.strTransactionMode = "";
    f.cmdnew_Click();

    EXPECT_EQ(listed.size(), 5u) << "ST/101's three lines and ST/102's two, at godown 2";
    EXPECT_EQ(s.ui.modalForms(), (std::vector<std::string>{"frmUnProcessedItems"}));
    EXPECT_EQ(s.m.strTransactionMode, "") << "New went no further";
    EXPECT_EQ(f.MousePointer(), 0);
    EXPECT_FALSE(ids.empty());
}

TEST(frmUnProcessedItemsTest, TheListsHeadersKeepTheirBlanks) {
    ModuleSession s(total(2));
    std::vector<std::string> headers;
    s.ui.queueAction([&](forms::Input &input) {
        frmUnProcessedItems &d = s.m.frmUnProcessedItems();
        for (int i = 1; i <= d.lvwUnProcessed.ColumnHeaders().Count(); ++i) {
            headers.push_back(d.lvwUnProcessed.ColumnHeaders()(i).Text());
        }
        input.click(d.cmdOK);
    });
    s.m.frmMaster().cmdnew_Click();
    EXPECT_EQ(headers, (std::vector<std::string>{"Trans No", "Date", "From ", "To",
                                                 "Item Description", "Quantity", "Unit Code",
                                                 "ItemId"}));
}

TEST(frmUnProcessedItemsTest, NoUnprocessedRowsLetTheEntryFormOpen) {
    ModuleSession s(total(1));
    frmMaster &f = s.m.frmMaster();
    s.ui.queueAction([&](forms::Input &input) { input.closeForm(s.m.frmStockVerification()); });
    s.forget();
    f.cmdnew_Click();
    EXPECT_EQ(s.ui.modalForms(), (std::vector<std::string>{"frmStockVerification"}));
    const auto sent = test::moduleStatements(s);
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sent[0], "SELECT vw.*, vi.ItemDescription, u.UnitCode FROM vwQuantityUnProcessed vw,  "
                       "vwItemDescription vi, aItem i, aUnit u WHERE vw.ItemId = vi.ItemId AND "
                       "vi.ItemId = i.ItemId AND i.UnitsId = u.UnitId AND vw.LocationId = 1 AND "
                       "vw.LocationType = 'G'");
    EXPECT_EQ(s.sentHow()[0], "open forward-only read-only");
}

TEST(frmUnProcessedItemsTest, ItemIdsAreJoinedOnceAndAShorterIdInsideALongerOneIsLost) {
    ModuleSession s(total(1));
    s.m.frmMaster();
    // Loaded without the register's rows, the form reports that and lists nothing.
    s.ui.queueAnswer(forms::vbOK);
    frmUnProcessedItems &d = s.m.frmUnProcessedItems();
    EXPECT_EQ(s.ui.boxes().at(0).prompt.find("Error 3704 in Form_Load (frmUnProcessedItems)"), 0u)
        << s.ui.boxes().at(0).prompt;
    for (const char *id : {"112", "7", "12", "7", "3"}) {
        d.lvwUnProcessed.ListItems().Add(0, "", "T").setSubItems(7, id);
    }
    EXPECT_EQ(d.GetItemIdString(), "112, 7, 3");
    d.lvwUnProcessed.ListItems().Clear();
    d.lvwUnProcessed.ListItems().Add(0, "", "T").setSubItems(7, "12");
    EXPECT_EQ(d.GetItemIdString(), "12");
}

TEST(frmUnProcessedItemsTest, PreviewSwapsTheWordInTheUpperCasedPathAndReportsAMissingFile) {
    ModuleSession s(total(1));
    s.m.AppPath = "/opt/Inventory/bin";
    s.m.frmMaster();
    s.ui.queueAnswer(forms::vbOK); // loaded without rows
    frmUnProcessedItems &d = s.m.frmUnProcessedItems();
    d.lvwUnProcessed.ListItems().Add(0, "", "T").setSubItems(7, "4");
    s.ui.queueAnswer(forms::vbOK,
                     "Report File '/OPT/RVLDT/BIN\\Reports\\rptUnProcessedQuantities.rpt' not found");
    s.ui.queueAnswer(forms::vbOK); // the fault desk
    d.cmdPreview_Click();
    EXPECT_EQ(s.ui.boxes()[1].buttons, 16);
    EXPECT_EQ(s.ui.boxes()[2].prompt.find("Error 20504 in CmdPreview_Click (frmUnProcessedItems)"),
              0u);
    EXPECT_EQ(d.crptSelectionFormula, "{vwquantityunprocessed.itemid} IN [4]");
    EXPECT_EQ(d.MousePointer(), 0);
}

} // namespace
} // namespace tqsv2731
