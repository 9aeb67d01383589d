// A new database file with the schema and, if asked, the demo company.
#pragma once

#include "module/records/DemoOptions.h"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace records {

/// The old runtime's numbers for the file failures that createDatabaseFile raises.
namespace fileerr {
inline constexpr std::int32_t AlreadyExists = 58;
inline constexpr std::int32_t AccessError = 75;
inline constexpr std::int32_t PathNotFound = 76;
} // namespace fileerr

struct DatabaseFileOptions {
    /// The demo company to load; none: the empty schema only.
    std::optional<DemoOptions> demo;
    /// Replace a file that exists already; without it such a file is an error.
    bool replace = false;
};

/// Makes the database file at `path`. It is built beside the target under a temporary name
/// and takes the target's name only when complete, so that a failure leaves no half-made
/// database and a replaced one stays as it was until then. A missing folder, a folder in
/// the way or an existing file (without `replace`) raise a vb::Error that names the path.
void createDatabaseFile(const std::filesystem::path &path, const DatabaseFileOptions &options,
                        const DemoProgress &progress = {});

} // namespace records
