#include "module/records/DemoDb.h"

#include "ado/Command.h"
#include "ado/Connection.h"
#include "ado/sqlite/NativeStatement.h"

namespace records {

namespace {

std::string insertText(std::string_view table, std::initializer_list<std::string_view> columns) {
    std::string sql = "INSERT INTO " + std::string(table) + " (";
    std::string values;
    int n = 0;
    for (auto column : columns) {
        if (n++ > 0) {
            sql += ", ";
            values += ", ";
        }
        sql += column;
        values += "?" + std::to_string(n);
    }
    return sql + ") VALUES (" + values + ")";
}

vb::Variant variantOf(const Cell &cell) {
    if (const auto *i = std::get_if<std::int64_t>(&cell.value))
        return vb::Variant(static_cast<std::int32_t>(*i));
    if (const auto *d = std::get_if<double>(&cell.value))
        return vb::Variant(*d);
    if (const auto *s = std::get_if<std::string>(&cell.value))
        return vb::Variant(*s);
    return vb::Variant::null();
}

} // namespace

struct DemoInsert::Impl {
    ado::sqlite::NativeStatement statement;
    int columns;
};

DemoInsert::DemoInsert(const ado::Connection &connection, std::string_view table,
                       std::initializer_list<std::string_view> columns)
    : impl_(std::make_unique<Impl>(
          Impl{ado::sqlite::NativeStatement(connection, insertText(table, columns)),
               static_cast<int>(columns.size())})) {}

DemoInsert::~DemoInsert() = default;
DemoInsert::DemoInsert(DemoInsert &&) noexcept = default;
DemoInsert &DemoInsert::operator=(DemoInsert &&) noexcept = default;

void DemoInsert::row(std::initializer_list<Cell> cells) {
    auto &statement = impl_->statement;
    if (static_cast<int>(cells.size()) != impl_->columns)
        throw vb::Error(vb::err::InvalidProcedureCall, "records",
                        "A row of " + std::to_string(cells.size()) + " values for " +
                            std::to_string(impl_->columns) + " columns: " + statement.sql());
    statement.reset();
    int index = 0;
    for (const auto &cell : cells) {
        ++index;
        if (const auto *i = std::get_if<std::int64_t>(&cell.value))
            statement.bindInteger(index, *i);
        else if (const auto *d = std::get_if<double>(&cell.value))
            statement.bindReal(index, *d);
        else if (const auto *s = std::get_if<std::string>(&cell.value))
            statement.bindText(index, *s);
        else
            statement.bindNull(index);
    }
    statement.step();
}

double demoNumber(const ado::Connection &connection, std::string_view sql) {
    ado::sqlite::NativeStatement query(connection, sql);
    if (!query.step())
        return 0.0;
    const ado::sqlite::StoredValue value = query.stored(0);
    if (const auto *i = std::get_if<std::int64_t>(&value))
        return static_cast<double>(*i);
    if (const auto *d = std::get_if<double>(&value))
        return *d;
    if (std::holds_alternative<std::monostate>(value))
        return 0.0;
    throw vb::Error(vb::err::TypeMismatch, "records", "Not a number: " + query.text(0));
}

void demoExecute(const ado::Connection &connection, std::string_view sql) {
    ado::sqlite::NativeStatement statement(connection, sql);
    while (statement.step()) {
    }
}

void demoCall(const ado::Connection &connection, std::string_view procedure,
              std::initializer_list<Cell> arguments) {
    ado::Command command;
    command.ActiveConnection(connection);
    command.CommandType(ado::adCmdStoredProc);
    command.CommandText(procedure);
    command.CommandTimeout(0);
    int index = 0;
    for (const auto &cell : arguments)
        command.Parameters(++index) = variantOf(cell);
    command.Execute();
}

} // namespace records
