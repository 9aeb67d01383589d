#include "ado/sqlite/Script.h"

#include "ado/sqlite/NativeStatement.h"
#include "ado/sqlite/SqliteProvider.h"

namespace ado::sqlite {

Connection createDatabase(std::string_view path) {
    return Connection::fromProvider(std::make_unique<SqliteProvider>(path, Database::Mode::Create),
                                    "sqlite:" + std::string(path));
}

void executeScript(const Connection &connection, std::string_view script) {
    Database &db = databaseOf(connection);
    bool transactionBefore = !db.autocommit() || db.transactionWanted();
    try {
        while (auto statement = NativeStatement::prepareFirst(db, script)) {
            while (statement->step()) {
            }
        }
    } catch (const vb::Error &) {
        // A transaction the script opened and did not finish is taken back,
        // so that a failed script leaves nothing half-written.
        if (!transactionBefore && !db.autocommit())
            NativeStatement(db, "ROLLBACK").step();
        throw;
    }
}

} // namespace ado::sqlite
