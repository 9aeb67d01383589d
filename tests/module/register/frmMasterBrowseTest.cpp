#include "RegisterFixture.h"

#include "forms/EventLoop.h"
#include "forms/Keys.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::ModuleSession;

/// Column `col` of every row under the header.
std::vector<std::string> column(const forms::FlexGrid &g, int col) {
    std::vector<std::string> out;
    for (int r = 1; r < g.Rows(); ++r) {
        out.push_back(g.TextMatrix(r, col));
    }
    return out;
}

int indexOf(const forms::ComboBox &cbo, const std::string &text) {
    for (int i = 0; i < cbo.ListCount(); ++i) {
        if (cbo.List(i) == text) {
            return i;
        }
    }
    return -1;
}

TEST(frmMasterSortTest, ANewDirectionSortsNothingUntilAColumnIsChosen) {
    ModuleSession s;
    frmMaster &f = s.m.frmMaster();
    f.cboColNames.setListIndex(indexOf(f.cboColNames, "Remarks"));
    const auto sorted = column(f.flexMaster, 0);
    EXPECT_EQ(sorted, (std::vector<std::string>{"4", "5", "3", "2"}));
    f.optDescend.setValue(true);
    EXPECT_EQ(f.cboColNames.ListIndex(), -1);
    EXPECT_EQ(column(f.flexMaster, 0), sorted);
    f.cboColNames.setListIndex(indexOf(f.cboColNames, "Remarks"));
    EXPECT_EQ(column(f.flexMaster, 0), (std::vector<std::string>{"2", "3", "5", "4"}));
}

class frmMasterSearchTest : public ::testing::Test {
protected:
    void searchOn(const std::string &header) {
        f.cboSearch.setListIndex(indexOf(f.cboSearch, header));
    }
    /// Types the text into the search box key by key, as the user does.
    void type(const std::string &text) {
        ui.queueAction([&, text](forms::Input &input) {
            input.click(f.txtsearch);
            input.typeText(text);
            input.closeForm(f);
        });
        f.Show(forms::vbModal);
    }

    ModuleSession s;
    forms::TestUi &ui = s.ui;
    frmMaster &f = s.m.frmMaster();
};

TEST_F(frmMasterSearchTest, FindsTheFirstRowThatBeginsWithTheText) {
    searchOn("Verification No");
    type("sva4");
    EXPECT_EQ(f.flexMaster.TextMatrix(f.flexMaster.Row(), 1), "SVA4");
    EXPECT_EQ(f.flexMaster.Col(), 0);
    EXPECT_EQ(f.flexMaster.ColSel(), 6);
}

TEST_F(frmMasterSearchTest, TheFirstOfEqualRowsIsFound) {
    searchOn("Verified By");
    type("r");
    EXPECT_EQ(f.flexMaster.Row(), 1);
    EXPECT_EQ(f.flexMaster.TextMatrix(1, 3), "RAHUL MEHTA");
    EXPECT_EQ(f.flexMaster.TextMatrix(2, 3), "RAHUL MEHTA");
}

TEST_F(frmMasterSearchTest, NumbersSortAsTextSoTheSearchMayMiss) {
    s.execute("update loiStockVerificationHeader set svhno = '100' where svhid = 2 and "
              "svhGodownid = 1");
    s.execute("update loiStockVerificationHeader set svhno = '9' where svhid = 3 and "
              "svhGodownid = 1");
    s.execute("update loiStockVerificationHeader set svhno = '80' where svhid = 4 and "
              "svhGodownid = 1");
    s.execute("update loiStockVerificationHeader set svhno = '7' where svhid = 5 and "
              "svhGodownid = 1");
    f.Unload();
    frmMaster &g = s.m.frmMaster();
    g.cboSearch.setListIndex(indexOf(g.cboSearch, "Verification No"));
    ui.queueAction([&](forms::Input &input) {
        input.click(g.txtsearch);
        input.typeText("100");
        input.closeForm(g);
    });
    g.Show(forms::vbModal);
    // In text order 100 comes first, but the halving compares numbers and
    // walks away from it.
    EXPECT_EQ(column(g.flexMaster, 1), (std::vector<std::string>{"100", "7", "80", "9"}));
    EXPECT_EQ(g.flexMaster.Col(), 1) << "no hit: the selection stays as the sort left it";
}

TEST(frmMasterKeysTest, TheGridShowsTheCellUnderThePointerAsItsToolTip) {
    ModuleSession s;
    std::string tip;
    test::showRegister(s, [&](frmMaster &f, forms::Input &input) {
        input.mouseMoveCell(f.flexMaster, 3, 5);
        tip = f.flexMaster.ToolTipText();
    });
    EXPECT_EQ(tip, "Dairy and water monthly count");
}

} // namespace
} // namespace tqsv2731
