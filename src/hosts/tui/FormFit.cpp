#include "hosts/tui/FormFit.h"

#include "forms/Control.h"
#include "forms/Form.h"
#include "forms/Line.h"

#include <algorithm>
#include <cmath>

namespace tui {

namespace {

using forms::ControlKind;

/// What a row of the unpacked form holds, for packing.
enum class RowUse { Empty, Scroll, Pinned };

/// Columns a form may lose across: a tenth of its width.
int narrowest(int designCols) {
    return static_cast<int>(std::ceil(designCols * 0.9));
}

int designCols(const forms::Form &form) {
    return CellScale{}.col(form.Width());
}

/// The rows of the unpacked form, each marked by what stands in it.
std::vector<RowUse> rowUses(const forms::Form &form, const CellScale &scale) {
    int total = scale.row(form.Height());
    std::vector<RowUse> uses(static_cast<std::size_t>(std::max(total, 0)), RowUse::Empty);
    auto mark = [&](int row, RowUse use) {
        if (row >= 0 && row < total) {
            auto &u = uses[static_cast<std::size_t>(row)];
            u = std::max(u, use);
        }
    };
    for (const forms::Control *c : form.controls()) {
        if (c->kind() == ControlKind::Menu || !c->effectivelyVisible()) {
            continue;
        }
        TwipsRect at = formTwips(*c);
        Rect r = scale.rect(at.left, at.top, at.width, at.height);
        switch (c->kind()) {
        case ControlKind::PictureBox: // borderless: only what it holds shows
        case ControlKind::Image:
            break;
        case ControlKind::Frame:
            mark(r.y, RowUse::Pinned);
            mark(r.bottom() - 1, RowUse::Pinned);
            break;
        case ControlKind::Line: {
            const auto &line = static_cast<const forms::Line &>(*c);
            mark(scale.row(at.top + line.Y1()), RowUse::Pinned);
            mark(scale.row(at.top + line.Y2()), RowUse::Pinned);
            break;
        }
        case ControlKind::FlexGrid:
        case ControlKind::ListView:
            for (int y = r.y; y < r.bottom(); ++y) {
                mark(y, y <= r.y + packedListRows ? RowUse::Pinned : RowUse::Scroll);
            }
            break;
        default:
            for (int y = r.y; y < r.bottom(); ++y) {
                mark(y, RowUse::Pinned);
            }
            break;
        }
    }
    return uses;
}

/// The rows that may go, in the order they go.
std::vector<int> sparableRows(const std::vector<RowUse> &uses) {
    int total = static_cast<int>(uses.size());
    std::vector<int> order;
    // Empty rows at the form's bottom go first, then all but one of each run
    // of empty rows (longest run first), then rows of lists and grids from
    // the bottom up, then the empty rows left.
    struct Run {
        int from;
        int length;
    };
    std::vector<Run> runs;
    for (int y = 0; y < total; ++y) {
        if (uses[static_cast<std::size_t>(y)] != RowUse::Empty) {
            continue;
        }
        if (!runs.empty() && runs.back().from + runs.back().length == y) {
            ++runs.back().length;
        } else {
            runs.push_back({y, 1});
        }
    }
    if (!runs.empty() && runs.back().from + runs.back().length == total) {
        for (int y = total - 1; y >= runs.back().from; --y) {
            order.push_back(y);
        }
        runs.pop_back();
    }
    std::stable_sort(runs.begin(), runs.end(),
                     [](const Run &a, const Run &b) { return a.length > b.length; });
    for (const Run &run : runs) {
        for (int y = run.from + run.length - 1; y > run.from; --y) {
            order.push_back(y);
        }
    }
    for (int y = total - 1; y >= 0; --y) {
        if (uses[static_cast<std::size_t>(y)] == RowUse::Scroll) {
            order.push_back(y);
        }
    }
    for (const Run &run : runs) {
        order.push_back(run.from);
    }
    return order;
}

} // namespace

std::optional<CellScale> fitForm(const forms::Form &form, int cols, int rows) {
    if (cols < narrowest(designCols(form))) {
        return std::nullopt;
    }
    CellScale scale = CellScale::fitting(form.Width(), 0, cols, 0);
    auto uses = rowUses(form, scale);
    int total = static_cast<int>(uses.size());
    if (total <= rows) {
        return scale;
    }
    auto order = sparableRows(uses);
    auto need = static_cast<std::size_t>(total - rows);
    if (order.size() < need || rows <= 0) {
        return std::nullopt;
    }
    std::vector<bool> gone(uses.size(), false);
    for (std::size_t i = 0; i < need; ++i) {
        gone[static_cast<std::size_t>(order[i])] = true;
    }
    scale.rowEdges.resize(uses.size() + 1);
    int removed = 0;
    for (int edge = 0; edge <= total; ++edge) {
        scale.rowEdges[static_cast<std::size_t>(edge)] = edge - removed;
        if (edge < total && gone[static_cast<std::size_t>(edge)]) {
            ++removed;
        }
    }
    return scale;
}

CellSize smallestFit(const forms::Form &form) {
    CellScale natural;
    auto uses = rowUses(form, natural);
    int spare = static_cast<int>(sparableRows(uses).size());
    return {narrowest(designCols(form)), std::max(1, static_cast<int>(uses.size()) - spare)};
}

} // namespace tui
