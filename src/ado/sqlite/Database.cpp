#include "ado/sqlite/Database.h"

#include "ado/sqlite/ErrorMapping.h"
#include "ado/sqlite/Functions.h"

#include <filesystem>
#include <sqlite3.h>

namespace ado::sqlite {

namespace {

constexpr int busyTimeoutMs = 5000;
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
    sqlite3_busy_timeout(db_, busyTimeoutMs);
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
    // Installed once: a statement's time limit only sets a deadline (TimeLimit).
    sqlite3_progress_handler(db_, progressSteps, &Database::progress, this);
}

Database::~Database() {
    // Closing rolls back a transaction left open: nothing half-written stays.
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

// Called every so many steps of a running statement. The deadline starts at
// the first call, so that a statement too short to reach it (a row of a save)
// never reads the clock; the few steps before count as nothing.
void Database::beginTransaction() {
    wanted_ = true;
}

void Database::beforeWrite() {
    if (!wanted_ || !autocommit())
        return;
    if (sqlite3_exec(db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr) != SQLITE_OK)
        throw lastError("BEGIN IMMEDIATE");
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

int Database::progress(void *self) {
    auto *db = static_cast<Database *>(self);
    if (db->limitSeconds_ <= 0)
        return 0;
    auto now = std::chrono::steady_clock::now();
    if (!db->deadlineSet_) {
        db->deadline_ = now + std::chrono::seconds(db->limitSeconds_);
        db->deadlineSet_ = true;
    }
    return now > db->deadline_ ? 1 : 0;
}

Database::TimeLimit::TimeLimit(Database &db, int seconds) : db_(db) {
    db_.limitSeconds_ = seconds;
    db_.deadlineSet_ = false;
}

Database::TimeLimit::~TimeLimit() {
    db_.limitSeconds_ = 0;
}

} // namespace ado::sqlite
