// report::Table: the rows a report shows, read from a recordset.
#pragma once

#include "vb/Variant.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ado {
class Recordset;
}

namespace report {

/// Rows of named values. Names are matched ignoring letter case, as the
/// database matched them.
struct Table {
    std::vector<std::string> names;
    std::vector<std::vector<vb::Variant>> rows;

    /// Position of a field, or none.
    std::optional<std::size_t> column(std::string_view name) const;
};

/// Reads every row left in an open recordset.
Table readTable(ado::Recordset &rs);

/// Keeps the rows that a selection formula of the old engine lets through.
/// Two forms are understood: "{view.field} IN [1, 2, 3]" and "{view.field} =
/// value"; the view's name is not checked, since every field comes from the
/// one statement. An empty formula keeps every row. Raises vb::Error 5 for a
/// formula of another form or a field the rows do not have.
Table applySelectionFormula(const Table &table, std::string_view formula);

} // namespace report
