#include "ado/sqlite/NativeStatement.h"

#include "ado/Connection.h"
#include "ado/Session.h"
#include "ado/sql/DateText.h"
#include "ado/sqlite/Database.h"
#include "ado/sqlite/ErrorMapping.h"
#include "ado/sqlite/SqliteProvider.h"

#include <sqlite3.h>

namespace ado::sqlite {

using sql::canonicalDate;

namespace {

std::string orEmpty(const char *s) {
    return s ? s : "";
}

} // namespace

Database &databaseOf(const Connection &connection) {
    auto *provider = dynamic_cast<SqliteProvider *>(&connection.session().provider());
    if (!provider)
        throw connectionError("The connection '" + connection.ConnectionString() +
                              "' is not an SQLite connection");
    return provider->database();
}

NativeStatement::NativeStatement(const Connection &connection, std::string_view sql)
    : NativeStatement(databaseOf(connection), sql) {}

NativeStatement::NativeStatement(std::shared_ptr<Database> db, sqlite3_stmt *stmt, std::string sql)
    : db_(std::move(db)), stmt_(stmt), sql_(std::move(sql)) {}

std::optional<NativeStatement> NativeStatement::prepareFirst(Database &db, std::string_view &sql,
                                                             std::string_view quotedAs) {
    while (!sql.empty()) {
        sqlite3_stmt *stmt = nullptr;
        const char *tail = nullptr;
        int rc =
            sqlite3_prepare_v2(db.handle(), sql.data(), static_cast<int>(sql.size()), &stmt, &tail);
        if (rc != SQLITE_OK)
            throw db.lastError(quotedAs.empty() ? sql : quotedAs);
        std::size_t used = tail ? static_cast<std::size_t>(tail - sql.data()) : sql.size();
        std::string text(sql.substr(0, used));
        sql.remove_prefix(used);
        if (stmt) {
            NativeStatement prepared(db.shared_from_this(), stmt, std::move(text));
            prepared.quoted_ = std::string(quotedAs);
            return prepared;
        }
    }
    return std::nullopt;
}

NativeStatement::NativeStatement(Database &db, std::string_view sql)
    : db_(db.shared_from_this()), sql_(sql) {
    std::string_view rest = sql;
    auto first = prepareFirst(db, rest);
    if (!first)
        throw statementError("The statement is empty: \"" + firstWords(sql_) + "\"");
    if (prepareFirst(db, rest))
        throw statementError("A native statement holds one statement only: \"" + firstWords(sql_) +
                             "\"");
    std::swap(stmt_, first->stmt_);
}

NativeStatement::~NativeStatement() {
    sqlite3_finalize(stmt_);
}

NativeStatement::NativeStatement(NativeStatement &&other) noexcept
    : db_(std::move(other.db_)), stmt_(other.stmt_), sql_(std::move(other.sql_)),
      quoted_(std::move(other.quoted_)) {
    other.stmt_ = nullptr;
}

void NativeStatement::check(int rc) const {
    if (rc != SQLITE_OK)
        throw db_->lastError(quoted_.empty() ? sql_ : quoted_);
}

void NativeStatement::bindInteger(int index, std::int64_t value) {
    check(sqlite3_bind_int64(stmt_, index, value));
}

void NativeStatement::bindReal(int index, double value) {
    check(sqlite3_bind_double(stmt_, index, value));
}

void NativeStatement::bindText(int index, std::string_view value) {
    check(sqlite3_bind_text64(stmt_, index, value.data(), value.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
}

void NativeStatement::bindNull(int index) {
    check(sqlite3_bind_null(stmt_, index));
}

void NativeStatement::bind(int index, const StoredValue &value) {
    if (const auto *i = std::get_if<std::int64_t>(&value))
        bindInteger(index, *i);
    else if (const auto *d = std::get_if<double>(&value))
        bindReal(index, *d);
    else if (const auto *s = std::get_if<std::string>(&value))
        bindText(index, *s);
    else
        bindNull(index);
}

void NativeStatement::bindValue(int index, const vb::Variant &value) {
    switch (value.type()) {
    case vb::VarType::Empty:
    case vb::VarType::Null:
        bindNull(index);
        break;
    case vb::VarType::Boolean:
        bindInteger(index, value.asBoolean() ? 1 : 0);
        break;
    case vb::VarType::Integer:
    case vb::VarType::Long:
        bindInteger(index, static_cast<std::int64_t>(value.number()));
        break;
    case vb::VarType::Double:
        bindReal(index, value.asDouble());
        break;
    case vb::VarType::Date:
        bindText(index, canonicalDate(value.asDate()));
        break;
    case vb::VarType::String:
        bindText(index, value.asString());
        break;
    }
}

int NativeStatement::parameterCount() const {
    return sqlite3_bind_parameter_count(stmt_);
}

std::string NativeStatement::parameterName(int index) const {
    return orEmpty(sqlite3_bind_parameter_name(stmt_, index));
}

bool NativeStatement::step() {
    const std::string &quoted = quoted_.empty() ? sql_ : quoted_;
    if (!sqlite3_stmt_busy(stmt_) && !sqlite3_stmt_readonly(stmt_))
        db_->beforeWrite(quoted);
    int rc = sqlite3_step(stmt_);
    if (rc == SQLITE_ROW)
        return true;
    if (rc == SQLITE_DONE)
        return false;
    vb::Error error = db_->lastError(quoted);
    sqlite3_reset(stmt_);
    throw error;
}

void NativeStatement::reset() {
    sqlite3_reset(stmt_);
}

bool NativeStatement::busy() const {
    return sqlite3_stmt_busy(stmt_) != 0;
}

int NativeStatement::columnCount() const {
    return sqlite3_column_count(stmt_);
}

std::string NativeStatement::columnName(int column) const {
    return orEmpty(sqlite3_column_name(stmt_, column));
}

std::string NativeStatement::declaredType(int column) const {
    return orEmpty(sqlite3_column_decltype(stmt_, column));
}

std::string NativeStatement::originTable(int column) const {
    return orEmpty(sqlite3_column_table_name(stmt_, column));
}

std::string NativeStatement::originColumn(int column) const {
    return orEmpty(sqlite3_column_origin_name(stmt_, column));
}

StoredValue NativeStatement::stored(int column) const {
    switch (sqlite3_column_type(stmt_, column)) {
    case SQLITE_NULL:
        return std::monostate{};
    case SQLITE_INTEGER:
        return static_cast<std::int64_t>(sqlite3_column_int64(stmt_, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(stmt_, column);
    default:
        return text(column);
    }
}

std::string NativeStatement::text(int column) const {
    const auto *p = sqlite3_column_text(stmt_, column);
    if (!p)
        return "";
    return std::string(reinterpret_cast<const char *>(p),
                       static_cast<std::size_t>(sqlite3_column_bytes(stmt_, column)));
}

std::int64_t NativeStatement::integer(int column) const {
    return sqlite3_column_int64(stmt_, column);
}

bool NativeStatement::isNull(int column) const {
    return sqlite3_column_type(stmt_, column) == SQLITE_NULL;
}

vb::Variant NativeStatement::value(int column) const {
    return readBack(stored(column), columnTypeOf(declaredType(column)).kind);
}

} // namespace ado::sqlite
