// The SQL functions and the collation that stand in for SQL Server's inside SQLite.
#pragma once

struct sqlite3;

namespace ado::sqlite {

/// Registers on a database, for translated statements and native SQL alike:
///
/// - collation CITEXT: text compares ignoring ASCII letter case and trailing
///   blanks, as SQL Server's default collation does. The translator puts it
///   on string literals; tables may declare it on text columns.
/// - sv_len(x): characters without the trailing blanks (len).
/// - sv_left(x, n), sv_right(x, n), sv_substring(x, start, n): by characters.
/// - sv_isnumeric(x): 1 when the text would pass SQL Server's isnumeric, else 0.
/// - sv_getdate(): the clock (vb::Now, so a fixed clock fixes it) as
///   "YYYY-MM-DD HH:MM:SS".
/// - sv_convert(type, x): convert(type, x) for type names as SQL Server
///   writes them ("int", "varchar(24)", "numeric(18,3)", "datetime"), with
///   SQL Server's errors for values that do not convert.
/// - sv_divide(a, b), sv_modulo(a, b): a / b and a % b with SQL Server's
///   divide by zero error, integer quotients cut toward zero.
/// - sv_fit(n, x): x written into a text column of n characters: longer
///   text raises SQL Server's truncation error, blanks past n are dropped.
/// - sv_sum(x), sv_avg(x): sum and avg with exact decimal arithmetic
///   (ExactDecimal.h), so that quantities that net to zero sum to 0.
void registerFunctions(sqlite3 *db);

} // namespace ado::sqlite
