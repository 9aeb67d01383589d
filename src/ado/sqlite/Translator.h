// The translation of the module's SQL Server text into SQLite's dialect.
#pragma once

#include "ado/sqlite/Catalog.h"

#include <string>
#include <string_view>

namespace ado::sqlite {

struct TranslateOptions {
    /// For a recordset that may change rows: a plain select from one table
    /// gets that table's rowid as an extra, last result column.
    bool addRowid = false;
};

struct Translation {
    std::string sql;
    /// The one table a plain select reads ("select ... from T where ..."), or
    /// the table of an insert, update or delete; "" when there is none.
    std::string baseTable;
    /// The last result column is the rowid of `baseTable`, added for updating.
    bool rowidAdded = false;
    /// Statements in the text (parts between semicolons that hold any).
    int statements = 0;
};

/// Translates SQL Server text, token by token; what stands inside string
/// literals is never touched. The catalog tells column types where the
/// meaning depends on them (date literals, + between strings). Text the
/// translator cannot take raises -2147217900 naming what it refused; a date
/// literal that is no date, compared with a date column, raises SQL Server's
/// conversion error. docs/sql-dialect.md lists every rule.
Translation translate(std::string_view text, const Catalog &catalog, TranslateOptions options = {});

/// Native SQLite text (a stored procedure's body) with what SQL Server would
/// refuse refused as it refuses it: a / b and a % b with a divisor of zero
/// ("Divide by zero error encountered." where SQLite gives null), and text
/// that an insert or update writes into a varchar column too short for it
/// ("String or binary data would be truncated."). Nothing else changes.
std::string guardNative(std::string_view nativeText, const Catalog &catalog);

} // namespace ado::sqlite
