// Native SQLite scripts and new database files, for init-db and tests.
#pragma once

#include "ado/Connection.h"

#include <string_view>

namespace ado::sqlite {

/// Opens `path` through the embedded provider, making an empty database
/// file first when there is none (Connection::Open with "sqlite:PATH" never
/// makes one). The connection string of the result is "sqlite:PATH".
Connection createDatabase(std::string_view path);

/// Runs a script of native SQLite statements (separated by ';') on the
/// connection's database as they are written, untranslated: the schema,
/// views, procedure bodies, demo data. Transactions in the script are the
/// script's own. The first statement that fails stops the script and raises
/// -2147217900 (or the number of the failure) naming that statement.
void executeScript(const Connection &connection, std::string_view script);

} // namespace ado::sqlite
