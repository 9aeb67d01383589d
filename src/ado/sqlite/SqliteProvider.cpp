#include "ado/sqlite/SqliteProvider.h"

#include "ado/Errors.h"
#include "ado/sqlite/CatalogReader.h"
#include "ado/sqlite/ErrorMapping.h"
#include "ado/sqlite/SqliteCursor.h"
#include "ado/sqlite/SqliteDialect.h"
#include "ado/sqlite/StoredProcedures.h"
#include "vb/Conversion.h"

#include <sqlite3.h>

namespace ado::sqlite {

using sql::lowerCase;

namespace {

std::string quoted(std::string_view name) {
    std::string out = "\"";
    for (char c : name) {
        out += c;
        if (c == '"')
            out += '"';
    }
    return out + "\"";
}

// The values of a written row, for the trace.
std::string describeValues(const std::vector<ColumnValue> &values) {
    std::string out;
    for (const auto &v : values) {
        out += out.empty() ? "" : ", ";
        out += *v.column + "=";
        if (v.value->isNull() || v.value->isEmpty())
            out += "NULL";
        else if (v.value->isString())
            out += "'" + v.value->asString() + "'";
        else
            out += vb::CStr(*v.value);
    }
    return out;
}

// A second statement in one call (the shape of text pasted into a search
// field: "'; update aItem set itemrate=0; --") runs nothing at all.
vb::Error severalStatements(std::string_view sql) {
    return statementError("The command text holds more than one statement; one call runs one "
                          "statement: \"" +
                          firstWords(sql) + "\"");
}

// Insert, update and delete report the rows they changed; other statements none.
bool changesRows(std::string_view sql) {
    auto first = sql.find_first_not_of(" \t\r\n(");
    if (first == std::string_view::npos)
        return false;
    std::string word = lowerCase(sql.substr(first, 7));
    return word.rfind("insert", 0) == 0 || word.rfind("update", 0) == 0 ||
           word.rfind("delete", 0) == 0 || word.rfind("replace", 0) == 0;
}

} // namespace

SqliteProvider::SqliteProvider(std::string_view path, Database::Mode mode)
    : db_(std::make_shared<Database>(path, mode)) {}

const Catalog &SqliteProvider::catalog() {
    if (!schemaVersionQuery_)
        schemaVersionQuery_ = std::make_unique<NativeStatement>(*db_, "PRAGMA schema_version");
    schemaVersionQuery_->reset();
    schemaVersionQuery_->step();
    std::int64_t version = schemaVersionQuery_->integer(0);
    schemaVersionQuery_->reset();
    if (version != schemaVersion_) {
        catalog_ = readCatalog(*db_);
        lastInsert_ = nullptr;
        writes_.clear();
        schemaVersion_ = version;
    }
    return catalog_;
}

std::unique_ptr<Cursor> SqliteProvider::open(std::string_view sql, bool updatable,
                                             StatementLog &log) {
    Translation t = translate(sql, catalog(), {updatable});
    log.translated = t.sql;
    log.rowsMeaning = "read";
    if (t.statements > 1)
        throw severalStatements(sql);
    if (t.statements == 0)
        throw statementError("A recordset opens one statement: \"" + firstWords(sql) + "\"");
    Database::TimeLimit limit(*db_, timeout_);
    db_->awaitCommitted(sql);
    std::string_view rest = t.sql;
    auto statement = NativeStatement::prepareFirst(*db_, rest, sql);
    if (statement->columnCount() == 0) {
        // A statement that returns no rows runs at once; the recordset stays closed.
        while (statement->step()) {
        }
        log.rows = changesRows(statement->sql()) ? static_cast<long>(db_->changes()) : 0;
        log.rowsMeaning = "changed";
    }
    return std::make_unique<SqliteCursor>(std::move(*statement), t, timeout_);
}

std::unique_ptr<Cursor> SqliteProvider::execute(std::string_view sql, long &rowsAffected,
                                                StatementLog &log) {
    Translation t = translate(sql, catalog());
    log.translated = t.sql;
    if (t.statements > 1)
        throw severalStatements(sql);
    Database::TimeLimit limit(*db_, timeout_);
    db_->awaitCommitted(sql);
    std::string_view rest = t.sql;
    rowsAffected = 0;
    while (auto statement = NativeStatement::prepareFirst(*db_, rest, sql)) {
        if (t.statements == 1 && statement->columnCount() > 0) {
            log.rowsMeaning = "read";
            return std::make_unique<SqliteCursor>(std::move(*statement), t, timeout_);
        }
        while (statement->step()) {
        }
        if (changesRows(statement->sql()))
            rowsAffected += static_cast<long>(db_->changes());
    }
    log.rows = rowsAffected;
    return nullptr;
}

SqliteProvider::Prepared &SqliteProvider::prepared(const std::string &key, const std::string &sql,
                                                   std::string_view table,
                                                   const std::vector<ColumnValue> &values) {
    const Catalog &c = catalog(); // may forget every prepared write: look up afterwards
    if (auto it = writes_.find(key); it != writes_.end())
        return it->second;
    if (!c.hasTable(table))
        throw engineError(SQLITE_ERROR, "no such table: " + std::string(table), sql);
    Prepared p{NativeStatement(*db_, sql), {}, std::string(table), {}};
    for (const auto &v : values) {
        p.types.push_back(c.columnType(table, *v.column));
        p.columns.push_back(*v.column);
    }
    return writes_.emplace(key, std::move(p)).first->second;
}

void SqliteProvider::bindValues(Prepared &p, const std::vector<ColumnValue> &values) {
    p.statement.reset();
    for (std::size_t i = 0; i < values.size(); ++i) {
        try {
            p.statement.bind(static_cast<int>(i) + 1, toStored(*values[i].value, p.types[i]));
        } catch (const vb::Error &e) {
            // Say which column refused the value: the message alone may not.
            throw vb::Error(e.number(), e.source(),
                            e.description() + " (column " + *values[i].column + ")");
        }
    }
}

bool SqliteProvider::Prepared::sameWrite(std::string_view t,
                                         const std::vector<ColumnValue> &values) const {
    if (t != table || values.size() != columns.size())
        return false;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (*values[i].column != columns[i])
            return false;
    return true;
}

std::int64_t SqliteProvider::insertRow(std::string_view table,
                                       const std::vector<ColumnValue> &values, StatementLog &log) {
    Prepared *p = lastInsert_;
    if (!p || !p->sameWrite(table, values)) {
        std::string key = "insert\x1f" + std::string(table);
        for (const auto &v : values)
            key += "\x1f" + *v.column;
        std::string sql = "INSERT INTO " + quoted(table), names, marks;
        for (std::size_t i = 0; i < values.size(); ++i) {
            names += (i ? ", " : "") + quoted(*values[i].column);
            marks += (i ? ", ?" : "?") + std::to_string(i + 1);
        }
        sql += values.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + marks + ")";
        p = &prepared(key, sql, table, values);
        lastInsert_ = p;
    }
    if (log.detailed)
        log.translated = p->statement.sql() + "\n" + describeValues(values);
    bindValues(*p, values);
    Database::TimeLimit limit(*db_, timeout_);
    p->statement.step();
    log.rows = 1;
    return db_->lastInsertRowid();
}

std::int64_t SqliteProvider::updateRow(std::string_view table, std::int64_t rowid,
                                       const std::vector<ColumnValue> &values, StatementLog &log) {
    if (values.empty())
        return rowid;
    std::string key = "update\x1f" + std::string(table);
    for (const auto &v : values)
        key += "\x1f" + *v.column;
    std::string sql = "UPDATE " + quoted(table) + " SET ";
    for (std::size_t i = 0; i < values.size(); ++i)
        sql += (i ? ", " : "") + quoted(*values[i].column) + " = ?" + std::to_string(i + 1);
    sql += " WHERE rowid = ?" + std::to_string(values.size() + 1);
    Prepared &p = prepared(key, sql, table, values);
    if (log.detailed)
        log.translated = sql + "\n" + describeValues(values) + ", rowid=" + std::to_string(rowid);
    bindValues(p, values);
    p.statement.bindInteger(static_cast<int>(values.size()) + 1, rowid);
    Database::TimeLimit limit(*db_, timeout_);
    p.statement.step();
    log.rows = static_cast<long>(db_->changes());
    if (log.rows == 0)
        throw adoError(errnum::RowNotLocated, std::string(providerSource),
                       adoErrorText(errnum::RowNotLocated) + " (" + std::string(table) + " rowid " +
                           std::to_string(rowid) + ")");
    return rowid; // an update keeps a row's rowid
}

std::vector<vb::Variant> SqliteProvider::readRow(std::string_view table, std::int64_t rowid,
                                                 const std::vector<std::string> &columns) {
    std::string names;
    for (const auto &c : columns)
        names += (names.empty() ? "" : ", ") + quoted(c);
    std::string sql = "SELECT " + (names.empty() ? std::string("1") : names) + " FROM " +
                      quoted(table) + " WHERE rowid = ?1";
    auto it = writes_.find(sql);
    if (it == writes_.end())
        it = writes_.emplace(sql, Prepared{NativeStatement(*db_, sql), {}, {}, {}}).first;
    NativeStatement &st = it->second.statement;
    st.reset();
    st.bindInteger(1, rowid);
    std::vector<vb::Variant> values;
    if (st.step())
        for (std::size_t i = 0; i < columns.size(); ++i)
            values.push_back(st.value(static_cast<int>(i)));
    st.reset();
    return values;
}

std::vector<ParameterInfo> SqliteProvider::procedureParameters(std::string_view name) {
    return describeProcedure(*db_, name);
}

long SqliteProvider::runProcedure(std::string_view name, const std::vector<vb::Variant> &arguments,
                                  StatementLog &log) {
    Database::TimeLimit limit(*db_, timeout_);
    db_->awaitCommitted(name);
    runProcedureBody(*db_, catalog(), name, arguments, log);
    return 0;
}

void SqliteProvider::beginTransaction() {
    db_->beginTransaction();
}

void SqliteProvider::commitTransaction() {
    db_->commitTransaction();
}

void SqliteProvider::rollbackTransaction() {
    db_->rollbackTransaction();
}

} // namespace ado::sqlite
