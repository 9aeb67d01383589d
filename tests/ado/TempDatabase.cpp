#include "TempDatabase.h"

#include "PgTempDatabase.h"
#include "ado/sqlite/NativeStatement.h"

#include <libpq-fe.h>

#include <memory>
#include <regex>
#include <stdexcept>

namespace adotest {

namespace {

// Decimals as the embedded database writes them: "3.500" is "3.5", "1.000" is "1.0".
std::string embeddedNumbers(std::string text) {
    static const std::regex zeros(R"((\d\.\d*?)0+(?!\d))");
    text = std::regex_replace(text, zeros, "$1");
    static const std::regex bare(R"((\d)\.(?!\d))");
    return std::regex_replace(text, bare, "$1.0");
}

// The first value of a native query on the server, written as the embedded
// database writes it, so that one expectation serves both.
std::string pgScalar(const std::string &uri, std::string_view sql) {
    std::unique_ptr<PGconn, decltype(&PQfinish)> conn(PQconnectdb(uri.c_str()), &PQfinish);
    if (PQstatus(conn.get()) != CONNECTION_OK)
        throw std::runtime_error(PQerrorMessage(conn.get()));
    std::unique_ptr<PGresult, decltype(&PQclear)> r(PQexec(conn.get(), std::string(sql).c_str()),
                                                    &PQclear);
    if (PQresultStatus(r.get()) != PGRES_TUPLES_OK)
        throw std::runtime_error(PQresultErrorMessage(r.get()));
    if (PQntuples(r.get()) == 0)
        return "<no row>";
    if (PQgetisnull(r.get(), 0, 0))
        return "<null>";
    std::string text = embeddedNumbers(PQgetvalue(r.get(), 0, 0));
    constexpr Oid float8 = 701;
    if (PQftype(r.get(), 0) == float8 && text.find_first_of(".e") == std::string::npos)
        text += ".0";
    return text;
}

} // namespace

std::string scalar(const ado::Connection &c, std::string_view sql) {
    if (c.ConnectionString().starts_with("postgres"))
        return pgScalar(c.ConnectionString(), sql);
    ado::sqlite::NativeStatement query(c, sql);
    if (!query.step())
        return "<no row>";
    return query.isNull(0) ? "<null>" : query.text(0);
}

void pgNative(const std::string &uri, std::string_view sql) {
    std::unique_ptr<PGconn, decltype(&PQfinish)> conn(PQconnectdb(uri.c_str()), &PQfinish);
    if (PQstatus(conn.get()) != CONNECTION_OK)
        throw std::runtime_error(PQerrorMessage(conn.get()));
    std::unique_ptr<PGresult, decltype(&PQclear)> r(PQexec(conn.get(), std::string(sql).c_str()),
                                                    &PQclear);
    auto status = PQresultStatus(r.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
        throw std::runtime_error(PQresultErrorMessage(r.get()));
}

} // namespace adotest
