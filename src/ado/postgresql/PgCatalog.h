// What the translator and the cursors know of a PostgreSQL database.
#pragma once

#include "ado/sql/Catalog.h"

#include <libpq-fe.h>

#include <map>
#include <string>
#include <utility>

namespace ado::postgresql {

class PgConnection;

/// The tables and views of the connection's schema, with their columns as
/// SQL Server would declare them (integer as int, sv_text as varchar, a
/// timestamp as datetime, the domain sv_bit - a smallint of 0 or 1, which
/// takes the module's "= 1" as SQL Server's bit does - as bit) and each
/// table's one-column integer primary key.
struct PgCatalog {
    sql::Catalog tables;
    /// The column names of the tables by the table's oid and the column's
    /// number, as a result names the column it read.
    std::map<std::pair<Oid, int>, std::string> columnAt;
    std::map<Oid, std::string> tableName;
    /// The names of columns as the schema wrote them where the server keeps
    /// them folded to lower case ("ItemId" for itemid), by the same keys.
    std::map<std::pair<Oid, int>, std::string> writtenAt;
};

/// Reads the catalog from the server.
PgCatalog readCatalog(PgConnection &conn);

/// The SQL Server type text of a type as the server formats it
/// ("character varying(20)" is "varchar(20)"); `length` is the longest text
/// a check constraint allows a text column, 0 for none.
std::string sqlServerType(std::string_view pgType, int length);

} // namespace ado::postgresql
