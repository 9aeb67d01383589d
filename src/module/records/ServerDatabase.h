// The schema and, if asked, the demo company on a PostgreSQL server's database.
#pragma once

#include "module/records/DemoOptions.h"

#include <cstdint>
#include <optional>
#include <string>

namespace records {

class PostgresDatabase;

/// The number raised when the database holds the module's tables already.
inline constexpr std::int32_t schemaExists = 58;

/// Creates the tables, views and stored procedures of the embedded postgresql/ SQL files on
/// the connection's database, inside whatever transaction is open there.
void createServerSchema(PostgresDatabase &database);

/// The statements that keep the names of the schema's columns as its files write them, as
/// comments of the columns (ado/postgresql/WrittenNames.h); run by createServerSchema.
std::string schemaNameComments();

/// Connects to `connectionString` (a postgresql:// URI or libpq's key=value form) and makes
/// the schema there, with the demo company when `demo` is given, in one transaction: a
/// failure leaves the database as it was. A server that cannot be reached raises
/// -2147467259; a database that holds the schema already is refused with `schemaExists`
/// and left alone.
void createServerDatabase(const std::string &connectionString,
                          const std::optional<DemoOptions> &demo,
                          const DemoProgress &progress = {});

} // namespace records
