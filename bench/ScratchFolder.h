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
        std::filesystem::path made = mkdtemp(pattern.data());
        std::atexit([] {
            std::error_code ignored; // the run is over: a leftover folder harms nothing
            std::filesystem::remove_all(path, ignored);
        });
        return made;
    }();
    return path;
}

} // namespace bench
