// The catalog of an SQLite database file.
#pragma once

#include "ado/sql/Catalog.h"

namespace ado::sqlite {

class Database;

/// Reads every table and view of an open database with its columns. Rows
/// are identified by SQLite's rowid, so no table is given a key column.
sql::Catalog readCatalog(Database &db);

} // namespace ado::sqlite
