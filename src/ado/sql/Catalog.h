// What the translator knows of the database: its tables, views and their column types.
#pragma once

#include "ado/sql/ColumnType.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ado::sql {

/// The tables and views of a database with their columns in order. Names
/// are looked up ignoring letter case, as SQL Server does.
class Catalog {
public:
    struct Column {
        std::string name;
        ColumnType type;
    };

    /// Adds a table or a view; `declaredTypes` are the type texts as declared.
    /// `key` is the table's one-column integer key, "" when it has none.
    void add(std::string_view name, bool isView,
             const std::vector<std::pair<std::string, std::string>> &columnsAndTypes,
             std::string key = "");

    bool hasTable(std::string_view name) const; // a table, not a view
    bool has(std::string_view name) const;      // a table or a view
    /// The columns of a table or view in order; empty when it is unknown.
    const std::vector<Column> &columns(std::string_view table) const;
    /// The type of a column of one table or view, Unknown when there is none.
    ColumnType columnType(std::string_view table, std::string_view column) const;
    /// The kind of a column named so, wherever it stands: the kind that all
    /// tables and views with such a column agree on (columns of an unknown
    /// kind do not count), Unknown when they differ or there is none.
    ColumnKind kindOfColumn(std::string_view column) const;
    /// The one-column integer key of a table as given to `add`, "" when none.
    const std::string &keyColumn(std::string_view table) const;

private:
    struct Table {
        bool isView = false;
        std::vector<Column> columns;
        std::string key;
    };
    std::map<std::string, Table> tables_;          // by lower-case name
    std::map<std::string, ColumnKind> kindByName_; // by lower-case column name
};

/// Lower case of ASCII letters, for names compared as SQL Server compares them.
std::string lowerCase(std::string_view s);

} // namespace ado::sql
