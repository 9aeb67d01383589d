#include "module/records/DatabaseFile.h"

#include "ado/Connection.h"
#include "ado/sqlite/Script.h"
#include "module/records/Demo.h"
#include "module/records/Schema.h"
#include "vb/Error.h"

#include <system_error>

namespace fs = std::filesystem;

namespace records {

namespace {

vb::Error fileError(std::int32_t number, const std::string &description) {
    return vb::Error(number, "records", description);
}

void checkTarget(const fs::path &path, bool replace) {
    std::error_code ec;
    const fs::path folder = path.parent_path().empty() ? fs::path(".") : path.parent_path();
    if (!fs::is_directory(folder, ec))
        throw fileError(fileerr::PathNotFound, "Cannot create the database '" + path.string() +
                                                   "': the folder '" + folder.string() +
                                                   "' does not exist");
    if (fs::is_directory(path, ec))
        throw fileError(fileerr::AccessError,
                        "Cannot create the database '" + path.string() + "': it is a folder");
    if (fs::exists(path, ec) && !replace)
        throw fileError(fileerr::AlreadyExists,
                        "The database '" + path.string() + "' exists already");
}

// A database is its file and the files SQLite keeps beside it while it is open; a log left
// beside a file would be replayed into the new database that takes the file's name.
void removeFiles(const fs::path &path, std::initializer_list<const char *> suffixes) {
    for (const char *suffix : suffixes) {
        std::error_code ec;
        fs::remove(path.string() + suffix, ec);
        if (ec)
            throw fileError(fileerr::AccessError,
                            "Cannot remove '" + path.string() + suffix + "': " + ec.message());
    }
}

void build(const fs::path &path, const DatabaseFileOptions &options, const DemoProgress &progress) {
    ado::Connection connection = ado::sqlite::createDatabase(path.string());
    createSchema(connection);
    if (options.demo)
        loadDemo(connection, *options.demo, progress);
    connection.Close();
}

} // namespace

void createDatabaseFile(const fs::path &path, const DatabaseFileOptions &options,
                        const DemoProgress &progress) {
    checkTarget(path, options.replace);
    const fs::path partial = path.string() + ".partial";
    const auto everything = {"", "-wal", "-shm", "-journal"};
    removeFiles(partial, everything);
    try {
        build(partial, options, progress);
    } catch (const vb::Error &) {
        removeFiles(partial, everything);
        throw;
    }
    removeFiles(path, {"-wal", "-shm", "-journal"});
    std::error_code ec;
    fs::rename(partial, path, ec);
    if (ec)
        throw fileError(fileerr::AccessError, "Cannot rename '" + partial.string() + "' to '" +
                                                  path.string() + "': " + ec.message());
}

} // namespace records
