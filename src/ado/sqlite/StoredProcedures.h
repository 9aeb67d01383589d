// Stored procedures of the embedded database: native bodies kept in the table sv_procedure.
#pragma once

#include "ado/Provider.h"
#include "ado/sqlite/Catalog.h"
#include "vb/Variant.h"

#include <string_view>
#include <vector>

namespace ado::sqlite {

class Database;

/// The procedures live in the database file, in
///
///     sv_procedure(name TEXT PRIMARY KEY COLLATE NOCASE, params TEXT NOT NULL, body TEXT NOT NULL)
///
/// `params` lists the parameters in order, each a name and a type:
/// "@svhid int,@godownid int,@mode varchar(1)". `body` is native SQLite SQL
/// (not translated), statements separated by ';', using the parameters by
/// name (@svhid) wherever they are needed.

/// The parameters of a procedure: "@RETURN_VALUE" (int, return value) first,
/// then those of `params`. An unknown procedure raises -2147217900 "Could not
/// find stored procedure 'x'."
std::vector<ParameterInfo> describeProcedure(Database &db, std::string_view name);

/// Runs a procedure's body with the arguments in order (converted to their
/// declared types as a column would convert them), inside a savepoint, so
/// that it runs within the caller's transaction and a failing body leaves
/// none of its changes behind; the failure is raised. Returns the rows the
/// body changed.
long runProcedureBody(Database &db, const Catalog &catalog, std::string_view name,
                      const std::vector<vb::Variant> &arguments, StatementLog &log);

} // namespace ado::sqlite
