#include "ScriptedTerminal.h"

#include "hosts/tui/FormFit.h"
#include "hosts/tui/TuiHost.h"

#include "forms/CommandButton.h"
#include "forms/Form.h"
#include "forms/Label.h"
#include "forms/ListView.h"

#include <gtest/gtest.h>

namespace tui::test {
namespace {

/// 20 rows of design: a label on row 1, a list on rows 3 to 12 (header and
/// nine rows), two empty rows, a button on row 15, and four empty rows below.
class Column : public forms::Form {
public:
    explicit Column(forms::Screen &screen) : Form(screen, "frmColumn") {
        Move(0, 0, 3600, 4800);
        lblTitle.setCaption("Title");
        lblTitle.Move(120, 240, 2400, 240);
        lvwRows.Move(120, 720, 3360, 2400);
        cmdClose.setCaption("&Close");
        cmdClose.Move(120, 3600, 1200, 240);
    }
    forms::Label lblTitle{*this, "lblTitle"};
    forms::ListView lvwRows{*this, "lvwRows"};
    forms::CommandButton cmdClose{*this, "cmdClose"};
};

/// The row each design row edge lands on (as CellScale::row gives it).
int rowOf(const CellScale &s, int designRow) {
    return s.row(designRow * 240.0);
}

TEST(FormFitTest, RowsGoWhereTheFormCanSpareThemInOrder) {
    ScriptedTerminal terminal{40, 30};
    TuiHost host{terminal};
    Column form(host.screen());

    auto fits = fitForm(form, 30, 20);
    ASSERT_TRUE(fits);
    EXPECT_TRUE(fits->rowEdges.empty()) << "room enough: nothing packed";

    // Four rows short: the empty rows at the bottom go first, the list keeps all.
    fits = fitForm(form, 30, 16);
    ASSERT_TRUE(fits);
    EXPECT_EQ(rowOf(*fits, 15), 15) << "the button stays where it stood";
    EXPECT_EQ(rowOf(*fits, 20), 16);

    // Five short: then one of the two empty rows between the list and the button.
    fits = fitForm(form, 30, 15);
    ASSERT_TRUE(fits);
    EXPECT_EQ(rowOf(*fits, 13), 13) << "the list ends where it did";
    EXPECT_EQ(rowOf(*fits, 15), 14);

    // Seven short: the list gives its bottom rows, down to the header and three.
    fits = fitForm(form, 30, 13);
    ASSERT_TRUE(fits);
    EXPECT_EQ(rowOf(*fits, 3), 3);
    EXPECT_EQ(rowOf(*fits, 13), 11);
    EXPECT_EQ(rowOf(*fits, 15), 12);

    // Eleven short: the list is down to its four rows; then the last empty rows.
    fits = fitForm(form, 30, 9);
    ASSERT_TRUE(fits);
    EXPECT_EQ(rowOf(*fits, 13) - rowOf(*fits, 3), 1 + packedListRows);
    // At the least: the label, the list's header and three rows, the button.
    EXPECT_EQ(smallestFit(form), (CellSize{27, 6}));
    EXPECT_TRUE(fitForm(form, 27, 6));
    EXPECT_FALSE(fitForm(form, 27, 5));
    EXPECT_FALSE(fitForm(form, 26, 6)) << "no more than a tenth narrower";
}

TEST(FormFitTest, HiddenControlsLeaveTheirRowsFree) {
    ScriptedTerminal terminal{40, 30};
    TuiHost host{terminal};
    Column form(host.screen());
    CellSize all = smallestFit(form);
    form.lblTitle.setVisible(false);
    EXPECT_EQ(smallestFit(form).rows, all.rows - 1);
}

} // namespace
} // namespace tui::test
