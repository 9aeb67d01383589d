// A prepared SQLite statement run as it is written, without translation.
#pragma once

#include "ado/sqlite/ValueConversion.h"
#include "vb/Variant.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3_stmt;

namespace ado {
class Connection;
}

namespace ado::sqlite {

class Database;

/// One native SQLite statement, prepared once and run as often as needed:
/// bind, step, reset, bind again. It is how the schema script and the demo
/// data of init-db load many rows fast:
///
///     ado::sqlite::NativeStatement insert(connection,
///         "insert into aItem (ItemId, itemcode) values (?1, ?2)");
///     for (const auto& item : items) {
///         insert.reset();
///         insert.bindInteger(1, item.id);
///         insert.bindText(2, item.code);
///         insert.step();
///     }
///
/// The text goes to SQLite untranslated: SQLite's own dialect, with the
/// functions and the CITEXT collation of Functions.h. It runs on the
/// connection's database inside whatever transaction is open there, but
/// past the connection's trace file and fault hook. Parameters count from 1;
/// columns from 0. Failures raise vb::Error as every other statement does.
class NativeStatement {
public:
    /// Prepares one statement on the database of an open `sqlite:` connection.
    NativeStatement(const Connection &connection, std::string_view sql);
    NativeStatement(Database &db, std::string_view sql);
    /// Prepares the first statement of `sql` and moves `sql` past it, for
    /// text of several statements run one after the other; nothing when no
    /// statement is left (blanks and comments only). Errors quote `quotedAs`
    /// where it is given (the module's text of which `sql` is the translation).
    static std::optional<NativeStatement> prepareFirst(Database &db, std::string_view &sql,
                                                       std::string_view quotedAs = {});
    ~NativeStatement();
    NativeStatement(NativeStatement &&other) noexcept;
    NativeStatement &operator=(NativeStatement &&) = delete;
    NativeStatement(const NativeStatement &) = delete;
    NativeStatement &operator=(const NativeStatement &) = delete;

    void bindInteger(int index, std::int64_t value);
    void bindReal(int index, double value);
    void bindText(int index, std::string_view value);
    void bindNull(int index);
    /// A stored value as ValueConversion.h makes it.
    void bind(int index, const StoredValue &value);
    /// A value as it stands: integers and Booleans (1/0) as integers, Double as
    /// real, text as text, a date as "YYYY-MM-DD HH:MM:SS", Null and Empty as null.
    void bindValue(int index, const vb::Variant &value);

    int parameterCount() const;
    /// The name of parameter `index` as written (":x", "@x", "?1"), "" for a bare "?".
    std::string parameterName(int index) const;

    /// Runs to the next row: true when a row is ready to read, false when the
    /// statement has finished.
    bool step();
    /// Makes the statement ready to run again; the bound values stay.
    void reset();
    /// True between the first row read and the end or a reset.
    bool busy() const;
    /// The text the statement's errors quote, where it differs from the text
    /// run (the module's own text, of which this is the translation).
    void quoteAs(std::string text) { quoted_ = std::move(text); }

    int columnCount() const;
    std::string columnName(int column) const;
    /// The type the column's table declares, "" for an expression.
    std::string declaredType(int column) const;
    /// The table and column a result column reads, "" for an expression.
    std::string originTable(int column) const;
    std::string originColumn(int column) const;

    StoredValue stored(int column) const;
    std::string text(int column) const;
    std::int64_t integer(int column) const;
    bool isNull(int column) const;
    /// The value as the data layer gives it (ValueConversion.h readBack),
    /// typed by the column's declared type.
    vb::Variant value(int column) const;

    const std::string &sql() const { return sql_; }
    Database &database() const { return *db_; }

private:
    NativeStatement(std::shared_ptr<Database> db, sqlite3_stmt *stmt, std::string sql);
    void check(int rc) const;

    std::shared_ptr<Database> db_;
    sqlite3_stmt *stmt_ = nullptr;
    std::string sql_;
    std::string quoted_;
};

/// The database behind an open `sqlite:` connection; raises for any other.
Database &databaseOf(const Connection &connection);

} // namespace ado::sqlite
