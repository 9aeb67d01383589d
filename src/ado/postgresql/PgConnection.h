// One connection to the server over libpq: statements, prepared statements, transactions.
#pragma once

#include "ado/postgresql/PgResult.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ado::postgresql {

/// A parameter as text (the server converts it to the type of the column it
/// meets), or nothing for NULL.
using Param = std::optional<std::string>;

/// Owns the PGconn. Every call raises vb::Error (PgErrorMapping.h) when the
/// server refuses or the connection is gone.
///
/// Inside a transaction a statement that fails is undone alone and the
/// transaction stays open, as SQL Server undoes a failed statement without
/// ending the transaction: the module's error traps go on with the save
/// after a refused row. So each statement of a transaction runs between a
/// savepoint and its release, sent together with it in one pipeline: one
/// round trip, and a second one only when the statement failed.
class PgConnection {
public:
    explicit PgConnection(const std::string &uri);
    ~PgConnection();
    PgConnection(const PgConnection &) = delete;
    PgConnection &operator=(const PgConnection &) = delete;

    /// Runs one statement with its parameters ($1, $2, ...); `shown` is the
    /// text as the module wrote it, for error messages.
    PgResult run(std::string_view sql, const std::vector<Param> &params, std::string_view shown);
    /// The same through a statement prepared once for this connection.
    PgResult runPrepared(const std::string &sql, const std::vector<Param> &params,
                         std::string_view shown);

    void begin();
    void commit();
    void rollback();
    bool inTransaction() const { return inTransaction_; }

    /// Statements stop after this many seconds (0: never), through the
    /// server's statement_timeout.
    void setTimeout(int seconds);

private:
    PgResult exec(std::string_view sql, std::string_view shown);
    void applyTimeout();
    PgResult send(const std::string *prepared, std::string_view sql,
                  const std::vector<Param> &params, std::string_view shown);
    PgResult pipelined(const std::string *prepared, std::string_view sql,
                       const std::vector<Param> &params, std::string_view shown);
    void sendOne(const std::string *prepared, std::string_view sql,
                 const std::vector<Param> &params);
    PgResult takeResult();
    [[noreturn]] void fail(const PGresult *result, std::string_view shown);

    PGconn *conn_ = nullptr;
    bool inTransaction_ = false;
    int timeout_ = 0; // the server's default: no limit
    int wantedTimeout_ = 30;
    std::map<std::string, std::string, std::less<>> prepared_; // sql -> statement name
};

} // namespace ado::postgresql
