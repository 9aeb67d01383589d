// The cells of a grid's rows below its header, for comparing a whole grid at once.
#pragma once

#include "forms/FlexGrid.h"

#include <string>
#include <vector>

namespace tqsv2731::test {

using Rows = std::vector<std::vector<std::string>>;

/// The text of columns 0 to `lastCol` of every row after the header row.
inline Rows gridCells(const forms::FlexGrid &grid, int lastCol) {
    Rows out;
    for (int r = 1; r < grid.Rows(); ++r) {
        std::vector<std::string> row;
        for (int c = 0; c <= lastCol; ++c)
            row.push_back(grid.TextMatrix(r, c));
        out.push_back(row);
    }
    return out;
}

} // namespace tqsv2731::test
