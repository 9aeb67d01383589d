// The older barcode dialog that nothing opens, driven directly.
#include "frame/ModuleSession.h"

#include "forms/MsgBox.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/detail/frmscanBc.h"
#include "module/frame/Module.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

struct ScanDialog {
    ScanDialog() {
        s.m.frmMaster();
        s.m.strDetailMode = "N";
        detail().Show();
        // The combo must already hold the item: this dialog only selects it.
        detail().cboItem.AddItem("Basmati Rice 5 kg bag");
        detail().cboItem.setItemData(detail().cboItem.NewIndex(), 1);
        detail().cboItem.AddItem("Toor Dal 1 kg");
        detail().cboItem.setItemData(detail().cboItem.NewIndex(), 2);
        scan().Show();
    }
    frmStockVerificationDetail &detail() { return s.m.frmStockVerificationDetail(); }
    frmscanBc &scan() { return s.m.frmscanBc(); }
    void enter(const std::string &text) {
        scan().txtBarcode.setText(text);
        int key = 13;
        scan().txtBarcode_KeyPress(key);
    }

    test::ModuleSession s;
};

TEST(ScanDialogTest, AnInactivePackingBarcodeStillSelectsItsItemAndClosesTheDialog) {
    ScanDialog d;
    d.enter(" 8900000000128 "); // item 1's packing, no longer active
    EXPECT_EQ(d.detail().cboItem.ItemData(d.detail().cboItem.ListIndex()), 1);
    EXPECT_TRUE(d.s.ui.boxes().empty());
    EXPECT_FALSE(d.scan().Visible()) << "the dialog unloads; nothing is accepted";
}

TEST(ScanDialogTest, AnItemCodeSelectsTheItemAndTheDialogStays) {
    ScanDialog d;
    d.enter("GRO000002");
    EXPECT_EQ(d.detail().cboItem.ItemData(d.detail().cboItem.ListIndex()), 2);
    EXPECT_TRUE(d.scan().Visible());
}

TEST(ScanDialogTest, AnUnknownCodeSaysScanValidBarcodeWhateverTheSetting) {
    ScanDialog d;
    d.s.ui.queueAnswer(forms::vbOK);
    d.enter("NOSUCH");
    ASSERT_EQ(d.s.ui.boxes().size(), 1u);
    EXPECT_EQ(d.s.ui.boxes()[0].prompt, "Scan valid barcode");
    EXPECT_EQ(d.s.ui.boxes()[0].buttons, 64);
    d.s.execute("update apackagesettings set AllowItemCodeDuplication = 1");
    d.s.ui.queueAnswer(forms::vbOK);
    d.enter("GRO000002");
    EXPECT_EQ(d.s.ui.boxes().back().prompt, "Scan valid barcode");
}

TEST(ScanDialogTest, WhereItemCodesRepeatOnlyDigitsCanBeTyped) {
    ScanDialog d;
    int letter = 'A';
    d.scan().txtBarcode_KeyPress(letter);
    EXPECT_EQ(letter, 'A');
    d.s.execute("update apackagesettings set AllowItemCodeDuplication = 1");
    d.scan().txtBarcode_KeyPress(letter);
    EXPECT_EQ(letter, 0);
    int apostrophe = '\'';
    d.s.execute("update apackagesettings set AllowItemCodeDuplication = 0");
    d.scan().txtBarcode_KeyPress(apostrophe);
    EXPECT_EQ(apostrophe, '\'') << "unlike the detail form, the apostrophe passes";
}

} // namespace
} // namespace tqsv2731
