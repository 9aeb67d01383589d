#include "ado/postgresql/PgProvider.h"

#include "ado/Errors.h"
#include "ado/postgresql/PgCursor.h"
#include "ado/postgresql/PgErrorMapping.h"
#include "ado/sql/DateText.h"
#include "vb/Clock.h"

#include <charconv>
#include <cstdlib>

namespace ado::postgresql {

namespace {

vb::Error statementError(std::string description) {
    return vb::Error(errnum::Statement, std::string(providerSource), std::move(description));
}

// A statement that changes the tables makes the catalog out of date.
bool changesSchema(std::string_view sql) {
    auto first = sql.find_first_not_of(" \t\r\n(");
    if (first == std::string_view::npos)
        return false;
    std::string word = sql::lowerCase(sql.substr(first, 6));
    return word == "create" || word.rfind("alter", 0) == 0 || word.rfind("drop", 0) == 0;
}

// The rowids that stand for rows still in the pipeline lie below every key a
// table holds and every ctid.
constexpr std::int64_t provisionalBase = -(std::int64_t{1} << 62);

long affected(const PgResult &r) {
    return std::atol(PQcmdTuples(r.get()));
}

std::string describeValues(const std::vector<ColumnValue> &values) {
    std::string out;
    for (const auto &v : values) {
        Param p = parameterOf(*v.value);
        out += (out.empty() ? "" : ", ") + *v.column + "=" + (p ? "'" + *p + "'" : "NULL");
    }
    return out;
}

// getdate() is the program's clock (vb::Now), which tests and scenarios fix, not the
// server's: the server's sv_getdate reads it from a setting of the session, set before each
// statement that reads the clock.
bool readsClock(std::string_view translated) {
    return translated.find("sv_getdate") != std::string_view::npos;
}

void setProgramClock(PgConnection &conn) {
    conn.runPrepared("SELECT set_config('stockverify.now', $1, false)",
                     {sql::canonicalDate(vb::Now())}, "getdate()");
}

} // namespace

Param parameterOf(const vb::Variant &value) {
    switch (value.type()) {
    case vb::VarType::Empty:
    case vb::VarType::Null:
        return std::nullopt;
    case vb::VarType::Boolean:
        return value.asBoolean() ? "1" : "0";
    case vb::VarType::Integer:
        return std::to_string(value.asInteger());
    case vb::VarType::Long:
        return std::to_string(value.asLong());
    case vb::VarType::Double: {
        // The shortest text that reads back as the same double: 0.1 stays
        // "0.1", so that a numeric column gets the decimal the user typed.
        char buffer[32];
        auto end = std::to_chars(buffer, buffer + sizeof buffer, value.asDouble()).ptr;
        return std::string(buffer, end);
    }
    case vb::VarType::Date:
        return sql::canonicalDate(value.asDate());
    case vb::VarType::String:
        return value.asString();
    }
    return value.asString();
}

PgProvider::PgProvider(const std::string &uri)
    : conn_(std::make_shared<PgConnection>(uri)), writerLock_(*conn_) {}

void PgProvider::beforeStatement(std::string_view sql) {
    if (WriterLock::readsOnly(sql))
        writerLock_.beforeRead();
    else
        writerLock_.beforeWrite();
    if (readsClock(sql))
        setProgramClock(*conn_);
}

const PgCatalog &PgProvider::catalog() {
    if (!catalog_)
        catalog_ = readCatalog(*conn_);
    return *catalog_;
}

sql::Translation PgProvider::translated(std::string_view sql, bool updatable, StatementLog &log) {
    sql::Translation t = sql::translate(sql, catalog().tables, dialect_, {updatable});
    log.translated = t.sql;
    if (t.statements > 1)
        throw statementError("The command text holds more than one statement; one call runs one "
                             "statement: \"" +
                             firstWords(sql) + "\"");
    return t;
}

std::unique_ptr<Cursor> PgProvider::cursor(PgResult result, const sql::Translation &t,
                                           std::string_view sql) {
    auto conn = conn_;
    return std::make_unique<PgCursor>(
        std::move(result), t, catalog(),
        [conn, text = t.sql, shown = std::string(sql)] {
            if (readsClock(text))
                setProgramClock(*conn);
            return conn->run(text, {}, shown);
        });
}

std::unique_ptr<Cursor> PgProvider::open(std::string_view sql, bool updatable, StatementLog &log) {
    sql::Translation t = translated(sql, updatable, log);
    log.rowsMeaning = "read";
    if (t.statements == 0)
        throw statementError("A recordset opens one statement: \"" + firstWords(sql) + "\"");
    beforeStatement(t.sql);
    if (WriterLock::readsOnly(t.sql)) {
        // Read through a cursor on the server: what the recordset does not
        // read is never sent (the rows are not known yet).
        const PgCatalog &tables = catalog();
        return std::make_unique<PgCursor>(conn_, std::string(sql), t, tables);
    }
    PgResult r = conn_->run(t.sql, {}, sql);
    if (changesSchema(t.sql))
        catalog_.reset();
    if (PQnfields(r.get()) == 0) {
        // A statement that returns no rows has run; the recordset stays closed.
        log.rows = affected(r);
        log.rowsMeaning = "changed";
    } else {
        log.rows = PQntuples(r.get());
    }
    return cursor(std::move(r), t, sql);
}

std::unique_ptr<Cursor> PgProvider::execute(std::string_view sql, long &rowsAffected,
                                            StatementLog &log) {
    sql::Translation t = translated(sql, false, log);
    rowsAffected = 0;
    if (t.statements == 0)
        return nullptr;
    beforeStatement(t.sql);
    PgResult r = conn_->run(t.sql, {}, sql);
    if (changesSchema(t.sql))
        catalog_.reset();
    if (PQnfields(r.get()) > 0) {
        log.rowsMeaning = "read";
        log.rows = PQntuples(r.get());
        return cursor(std::move(r), t, sql);
    }
    rowsAffected = affected(r);
    log.rows = rowsAffected;
    return nullptr;
}

const sql::Catalog &PgProvider::tableOf(std::string_view table) {
    const sql::Catalog &tables = catalog().tables;
    if (!tables.hasTable(table))
        throw vb::Error(errnum::InvalidObject, std::string(providerSource),
                        "Invalid object name '" + std::string(table) + "'.");
    return tables;
}

std::int64_t PgProvider::insertRow(std::string_view table, const std::vector<ColumnValue> &values,
                                   StatementLog &log) {
    const std::string &key = tableOf(table).keyColumn(table);
    std::string sql = "INSERT INTO " + serverName(table), names, marks;
    std::vector<Param> params;
    for (std::size_t i = 0; i < values.size(); ++i) {
        names += (i ? ", " : "") + serverName(*values[i].column);
        marks += (i ? ", $" : "$") + std::to_string(i + 1);
        params.push_back(parameterOf(*values[i].value));
    }
    sql += values.empty() ? " DEFAULT VALUES" : " (" + names + ") VALUES (" + marks + ")";
    sql += " RETURNING " + (key.empty() ? std::string("ctid") : serverName(key));
    if (log.detailed)
        log.translated = sql + "\n" + describeValues(values);
    writerLock_.beforeWrite();
    log.rows = 1;
    // The row's rowid is known once the server has run the insert: until
    // then the recordset holds one that stands for it (rowidOf).
    const std::int64_t provisional = provisionalBase - static_cast<std::int64_t>(inserted_.size());
    inserted_.push_back(0);
    const std::size_t at = inserted_.size() - 1;
    conn_->sendAhead(sql, params, "insert into " + std::string(table),
                     [this, at, byTid = key.empty()](const PGresult &r) {
                         if (PQntuples(&r) == 0 || PQgetisnull(&r, 0, 0))
                             return;
                         inserted_[at] = byTid ? rowidOfTid(PQgetvalue(&r, 0, 0))
                                               : std::strtoll(PQgetvalue(&r, 0, 0), nullptr, 10);
                     });
    return conn_->writesAhead() > 0 ? provisional : inserted_[at];
}

std::int64_t PgProvider::rowidOf(std::int64_t rowid) {
    if (rowid > provisionalBase)
        return rowid;
    conn_->settle();
    return inserted_.at(static_cast<std::size_t>(provisionalBase - rowid));
}

std::int64_t PgProvider::updateRow(std::string_view table, std::int64_t rowid,
                                   const std::vector<ColumnValue> &values, StatementLog &log) {
    if (values.empty())
        return rowid;
    const std::string &key = tableOf(table).keyColumn(table);
    rowid = rowidOf(rowid);
    std::string sql = "UPDATE " + serverName(table) + " SET ";
    std::vector<Param> params;
    for (std::size_t i = 0; i < values.size(); ++i) {
        sql += (i ? ", " : "") + serverName(*values[i].column) + " = $" + std::to_string(i + 1);
        params.push_back(parameterOf(*values[i].value));
    }
    sql += " WHERE " + identity(key, rowid, params) + " RETURNING ctid";
    if (log.detailed)
        log.translated = sql + "\n" + describeValues(values) + ", " + params.back().value_or("");
    writerLock_.beforeWrite();
    PgResult r = conn_->runPrepared(sql, params, "update " + std::string(table));
    log.rows = affected(r);
    if (log.rows == 0)
        throw adoError(errnum::RowNotLocated, std::string(providerSource),
                       adoErrorText(errnum::RowNotLocated) + " (" + std::string(table) + " " +
                           params.back().value_or("") + ")");
    // The new version of a row stands at a new ctid; the slot it left may later hold
    // another row, so only the recordset that changed the row may know it by the new one.
    return key.empty() ? rowidOfTid(PQgetvalue(r.get(), 0, 0)) : rowid;
}

std::vector<vb::Variant> PgProvider::readRow(std::string_view table, std::int64_t rowid,
                                             const std::vector<std::string> &columns) {
    const std::string &key = tableOf(table).keyColumn(table);
    rowid = rowidOf(rowid);
    if (rowid == 0)
        return {}; // the row keeps the values it was written with
    std::string names;
    for (const auto &c : columns)
        names += (names.empty() ? "" : ", ") + serverName(c);
    std::vector<Param> params;
    std::string sql = "SELECT " + (names.empty() ? std::string("1") : names) + " FROM " +
                      serverName(table) + " WHERE " + identity(key, rowid, params);
    PgResult r = conn_->runPrepared(sql, params, "select from " + std::string(table));
    std::vector<vb::Variant> values;
    if (PQntuples(r.get()) == 0)
        return values;
    const PgCatalog &c = catalog();
    for (int i = 0; i < static_cast<int>(columns.size()); ++i) {
        bool bit = c.tables.columnType(table, columns[i]).kind == sql::ColumnKind::Bit;
        values.push_back(PQgetisnull(r.get(), 0, i)
                             ? vb::Variant::null()
                             : readValue(PQgetvalue(r.get(), 0, i), PQftype(r.get(), i), bit));
    }
    return values;
}

std::string PgProvider::identity(const std::string &key, std::int64_t rowid,
                                 std::vector<Param> &params) const {
    std::string mark = "$" + std::to_string(params.size() + 1);
    if (!key.empty()) {
        params.push_back(std::to_string(rowid));
        return serverName(key) + " = " + mark;
    }
    params.push_back(tidOfRowid(rowid));
    return "ctid = " + mark;
}

std::vector<ParameterInfo> PgProvider::procedureParameters(std::string_view name) {
    PgResult r =
        conn_->run("select a.name, format_type(a.type, null), p.prorettype::regtype::text "
                   "from pg_proc p, unnest(coalesce(p.proargnames, array[]::text[]), "
                   "p.proargtypes::oid[]) with ordinality as a(name, type, n) "
                   "where p.proname = lower($1) and pg_function_is_visible(p.oid) order by a.n",
                   {std::string(name)}, "procedure " + std::string(name));
    std::vector<ParameterInfo> out;
    out.push_back({"@RETURN_VALUE", "int", 4});
    for (int i = 0; i < PQntuples(r.get()); ++i)
        out.push_back({"@" + std::string(PQgetvalue(r.get(), i, 0)),
                       sqlServerType(PQgetvalue(r.get(), i, 1), 0), 1});
    if (PQntuples(r.get()) == 0) {
        PgResult exists = conn_->run(
            "select 1 from pg_proc p where p.proname = lower($1) and pg_function_is_visible(p.oid)",
            {std::string(name)}, "procedure " + std::string(name));
        if (PQntuples(exists.get()) == 0)
            throw statementError("Could not find stored procedure '" + std::string(name) + "'.");
    }
    return out;
}

// A procedure's body reads the clock through sv_getdate(), as the module's statements do:
// the program's clock is set before a call of a procedure that names it. Which ones do is
// asked once per connection.
bool PgProvider::procedureReadsClock(std::string_view name) {
    std::string key = sql::lowerCase(name);
    auto known = readsClock_.find(key);
    if (known != readsClock_.end())
        return known->second;
    PgResult r = conn_->runPrepared(
        "SELECT 1 FROM pg_proc p WHERE p.proname = $1 AND pg_function_is_visible(p.oid) "
        "AND p.prosrc ILIKE '%sv\\_getdate%'",
        {key}, "procedure " + std::string(name));
    return readsClock_[key] = PQntuples(r.get()) > 0;
}

long PgProvider::runProcedure(std::string_view name, const std::vector<vb::Variant> &arguments,
                              StatementLog &log) {
    std::string sql = "SELECT " + serverName(name) + "(";
    std::vector<Param> params;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        sql += (i ? ", $" : "$") + std::to_string(i + 1);
        params.push_back(parameterOf(arguments[i]));
    }
    sql += ")";
    log.translated = sql;
    writerLock_.beforeWrite();
    if (procedureReadsClock(name))
        setProgramClock(*conn_);
    PgResult r = conn_->runPrepared(sql, params, "procedure " + std::string(name));
    log.rows = -1;
    if (PQntuples(r.get()) == 1 && PQnfields(r.get()) == 1 && !PQgetisnull(r.get(), 0, 0)) {
        Oid type = PQftype(r.get(), 0);
        if (type == 20 || type == 21 || type == 23)
            return std::atol(PQgetvalue(r.get(), 0, 0));
    }
    return 0;
}

} // namespace ado::postgresql
