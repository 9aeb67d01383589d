#include "report/Table.h"

#include "ado/Recordset.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Strings.h"

#include <algorithm>

namespace report {

namespace {

[[noreturn]] void badFormula(std::string_view formula, const std::string &why) {
    throw vb::Error(vb::err::InvalidProcedureCall, "report",
                    "The selection formula \"" + std::string(formula) + "\" " + why);
}

/// Whether a cell equals one value of the formula: numbers as numbers, other
/// text ignoring letter case and blanks at the ends; quotes around a text go.
bool matches(const vb::Variant &cell, std::string value) {
    value = vb::Trim(value);
    if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') &&
        value.back() == value.front()) {
        value = value.substr(1, value.size() - 2);
    }
    if (vb::IsNull(cell)) {
        return false;
    }
    if (vb::IsNumeric(cell) && vb::IsNumeric(vb::Variant(value))) {
        return vb::CDbl(cell) == vb::Val(value);
    }
    return vb::StrComp(vb::Trim(vb::TextOf(cell)), value, vb::Compare::Text) == 0;
}

} // namespace

std::optional<std::size_t> Table::column(std::string_view name) const {
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (vb::StrComp(names[i], name, vb::Compare::Text) == 0) {
            return i;
        }
    }
    return std::nullopt;
}

Table readTable(ado::Recordset &rs) {
    Table table;
    const ado::Fields fields = rs.Fields();
    for (int i = 0; i < fields.Count(); ++i) {
        table.names.push_back(fields.Item(i).Name());
    }
    while (!rs.Eof()) {
        std::vector<vb::Variant> row;
        for (int i = 0; i < fields.Count(); ++i) {
            row.push_back(rs.Fields(i).Value());
        }
        table.rows.push_back(std::move(row));
        rs.MoveNext();
    }
    return table;
}

Table applySelectionFormula(const Table &table, std::string_view formula) {
    const std::string text = vb::Trim(formula);
    if (text.empty()) {
        return table;
    }
    const std::size_t close = text.find('}');
    if (text.front() != '{' || close == std::string::npos) {
        badFormula(formula, "does not start with a {field}");
    }
    std::string field = text.substr(1, close - 1);
    field = field.substr(field.find('.') + 1);
    const auto col = table.column(field);
    if (!col) {
        badFormula(formula, "names the field " + field + ", which the report's rows lack");
    }
    const std::string rest = vb::Trim(text.substr(close + 1));
    std::vector<std::string> values;
    if (vb::UCase(rest.substr(0, 2)) == "IN") {
        const std::string list = vb::Trim(rest.substr(2));
        if (list.size() < 2 || list.front() != '[' || list.back() != ']') {
            badFormula(formula, "has no [list] after IN");
        }
        const std::string inner = list.substr(1, list.size() - 2);
        if (!vb::Trim(inner).empty()) {
            values = vb::Split(inner, ",");
        }
    } else if (!rest.empty() && rest.front() == '=') {
        values.push_back(rest.substr(1));
    } else {
        badFormula(formula, "is neither {field} IN [list] nor {field} = value");
    }
    Table kept{table.names, {}};
    for (const auto &row : table.rows) {
        if (std::any_of(values.begin(), values.end(),
                        [&](const std::string &v) { return matches(row[*col], v); })) {
            kept.rows.push_back(row);
        }
    }
    return kept;
}

} // namespace report
