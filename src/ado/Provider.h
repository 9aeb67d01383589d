// The interface between the data access objects and a database engine.
#pragma once

#include "vb/Variant.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

/// What a provider tells about one statement it ran, for the trace file.
struct StatementLog {
    /// Set when a trace is written: the provider may then spend time on
    /// details (the values of a written row).
    bool detailed = false;
    /// The text as the engine ran it (the translation), "" when it is the text sent.
    std::string translated;
    /// Rows read, or changed; -1 when not known (a cursor still open).
    long rows = -1;
    /// "read" or "changed", to go with `rows`.
    std::string rowsMeaning = "changed";
};

/// One result column of an open statement.
struct FieldInfo {
    /// The name as the statement gave it: the alias, or the column as written;
    /// "" for an expression without an alias.
    std::string name;
    /// The column of the base table that the field reads, "" for an expression
    /// or a column of another table: only these fields can be written.
    std::string baseColumn;
};

/// One row as read: its values, and the rowid that identifies it in the base
/// table for a later change (0 when it has none).
struct Row {
    std::vector<vb::Variant> values;
    std::int64_t rowid = 0;
};

/// The rows of an open select, read one at a time.
class Cursor {
public:
    virtual ~Cursor() = default;
    virtual const std::vector<FieldInfo> &fields() const = 0;
    /// The one table that rows of this cursor can be added to and changed in;
    /// "" when the statement reads no single table.
    virtual const std::string &baseTable() const = 0;
    /// True when the rows carry their rowid, so that they can be changed.
    virtual bool rowsIdentified() const = 0;
    /// Reads the next row into `row`: false when there is none.
    virtual bool next(Row &row) = 0;
    /// Starts again before the first row.
    virtual void restart() = 0;
    /// The rows that `next` has yet to give, counted without reading them and
    /// in agreement with what `next` will give; nothing when the provider
    /// cannot count them so (the caller then reads the rows to count them).
    virtual std::optional<long> remaining() { return std::nullopt; }
};

/// A column name and the value to write into it.
struct ColumnValue {
    const std::string *column;
    const vb::Variant *value;
};

/// A parameter of a stored procedure as the provider describes it.
struct ParameterInfo {
    std::string name;  // "@RETURN_VALUE", "@svhid"
    std::string type;  // as declared: "int", "varchar(1)"
    int direction = 1; // adParamInput 1, adParamReturnValue 4
};

/// A database engine as the data access objects use it. Every call raises
/// vb::Error on failure, with the numbers of the old data layer.
class Provider {
public:
    virtual ~Provider() = default;

    /// Opens a select (or any statement that returns rows) for reading.
    /// `updatable` asks for rows identified for a later change.
    virtual std::unique_ptr<Cursor> open(std::string_view sql, bool updatable,
                                         StatementLog &log) = 0;
    /// Runs a statement: the rows it returns as a cursor, or none and the
    /// number of rows it changed in `rowsAffected`.
    virtual std::unique_ptr<Cursor> execute(std::string_view sql, long &rowsAffected,
                                            StatementLog &log) = 0;

    /// Adds a row; returns its rowid.
    virtual std::int64_t insertRow(std::string_view table, const std::vector<ColumnValue> &values,
                                   StatementLog &log) = 0;
    /// Changes a row identified by its rowid; returns the rowid that identifies it from now
    /// on, which differs where the engine moves a changed row (PostgreSQL's ctid).
    virtual std::int64_t updateRow(std::string_view table, std::int64_t rowid,
                                   const std::vector<ColumnValue> &values, StatementLog &log) = 0;
    /// Reads columns of a row again, after it has been written.
    virtual std::vector<vb::Variant> readRow(std::string_view table, std::int64_t rowid,
                                             const std::vector<std::string> &columns) = 0;

    /// The parameters of a stored procedure: the return value first, then the
    /// arguments in order.
    virtual std::vector<ParameterInfo> procedureParameters(std::string_view name) = 0;
    /// Runs a stored procedure with its arguments in order; returns its return value.
    virtual long runProcedure(std::string_view name, const std::vector<vb::Variant> &arguments,
                              StatementLog &log) = 0;

    virtual void beginTransaction() = 0;
    virtual void commitTransaction() = 0;
    virtual void rollbackTransaction() = 0;

    /// Statements stop with a timeout error after this many seconds (0: never).
    virtual void setCommandTimeout(int seconds) = 0;
};

} // namespace ado
