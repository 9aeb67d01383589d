// The expiry grid of the detail form, which the configuration keeps hidden: its routines called directly.
#include "frame/GridCells.h"
#include "frame/ModuleSession.h"

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

struct ExpiryPanel {
    ExpiryPanel() {
        s.m.frmMaster();
        s.m.strDetailMode = "N";
        form().Show();
    }
    frmStockVerificationDetail &form() { return s.m.frmStockVerificationDetail(); }
    forms::FlexGrid &grid() { return form().flxexpiry; }
    Rows cells(const forms::FlexGrid &g, int lastCol) { return test::gridCells(g, lastCol); }

    test::ModuleSession s;
};

TEST(ExpiryGridTest, FillListsDatesInOrderAndAddsToWhatTheGridHeld) {
    ExpiryPanel p;
    std::int32_t item = 1;
    p.form().FillExpirydates(item);
    const Rows once{{"1", "24/05/2027", "10.000", "", "", "1", "10.000"},
                    {"2", "06/07/2027", "120.000", "", "", "1", "120.000"},
                    {"3", "14/10/2027", "20.000", "", "", "1", "20.000"}};
    EXPECT_EQ(p.cells(p.grid(), 6), once);
    EXPECT_FALSE(p.form().blnExpiryRowOpen);
    // A second load starts in the last row, not on a cleared grid.
    p.form().FillExpirydates(item);
    EXPECT_EQ(p.grid().Rows(), 6);
    EXPECT_EQ(p.grid().TextMatrix(2, 1), "06/07/2027");
    EXPECT_EQ(p.grid().TextMatrix(3, 1), "24/05/2027");
}

TEST(ExpiryGridTest, AnItemWithoutDatesGetsOneOpenRowOfTheProcessDate) {
    ExpiryPanel p;
    std::int32_t item = 12;
    p.form().FillExpirydates(item);
    EXPECT_EQ(p.cells(p.grid(), 2), (Rows{{"1", "22/11/2026", ""}}));
    EXPECT_TRUE(p.form().blnExpiryRowOpen);
}

TEST(ExpiryGridTest, ChecksDatesUntitledAndQuantitiesButNeverABlankDate) {
    ExpiryPanel p;
    p.grid().setVisible(true);
    p.grid().setRows(3);
    p.grid().setTextMatrix(1, 1, "31/12/2027");
    p.grid().setTextMatrix(1, 2, "5.000");
    p.grid().setTextMatrix(2, 1, "31/02/2027");
    p.grid().setTextMatrix(2, 2, "2.000");
    p.s.ui.queueAnswer(forms::vbOK);
    bool valid = true;
    p.form().ChkExpiryDate(valid);
    EXPECT_FALSE(valid);
    ASSERT_EQ(p.s.ui.boxes().size(), 1u);
    EXPECT_EQ(p.s.ui.boxes()[0].prompt, "Enter Valid Date For Expiry");
    EXPECT_EQ(p.s.ui.boxes()[0].buttons, 64);

    bool error = false;
    p.grid().setTextMatrix(2, 1, "");
    p.form().ErrorInExpiryFlex(error);
    EXPECT_FALSE(error) << "a blank date with a quantity passes";

    p.grid().setTextMatrix(2, 1, " 31/12/2027");
    p.s.ui.queueAnswer(forms::vbOK);
    p.form().ErrorInExpiryFlex(error);
    EXPECT_TRUE(error);
    EXPECT_EQ(p.s.ui.boxes().back().prompt, "This Expiry Date is already entered");
    EXPECT_EQ(p.grid().Row(), 2);

    error = false;
    p.grid().setTextMatrix(2, 2, "0.000");
    p.s.ui.queueAnswer(forms::vbOK);
    p.form().ErrorInExpiryFlex(error);
    EXPECT_TRUE(error);
    EXPECT_EQ(p.s.ui.boxes().back().prompt, "Invalid Quantity");
    EXPECT_EQ(p.grid().Col(), 2);
}

TEST(ExpiryGridTest, AClearedQuantityStaysUntilEnterWritesTheZero) {
    ExpiryPanel p;
    std::int32_t item = 1;
    p.form().FillExpirydates(item);
    p.grid().setVisible(true);
    p.form().intExpiryRow = 2;
    p.form().intExpiryCol = 2;
    p.grid().setRow(2);
    p.grid().setCol(2);
    p.form().txtexpiryqty.setText("7");
    EXPECT_EQ(p.grid().TextMatrix(2, 2), "7.000");
    p.form().txtexpiryqty.setText("");
    EXPECT_EQ(p.grid().TextMatrix(2, 2), "7.000");
    int enter = forms::vbKeyReturn;
    p.form().txtexpiryqty_KeyDown(enter, 0);
    EXPECT_EQ(p.grid().TextMatrix(2, 2), "0.000");
    EXPECT_EQ(p.form().intExpiryRow, 3) << "on to the next row";
    double total = 0;
    p.form().GetExpiryQty(total);
    EXPECT_DOUBLE_EQ(total, 30);
}

TEST(ExpiryGridTest, UpdateStoresOnlyAShownGridWithTheQuantityTwiceAndTheItem) {
    ExpiryPanel p;
    forms::FlexGrid &stored = p.s.m.frmStockVerification().flxexpiry;
    std::int32_t item = 1;
    p.form().FillExpirydates(item);
    p.form().UpdateexpiryList(1);
    EXPECT_FALSE(p.form().blnExpiryListSaved);
    EXPECT_EQ(stored.Rows(), 1);

    p.grid().setVisible(true);
    p.form().UpdateexpiryList(1);
    p.form().UpdateexpiryList(1);
    EXPECT_TRUE(p.form().blnExpiryListSaved);
    EXPECT_EQ(p.cells(stored, 5),
              (Rows{{"1", "24/05/2027", "10.000", "", "10.000", "1"},
                    {"2", "06/07/2027", "120.000", "", "120.000", "1"},
                    {"3", "14/10/2027", "20.000", "", "20.000", "1"}}));
}

} // namespace
} // namespace tqsv2731
