#include "forms/FlexGrid.h"

#include "SampleForm.h"
#include "forms/Input.h"

#include <gtest/gtest.h>

using namespace forms;
using namespace forms::test;

namespace {

struct FlexGridTest : ::testing::Test {
    Session s;
    Log log;
    SampleForm form{s.screen, log};
    FlexGrid grid{form, "flexMaster"};

    /// A register-like grid: one fixed row, no fixed column, rows given as tab-joined text.
    void fill(int cols, const std::vector<std::string> &rows) {
        grid.setFixedCols(0);
        grid.setCols(cols);
        grid.setRows(1);
        for (const auto &r : rows) {
            grid.AddItem(r);
        }
    }

    std::vector<std::string> column(int c) {
        std::vector<std::string> out;
        for (int r = grid.FixedRows(); r < grid.Rows(); ++r) {
            out.push_back(grid.TextMatrix(r, c));
        }
        return out;
    }

    void sortOn(int col, int how) {
        grid.setCol(col);
        grid.setColSel(col);
        grid.setSort(how);
    }

    void watchEvents() {
        grid.onLeaveCell = [this] { log("Leave " + cellName()); };
        grid.onEnterCell = [this] { log("Enter " + cellName()); };
        grid.onRowColChange = [this] { log("RowColChange " + cellName()); };
        grid.onSelChange = [this] { log("SelChange"); };
    }
    std::string cellName() { return std::to_string(grid.Row()) + "," + std::to_string(grid.Col()); }
};

TEST_F(FlexGridTest, NewGridHasTheOldDefaults) {
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.Cols(), 2);
    EXPECT_EQ(grid.FixedRows(), 1);
    EXPECT_EQ(grid.FixedCols(), 1);
    EXPECT_EQ(grid.Row(), 1);
    EXPECT_EQ(grid.Col(), 1);
    EXPECT_EQ(grid.ColWidth(0), 960);
    EXPECT_EQ(grid.ColAlignment(1), flexAlignGeneral);
}

TEST_F(FlexGridTest, AddItemSplitsAtTabsAndInsertsAtAnIndex) {
    fill(3, {"1\tA\tx", "2\tB"});
    grid.AddItem("9\tZ\tz\textra", 1);
    EXPECT_EQ(grid.Rows(), 4);
    EXPECT_EQ(column(0), (std::vector<std::string>{"9", "1", "2"}));
    EXPECT_EQ(grid.TextMatrix(3, 2), "");
    EXPECT_EQ(grid.TextArray(1 * 3 + 1), "Z");
}

// The register fills its grid by growing it a row and a column at a time;
// cells already set keep their text and colour through every resize, and
// rows or columns cut off and grown again come back empty.
TEST_F(FlexGridTest, ResizingKeepsTheCellsThatStayAndEmptiesTheOnesRegrown) {
    fill(2, {"1\tA", "2\tB", "3\tC"});
    grid.setRow(2);
    grid.setCol(1);
    grid.setCellForeColor(vbRed);
    grid.setRow(3);
    grid.setCellForeColor(vbBlue);
    grid.setRow(1);

    grid.setCols(3); // a column more: cells keep their rows
    grid.setTextMatrix(3, 2, "c3");
    EXPECT_EQ(column(1), (std::vector<std::string>{"A", "B", "C"}));
    EXPECT_EQ(grid.foreColorAt(2, 1), vbRed);
    EXPECT_EQ(grid.TextArray(3 * 3 + 2), "c3");
    EXPECT_EQ(grid.TextArray(2 * 3 + 1), "B");
    grid.setTextArray(1 * 3 + 2, "c1");
    EXPECT_EQ(grid.TextMatrix(1, 2), "c1");

    grid.setRows(3); // the last row goes, colour and all
    grid.setRows(5);
    EXPECT_EQ(column(1), (std::vector<std::string>{"A", "B", "", ""}));
    EXPECT_EQ(grid.foreColorAt(3, 1), vbWindowText);
    EXPECT_EQ(grid.TextMatrix(3, 2), "");

    grid.AddItem("0\tZ", 1); // rows inserted and removed above take no colour along
    EXPECT_EQ(grid.foreColorAt(3, 1), vbRed);
    EXPECT_EQ(grid.foreColorAt(1, 1), vbWindowText);
    grid.RemoveItem(2);
    EXPECT_EQ(grid.foreColorAt(2, 1), vbRed);
    EXPECT_EQ(grid.TextMatrix(2, 1), "B");

    grid.setCols(1); // columns cut and grown again are empty too
    grid.setCols(3);
    EXPECT_EQ(column(0), (std::vector<std::string>{"0", "2", "", ""}));
    EXPECT_EQ(column(1), (std::vector<std::string>{"", "", "", ""}));
    EXPECT_EQ(grid.foreColorAt(2, 1), vbWindowText);
    EXPECT_EQ(grid.TextMatrix(1, 2), "");
}

TEST_F(FlexGridTest, RemoveItemKeepsTheLastNonFixedRow) {
    fill(2, {"1\tA", "2\tB"});
    grid.setRow(2);
    grid.RemoveItem(2);
    EXPECT_EQ(grid.Rows(), 2);
    EXPECT_EQ(grid.Row(), 1); // the current row moved up with the end of the grid
    try {
        grid.RemoveItem(1);
        FAIL() << "no error";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 30015);
    }
}

TEST_F(FlexGridTest, OutOfRangeCellsRaiseTheGridsErrors) {
    try {
        (void)grid.TextMatrix(2, 0);
        FAIL() << "no error";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 30009);
    }
    try {
        grid.setCol(5);
        FAIL() << "no error";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 30010);
    }
}

TEST_F(FlexGridTest, MovingTheCurrentCellRaisesItsEventsInOrder) {
    fill(3, {"1\tA\tx", "2\tB\ty"});
    grid.setRow(1);
    grid.setCol(0);
    watchEvents();
    grid.setRow(2);
    EXPECT_EQ(log.lines, (std::vector<std::string>{"Leave 1,0", "Enter 2,0", "RowColChange 2,0",
                                                   "SelChange"}));
    log.lines.clear();
    grid.setRow(2); // the same row: nothing
    grid.setColSel(2);
    EXPECT_EQ(log.lines, std::vector<std::string>{"SelChange"});
}

TEST_F(FlexGridTest, SettingRowOrColResetsTheirSelectionEnd) {
    fill(3, {"1\tA\tx", "2\tB\ty", "3\tC\tz"});
    grid.setRow(1);
    grid.setCol(0);
    grid.setRowSel(3);
    grid.setColSel(2);
    EXPECT_TRUE(grid.isSelected(3, 2));
    grid.setRow(2);
    EXPECT_EQ(grid.RowSel(), 2);
    EXPECT_EQ(grid.ColSel(), 2);
    grid.setCol(1);
    EXPECT_EQ(grid.ColSel(), 1);
}

TEST_F(FlexGridTest, GenericSortComparesNumbersAsNumbersAndTextIgnoringCase) {
    fill(2, {"10\tb", "9\tB", "100\ta", "x\tC"});
    sortOn(0, flexSortGenericAscending);
    EXPECT_EQ(column(0), (std::vector<std::string>{"9", "10", "100", "x"}));
    sortOn(0, flexSortGenericDescending);
    EXPECT_EQ(column(0), (std::vector<std::string>{"x", "100", "10", "9"}));
}

TEST_F(FlexGridTest, TextSortsOrderNumbersAsText) {
    fill(1, {"10", "9", "100"});
    sortOn(0, flexSortStringNoCaseAscending);
    EXPECT_EQ(column(0), (std::vector<std::string>{"10", "100", "9"}));
    sortOn(0, flexSortStringNoCaseDescending);
    EXPECT_EQ(column(0), (std::vector<std::string>{"9", "100", "10"}));
}

TEST_F(FlexGridTest, CaseSensitiveSortPutsCapitalsFirstAndKeepsTies) {
    fill(2, {"b\t1", "B\t2", "a\t3", "b\t4"});
    sortOn(0, flexSortStringAscending);
    EXPECT_EQ(column(0), (std::vector<std::string>{"B", "a", "b", "b"}));
    EXPECT_EQ(column(1), (std::vector<std::string>{"2", "3", "1", "4"}));
    sortOn(0, flexSortStringNoCaseAscending);
    EXPECT_EQ(column(1), (std::vector<std::string>{"3", "2", "1", "4"}));
}

TEST_F(FlexGridTest, SortKeysRunFromColToColSel) {
    fill(3, {"x\t2\tb", "x\t1\tc", "a\t9\ta"});
    grid.setCol(0);
    grid.setColSel(1);
    grid.setSort(flexSortGenericAscending);
    EXPECT_EQ(column(2), (std::vector<std::string>{"a", "c", "b"}));
    grid.setCol(2); // one key column
    grid.setColSel(2);
    grid.setSort(flexSortNumericDescending);
    EXPECT_EQ(column(2), (std::vector<std::string>{"a", "c", "b"})); // all Val 0: order kept
}

TEST_F(FlexGridTest, SortTakesOnlyRowToRowSelWhenTheyDiffer) {
    fill(1, {"d", "c", "b", "a"});
    grid.setCol(0);
    grid.setRow(2);
    grid.setRowSel(3);
    grid.setSort(flexSortStringNoCaseAscending);
    EXPECT_EQ(column(0), (std::vector<std::string>{"d", "b", "c", "a"}));
    EXPECT_THROW(grid.setSort(10), vb::Error);
}

// Rows 2 to 4 of five sorted on two key columns, numbers and text mixed: the
// rows outside stay, and each row's cells and colours travel together.
TEST_F(FlexGridTest, SortedRowsTakeTheirColoursAlongAndTheRestStay) {
    fill(3, {"z\t0\tfirst", "b\t10\tred", "B\t9\tplain", "a\tx\tlast kept", "a\t1\tlast"});
    grid.setRow(2);
    grid.setCol(2);
    grid.setCellForeColor(vbRed);
    grid.setCol(0);
    grid.setColSel(1);
    grid.setRow(2);
    grid.setRowSel(4);
    grid.setSort(flexSortGenericAscending);
    EXPECT_EQ(column(2),
              (std::vector<std::string>{"first", "last kept", "plain", "red", "last"}));
    EXPECT_EQ(grid.foreColorAt(4, 2), vbRed);
    EXPECT_EQ(grid.foreColorAt(2, 2), vbWindowText);
    grid.setSort(flexSortNumericDescending);
    EXPECT_EQ(column(2),
              (std::vector<std::string>{"first", "red", "plain", "last kept", "last"}));
    EXPECT_EQ(grid.foreColorAt(2, 2), vbRed);
}

// Orders that move every row at once: one long rotation, then a reversal in
// pairs; each row's other cells and colour arrive with its key.
TEST_F(FlexGridTest, SortMovesWholeRowsWhateverTheOrder) {
    fill(2, {"b\t2", "c\t3", "d\t4", "e\t5", "f\t6", "a\t1"});
    grid.setRow(6);
    grid.setCol(1);
    grid.setCellForeColor(vbRed); // the "a" row
    sortOn(0, flexSortStringNoCaseAscending);
    EXPECT_EQ(column(0), (std::vector<std::string>{"a", "b", "c", "d", "e", "f"}));
    EXPECT_EQ(column(1), (std::vector<std::string>{"1", "2", "3", "4", "5", "6"}));
    EXPECT_EQ(grid.foreColorAt(1, 1), vbRed);
    EXPECT_EQ(grid.foreColorAt(6, 1), vbWindowText);
    sortOn(1, flexSortNumericDescending);
    EXPECT_EQ(column(0), (std::vector<std::string>{"f", "e", "d", "c", "b", "a"}));
    EXPECT_EQ(grid.foreColorAt(6, 1), vbRed);
    EXPECT_EQ(grid.foreColorAt(1, 1), vbWindowText);
}

TEST_F(FlexGridTest, SortRaisesNoEventAndKeepsTheCurrentCell) {
    fill(1, {"b", "a"});
    grid.setRow(2);
    grid.setCol(0);
    watchEvents();
    grid.setSort(flexSortGenericAscending);
    EXPECT_TRUE(log.lines.empty());
    EXPECT_EQ(grid.Row(), 2);
    EXPECT_EQ(grid.Text(), "b");
}

TEST_F(FlexGridTest, CellColoursDefaultToTheGridsAndClearResetsThem) {
    fill(2, {"1\tYes"});
    grid.setRow(1);
    grid.setCol(1);
    EXPECT_EQ(grid.CellForeColor(), vbWindowText);
    EXPECT_EQ(grid.foreColorAt(0, 0), vbButtonText);
    grid.setCellForeColor(vbRed);
    EXPECT_EQ(grid.CellForeColor(), 255U);
    EXPECT_EQ(grid.foreColorAt(1, 0), vbWindowText);
    grid.Clear();
    EXPECT_EQ(grid.CellForeColor(), vbWindowText);
    EXPECT_EQ(grid.TextMatrix(1, 0), "");
    EXPECT_EQ(grid.Rows(), 2);
}

TEST_F(FlexGridTest, TopRowIsKeptToTheLastFullPage) {
    fill(1, {"1", "2", "3", "4", "5", "6"});
    grid.setHeight(240 * 4); // the fixed row and three rows
    grid.setTopRow(6);
    EXPECT_EQ(grid.TopRow(), 4);
    grid.setTopRow(0);
    EXPECT_EQ(grid.TopRow(), 1);
    grid.setTopRow(3);
    grid.setRow(4);
    grid.setCol(0);
    EXPECT_EQ(grid.CellTop(), 240 + 240);
    grid.setColWidth(0, 1500);
    EXPECT_EQ(grid.CellLeft(), 0);
    EXPECT_EQ(grid.CellWidth(), 1500);
}

TEST_F(FlexGridTest, UserClicksAndArrowsMoveTheCellAndScroll) {
    fill(2, {"1\ta", "2\tb", "3\tc", "4\td"});
    grid.setHeight(240 * 3);
    form.Show();
    Input in(s.screen);
    watchEvents();
    grid.onClick = [this] { log("Click " + cellName()); };
    in.clickCell(grid, 2, 1);
    EXPECT_EQ(log.lines.back(), "Click 2,1");
    in.keyStroke(vbKeyDown);
    in.keyStroke(vbKeyDown);
    EXPECT_EQ(grid.Row(), 4);
    EXPECT_EQ(grid.TopRow(), 3);
    in.mouseMoveCell(grid, 1, 0);
    EXPECT_EQ(grid.MouseRow(), 1);
    EXPECT_EQ(grid.MouseCol(), 0);
}

} // namespace

namespace {

TEST_F(FlexGridTest, AMinimumRowHeightRaisesLowRowsAndHoldsForRowsAddedLater) {
    grid.setRows(3);
    grid.setRowHeight(1, 500);
    grid.setRowHeightMin(315);
    EXPECT_EQ(grid.RowHeight(0), 315);
    EXPECT_EQ(grid.RowHeight(1), 500) << "a higher row keeps its height";
    grid.AddItem("x");
    grid.setRows(6);
    EXPECT_EQ(grid.RowHeight(3), 315);
    EXPECT_EQ(grid.RowHeight(5), 315);
    grid.setRowHeight(2, 100);
    EXPECT_EQ(grid.RowHeight(2), 315) << "no row goes below the minimum";
    EXPECT_THROW(grid.setRowHeightMin(-1), vb::Error);
}

} // namespace
