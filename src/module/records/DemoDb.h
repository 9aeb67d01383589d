// What the demo loader asks of the database: bulk inserts, a number read, a procedure run.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

namespace ado {
class Connection;
}

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

/// A prepared "INSERT INTO table (columns) VALUES (...)" over a native connection, for
/// loading many rows fast.
class DemoInsert {
public:
    DemoInsert(const ado::Connection &connection, std::string_view table,
               std::initializer_list<std::string_view> columns);
    ~DemoInsert();
    DemoInsert(DemoInsert &&) noexcept;
    DemoInsert &operator=(DemoInsert &&) noexcept;

    /// Inserts one row; the cells stand in the order of the columns.
    void row(std::initializer_list<Cell> cells);

private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

/// The first column of the first row of a native query, as a number; 0 when there is no row
/// or the value is null.
double demoNumber(const ado::Connection &connection, std::string_view sql);

/// Runs a native statement that returns no rows.
void demoExecute(const ado::Connection &connection, std::string_view sql);

/// Runs a stored procedure of the database by position, as the module runs it, with no time
/// limit (a total count of a large godown takes a while).
void demoCall(const ado::Connection &connection, std::string_view procedure,
              std::initializer_list<Cell> arguments);

} // namespace records
