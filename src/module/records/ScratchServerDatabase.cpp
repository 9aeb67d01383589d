#include "module/records/ScratchServerDatabase.h"

#include "module/records/EmbeddedSql.h"
#include "module/records/PostgresDatabase.h"
#include "module/records/ServerDatabase.h"
#include "vb/Error.h"

#include <atomic>
#include <cstdint>
#include <chrono>
#include <cstdio>
#include <unistd.h>

namespace records {

namespace {

// A fingerprint of the server's SQL files (FNV-1a), so that a database kept by a program
// built from other SQL is not taken for this one's.
std::string schemaMark() {
    std::uint32_t hash = 2166136261u;
    for (const auto &file : embeddedSqlFiles())
        if (file.name.starts_with("postgresql/"))
            for (const unsigned char c : file.text)
                hash = (hash ^ c) * 16777619u;
    // The names kept as comments come from the program, not from a file: they count too.
    for (const unsigned char c : schemaNameComments())
        hash = (hash ^ c) * 16777619u;
    char mark[16];
    std::snprintf(mark, sizeof mark, "_%08x", hash);
    return mark;
}

std::string shapedName(const std::string &use, const std::optional<DemoOptions> &demo) {
    if (!demo)
        return use + "_empty" + schemaMark();
    const std::chrono::year_month_day ymd{demo->date};
    char name[64];
    std::snprintf(name, sizeof name, "_demo_%d_%04d%02u%02u", demo->items,
                  static_cast<int>(ymd.year()), static_cast<unsigned>(ymd.month()),
                  static_cast<unsigned>(ymd.day()));
    return use + name + schemaMark();
}

// Several test programs and scenarios may ask for the same database at once: one builds it
// while the others wait on a lock of the server, then all use it.
void ensureKept(PostgresDatabase &server, const std::string &serverUri,
                    const std::string &name, const std::optional<DemoOptions> &demo) {
    server.execute("SELECT pg_advisory_lock(hashtext('" + name + "'))");
    const bool exists =
        server.value("SELECT 1 FROM pg_database WHERE datname = '" + name + "'").has_value();
    if (!exists) {
        // Built under a working name and renamed when whole, so that a run killed halfway
        // leaves no template that looks ready.
        const std::string building = name + "_building";
        server.execute("DROP DATABASE IF EXISTS " + building + " WITH (FORCE)");
        server.execute("CREATE DATABASE " + building);
        createServerDatabase(PostgresDatabase::uriWithDatabase(serverUri, building), demo);
        server.execute("ALTER DATABASE " + building + " RENAME TO " + name);
    }
    server.execute("SELECT pg_advisory_unlock(hashtext('" + name + "'))");
}

} // namespace

std::string keptServerDatabase(const std::string &serverUri, const std::optional<DemoOptions> &demo,
                               const std::string &use) {
    PostgresDatabase server(serverUri);
    const std::string name = shapedName(use, demo);
    ensureKept(server, serverUri, name, demo);
    return name;
}

ScratchServerDatabase::ScratchServerDatabase(const std::string &serverUri,
                                             const std::optional<DemoOptions> &demo)
    : serverUri_(serverUri) {
    static std::atomic<int> counter{0};
    name_ = "sv_scratch_" + std::to_string(getpid()) + "_" + std::to_string(++counter);
    const std::string source = keptServerDatabase(serverUri, demo);
    PostgresDatabase server(serverUri);
    server.execute("DROP DATABASE IF EXISTS " + name_ + " WITH (FORCE)");
    server.execute("CREATE DATABASE " + name_ + " TEMPLATE " + source);
    uri_ = PostgresDatabase::uriWithDatabase(serverUri, name_);
}

ScratchServerDatabase::~ScratchServerDatabase() {
    // A destructor cannot raise: a server gone by now takes the database with it when the
    // throwaway cluster is removed, so a failed drop is told and left.
    try {
        PostgresDatabase server(serverUri_);
        server.execute("DROP DATABASE IF EXISTS " + name_ + " WITH (FORCE)");
    } catch (const vb::Error &e) {
        std::fprintf(stderr, "Could not drop the scratch database %s: %s\n", name_.c_str(),
                     e.description().c_str());
    }
}

} // namespace records
