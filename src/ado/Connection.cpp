#include "ado/Connection.h"

#include "ado/Errors.h"
#include "ado/Session.h"
#include "ado/postgresql/PgProvider.h"
#include "ado/sqlite/Database.h"
#include "ado/sqlite/SqliteProvider.h"

namespace ado {

namespace {

constexpr std::string_view source = "ADODB.Connection";
constexpr std::int32_t providerNotFound = 3706;

std::unique_ptr<Provider> providerFor(std::string_view connectionString) {
    if (connectionString.substr(0, 7) == "sqlite:")
        return std::make_unique<sqlite::SqliteProvider>(connectionString.substr(7),
                                                        sqlite::Database::Mode::OpenExisting);
    if (connectionString.starts_with("postgresql://") ||
        connectionString.starts_with("postgres://"))
        return std::make_unique<postgresql::PgProvider>(std::string(connectionString));
    if (connectionString.substr(0, 5) == "odbc:")
        throw adoError(providerNotFound, source,
                       "The ODBC provider is not supported yet: cannot open '" +
                           std::string(connectionString) + "'");
    throw adoError(providerNotFound, source,
                   "Provider cannot be found. It may not be properly installed. (The connection "
                   "string '" +
                       std::string(connectionString) +
                       "' names no provider; use sqlite:PATH or postgresql://...)");
}

} // namespace

void Connection::Open(std::string_view connectionString) {
    if (session_ && session_->isOpen())
        throw adoError(errnum::ObjectOpen, source);
    session_ =
        std::make_shared<Session>(providerFor(connectionString), std::string(connectionString));
}

Connection Connection::fromProvider(std::unique_ptr<Provider> provider,
                                    std::string connectionString) {
    Connection c;
    c.session_ = std::make_shared<Session>(std::move(provider), std::move(connectionString));
    return c;
}

Session &Connection::session() const {
    if (!session_ || !session_->isOpen())
        throw adoError(errnum::ConnectionNotUsable, source);
    return *session_;
}

void Connection::Close() {
    Session &s = session();
    if (s.inTransaction())
        throw adoError(errnum::ClosedInTransaction, source);
    s.close();
}

int Connection::State() const {
    return session_ && session_->isOpen() ? adStateOpen : adStateClosed;
}

const std::string &Connection::ConnectionString() const {
    static const std::string none;
    return session_ ? session_->connectionString() : none;
}

Recordset Connection::Execute(std::string_view commandText, long *recordsAffected) const {
    Session &s = session();
    long affected = 0;
    std::unique_ptr<Cursor> cursor =
        s.call(Operation::Execute, "execute", commandText, [&](StatementLog &log) {
            s.provider().setCommandTimeout(s.commandTimeout());
            return s.provider().execute(commandText, affected, log);
        });
    if (recordsAffected)
        *recordsAffected = cursor ? -1 : affected;
    Recordset result;
    if (cursor)
        result.adopt(*this, std::string(commandText), std::move(cursor));
    return result;
}

void Connection::BeginTrans() const {
    Session &s = session();
    s.call(Operation::BeginTrans, "begin transaction", "", [&](StatementLog &) {
        if (s.inTransaction())
            throw adoError(errnum::TransactionExists, source);
        s.provider().beginTransaction();
        s.setInTransaction(true);
    });
}

void Connection::CommitTrans() const {
    Session &s = session();
    s.call(Operation::CommitTrans, "commit transaction", "", [&](StatementLog &) {
        if (!s.inTransaction())
            throw adoError(errnum::NoTransaction, source);
        s.provider().commitTransaction();
        s.setInTransaction(false);
    });
}

void Connection::RollbackTrans() const {
    Session &s = session();
    s.call(Operation::RollbackTrans, "rollback transaction", "", [&](StatementLog &) {
        if (!s.inTransaction())
            throw adoError(errnum::NoTransaction, source);
        s.provider().rollbackTransaction();
        s.setInTransaction(false);
    });
}

int Connection::CommandTimeout() const {
    return session().commandTimeout();
}

void Connection::CommandTimeout(int seconds) const {
    if (seconds < 0)
        throw adoError(errnum::InvalidArgument, source);
    session().setCommandTimeout(seconds);
}

void Connection::traceSql(std::string_view path) const {
    session().trace().open(path);
}

void Connection::failNthCall(int nth, vb::Error error, Operation kind) const {
    session().faults().failNth(nth, std::move(error), kind);
}

void Connection::failStatement(int nth, std::string_view firstWords, vb::Error error) const {
    session().faults().failStatement(nth, firstWords, std::move(error));
}

void Connection::clearFaults() const {
    session().faults().clear();
}

std::size_t Connection::pendingFaults() const {
    return session().faults().pending();
}

void Connection::recordStatements(bool on) const {
    session().sent().setRecording(on);
}

std::vector<std::string> Connection::takeStatements() const {
    return session().sent().take();
}

long Connection::callCount() const {
    return session().faults().calls();
}

} // namespace ado
