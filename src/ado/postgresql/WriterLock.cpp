#include "ado/postgresql/WriterLock.h"

#include "ado/postgresql/PgConnection.h"
#include "ado/sql/Catalog.h"

namespace ado::postgresql {

namespace {
// One key for the database: advisory locks belong to the database they are taken in.
constexpr std::string_view waitForWriter =
    "select pg_advisory_lock_shared(5356001), pg_advisory_unlock_shared(5356001)";
constexpr std::string_view becomeWriter = "select pg_advisory_xact_lock(5356001)";
} // namespace

void WriterLock::beforeRead() {
    if (!held_)
        connection_.run(waitForWriter, {}, "waiting for another user's save");
}

void WriterLock::beforeWrite() {
    if (held_ || !connection_.inTransaction())
        return;
    connection_.run(becomeWriter, {}, "waiting for another user's save");
    held_ = true;
}

bool WriterLock::readsOnly(std::string_view sql) {
    const auto first = sql.find_first_not_of(" \t\r\n(");
    if (first == std::string_view::npos)
        return true;
    return sql::lowerCase(sql.substr(first, 6)) == "select";
}

} // namespace ado::postgresql
