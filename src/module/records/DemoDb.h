// What the demo loader asks of the database: bulk inserts, a number read, a procedure run.
// The builder writes through this interface only, so that one demo serves every engine.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace records {

/// One value of a row: null, a whole number, a number or text (dates as stored text).
struct Cell {
    Cell(std::nullptr_t) {}
    Cell(int v) : value(std::int64_t{v}) {}
    Cell(long v) : value(std::int64_t{v}) {}
    Cell(long long v) : value(std::int64_t{v}) {}
    Cell(double v) : value(v) {}
    Cell(std::string v) : value(std::move(v)) {}
    Cell(std::string_view v) : value(std::string(v)) {}
    Cell(const char *v) : value(std::string(v)) {}

    std::variant<std::monostate, std::int64_t, double, std::string> value;
};

/// Rows going into one table, prepared once.
class DemoRows {
public:
    virtual ~DemoRows() = default;
    /// Inserts one row; the cells stand in the order of the columns, one for each.
    virtual void row(std::span<const Cell> cells) = 0;
};

/// The database a demo is loaded into. Statements given to `number` and `execute` are
/// written in the SQL that every engine takes alike (no engine's own functions).
class DemoDb {
public:
    virtual ~DemoDb() = default;
    virtual std::unique_ptr<DemoRows> prepareInsert(std::string_view table,
                                                    std::span<const std::string_view> columns) = 0;
    /// The first column of the first row, as a number; 0 when there is no row or it is null.
    virtual double number(std::string_view sql) = 0;
    /// Runs a statement that returns no rows.
    virtual void execute(std::string_view sql) = 0;
    /// Runs a stored procedure with its arguments in order, as the module runs it, with no
    /// time limit (a total count of a large godown takes a while).
    virtual void call(std::string_view procedure, std::span<const Cell> arguments) = 0;
};

/// A prepared "INSERT INTO table (columns) VALUES (...)", for loading many rows fast.
class DemoInsert {
public:
    DemoInsert(DemoDb &db, std::string_view table,
               std::initializer_list<std::string_view> columns);

    /// Inserts one row; the cells stand in the order of the columns. A row of another
    /// length raises a vb::Error that quotes the table.
    void row(std::initializer_list<Cell> cells);

private:
    std::unique_ptr<DemoRows> rows_;
    std::string table_;
    std::size_t columns_;
};

inline double demoNumber(DemoDb &db, std::string_view sql) { return db.number(sql); }
inline void demoExecute(DemoDb &db, std::string_view sql) { db.execute(sql); }
inline void demoCall(DemoDb &db, std::string_view procedure,
                     std::initializer_list<Cell> arguments) {
    db.call(procedure, std::span<const Cell>(arguments.begin(), arguments.size()));
}

} // namespace records
