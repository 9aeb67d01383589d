// A temporary folder for one durability test, with copies of the demo database in it.
#pragma once

#include <filesystem>
#include <string>

namespace durability {

/// A fresh folder below the system's temporary folder, removed with all in it.
class DurabilityFolder {
public:
    DurabilityFolder();
    ~DurabilityFolder();
    DurabilityFolder(const DurabilityFolder &) = delete;
    DurabilityFolder &operator=(const DurabilityFolder &) = delete;

    const std::filesystem::path &path() const { return path_; }
    /// A copy of the demo database (made once for the program) under `name`,
    /// replacing a copy of that name and its journal files.
    std::filesystem::path demoDatabase(const std::string &name) const;

private:
    std::filesystem::path path_;
};

} // namespace durability
