// The demo loader's database on a PostgreSQL server: native statements over init-db's own
// connection.
#pragma once

#include "module/records/DemoDb.h"

namespace records {

class PostgresDatabase;

class PostgresDemoDb final : public DemoDb {
public:
    explicit PostgresDemoDb(PostgresDatabase &database) : database_(database) {}

    std::unique_ptr<DemoRows> prepareInsert(std::string_view table,
                                            std::span<const std::string_view> columns) override;
    double number(std::string_view sql) override;
    void execute(std::string_view sql) override;
    void call(std::string_view procedure, std::span<const Cell> arguments) override;

private:
    PostgresDatabase &database_;
    int statements_ = 0;
};

} // namespace records
