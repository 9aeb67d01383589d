#include "module/records/PostgresDemoDb.h"

#include "module/records/PostgresDatabase.h"
#include "vb/Error.h"

#include <charconv>
#include <vector>

namespace records {

namespace {

// A number as the shortest text that reads back as the same double, so that a FLOAT column
// holds exactly what the SQLite demo holds and a NUMERIC column rounds the same value.
PostgresValue textOf(const Cell &cell) {
    if (const auto *i = std::get_if<std::int64_t>(&cell.value))
        return std::to_string(*i);
    if (const auto *d = std::get_if<double>(&cell.value)) {
        char buffer[32];
        const auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, *d);
        return std::string(buffer, end);
    }
    if (const auto *s = std::get_if<std::string>(&cell.value))
        return *s;
    return std::nullopt;
}

std::vector<PostgresValue> textsOf(std::span<const Cell> cells) {
    std::vector<PostgresValue> texts;
    texts.reserve(cells.size());
    for (const auto &cell : cells)
        texts.push_back(textOf(cell));
    return texts;
}

std::string placeholders(std::size_t count) {
    std::string text;
    for (std::size_t n = 1; n <= count; ++n)
        text += (n > 1 ? ", $" : "$") + std::to_string(n);
    return text;
}

class PostgresRows final : public DemoRows {
public:
    PostgresRows(PostgresDatabase &database, std::string name)
        : database_(database), name_(std::move(name)) {}

    void row(std::span<const Cell> cells) override {
        database_.runPrepared(name_, textsOf(cells));
    }

private:
    PostgresDatabase &database_;
    std::string name_;
};

} // namespace

std::unique_ptr<DemoRows>
PostgresDemoDb::prepareInsert(std::string_view table, std::span<const std::string_view> columns) {
    std::string sql = "INSERT INTO " + std::string(table) + " (";
    for (std::size_t i = 0; i < columns.size(); ++i)
        sql += (i ? ", " : "") + std::string(columns[i]);
    sql += ") VALUES (" + placeholders(columns.size()) + ")";
    std::string name = "demo_insert_" + std::to_string(++statements_);
    database_.prepare(name, sql);
    return std::make_unique<PostgresRows>(database_, std::move(name));
}

double PostgresDemoDb::number(std::string_view sql) {
    const auto text = database_.value(sql);
    if (!text)
        return 0.0;
    double value = 0.0;
    const auto [end, ec] = std::from_chars(text->data(), text->data() + text->size(), value);
    if (ec != std::errc() || end != text->data() + text->size())
        throw vb::Error(vb::err::TypeMismatch, "records", "Not a number: " + *text);
    return value;
}

void PostgresDemoDb::execute(std::string_view sql) { database_.execute(sql); }

void PostgresDemoDb::call(std::string_view procedure, std::span<const Cell> arguments) {
    const std::string sql =
        "SELECT " + std::string(procedure) + "(" + placeholders(arguments.size()) + ")";
    database_.value(sql, textsOf(arguments));
}

} // namespace records
