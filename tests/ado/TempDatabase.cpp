#include "TempDatabase.h"

#include "ado/sqlite/NativeStatement.h"

namespace adotest {

std::string scalar(const ado::Connection &c, std::string_view sql) {
    ado::sqlite::NativeStatement query(c, sql);
    if (!query.step())
        return "<no row>";
    return query.isNull(0) ? "<null>" : query.text(0);
}

} // namespace adotest
