// One open SQLite database file, set up the way the provider needs it.
#pragma once

#include "vb/Error.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace ado::sqlite {

/// An open database file, always held by a shared_ptr (statements keep it
/// alive while they exist): write-ahead log, lock waits bounded by the
/// statement's time limit (TimeLimit; 30 seconds outside one) and the
/// functions and collation that the translated SQL Server text relies on
/// (Functions.h).
///
/// Read-committed as SQL Server's locking readers give it: SQLite's readers
/// would read a snapshot past another user's uncommitted write, where SQL
/// Server's reader waits for that writer. So a statement that starts while
/// this connection holds no write transaction first takes the write lock and
/// gives it back at once (awaitCommitted): it waits for any writer to commit
/// or roll back, and then reads what is committed. One user alone pays two
/// lock calls per statement.
class Database : public std::enable_shared_from_this<Database> {
public:
    enum class Mode {
        OpenExisting, // a missing file is an error
        Create,       // a missing file is made, empty
    };

    /// Opens the file. A file that is missing (in OpenExisting mode), cannot
    /// be opened or is no database raises -2147467259 naming the path.
    Database(std::string_view path, Mode mode);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    sqlite3 *handle() const { return db_; }
    const std::string &path() const { return path_; }

    /// The error of the last failed call on this database, for `statement`.
    vb::Error lastError(std::string_view statement) const;
    /// Rows changed by the last statement that changed rows.
    std::int64_t changes() const;
    /// Rows changed since the database was opened.
    std::int64_t totalChanges() const;
    std::int64_t lastInsertRowid() const;
    /// False while a transaction is open in the engine.
    bool autocommit() const;

    /// Transactions as SQL Server's read-committed ones behave: BeginTrans
    /// only marks one as wanted; it starts (BEGIN IMMEDIATE, which waits up
    /// to the busy timeout for another user's transaction to end) at the
    /// first statement that writes. Reads before that see what is committed
    /// and hold no lock, so a transaction that only reads (one open while a
    /// dialog waits for the user) keeps no other user from saving.
    void beginTransaction();
    void commitTransaction();
    void rollbackTransaction();
    /// True from beginTransaction to commit or rollback.
    bool transactionWanted() const { return wanted_; }
    /// Called before a statement that writes: lets go of half-read rows
    /// (releaseReaders, inside a transaction too) and starts the wanted transaction, waiting for
    /// another writer up to the time limit. `statement` is the text the
    /// error of a timeout quotes.
    void beforeWrite(std::string_view statement = {});
    /// Called before a statement of the module starts: lets go of half-read
    /// rows and, unless this connection holds the write lock itself, waits
    /// until no other connection has an uncommitted write (up to the time
    /// limit, then the timeout error quoting `statement`).
    void awaitCommitted(std::string_view statement);

    /// A reader of rows that may be left half read (a forward-only cursor).
    /// A half-read statement keeps SQLite's read snapshot of the moment it
    /// started; while it lives, later reads on the connection would miss
    /// rows other users commit, and a write could not start. So before the
    /// next statement starts outside a write transaction, every registered
    /// reader is asked to `detach`: read its remaining rows into memory and
    /// finish its statement.
    class Reader {
    public:
        virtual void detach() = 0;

    protected:
        ~Reader() = default;
    };
    void addReader(Reader *reader);
    void removeReader(Reader *reader);
    void releaseReaders();

    /// While it lives, statements on the database stop with a timeout error
    /// after `seconds` (0 lets them run as long as they need).
    class TimeLimit {
    public:
        TimeLimit(Database &db, int seconds);
        ~TimeLimit();
        TimeLimit(const TimeLimit &) = delete;
        TimeLimit &operator=(const TimeLimit &) = delete;

    private:
        Database &db_;
    };

private:
    static int progress(void *self);
    static int busy(void *self, int count);
    bool pastDeadline();
    void runLockStatement(sqlite3_stmt *stmt, std::string_view statement);

    sqlite3 *db_ = nullptr;
    sqlite3_stmt *beginImmediate_ = nullptr;
    sqlite3_stmt *commit_ = nullptr;
    std::vector<Reader *> readers_;
    std::string path_;
    bool wanted_ = false;
    bool limited_ = false; // a TimeLimit is in force
    int limitSeconds_ = 0;
    bool deadlineSet_ = false;
    std::chrono::steady_clock::time_point deadline_;
};

} // namespace ado::sqlite
