// The server provider: the module's SQL Server text run on a PostgreSQL database.
#pragma once

#include "ado/Provider.h"
#include "ado/postgresql/PgCatalog.h"
#include "ado/postgresql/PgConnection.h"
#include "ado/postgresql/PgDialect.h"
#include "ado/postgresql/WriterLock.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ado::postgresql {

/// Opened by a connection string "postgresql://..." or "postgres://...",
/// given to libpq as it is. Statements go through the same translator as the
/// embedded database's, spelled by PgDialect. Isolation is the server's
/// read-committed: a statement waits for another connection's uncommitted
/// write to the rows it needs, up to the command timeout. Rows written
/// through recordsets are identified by their table's integer primary key,
/// or by their ctid where a table has none (PgDialect.h).
/// Stored procedures are the server's functions of the same name, called
/// with their arguments in order inside the caller's transaction; a function
/// that returns an integer gives the return value.
class PgProvider : public Provider {
public:
    explicit PgProvider(const std::string &uri);

    std::unique_ptr<Cursor> open(std::string_view sql, bool updatable, StatementLog &log) override;
    std::unique_ptr<Cursor> execute(std::string_view sql, long &rowsAffected,
                                    StatementLog &log) override;
    std::int64_t insertRow(std::string_view table, const std::vector<ColumnValue> &values,
                           StatementLog &log) override;
    std::int64_t updateRow(std::string_view table, std::int64_t rowid,
                           const std::vector<ColumnValue> &values, StatementLog &log) override;
    std::vector<vb::Variant> readRow(std::string_view table, std::int64_t rowid,
                                     const std::vector<std::string> &columns) override;
    std::vector<ParameterInfo> procedureParameters(std::string_view name) override;
    long runProcedure(std::string_view name, const std::vector<vb::Variant> &arguments,
                      StatementLog &log) override;
    void beginTransaction() override { conn_->begin(); }
    void commitTransaction() override {
        writerLock_.released();
        conn_->commit();
    }
    void rollbackTransaction() override {
        writerLock_.released();
        conn_->rollback();
    }
    void setCommandTimeout(int seconds) override { conn_->setTimeout(seconds); }
    void settle() override { conn_->settle(); }

    /// The connection, for the tests that count its round trips.
    const PgConnection &connection() const { return *conn_; }

private:
    /// The tables, read at the first statement and again after one that
    /// changed the schema.
    const PgCatalog &catalog();
    sql::Translation translated(std::string_view sql, bool updatable, StatementLog &log);
    std::unique_ptr<Cursor> cursor(PgResult result, const sql::Translation &t,
                                   std::string_view sql);
    /// Waits for another user's save, or takes the writer's lock (WriterLock.h).
    void beforeStatement(std::string_view sql);
    /// Whether the body of the procedure reads getdate()'s clock.
    bool procedureReadsClock(std::string_view name);
    /// The catalog, after checking that `table` is one of its tables.
    const sql::Catalog &tableOf(std::string_view table);

    /// The rowid of a row, where `rowid` may stand for one added by an insert
    /// still in the pipeline: waits for it then.
    std::int64_t rowidOf(std::int64_t rowid);
    /// The condition that finds a row by its rowid, its value added to `params`.
    std::string identity(const std::string &key, std::int64_t rowid,
                         std::vector<Param> &params) const;

    std::shared_ptr<PgConnection> conn_;
    WriterLock writerLock_;
    std::optional<PgCatalog> catalog_;
    PgDialect dialect_;
    /// The rowids of the rows added through recordsets, in the order they
    /// were sent: a recordset holds the one that stood for a row while its
    /// insert was in the pipeline, and may go on holding it.
    std::vector<std::int64_t> inserted_;
    std::map<std::string, bool> readsClock_; // procedure (lower case) -> reads the clock
};

/// A value as the text parameter the server reads for it; nothing for Null and Empty.
Param parameterOf(const vb::Variant &value);

} // namespace ado::postgresql
