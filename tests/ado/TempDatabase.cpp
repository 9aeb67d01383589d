#include "TempDatabase.h"

#include "PgTempDatabase.h"
#include "ado/sqlite/NativeStatement.h"

#include <libpq-fe.h>

#include <memory>
#include <stdexcept>

namespace adotest {

std::string scalar(const ado::Connection &c, std::string_view sql) {
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
