// One open SQLite database file, set up the way the provider needs it.
#pragma once

#include "vb/Error.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;

namespace ado::sqlite {

/// An open database file, always held by a shared_ptr (statements keep it
/// alive while they exist): write-ahead log, a busy timeout of 5 seconds (so
/// that two users of one file wait for each other) and the functions and
/// collation that the translated SQL Server text relies on (Functions.h).
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
    /// Called before a statement that writes: starts the wanted transaction.
    void beforeWrite();

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

    sqlite3 *db_ = nullptr;
    std::string path_;
    bool wanted_ = false;
    int limitSeconds_ = 0;
    bool deadlineSet_ = false;
    std::chrono::steady_clock::time_point deadline_;
};

} // namespace ado::sqlite
