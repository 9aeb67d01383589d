// A folder of database files for one benchmark run, removed when the run ends.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

#include <stdlib.h>

namespace bench {

/// The run's folder, made on first use under the system's temporary folder
/// with `prefix` in its name; later calls return the same folder.
inline const std::filesystem::path &scratchFolder(std::string_view prefix) {
    static const std::filesystem::path path = [prefix] {
        std::string pattern =
            (std::filesystem::temp_directory_path() / (std::string(prefix) + "-XXXXXX")).string();
        return std::filesystem::path(mkdtemp(pattern.data()));
    }();
    // Registered once the path stands, so that it runs before the path is
    // destroyed: exit handlers and static destructors run in reverse order.
    static const bool removedAtExit = [] {
        std::atexit([] {
            std::error_code ignored; // the run is over: a leftover folder harms nothing
            std::filesystem::remove_all(path, ignored);
        });
        return true;
    }();
    (void)removedAtExit;
    return path;
}

} // namespace bench
