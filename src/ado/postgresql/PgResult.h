// One result of the server, owned.
#pragma once

#include <libpq-fe.h>

#include <memory>

namespace ado::postgresql {

struct ResultFree {
    void operator()(PGresult *r) const { PQclear(r); }
};
/// A result of libpq, cleared when it goes.
using PgResult = std::unique_ptr<PGresult, ResultFree>;

} // namespace ado::postgresql
