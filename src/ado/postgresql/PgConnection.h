// One connection to the server over libpq: statements, prepared statements, transactions.
#pragma once

#include "ado/postgresql/PgResult.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <set>
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
///
/// Writes whose result the caller does not need at once (rows added through
/// a recordset) can be sent ahead without waiting: they wait in the pipeline,
/// all after one savepoint, and their results are taken together by
/// `settle`, which every other call runs first. A refused write stops the
/// pipeline there: the server skips the writes sent after it, the batch goes
/// back to its savepoint and the writes before the refused one are sent
/// again, so that the refused one alone is undone; its error is raised by the
/// call that settles, so that the caller meets it before it does anything
/// that could see the rows (a read, a procedure, a commit).
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

    /// Sends a write through a prepared statement inside the transaction,
    /// without waiting; `done` gets its result once it has run. Outside a
    /// transaction it runs at once.
    void sendAhead(const std::string &sql, const std::vector<Param> &params, std::string shown,
                   std::function<void(const PGresult &)> done);
    /// Takes the results of the writes sent ahead; raises the error of the
    /// first that failed (the writes after it did not run).
    void settle();
    /// Writes sent ahead whose results have not been taken.
    std::size_t writesAhead() const { return ahead_.size(); }
    /// The times this connection has waited for the server, for the tests.
    long roundTrips() const { return roundTrips_; }

    /// A name for a new cursor of this connection.
    std::string newCursorName();
    /// Opens a cursor on the server over a select and fetches its first
    /// `rows` rows, in one round trip. Outside a transaction the server keeps
    /// the statement's rows for the cursor until it is closed; inside one the
    /// cursor reads as it goes and ends with the transaction, after
    /// `readRest` has taken the rows left (unless it was closed before).
    PgResult openCursor(const std::string &name, std::string_view sql, long rows,
                        std::string_view shown, std::function<void()> readRest);
    /// The next `rows` rows of a cursor (-1: all that are left).
    PgResult fetch(const std::string &name, long rows, std::string_view shown);
    /// The rows of a cursor after the first `position`, counted on the server
    /// without fetching them; the cursor stays where it was.
    long countAfter(const std::string &name, long position, std::string_view shown);
    /// Closes a cursor along with the next statement: sends nothing now and never fails.
    void closeCursor(const std::string &name);

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
    PgResult takeSync();
    [[noreturn]] void fail(const PGresult *result, std::string_view shown);
    const std::string &preparedName(const std::string &sql, std::string_view shown);
    struct Ahead {
        std::string shown;
        std::function<void(const PGresult &)> done;
        std::string statement; // the prepared statement's name
        std::vector<Param> params;
    };
    /// The first write sent ahead that failed: what the module wrote, the
    /// server's answer, and the writes of its batch before it.
    struct Refusal {
        std::string shown;
        PgResult result;
        std::vector<Ahead> before;
    };
    void queueAhead(Ahead write);
    /// Ends the pipeline of the writes sent ahead, taking their results.
    std::optional<Refusal> drainAhead();
    /// Runs statements without parameters in one round trip, inside one
    /// savepoint in a transaction, after the cursors waiting to be closed.
    std::vector<PgResult> together(std::vector<std::string> statements, std::string_view shown);
    void endCursors();

    PGconn *conn_ = nullptr;
    bool inTransaction_ = false;
    int timeout_ = 0; // the server's default: no limit
    int wantedTimeout_ = 30;
    std::map<std::string, std::string, std::less<>> prepared_; // sql -> statement name
    std::vector<Ahead> ahead_; // sent in the open pipeline, results not yet taken
    long cursors_ = 0;
    std::vector<std::string> closing_; // cursors to close with the next statement
    std::map<std::string, std::function<void()>> ending_; // open cursors of the transaction
    std::set<std::string> closedInTransaction_; // ended with it, a close no longer due
    long roundTrips_ = 0;
};

} // namespace ado::postgresql
