#include "ado/sql/Catalog.h"

#include <cctype>

namespace ado::sql {

namespace {

// A name that stands in several tables with different kinds is of no use for
// deciding how to treat a literal: it is marked with this value.
constexpr ColumnKind conflicting = static_cast<ColumnKind>(-1);

} // namespace

std::string lowerCase(std::string_view s) {
    std::string out(s);
    for (auto &c : out)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

void Catalog::add(std::string_view name, bool isView,
                  const std::vector<std::pair<std::string, std::string>> &columnsAndTypes,
                  std::string key) {
    Table table;
    table.isView = isView;
    table.key = std::move(key);
    for (const auto &[column, declared] : columnsAndTypes) {
        table.columns.push_back({column, columnTypeOf(declared)});
        ColumnKind kind = table.columns.back().type.kind;
        if (kind == ColumnKind::Unknown)
            continue;
        auto [it, inserted] = kindByName_.emplace(lowerCase(column), kind);
        if (!inserted && it->second != kind)
            it->second = conflicting;
    }
    tables_[lowerCase(name)] = std::move(table);
}

const std::string &Catalog::keyColumn(std::string_view table) const {
    static const std::string none;
    auto it = tables_.find(lowerCase(table));
    return it == tables_.end() ? none : it->second.key;
}

bool Catalog::hasTable(std::string_view name) const {
    auto it = tables_.find(lowerCase(name));
    return it != tables_.end() && !it->second.isView;
}

bool Catalog::has(std::string_view name) const {
    return tables_.count(lowerCase(name)) != 0;
}

const std::vector<Catalog::Column> &Catalog::columns(std::string_view table) const {
    static const std::vector<Column> none;
    auto it = tables_.find(lowerCase(table));
    return it == tables_.end() ? none : it->second.columns;
}

ColumnType Catalog::columnType(std::string_view table, std::string_view column) const {
    for (const auto &c : columns(table))
        if (lowerCase(c.name) == lowerCase(column))
            return c.type;
    return {};
}

ColumnKind Catalog::kindOfColumn(std::string_view column) const {
    auto it = kindByName_.find(lowerCase(column));
    if (it == kindByName_.end() || it->second == conflicting)
        return ColumnKind::Unknown;
    return it->second;
}

} // namespace ado::sql
