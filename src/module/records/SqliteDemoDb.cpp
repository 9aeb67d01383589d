#include "module/records/SqliteDemoDb.h"

#include "ado/Command.h"
#include "ado/Connection.h"
#include "ado/sqlite/NativeStatement.h"
#include "vb/Error.h"

namespace records {

namespace {

std::string insertText(std::string_view table, std::span<const std::string_view> columns) {
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

class SqliteRows final : public DemoRows {
public:
    SqliteRows(const ado::Connection &connection, std::string sql)
        : statement_(connection, sql) {}

    void row(std::span<const Cell> cells) override {
        statement_.reset();
        int index = 0;
        for (const auto &cell : cells) {
            ++index;
            if (const auto *i = std::get_if<std::int64_t>(&cell.value))
                statement_.bindInteger(index, *i);
            else if (const auto *d = std::get_if<double>(&cell.value))
                statement_.bindReal(index, *d);
            else if (const auto *s = std::get_if<std::string>(&cell.value))
                statement_.bindText(index, *s);
            else
                statement_.bindNull(index);
        }
        statement_.step();
    }

private:
    ado::sqlite::NativeStatement statement_;
};

} // namespace

std::unique_ptr<DemoRows> SqliteDemoDb::prepareInsert(std::string_view table,
                                                      std::span<const std::string_view> columns) {
    return std::make_unique<SqliteRows>(connection_, insertText(table, columns));
}

double SqliteDemoDb::number(std::string_view sql) {
    ado::sqlite::NativeStatement query(connection_, sql);
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

void SqliteDemoDb::execute(std::string_view sql) {
    ado::sqlite::NativeStatement statement(connection_, sql);
    while (statement.step()) {
    }
}

void SqliteDemoDb::call(std::string_view procedure, std::span<const Cell> arguments) {
    ado::Command command;
    command.ActiveConnection(connection_);
    command.CommandType(ado::adCmdStoredProc);
    command.CommandText(procedure);
    command.CommandTimeout(0);
    int index = 0;
    for (const auto &cell : arguments)
        command.Parameters(++index) = variantOf(cell);
    command.Execute();
}

} // namespace records
