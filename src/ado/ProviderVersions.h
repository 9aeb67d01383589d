// The versions of the database client libraries the data layer runs with.
#pragma once

#include <string>
#include <vector>

namespace ado {

struct LibraryVersion {
    std::string library; // "SQLite", "libpq"
    std::string version; // as the library reports it at run time, "3.40.1"
};

/// The client library of each provider this program was built with, and the
/// version of it that is loaded: SQLite always, libpq when it is linked.
std::vector<LibraryVersion> providerVersions();

/// libpq's PQlibVersion number as people write it: 150004 is "15.4",
/// 90624 (before release 10) is "9.6.24".
std::string libpqVersionText(int number);

} // namespace ado
