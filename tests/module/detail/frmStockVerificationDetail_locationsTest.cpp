// The location grid of the detail form, which the configuration keeps hidden: its routines called directly.
#include "frame/GridCells.h"
#include "frame/ModuleSession.h"

#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqsv2731 {
namespace {

using test::Rows;

/// The detail form of a new row, shown above the entry form, with the
/// location panel wished for as a site that counts by location would.
struct LocationPanel {
    LocationPanel() {
        s.m.frmMaster();
        s.m.strDetailMode = "N";
        form().Show();
        form().blnShowLocations = true;
    }
    frmStockVerificationDetail &form() { return s.m.frmStockVerificationDetail(); }
    forms::FlexGrid &grid() { return form().flxLocations; }
    Rows cells(const forms::FlexGrid &g, int lastCol) { return test::gridCells(g, lastCol); }

    test::ModuleSession s;
};

TEST(LocationGridTest, FillKeepsNegativeBalancesAndEveryRowTakesTheEditorsHeight) {
    LocationPanel p;
    std::int32_t item = 9;
    p.form().FillLocationDetails(item);
    // RACK A2 has run out and does not show; RACK B1 went below zero and does.
    EXPECT_EQ(p.cells(p.grid(), 7), (Rows{{"1", "RACK A1", "24", "1", "", "24", "9", "24.000"},
                                          {"2", "RACK B1", "-4", "3", "", "-4", "9", "-4.000"}}));
    EXPECT_TRUE(p.grid().Visible());
    EXPECT_EQ(p.grid().TextMatrix(0, 2), "Quantity");
    EXPECT_EQ(p.grid().RowHeight(2), 315) << "a row added after the layout";
    p.grid().AddItem("");
    EXPECT_EQ(p.grid().RowHeight(3), 315);
}

TEST(LocationGridTest, DeletingTheOnlyRowEmptiesItsNameAndQuantityAndKeepsTheRest) {
    LocationPanel p;
    std::int32_t item = 12;
    p.form().FillLocationDetails(item);
    ASSERT_EQ(p.grid().Rows(), 2);
    p.grid().setRow(1);
    p.form().intLocationRow = 1;
    std::string flex = "L";
    p.form().DeleteSelectedRow(flex);
    EXPECT_EQ(p.cells(p.grid(), 7), (Rows{{"1", "", "", "3", "", "15", "12", "15.000"}}));
    EXPECT_EQ(p.grid().Col(), 0);
    EXPECT_EQ(p.grid().ColSel(), 0);
}

TEST(LocationGridTest, TheDeleteKeyAsksAndYesRemovesTheRowAndRenumbers) {
    LocationPanel p;
    std::int32_t item = 9;
    p.form().FillLocationDetails(item);
    p.grid().setRow(1);
    p.form().intLocationRow = 1;
    p.s.ui.queueAnswer(forms::vbNo);
    int key = forms::vbKeyDelete;
    p.form().flxLocations_KeyDown(key, 0);
    EXPECT_EQ(p.grid().Rows(), 3);
    p.s.ui.queueAnswer(forms::vbYes);
    p.form().flxLocations_KeyDown(key, 0);
    ASSERT_EQ(p.s.ui.boxes().size(), 2u);
    EXPECT_EQ(p.s.ui.boxes()[1].prompt, "Are you sure to delete the selected row.  ");
    EXPECT_EQ(p.s.ui.boxes()[1].buttons, 36);
    EXPECT_EQ(p.cells(p.grid(), 3), (Rows{{"1", "RACK B1", "-4", "3"}}));
}

TEST(LocationGridTest, UpdateReplacesTheItemsBlockAndRetrieveReadsItBack) {
    LocationPanel p;
    forms::FlexGrid &stored = p.s.m.frmStockVerification().flxLocations;
    std::int32_t item = 9;
    p.form().FillLocationDetails(item);
    p.form().UpdateLocationList("9");
    p.form().UpdateLocationList("9"); // the second store replaces the first
    EXPECT_EQ(p.cells(stored, 6), (Rows{{"1", "RACK A1", "24", "1", "", "24", "9"},
                                        {"2", "RACK B1", "-4", "3", "", "-4", "9"}}));

    forms::ListView &list = p.s.m.frmStockVerification().lvwRequest;
    forms::ListItem &row = list.ListItems().Add(0, "", "1");
    row.setSubItems(8, "9");
    row.setSelected(true);
    p.grid().setTextMatrix(1, 2, "100");
    p.form().RetrieveLocationList();
    EXPECT_EQ(p.cells(p.grid(), 5), (Rows{{"1", "RACK A1", "24", "1", "", "24"},
                                          {"2", "RACK B1", "-4", "3", "", "-4"}}));
    double total = 0;
    p.form().GetLocationAmount(total);
    EXPECT_DOUBLE_EQ(total, 20);
}

TEST(LocationGridTest, TheEditorKeepsBothQuantityColumnsInStepAndRefusesAMinus) {
    LocationPanel p;
    std::int32_t item = 9;
    p.form().FillLocationDetails(item);
    p.form().intLocationRow = 2;
    p.form().intLocationCol = 2;
    p.form().txtLocationQuantity.setText("7.5");
    EXPECT_EQ(p.grid().TextMatrix(2, 2), "7.500");
    EXPECT_EQ(p.grid().TextMatrix(2, 5), "7.500");
    int minus = '-';
    p.form().txtLocationQuantity_KeyPress(minus);
    EXPECT_EQ(minus, 0);
}

} // namespace
} // namespace tqsv2731
