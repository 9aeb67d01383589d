// The demo loader's database in an SQLite file: native statements, past the translator.
#pragma once

#include "module/records/DemoDb.h"

namespace ado {
class Connection;
}

namespace records {

class SqliteDemoDb final : public DemoDb {
public:
    /// Over an open `sqlite:` connection.
    explicit SqliteDemoDb(const ado::Connection &connection) : connection_(connection) {}

    std::unique_ptr<DemoRows> prepareInsert(std::string_view table,
                                            std::span<const std::string_view> columns) override;
    double number(std::string_view sql) override;
    void execute(std::string_view sql) override;
    void call(std::string_view procedure, std::span<const Cell> arguments) override;

private:
    const ado::Connection &connection_;
};

} // namespace records
