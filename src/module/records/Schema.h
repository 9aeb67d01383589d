// The empty schema of the database: tables, views and stored procedures.
#pragma once

namespace ado {
class Connection;
}

namespace records {

/// Creates every table and view and stores the stored procedures, on an open `sqlite:`
/// connection to an empty database, in one transaction. The SQL is the embedded copy of
/// src/module/records/sql.
void createSchema(const ado::Connection &connection);

} // namespace records
