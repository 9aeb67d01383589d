// script::ScratchFolder: a scenario's own temporary folder, removed when the scenario ends.
#pragma once

#include <filesystem>
#include <string_view>

namespace script {

/// A new, empty folder under the system's temporary folder, made on first
/// use and removed with everything in it by the destructor. Scenarios that
/// run at the same time each get their own.
class ScratchFolder {
public:
    ScratchFolder() = default;
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder &) = delete;
    ScratchFolder &operator=(const ScratchFolder &) = delete;

    /// The folder, made now if it is not yet.
    const std::filesystem::path &folder();
    /// A path in the folder that no earlier call gave: "<stem>-<n><extension>".
    std::filesystem::path newPath(std::string_view stem, std::string_view extension);

private:
    std::filesystem::path folder_;
    int made_ = 0;
};

} // namespace script
