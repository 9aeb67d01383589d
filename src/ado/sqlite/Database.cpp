#include "ado/sqlite/Database.h"

#include "ado/sqlite/ErrorMapping.h"
#include "ado/sqlite/Functions.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <sqlite3.h>

namespace ado::sqlite {

namespace {

// How long a lock wait outside a statement's time limit lasts (the schema
// script, init-db): the default command timeout of a connection.
constexpr int defaultWaitSeconds = 30;
// Naps between tries for a lock: short at first, so that a writer that
// commits at once costs little, then steady.
constexpr int naps[] = {1, 2, 5, 10, 15, 20, 25, 25, 25, 50};
// Progress checks every so many virtual machine steps: often enough to stop
// within a fraction of a second, rarely enough to cost nothing measurable.
constexpr int progressSteps = 10000;

} // namespace

Database::Database(std::string_view path, Mode mode) : path_(path) {
    if (mode == Mode::OpenExisting && !std::filesystem::exists(path_))
        throw connectionError("Cannot open the database '" + path_ + "': the file does not exist");
    // One connection serves one thread at a time (the module has one thread),
    // so SQLite need not lock its own structures on every call.
    int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX |
                (mode == Mode::Create ? SQLITE_OPEN_CREATE : 0);
    int rc = sqlite3_open_v2(path_.c_str(), &db_, flags, nullptr);
    if (rc != SQLITE_OK) {
        std::string why = db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(rc);
        sqlite3_close(db_);
        db_ = nullptr;
        throw connectionError("Cannot open the database '" + path_ + "': " + why);
    }
    sqlite3_extended_result_codes(db_, 1);
    sqlite3_busy_handler(db_, &Database::busy, this);
    // The first read of the file happens here, so a file that is no database
    // is found out at once and not at the first statement of the module.
    rc = sqlite3_exec(db_, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) {
        std::string why = sqlite3_errmsg(db_);
        sqlite3_close(db_);
        db_ = nullptr;
        throw connectionError("Cannot open the database '" + path_ + "': " + why);
    }
    registerFunctions(db_);
    for (auto [stmt, sql] : {std::pair{&beginImmediate_, "BEGIN IMMEDIATE"}, {&commit_, "COMMIT"}})
        if (sqlite3_prepare_v3(db_, sql, -1, SQLITE_PREPARE_PERSISTENT, stmt, nullptr) !=
            SQLITE_OK) {
            std::string why = sqlite3_errmsg(db_);
            sqlite3_finalize(beginImmediate_);
            sqlite3_close(db_);
            db_ = nullptr;
            throw connectionError("Cannot open the database '" + path_ + "': " + why);
        }
    // Installed once: a statement's time limit only sets a deadline (TimeLimit).
    sqlite3_progress_handler(db_, progressSteps, &Database::progress, this);
}

Database::~Database() {
    // Closing rolls back a transaction left open: nothing half-written stays.
    sqlite3_finalize(beginImmediate_);
    sqlite3_finalize(commit_);
    sqlite3_close_v2(db_);
}

vb::Error Database::lastError(std::string_view statement) const {
    return engineError(sqlite3_extended_errcode(db_), sqlite3_errmsg(db_), statement);
}

std::int64_t Database::changes() const {
    return sqlite3_changes64(db_);
}
std::int64_t Database::totalChanges() const {
    return sqlite3_total_changes64(db_);
}
std::int64_t Database::lastInsertRowid() const {
    return sqlite3_last_insert_rowid(db_);
}
bool Database::autocommit() const {
    return sqlite3_get_autocommit(db_) != 0;
}

void Database::beginTransaction() {
    wanted_ = true;
}

void Database::runLockStatement(sqlite3_stmt *stmt, std::string_view statement) {
    if (sqlite3_step(stmt) == SQLITE_DONE) {
        sqlite3_reset(stmt);
        return;
    }
    vb::Error error = lastError(statement);
    sqlite3_reset(stmt);
    throw error;
}

void Database::beforeWrite(std::string_view statement) {
    // Inside a transaction too: a half-read statement of this connection
    // would otherwise meet the rows written under it, and a recordset's rows
    // would no longer agree with the count it gave.
    releaseReaders();
    if (!autocommit())
        return;
    if (wanted_)
        runLockStatement(beginImmediate_, statement.empty() ? "BEGIN IMMEDIATE" : statement);
}

void Database::awaitCommitted(std::string_view statement) {
    // Holding the write lock ourselves, no other connection can have written.
    if (!autocommit())
        return;
    releaseReaders();
    runLockStatement(beginImmediate_, statement);
    if (sqlite3_step(commit_) != SQLITE_DONE) {
        vb::Error error = lastError(statement);
        sqlite3_reset(commit_);
        // An empty transaction that cannot commit is rolled back: it holds nothing.
        sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        throw error;
    }
    sqlite3_reset(commit_);
}

void Database::addReader(Reader *reader) {
    readers_.push_back(reader);
}

void Database::removeReader(Reader *reader) {
    readers_.erase(std::remove(readers_.begin(), readers_.end(), reader), readers_.end());
}

void Database::releaseReaders() {
    // A reader may finish while it detaches, but never registers or leaves.
    for (Reader *reader : readers_)
        reader->detach();
}

void Database::commitTransaction() {
    if (!autocommit() && sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
        throw lastError("COMMIT"); // the transaction stays open, to be rolled back
    wanted_ = false;
}

void Database::rollbackTransaction() {
    wanted_ = false;
    // A failure the engine could not contain may have ended the transaction already.
    if (!autocommit() && sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr) != SQLITE_OK)
        throw lastError("ROLLBACK");
}

// The deadline starts at the first check, so that a statement too short to
// reach one (a row of a save) never reads the clock; the few steps before
// count as nothing.
bool Database::pastDeadline() {
    int seconds = limited_ ? limitSeconds_ : defaultWaitSeconds;
    if (seconds <= 0)
        return false;
    auto now = std::chrono::steady_clock::now();
    if (!deadlineSet_) {
        deadline_ = now + std::chrono::seconds(seconds);
        deadlineSet_ = true;
    }
    return now > deadline_;
}

// Called every so many steps of a running statement.
int Database::progress(void *self) {
    auto *db = static_cast<Database *>(self);
    return db->limited_ && db->pastDeadline() ? 1 : 0;
}

// Called while another connection holds the lock a statement needs: waits,
// and gives up (the statement then fails with the timeout error) when the
// statement's time is over.
int Database::busy(void *self, int count) {
    auto *db = static_cast<Database *>(self);
    if (!db->limited_ && count == 0)
        db->deadlineSet_ = false; // each wait outside a time limit gets its own
    if (db->pastDeadline())
        return 0;
    auto step = static_cast<std::size_t>(count);
    sqlite3_sleep(step < std::size(naps) ? naps[step] : naps[std::size(naps) - 1]);
    return 1;
}

Database::TimeLimit::TimeLimit(Database &db, int seconds) : db_(db) {
    db_.limited_ = true;
    db_.limitSeconds_ = seconds;
    db_.deadlineSet_ = false;
}

Database::TimeLimit::~TimeLimit() {
    db_.limited_ = false;
    db_.limitSeconds_ = 0;
    db_.deadlineSet_ = false;
}

} // namespace ado::sqlite
