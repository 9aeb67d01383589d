#include "hosts/script/ScratchFolder.h"

#include "vb/Error.h"

#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>
#include <unistd.h>

namespace script {

ScratchFolder::~ScratchFolder() {
    if (!folder_.empty()) {
        // A folder left behind in /tmp must not hide the scenario's outcome.
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
}

const std::filesystem::path &ScratchFolder::folder() {
    if (folder_.empty()) {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "stockverify-scenario-XXXXXX").string();
        if (!mkdtemp(pattern.data())) {
            throw vb::Error(vb::err::PathFileAccessError, "script",
                            "cannot make a temporary folder " + pattern + ": " +
                                std::strerror(errno));
        }
        folder_ = pattern;
    }
    return folder_;
}

std::filesystem::path ScratchFolder::newPath(std::string_view stem, std::string_view extension) {
    return folder() / (std::string(stem) + "-" + std::to_string(++made_) + std::string(extension));
}

} // namespace script
