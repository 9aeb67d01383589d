// forms::FlexGrid: the flex grid (both the plain and the hierarchical kind the module uses).
#pragma once

#include "forms/Control.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace forms {

// ColAlignment values.
inline constexpr int flexAlignLeftTop = 0;
inline constexpr int flexAlignLeftCenter = 1;
inline constexpr int flexAlignLeftBottom = 2;
inline constexpr int flexAlignCenterTop = 3;
inline constexpr int flexAlignCenterCenter = 4;
inline constexpr int flexAlignCenterBottom = 5;
inline constexpr int flexAlignRightTop = 6;
inline constexpr int flexAlignRightCenter = 7;
inline constexpr int flexAlignRightBottom = 8;
inline constexpr int flexAlignGeneral = 9; // text on the left, numbers on the right

// Sort settings.
inline constexpr int flexSortNone = 0;
inline constexpr int flexSortGenericAscending = 1;
inline constexpr int flexSortGenericDescending = 2;
inline constexpr int flexSortNumericAscending = 3;
inline constexpr int flexSortNumericDescending = 4;
inline constexpr int flexSortStringNoCaseAscending = 5;
inline constexpr int flexSortStringNoCaseDescending = 6;
inline constexpr int flexSortStringAscending = 7;
inline constexpr int flexSortStringDescending = 8;
inline constexpr int flexSortCustom = 9;

// SelectionMode values.
inline constexpr int flexSelectionFree = 0;
inline constexpr int flexSelectionByRow = 1;
inline constexpr int flexSelectionByColumn = 2;

/// A grid of text cells with fixed (heading) rows and columns at the top and
/// left. Rows and columns count from 0, fixed ones included.
///
/// The current cell is (Row, Col); the selection runs from it to (RowSel,
/// ColSel). Setting Row also sets RowSel, setting Col also sets ColSel, as the
/// old grid did, so code that selects a range sets Row and Col first. When the
/// current cell changes, by code or by the user, the grid raises LeaveCell
/// (still on the old cell), EnterCell and RowColChange; when the selection
/// changes it raises SelChange. Setting a value the property has raises
/// nothing.
///
/// Out-of-range rows and columns raise 30009 ("Invalid Row value") and 30010
/// ("Invalid Col value"); removing the last non-fixed row raises 30015.
class FlexGrid : public Control {
public:
    /// A new grid has 2 rows, 2 columns, 1 fixed row and 1 fixed column.
    FlexGrid(Form &form, std::string_view name, int index = -1);
    FlexGrid(Container &container, std::string_view name, int index = -1);

    int Rows() const { return rows_; }
    /// Adds empty rows at the end or removes rows from the end; a current cell
    /// or selection past the end moves to the last row.
    void setRows(int rows);
    int Cols() const { return cols_; }
    void setCols(int cols);
    int FixedRows() const { return fixedRows_; }
    void setFixedRows(int rows);
    int FixedCols() const { return fixedCols_; }
    void setFixedCols(int cols);

    int Row() const { return row_; }
    void setRow(int row);
    int Col() const { return col_; }
    void setCol(int col);
    int RowSel() const { return rowSel_; }
    void setRowSel(int row);
    int ColSel() const { return colSel_; }
    void setColSel(int col);
    /// The first non-fixed row shown. Setting it scrolls; it is kept between
    /// FixedRows and the row that fills the last page (raises 30009 outside).
    int TopRow() const { return topRow_; }
    void setTopRow(int row);
    int LeftCol() const { return leftCol_; }
    void setLeftCol(int col);

    std::string TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, std::string_view text);
    /// The text of the current cell.
    std::string Text() const { return TextMatrix(row_, col_); }
    void setText(std::string_view text) { setTextMatrix(row_, col_, text); }
    /// The cells numbered row by row: index = row * Cols + col.
    std::string TextArray(int index) const;
    void setTextArray(int index, std::string_view text);

    /// Width of a column in twips (960 unless set; -1 sets it back to that).
    int ColWidth(int col) const;
    void setColWidth(int col, int twips);
    /// Height of a row in twips (240 unless set; -1 sets it back to that).
    int RowHeight(int row) const;
    void setRowHeight(int row, int twips);
    /// No row, present or added later, is lower than this (0 unless set);
    /// rows lower than it grow to it. Below 0 raises 380.
    int RowHeightMin() const { return rowHeightMin_; }
    void setRowHeightMin(int twips);
    /// Alignment of a column's cells (flexAlign..., default flexAlignGeneral).
    int ColAlignment(int col) const;
    void setColAlignment(int col, int alignment);

    /// Text and back colour of the current cell. A cell whose colour was never
    /// set reads the grid's ForeColor (or BackColor); the fixed cells read
    /// ForeColorFixed and BackColorFixed.
    Color CellForeColor() const { return foreColorAt(row_, col_); }
    void setCellForeColor(Color c);
    Color CellBackColor() const { return backColorAt(row_, col_); }
    void setCellBackColor(Color c);
    /// Colours of the selected cells.
    Color ForeColorSel() const { return foreColorSel_; }
    void setForeColorSel(Color c) { foreColorSel_ = c; }
    Color BackColorSel() const { return backColorSel_; }
    void setBackColorSel(Color c) { backColorSel_ = c; }
    Color ForeColorFixed() const { return foreColorFixed_; }
    void setForeColorFixed(Color c) { foreColorFixed_ = c; }
    Color BackColorFixed() const { return backColorFixed_; }
    void setBackColorFixed(Color c) { backColorFixed_ = c; }

    /// Sorts whole rows, as the old grid did: the rows from Row to RowSel, or
    /// all non-fixed rows when Row equals RowSel; the keys are the columns
    /// from Col to ColSel, left to right. The settings:
    /// - 1 and 2, generic: two cells that are both numbers (IsNumeric) compare
    ///   as numbers, any other pair as text with letter case ignored;
    /// - 3 and 4, numeric: each cell as its Val;
    /// - 5 and 6, text with letter case ignored;
    /// - 7 and 8, text with letter case respected: character codes in order,
    ///   so "B" comes before "a";
    /// - 9, custom: onCompare decides.
    /// Odd settings ascend, even ones descend. Rows that compare equal keep
    /// their order. The current cell and selection stay where they are (on
    /// whatever row now stands there); no event is raised. 0 does nothing;
    /// other values raise 380.
    void setSort(int how);

    /// Adds a row at the end or before `index`, with the text split at tabs
    /// into the cells from column 0 (extra parts are dropped).
    void AddItem(std::string_view item, int index = -1);
    /// Removes a row. Raises 30015 for the last non-fixed row, 30009 for a
    /// row out of range.
    void RemoveItem(int index);
    /// Empties every cell (text and colours); Rows, Cols and the current cell stay.
    void Clear();

    /// Position and size of the current cell in twips, relative to the grid,
    /// with the grid scrolled to TopRow and LeftCol.
    int CellLeft() const;
    int CellTop() const;
    int CellWidth() const { return ColWidth(col_); }
    int CellHeight() const { return RowHeight(row_); }
    /// The cell under the mouse, as last reported by the host (Input::mouseMoveCell).
    int MouseRow() const { return mouseRow_; }
    int MouseCol() const { return mouseCol_; }

    int SelectionMode() const { return selectionMode_; }
    void setSelectionMode(int mode) { selectionMode_ = mode; }

    /// For hosts: the colours a cell shows (see CellForeColor).
    Color foreColorAt(int row, int col) const;
    Color backColorAt(int row, int col) const;
    /// For hosts: how many non-fixed rows fit under the fixed ones.
    int visibleRows() const;
    /// For hosts: true when the cell lies in the selection range.
    bool isSelected(int row, int col) const;

    std::function<void()> onRowColChange;
    std::function<void()> onSelChange;
    std::function<void()> onEnterCell;
    std::function<void()> onLeaveCell;
    std::function<void()> onScroll;
    std::function<void(int Row1, int Row2, int &Cmp)> onCompare;

protected:
    void defaultKeyDown(int keyCode, int shift) override;

private:
    friend class Input;
    /// The colours set on one cell; a cell never coloured reads the grid's.
    struct CellColours {
        Color foreColor = 0;
        Color backColor = 0;
        bool hasForeColor = false;
        bool hasBackColor = false;
    };
    /// One row: the texts of its Cols cells, and their colours once any of
    /// them is coloured. Rows are held apart, so that adding a row or sorting
    /// moves rows as a whole and never copies a cell; most rows are never
    /// coloured and so carry no colours at all.
    struct GridRow {
        std::vector<std::string> texts;
        std::vector<CellColours> colours; // empty, or one per cell

        explicit GridRow(std::size_t cols) : texts(cols) {}
        void resize(std::size_t cols);
        void clear();
    };

    std::string &text(int row, int col);
    const std::string &text(int row, int col) const;
    CellColours &colours(int row, int col);
    /// The cell's colours, or nullptr when the row has none set.
    const CellColours *coloursOf(int row, int col) const;
    void checkRow(int row) const;
    void checkCol(int col) const;
    void moveTo(int row, int col, int rowSel, int colSel);
    void moveByUser(int row, int col);
    void initCells();
    void resize(int rows, int cols);
    int maxTopRow() const;
    void normalizeScroll();
    int visibleRowsFrom(int top) const;
    void scrollToShow(int row);
    /// A cell of the sorted columns read as a number, once per sort.
    struct NumberKey {
        bool numeric;
        double value;
    };
    /// The key cells of the rows being sorted, side by side: a comparison
    /// reads them here instead of reaching into each row.
    struct SortKeys {
        int firstRow;
        int fromCol;
        int cols;
        std::vector<std::string_view> texts; // empty for the custom sort
        std::vector<NumberKey> numbers;      // empty for the text sorts
        std::size_t slot(int row, int col) const {
            return static_cast<std::size_t>(row - firstRow) * cols + (col - fromCol);
        }
        const NumberKey &at(int row, int col) const {
            static constexpr NumberKey none{false, 0.0};
            return numbers.empty() ? none : numbers[slot(row, col)];
        }
        std::string_view text(int row, int col) const { return texts[slot(row, col)]; }
    };
    SortKeys sortKeys(int how, int first, int last, int fromCol, int toCol) const;
    int compareRows(int how, const SortKeys &keys, int a, int b, int fromCol, int toCol);
    void placeInOrder(int first, const std::vector<int> &order);

    int rows_ = 2;
    int cols_ = 2;
    int fixedRows_ = 1;
    int fixedCols_ = 1;
    int row_ = 1;
    int col_ = 1;
    int rowSel_ = 1;
    int colSel_ = 1;
    int topRow_ = 1;
    int leftCol_ = 1;
    int mouseRow_ = 0;
    int mouseCol_ = 0;
    int selectionMode_ = flexSelectionFree;
    Color foreColorSel_ = vbHighlightText;
    Color backColorSel_ = vbHighlight;
    Color foreColorFixed_ = vbButtonText;
    Color backColorFixed_ = vbButtonFace;
    std::vector<GridRow> rowsHeld_; // one per row, fixed rows included
    std::vector<int> colWidths_;
    std::vector<int> colAlignments_;
    int rowHeightMin_ = 0;
    int newRowHeight() const;
    std::vector<int> rowHeights_;
};

} // namespace forms
