// A connection of init-db's own to a PostgreSQL server, for creating the schema and loading
// the demo: native statements, sent as written, without the module's data layer.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

struct pg_conn;

namespace records {

/// One parameter of a statement: its text as the server reads it, or null.
using PostgresValue = std::optional<std::string>;

class PostgresDatabase {
public:
    /// Connects with a libpq connection string or URI ("postgresql://user@host/db"). A server
    /// that cannot be reached or refuses the login raises -2147467259 with the server's reason.
    explicit PostgresDatabase(const std::string &connectionString);
    ~PostgresDatabase();
    PostgresDatabase(const PostgresDatabase &) = delete;
    PostgresDatabase &operator=(const PostgresDatabase &) = delete;

    /// Runs one or more statements separated by ';' (a schema script). The first that fails
    /// stops the rest and raises, quoting the server's message.
    void execute(std::string_view script);
    /// The first column of the first row of a query, as text; nothing for null or no row.
    std::optional<std::string> value(std::string_view sql,
                                     std::span<const PostgresValue> parameters = {});
    /// Every row of a query, each value as text or null.
    std::vector<std::vector<PostgresValue>> rows(std::string_view sql);
    /// Prepares a statement with $1, $2... under a name of this connection.
    void prepare(const std::string &name, std::string_view sql);
    /// Runs a statement prepared under `name`.
    void runPrepared(const std::string &name, std::span<const PostgresValue> parameters);

    /// The database's name in `uri` (a postgresql:// URI) replaced by `database`.
    static std::string uriWithDatabase(std::string_view uri, std::string_view database);

private:
    pg_conn *connection_ = nullptr;
};

} // namespace records
