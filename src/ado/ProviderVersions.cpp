#include "ado/ProviderVersions.h"

#include <sqlite3.h>
#ifdef STOCKVERIFY_WITH_LIBPQ
#include <libpq-fe.h>
#endif

namespace ado {

std::vector<LibraryVersion> providerVersions() {
    // The loaded library's own word, not the header's: a system update may
    // have replaced it since the build.
    std::vector<LibraryVersion> versions{{"SQLite", sqlite3_libversion()}};
#ifdef STOCKVERIFY_WITH_LIBPQ
    versions.push_back({"libpq", libpqVersionText(PQlibVersion())});
#endif
    return versions;
}

std::string libpqVersionText(int number) {
    if (number >= 100000) {
        return std::to_string(number / 10000) + "." + std::to_string(number % 10000);
    }
    return std::to_string(number / 10000) + "." + std::to_string(number / 100 % 100) + "." +
           std::to_string(number % 100);
}

} // namespace ado
