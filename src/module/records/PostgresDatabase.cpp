#include "module/records/PostgresDatabase.h"

#include "ado/Errors.h"

#include <libpq-fe.h>

#include <memory>
#include <vector>

namespace records {

namespace {

struct ResultDeleter {
    void operator()(PGresult *result) const { PQclear(result); }
};
using Result = std::unique_ptr<PGresult, ResultDeleter>;

// The server's refusal with the old data layer's number for what it means: text too long
// for its column is told apart, every other failure of a statement is a refused statement.
vb::Error statementError(const PGresult *result, pg_conn *connection, std::string_view sql) {
    const char *state = result ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
    std::string message = result ? PQresultErrorMessage(result) : PQerrorMessage(connection);
    while (!message.empty() && (message.back() == '\n' || message.back() == ' '))
        message.pop_back();
    const std::int32_t number = state && std::string_view(state) == "22001"
                                    ? ado::errnum::Truncation
                                    : ado::errnum::Statement;
    std::string quoted(sql.substr(0, 200));
    if (sql.size() > 200)
        quoted += "...";
    return vb::Error(number, "records", message + " (in: " + quoted + ")");
}

Result checked(PGresult *raw, pg_conn *connection, std::string_view sql) {
    Result result(raw);
    const auto status = result ? PQresultStatus(result.get()) : PGRES_FATAL_ERROR;
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        throw statementError(result.get(), connection, sql);
    return result;
}

std::vector<const char *> pointers(std::span<const PostgresValue> parameters) {
    std::vector<const char *> values;
    values.reserve(parameters.size());
    for (const auto &p : parameters)
        values.push_back(p ? p->c_str() : nullptr);
    return values;
}

} // namespace

PostgresDatabase::PostgresDatabase(const std::string &connectionString)
    : connection_(PQconnectdb(connectionString.c_str())) {
    if (!connection_)
        throw vb::Error(ado::errnum::Unspecified, "records",
                        "Cannot connect to " + connectionString + ": out of memory");
    if (PQstatus(connection_) != CONNECTION_OK) {
        std::string reason = PQerrorMessage(connection_);
        while (!reason.empty() && (reason.back() == '\n' || reason.back() == ' '))
            reason.pop_back();
        PQfinish(connection_);
        connection_ = nullptr;
        throw vb::Error(ado::errnum::Unspecified, "records",
                        "Cannot connect to " + connectionString + ": " + reason);
    }
    // Notices (a schema's "extension exists, skipping") are for an administrator at psql.
    PQsetNoticeProcessor(connection_, [](void *, const char *) {}, nullptr);
}

PostgresDatabase::~PostgresDatabase() {
    if (connection_)
        PQfinish(connection_);
}

void PostgresDatabase::execute(std::string_view script) {
    const std::string text(script);
    checked(PQexec(connection_, text.c_str()), connection_, script);
}

std::optional<std::string> PostgresDatabase::value(std::string_view sql,
                                                   std::span<const PostgresValue> parameters) {
    const std::string text(sql);
    const auto values = pointers(parameters);
    Result result = checked(PQexecParams(connection_, text.c_str(),
                                         static_cast<int>(values.size()), nullptr, values.data(),
                                         nullptr, nullptr, 0),
                            connection_, sql);
    if (PQntuples(result.get()) == 0 || PQnfields(result.get()) == 0 ||
        PQgetisnull(result.get(), 0, 0))
        return std::nullopt;
    return std::string(PQgetvalue(result.get(), 0, 0));
}

std::vector<std::vector<PostgresValue>> PostgresDatabase::rows(std::string_view sql) {
    const std::string text(sql);
    Result result = checked(PQexec(connection_, text.c_str()), connection_, sql);
    std::vector<std::vector<PostgresValue>> rows(static_cast<std::size_t>(PQntuples(result.get())));
    const int fields = PQnfields(result.get());
    for (int r = 0; r < static_cast<int>(rows.size()); ++r)
        for (int f = 0; f < fields; ++f)
            rows[static_cast<std::size_t>(r)].push_back(
                PQgetisnull(result.get(), r, f)
                    ? PostgresValue()
                    : PostgresValue(std::string(PQgetvalue(result.get(), r, f))));
    return rows;
}

std::string PostgresDatabase::uriWithDatabase(std::string_view uri, std::string_view database) {
    const auto scheme = uri.find("://");
    if (scheme == std::string_view::npos)
        throw vb::Error(vb::err::InvalidProcedureCall, "records",
                        "Not a postgresql:// URI: " + std::string(uri));
    const auto query = uri.find('?', scheme + 3);
    const auto hostEnd = uri.substr(0, query).find('/', scheme + 3);
    const auto pathStart = hostEnd == std::string_view::npos ? uri.substr(0, query).size() : hostEnd;
    std::string result(uri.substr(0, pathStart));
    result += "/";
    result += database;
    if (query != std::string_view::npos)
        result += uri.substr(query);
    return result;
}

void PostgresDatabase::prepare(const std::string &name, std::string_view sql) {
    const std::string text(sql);
    checked(PQprepare(connection_, name.c_str(), text.c_str(), 0, nullptr), connection_, sql);
}

void PostgresDatabase::runPrepared(const std::string &name,
                                   std::span<const PostgresValue> parameters) {
    const auto values = pointers(parameters);
    checked(PQexecPrepared(connection_, name.c_str(), static_cast<int>(values.size()),
                           values.data(), nullptr, nullptr, 0),
            connection_, name);
}

} // namespace records
