// ado::Connection: a shared handle to an open database, as ADODB.Connection was.
#pragma once

#include "ado/Constants.h"
#include "ado/Operation.h"
#include "ado/Recordset.h"
#include "vb/Error.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

class Provider;
class Session;

/// A connection to a database. Copying a Connection shares the same open
/// connection, as object references did; a default-constructed one is empty
/// and every use of it raises 3709.
///
/// The connection string picks the provider: "sqlite:PATH" opens an existing
/// SQLite file through the embedded provider (ado/sqlite), which speaks the
/// module's SQL Server dialect; "odbc:..." is not available yet.
class Connection {
public:
    Connection() = default;

    /// Opens a connection string on this handle. A database that cannot be
    /// opened raises -2147467259 naming it; an unknown provider 3706.
    void Open(std::string_view connectionString);
    /// Closes the connection for every handle that shares it. Closing with a
    /// transaction open raises 3246.
    void Close();
    /// adStateOpen (1) or adStateClosed (0).
    int State() const;
    const std::string &ConnectionString() const;

    /// Runs a statement. A statement that returns rows gives them as a
    /// forward-only, read-only Recordset; otherwise the Recordset is closed
    /// and `recordsAffected` (if given) receives the number of rows changed.
    Recordset Execute(std::string_view commandText, long *recordsAffected = nullptr) const;

    /// Opens a transaction. A second BeginTrans while one is open raises
    /// -2147168237 "Only one transaction can be active on this session."
    void BeginTrans() const;
    /// CommitTrans and RollbackTrans with no transaction open raise
    /// -2147168242 "No transaction is active."
    void CommitTrans() const;
    void RollbackTrans() const;

    /// Seconds a statement may run before it fails with a timeout (default 30, 0 = no limit).
    int CommandTimeout() const;
    void CommandTimeout(int seconds) const;

    // ---- tools of this port -------------------------------------------------

    /// Appends a block for every call on this connection to `path` (the
    /// --trace-sql file, format in docs/sql-dialect.md); "" stops.
    void traceSql(std::string_view path) const;
    /// The fault hook: the `nth` call of `kind` from now (1 is the next call;
    /// a statement, a recordset open, one row's Update, a procedure, a
    /// BeginTrans, CommitTrans or RollbackTrans) raises `error` instead of running.
    void failNthCall(int nth, vb::Error error, Operation kind = Operation::Any) const;
    /// The `nth` statement from now whose text begins with `firstWords`
    /// (letter case and runs of blanks aside; "" for any statement) raises `error`.
    void failStatement(int nth, std::string_view firstWords, vb::Error error) const;
    /// Forgets the faults still waiting.
    void clearFaults() const;
    /// Faults armed and not yet fired.
    std::size_t pendingFaults() const;
    /// Starts (or stops and forgets) keeping the text of every statement and
    /// transaction call sent (ado/SentStatements.h).
    void recordStatements(bool on) const;
    /// The statements kept since the last call, oldest first.
    std::vector<std::string> takeStatements() const;
    /// Calls counted since the connection opened (the unit of failNthCall).
    long callCount() const;

    /// A connection over a provider made elsewhere (init-db's new database, tests).
    static Connection fromProvider(std::unique_ptr<Provider> provider,
                                   std::string connectionString);

    /// The open connection behind the handle; raises 3709 when there is none.
    Session &session() const;

    /// The same connection (not only an equal connection string).
    friend bool operator==(const Connection &a, const Connection &b) {
        return a.session_ == b.session_;
    }

private:
    std::shared_ptr<Session> session_;
};

} // namespace ado
