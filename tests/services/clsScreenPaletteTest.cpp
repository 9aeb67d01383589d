#include "services/clsScreenPalette.h"

#include "ServiceFixture.h"
#include "TestForm.h"

namespace servicetest {
namespace {

class ScreenPaletteTest : public ServiceTest {
protected:
    void apply() { ScreenPalette::clsScreenPalette(context).ApplyScreenPalette(form); }
    TestForm form{screen};
};

TEST_F(ScreenPaletteTest, ColoursTheFormAndEachControlByKind) {
    adocon.Execute("insert into aScreenPalette values (2, 1, 2, 3, 4, 5, 6, -2147483640, 'S', 8)");
    context.companyId = 2;
    apply();
    const std::vector<std::pair<forms::Color, forms::Color>> expected{
        {form.BackColor(), 1},
        {form.ForeColor(), 2},
        {form.lblNo.BackColor(), 1},
        {form.chkConfirm.ForeColor(), 2},
        {form.optAscend.BackColor(), 1},
        {form.fraBrowse.BackColor(), 1},
        {form.txtno.BackColor(), 3},
        {form.txtno.ForeColor(), 4},
        {form.cboItem.BackColor(), 3},
        {form.lvwRequest.ForeColor(), 4},
        {form.cmdOK.BackColor(), 5},
        {form.cmdOK.ForeColor(), 2},
        {form.flexMaster.BackColor(), 6},
        {form.flexMaster.ForeColor(), forms::vbWindowText}, // stored negative
    };
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(expected[i].first, expected[i].second) << "case " << i;
    }
}

TEST_F(ScreenPaletteTest, TheDemoCompanyHasItsPaletteAnotherTheSystemColours) {
    apply();
    EXPECT_EQ(form.BackColor(), 0xF0F0F0u);
    EXPECT_EQ(form.cmdOK.BackColor(), 0xE0E0E0u);
    context.companyId = 7;
    apply();
    EXPECT_EQ(form.BackColor(), forms::vbButtonFace);
    EXPECT_EQ(form.txtno.BackColor(), forms::vbWindowBackground);
}

TEST_F(ScreenPaletteTest, AFailingReadLeavesTheColoursAndRaises) {
    form.txtno.setBackColor(forms::vbRed);
    ScreenPalette::clsScreenPalette service(context);
    adocon.Close();
    EXPECT_EQ(errorOf([&] { service.ApplyScreenPalette(form); }).number(), 3709);
    EXPECT_EQ(form.txtno.BackColor(), forms::vbRed);
}

} // namespace
} // namespace servicetest
