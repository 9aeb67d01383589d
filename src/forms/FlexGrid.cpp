#include "forms/FlexGrid.h"

#include "forms/Errors.h"
#include "forms/Keys.h"

#include "vb/Conversion.h"

#include <algorithm>
#include <cctype>
#include <numeric>

namespace forms {

namespace {

constexpr int defaultColWidth = 960;
constexpr int defaultRowHeight = 240;

/// ASCII letters only, as tolower does in the C locale and for the single
/// bytes of UTF-8 text; inline, since a sort asks it millions of times.
unsigned char lowerAscii(unsigned char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<unsigned char>(c - 'A' + 'a') : c;
}

int compareText(std::string_view a, std::string_view b, bool ignoreCase) {
    std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        auto x = static_cast<unsigned char>(a[i]);
        auto y = static_cast<unsigned char>(b[i]);
        if (ignoreCase) {
            x = lowerAscii(x);
            y = lowerAscii(y);
        }
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

int compareNumbers(double a, double b) {
    return a < b ? -1 : (a > b ? 1 : 0);
}

} // namespace

FlexGrid::FlexGrid(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::FlexGrid, name, index) {
    initCells();
}

FlexGrid::FlexGrid(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::FlexGrid, name, index) {
    initCells();
}

void FlexGrid::initCells() {
    rowsHeld_.assign(static_cast<std::size_t>(rows_), GridRow(static_cast<std::size_t>(cols_)));
    colWidths_.assign(cols_, defaultColWidth);
    colAlignments_.assign(cols_, flexAlignGeneral);
    rowHeights_.assign(rows_, newRowHeight());
}

void FlexGrid::GridRow::resize(std::size_t cols) {
    texts.resize(cols);
    if (!colours.empty()) {
        colours.resize(cols);
    }
}

void FlexGrid::GridRow::clear() {
    for (std::string &t : texts) {
        t.clear();
    }
    colours.clear();
}

std::string &FlexGrid::text(int row, int col) {
    return rowsHeld_[static_cast<std::size_t>(row)].texts[static_cast<std::size_t>(col)];
}

const std::string &FlexGrid::text(int row, int col) const {
    return rowsHeld_[static_cast<std::size_t>(row)].texts[static_cast<std::size_t>(col)];
}

FlexGrid::CellColours &FlexGrid::colours(int row, int col) {
    GridRow &r = rowsHeld_[static_cast<std::size_t>(row)];
    if (r.colours.empty()) {
        r.colours.resize(r.texts.size());
    }
    return r.colours[static_cast<std::size_t>(col)];
}

const FlexGrid::CellColours *FlexGrid::coloursOf(int row, int col) const {
    const GridRow &r = rowsHeld_[static_cast<std::size_t>(row)];
    return r.colours.empty() ? nullptr : &r.colours[static_cast<std::size_t>(col)];
}

void FlexGrid::checkRow(int row) const {
    if (row < 0 || row >= rows_) {
        throw errors::invalidRow();
    }
}

void FlexGrid::checkCol(int col) const {
    if (col < 0 || col >= cols_) {
        throw errors::invalidCol();
    }
}

void FlexGrid::resize(int rows, int cols) {
    // A grid filled row by row grows one row at a time: the rows held move as
    // a whole when the list of rows grows, their cells stay where they are.
    if (rows < rows_) {
        rowsHeld_.erase(rowsHeld_.begin() + rows, rowsHeld_.end());
    }
    while (static_cast<int>(rowsHeld_.size()) < rows) {
        rowsHeld_.emplace_back(static_cast<std::size_t>(cols));
    }
    if (cols != cols_) {
        for (GridRow &row : rowsHeld_) {
            row.resize(static_cast<std::size_t>(cols));
        }
    }
    rows_ = rows;
    cols_ = cols;
    colWidths_.resize(cols, defaultColWidth);
    colAlignments_.resize(cols, flexAlignGeneral);
    rowHeights_.resize(rows, newRowHeight());
}

void FlexGrid::setRows(int rows) {
    if (rows < fixedRows_ || rows < 0) {
        throw errors::invalidRow();
    }
    resize(rows, cols_);
    normalizeScroll();
    int last = std::max(0, rows - 1);
    if (row_ > last || rowSel_ > last) {
        moveTo(std::min(row_, last), col_, std::min(rowSel_, last), colSel_);
    }
}

void FlexGrid::setCols(int cols) {
    if (cols < fixedCols_ || cols < 0) {
        throw errors::invalidCol();
    }
    resize(rows_, cols);
    normalizeScroll();
    int last = std::max(0, cols - 1);
    if (col_ > last || colSel_ > last) {
        moveTo(row_, std::min(col_, last), rowSel_, std::min(colSel_, last));
    }
}

void FlexGrid::setFixedRows(int rows) {
    if (rows < 0 || rows > rows_) {
        throw errors::invalidRow();
    }
    fixedRows_ = rows;
    topRow_ = rows; // a new heading scrolls the grid home
    normalizeScroll();
}

void FlexGrid::setFixedCols(int cols) {
    if (cols < 0 || cols > cols_) {
        throw errors::invalidCol();
    }
    fixedCols_ = cols;
    leftCol_ = cols;
    normalizeScroll();
}

void FlexGrid::normalizeScroll() {
    topRow_ = std::clamp(topRow_, fixedRows_, std::max(fixedRows_, rows_ - 1));
    leftCol_ = std::clamp(leftCol_, fixedCols_, std::max(fixedCols_, cols_ - 1));
}

void FlexGrid::moveTo(int row, int col, int rowSel, int colSel) {
    bool cellMoves = row != row_ || col != col_;
    bool selectionMoves = cellMoves || rowSel != rowSel_ || colSel != colSel_;
    if (cellMoves) {
        raise(onLeaveCell);
    }
    row_ = row;
    col_ = col;
    rowSel_ = rowSel;
    colSel_ = colSel;
    if (cellMoves) {
        raise(onEnterCell);
        raise(onRowColChange);
    }
    if (selectionMoves) {
        raise(onSelChange);
    }
}

void FlexGrid::setRow(int row) {
    checkRow(row);
    moveTo(row, col_, row, colSel_);
}

void FlexGrid::setCol(int col) {
    checkCol(col);
    moveTo(row_, col, rowSel_, col);
}

void FlexGrid::setRowSel(int row) {
    checkRow(row);
    moveTo(row_, col_, row, colSel_);
}

void FlexGrid::setColSel(int col) {
    checkCol(col);
    moveTo(row_, col_, rowSel_, col);
}

int FlexGrid::maxTopRow() const {
    // The old grid scrolls no further than to show the last page full.
    int avail = Height();
    for (int r = 0; r < fixedRows_; ++r) {
        avail -= rowHeights_[r];
    }
    int top = rows_ - 1;
    while (top > fixedRows_ && avail - rowHeights_[top] - rowHeights_[top - 1] >= 0) {
        avail -= rowHeights_[top];
        --top;
    }
    return std::max(top, std::min(fixedRows_, rows_ - 1));
}

void FlexGrid::setTopRow(int row) {
    checkRow(row);
    int top = std::clamp(row, std::min(fixedRows_, rows_ - 1), maxTopRow());
    if (top != topRow_) {
        topRow_ = top;
        raise(onScroll);
    }
}

void FlexGrid::setLeftCol(int col) {
    checkCol(col);
    int left = std::max(col, std::min(fixedCols_, cols_ - 1));
    if (left != leftCol_) {
        leftCol_ = left;
        raise(onScroll);
    }
}

std::string FlexGrid::TextMatrix(int row, int col) const {
    checkRow(row);
    checkCol(col);
    return text(row, col);
}

void FlexGrid::setTextMatrix(int row, int col, std::string_view text) {
    checkRow(row);
    checkCol(col);
    this->text(row, col) = text;
}

std::string FlexGrid::TextArray(int index) const {
    if (index < 0 || index >= rows_ * cols_) {
        throw errors::invalidArrayIndex();
    }
    return text(index / cols_, index % cols_);
}

void FlexGrid::setTextArray(int index, std::string_view text) {
    if (index < 0 || index >= rows_ * cols_) {
        throw errors::invalidArrayIndex();
    }
    this->text(index / cols_, index % cols_) = text;
}

int FlexGrid::ColWidth(int col) const {
    checkCol(col);
    return colWidths_[col];
}

void FlexGrid::setColWidth(int col, int twips) {
    checkCol(col);
    if (twips < -1) {
        throw errors::invalidPropertyValue();
    }
    colWidths_[col] = twips == -1 ? defaultColWidth : twips;
}

int FlexGrid::newRowHeight() const {
    return std::max(defaultRowHeight, rowHeightMin_);
}

void FlexGrid::setRowHeightMin(int twips) {
    if (twips < 0)
        throw errors::invalidPropertyValue();
    rowHeightMin_ = twips;
    for (int &height : rowHeights_)
        height = std::max(height, rowHeightMin_);
}

int FlexGrid::RowHeight(int row) const {
    checkRow(row);
    return rowHeights_[row];
}

void FlexGrid::setRowHeight(int row, int twips) {
    checkRow(row);
    if (twips < -1) {
        throw errors::invalidPropertyValue();
    }
    rowHeights_[row] = std::max(twips == -1 ? defaultRowHeight : twips, rowHeightMin_);
}

int FlexGrid::ColAlignment(int col) const {
    checkCol(col);
    return colAlignments_[col];
}

void FlexGrid::setColAlignment(int col, int alignment) {
    checkCol(col);
    if (alignment < flexAlignLeftTop || alignment > flexAlignGeneral) {
        throw errors::invalidPropertyValue();
    }
    colAlignments_[col] = alignment;
}

void FlexGrid::setCellForeColor(Color c) {
    checkRow(row_);
    checkCol(col_);
    CellColours &colour = colours(row_, col_);
    colour.foreColor = c;
    colour.hasForeColor = true;
}

void FlexGrid::setCellBackColor(Color c) {
    checkRow(row_);
    checkCol(col_);
    CellColours &colour = colours(row_, col_);
    colour.backColor = c;
    colour.hasBackColor = true;
}

Color FlexGrid::foreColorAt(int row, int col) const {
    checkRow(row);
    checkCol(col);
    if (const CellColours *c = coloursOf(row, col); c && c->hasForeColor) {
        return c->foreColor;
    }
    return row < fixedRows_ || col < fixedCols_ ? foreColorFixed_ : ForeColor();
}

Color FlexGrid::backColorAt(int row, int col) const {
    checkRow(row);
    checkCol(col);
    if (const CellColours *c = coloursOf(row, col); c && c->hasBackColor) {
        return c->backColor;
    }
    return row < fixedRows_ || col < fixedCols_ ? backColorFixed_ : BackColor();
}

int FlexGrid::compareRows(int how, const SortKeys &keys, int a, int b, int fromCol,
                          int toCol) {
    if (how == flexSortCustom) {
        int cmp = 0;
        raise(onCompare, a, b, cmp);
        return cmp;
    }
    for (int c = fromCol; c <= toCol; ++c) {
        const std::string_view x = keys.text(a, c);
        const std::string_view y = keys.text(b, c);
        const NumberKey &nx = keys.at(a, c);
        const NumberKey &ny = keys.at(b, c);
        int cmp = 0;
        switch (how) {
        case flexSortGenericAscending:
        case flexSortGenericDescending:
            cmp = nx.numeric && ny.numeric ? compareNumbers(nx.value, ny.value)
                                           : compareText(x, y, true);
            break;
        case flexSortNumericAscending:
        case flexSortNumericDescending:
            cmp = compareNumbers(nx.value, ny.value);
            break;
        case flexSortStringNoCaseAscending:
        case flexSortStringNoCaseDescending:
            cmp = compareText(x, y, true);
            break;
        default:
            cmp = compareText(x, y, false);
            break;
        }
        if (cmp != 0) {
            return how % 2 == 0 ? -cmp : cmp;
        }
    }
    return 0;
}

FlexGrid::SortKeys FlexGrid::sortKeys(int how, int first, int last, int fromCol,
                                      int toCol) const {
    SortKeys keys{first, fromCol, toCol - fromCol + 1, {}, {}};
    if (how == flexSortCustom) {
        return keys; // the handler reads the cells itself
    }
    const std::size_t count = static_cast<std::size_t>(last - first + 1) * keys.cols;
    keys.texts.reserve(count);
    for (int r = first; r <= last; ++r) {
        for (int c = fromCol; c <= toCol; ++c) {
            keys.texts.push_back(text(r, c));
        }
    }
    const bool generic = how == flexSortGenericAscending || how == flexSortGenericDescending;
    const bool numeric = how == flexSortNumericAscending || how == flexSortNumericDescending;
    if (!generic && !numeric) {
        return keys;
    }
    // Each cell is read as a number once, not at every comparison of a sort.
    keys.numbers.reserve(count);
    for (std::string_view cellText : keys.texts) {
        const bool isNumber = !generic || vb::IsNumeric(cellText);
        keys.numbers.push_back({isNumber, isNumber ? vb::Val(cellText) : 0.0});
    }
    return keys;
}

void FlexGrid::setSort(int how) {
    if (how < flexSortNone || how > flexSortCustom) {
        throw errors::invalidPropertyValue();
    }
    if (how == flexSortNone || rows_ <= fixedRows_) {
        return;
    }
    int first = fixedRows_;
    int last = rows_ - 1;
    if (row_ != rowSel_) {
        first = std::max(fixedRows_, std::min(row_, rowSel_));
        last = std::max(row_, rowSel_);
    }
    int fromCol = std::min(col_, colSel_);
    int toCol = std::max(col_, colSel_);
    const SortKeys keys = sortKeys(how, first, last, fromCol, toCol);
    std::vector<int> order(static_cast<std::size_t>(last - first + 1));
    std::iota(order.begin(), order.end(), first);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        return compareRows(how, keys, a, b, fromCol, toCol) < 0;
    });
    // The rows move, their texts and colours with them: nothing is copied.
    // Row heights are no part of the cells: they stay with the row numbers.
    placeInOrder(first, order);
}

// Row first + i takes the row that stood at order[i], one cycle of the
// permutation at a time, so that only one row is ever held aside.
void FlexGrid::placeInOrder(int first, const std::vector<int> &order) {
    std::vector<bool> placed(order.size(), false);
    for (std::size_t i = 0; i < order.size(); ++i) {
        if (placed[i]) {
            continue;
        }
        GridRow held = std::move(rowsHeld_[first + i]);
        std::size_t at = i;
        for (;;) {
            placed[at] = true;
            const auto from = static_cast<std::size_t>(order[at] - first);
            if (from == i) {
                rowsHeld_[first + at] = std::move(held);
                break;
            }
            rowsHeld_[first + at] = std::move(rowsHeld_[first + from]);
            at = from;
        }
    }
}

void FlexGrid::AddItem(std::string_view item, int index) {
    if (index < -1 || index > rows_) {
        throw errors::invalidRow();
    }
    int at = index == -1 ? rows_ : index;
    GridRow row(static_cast<std::size_t>(cols_));
    std::size_t start = 0;
    for (int c = 0; c < cols_ && start <= item.size(); ++c) {
        std::size_t tab = item.find('\t', start);
        std::size_t end = tab == std::string_view::npos ? item.size() : tab;
        row.texts[static_cast<std::size_t>(c)] = item.substr(start, end - start);
        if (tab == std::string_view::npos) {
            break;
        }
        start = tab + 1;
    }
    rowsHeld_.insert(rowsHeld_.begin() + at, std::move(row));
    rowHeights_.insert(rowHeights_.begin() + at, newRowHeight());
    ++rows_;
    normalizeScroll();
}

void FlexGrid::RemoveItem(int index) {
    checkRow(index);
    if (index < fixedRows_) {
        throw errors::invalidRow();
    }
    if (rows_ - fixedRows_ <= 1) {
        throw errors::lastNonFixedRow();
    }
    rowsHeld_.erase(rowsHeld_.begin() + index);
    rowHeights_.erase(rowHeights_.begin() + index);
    --rows_;
    normalizeScroll();
    if (row_ >= rows_ || rowSel_ >= rows_) {
        moveTo(std::min(row_, rows_ - 1), col_, std::min(rowSel_, rows_ - 1), colSel_);
    }
}

void FlexGrid::Clear() {
    for (GridRow &row : rowsHeld_) {
        row.clear();
    }
}

int FlexGrid::CellLeft() const {
    int x = 0;
    for (int c = 0; c < std::min(col_, fixedCols_); ++c) {
        x += colWidths_[c];
    }
    if (col_ >= fixedCols_) {
        for (int c = leftCol_; c < col_; ++c) {
            x += colWidths_[c];
        }
        for (int c = col_; c < leftCol_; ++c) {
            x -= colWidths_[c];
        }
    }
    return x;
}

int FlexGrid::CellTop() const {
    int y = 0;
    for (int r = 0; r < std::min(row_, fixedRows_); ++r) {
        y += rowHeights_[r];
    }
    if (row_ >= fixedRows_) {
        for (int r = topRow_; r < row_; ++r) {
            y += rowHeights_[r];
        }
        for (int r = row_; r < topRow_; ++r) {
            y -= rowHeights_[r];
        }
    }
    return y;
}

int FlexGrid::visibleRows() const {
    return visibleRowsFrom(topRow_);
}

int FlexGrid::visibleRowsFrom(int top) const {
    int avail = Height();
    for (int r = 0; r < fixedRows_; ++r) {
        avail -= rowHeights_[r];
    }
    int n = 0;
    for (int r = top; r < rows_ && avail >= rowHeights_[r]; ++r) {
        avail -= rowHeights_[r];
        ++n;
    }
    return std::max(1, n);
}

bool FlexGrid::isSelected(int row, int col) const {
    return row >= std::min(row_, rowSel_) && row <= std::max(row_, rowSel_) &&
           col >= std::min(col_, colSel_) && col <= std::max(col_, colSel_);
}

void FlexGrid::scrollToShow(int row) {
    if (row < fixedRows_) {
        return;
    }
    int top = topRow_;
    if (row < top) {
        top = row;
    } else {
        while (top < row && row >= top + visibleRowsFrom(top)) {
            ++top;
        }
    }
    if (top != topRow_) {
        topRow_ = top;
        raise(onScroll);
    }
}

void FlexGrid::moveByUser(int row, int col) {
    if (selectionMode_ == flexSelectionByRow) {
        moveTo(row, col, row, cols_ - 1);
    } else {
        moveTo(row, col, row, col);
    }
    scrollToShow(row);
}

void FlexGrid::defaultKeyDown(int keyCode, int shift) {
    if (rows_ <= fixedRows_ || cols_ <= fixedCols_) {
        return;
    }
    int row = std::max(row_, fixedRows_);
    int col = std::max(col_, fixedCols_);
    bool ctrl = (shift & vbCtrlMask) != 0;
    switch (keyCode) {
    case vbKeyUp:
        row = std::max(fixedRows_, row - 1);
        break;
    case vbKeyDown:
        row = std::min(rows_ - 1, row + 1);
        break;
    case vbKeyLeft:
        col = std::max(fixedCols_, col - 1);
        break;
    case vbKeyRight:
        col = std::min(cols_ - 1, col + 1);
        break;
    case vbKeyPageUp:
        row = std::max(fixedRows_, row - visibleRows());
        break;
    case vbKeyPageDown:
        row = std::min(rows_ - 1, row + visibleRows());
        break;
    case vbKeyHome:
        (ctrl ? row : col) = ctrl ? fixedRows_ : fixedCols_;
        break;
    case vbKeyEnd:
        (ctrl ? row : col) = ctrl ? rows_ - 1 : cols_ - 1;
        break;
    default:
        return;
    }
    moveByUser(row, col);
}

} // namespace forms
