// The refusal of a grouped select that names a column outside its grouping.
#pragma once

#include "ado/sql/Catalog.h"
#include "ado/sql/SqlTree.h"

#include <span>

namespace ado::sql {

/// SQLite would give such a column the value of some row of the group; SQL
/// Server refuses the statement, and the module's error traps rely on that
/// refusal. So every select of the statement (subqueries too) that groups, or
/// that calls an aggregate, is checked: a column of its select list, HAVING
/// or ORDER BY must stand inside an aggregate, be grouped, or be part of an
/// expression that is grouped as written. The first column that is not raises
/// -2147217900 with SQL Server's text, naming it as table.column (the alias
/// where the table has one). A statement with a column or table that does not
/// exist is left to the engine, which names that first, as SQL Server does.
void checkGrouping(std::span<const Node> statement, const Catalog &catalog);

} // namespace ado::sql
