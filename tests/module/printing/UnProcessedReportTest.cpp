#include "frame/ModuleSession.h"

#include "forms/MsgBox.h"
#include "module/register/frmUnProcessedItems.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

namespace fs = std::filesystem;

TEST(UnProcessedReportTest, ThePreviewShowsTheListedItemsFromTheSiblingFolder) {
    test::ModuleSession s({.godown = 2, .interfaceId = 1013});
    // The reports lie in the sibling application's folder: INVENTORY becomes
    // RVLDT in the upper-cased path, which the file system finds whatever
    // its case.
    const fs::path sibling = s.folder.path() / "rvldt" / "reports";
    fs::create_directories(sibling);
    fs::copy_file(fs::path(TEST_DATA_DIR) / ".." / ".." / ".." / ".." / "reports" /
                      "rptUnProcessedQuantities.rpt",
                  sibling / "rptUnProcessedQuantities.rpt");
    s.m.AppPath = (s.folder.path() / "Inventory").string();
    s.m.frmMaster();
    // Loaded here without the register's rows: the fault desk reports the
    // closed recordset, and the rows are added by hand below.
    s.ui.queueAnswer(forms::vbOK);
    frmUnProcessedItems &d = s.m.frmUnProcessedItems();
    const std::size_t boxesAtLoad = s.ui.boxes().size();
    for (const char *id : {"10", "1"}) {
        d.lvwUnProcessed.ListItems().Add(0, "", "T").setSubItems(7, id);
    }
    d.cmdPreview_Click();

    ASSERT_EQ(s.ui.boxes().size(), boxesAtLoad) << s.ui.boxes().back().prompt;
    ASSERT_EQ(s.ui.reportsPreviewed().size(), 1u);
    const forms::ReportPreview &r = s.ui.reportsPreviewed()[0];
    EXPECT_EQ(r.title, "Incomplete Transactions");
    EXPECT_EQ(r.selectionFormula, "{vwquantityunprocessed.itemid} IN [10, 1]");
    EXPECT_EQ(r.reportFile, (sibling / "rptUnProcessedQuantities.rpt").string());
    ASSERT_EQ(r.pages.size(), 1u);
    // Items 1 and 10 are under way at godown 2 (ST/101); item 11 of the same
    // transfer and the shop rows are left out.
    EXPECT_NE(r.pages[0].find("Basmati Rice 5 kg bag"), std::string::npos) << r.pages[0];
    EXPECT_NE(r.pages[0].find("Cola 330 ml can"), std::string::npos) << r.pages[0];
    EXPECT_EQ(r.pages[0].find("ST/102"), std::string::npos) << r.pages[0];
}

} // namespace
} // namespace tqsv2731
