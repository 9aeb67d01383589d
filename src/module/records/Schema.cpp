#include "module/records/Schema.h"

#include "ado/Connection.h"
#include "ado/sqlite/NativeStatement.h"
#include "ado/sqlite/Script.h"
#include "module/records/EmbeddedSql.h"
#include "module/records/ProcedureSource.h"

namespace records {

namespace {

void storeProcedures(const ado::Connection &connection) {
    ado::sqlite::NativeStatement insert(
        connection, "INSERT INTO sv_procedure (name, params, body) VALUES (?1, ?2, ?3)");
    for (const auto &file : embeddedSqlFiles()) {
        if (!file.name.starts_with("procedures/"))
            continue;
        const ProcedureSource procedure = procedureSource(file.name, file.text);
        insert.reset();
        insert.bindText(1, procedure.name);
        insert.bindText(2, procedure.params);
        insert.bindText(3, procedure.body);
        insert.step();
    }
}

} // namespace

void createSchema(const ado::Connection &connection) {
    connection.BeginTrans();
    try {
        ado::sqlite::executeScript(connection, embeddedSql("tables.sql"));
        ado::sqlite::executeScript(connection, embeddedSql("views.sql"));
        storeProcedures(connection);
    } catch (const vb::Error &) {
        connection.RollbackTrans();
        throw;
    }
    connection.CommitTrans();
}

} // namespace records
