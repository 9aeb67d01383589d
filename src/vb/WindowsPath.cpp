#include "vb/WindowsPath.h"

#include "vb/Strings.h"

#include <algorithm>
#include <system_error>

namespace vb {

namespace fs = std::filesystem;

namespace {

/// The entry of `folder` named `part` ignoring letter case, or `part` itself.
fs::path entryIgnoringCase(const fs::path &folder, const std::string &part) {
    std::error_code error;
    if (fs::exists(folder / part, error)) {
        return folder / part;
    }
    for (fs::directory_iterator it(folder.empty() ? fs::path(".") : folder, error), end;
         !error && it != end; it.increment(error)) {
        std::string name = it->path().filename().string();
        if (StrComp(name, part, Compare::Text) == 0) {
            return folder / name;
        }
    }
    return folder / part;
}

} // namespace

fs::path PathIgnoringCase(std::string_view path) {
    std::string text(path);
    std::replace(text.begin(), text.end(), '\\', '/');
    fs::path resolved = text.starts_with("/") ? fs::path("/") : fs::path();
    for (const std::string &part : Split(text, "/")) {
        if (part.empty() || part == ".") {
            continue;
        }
        resolved = part == ".." ? resolved / part : entryIgnoringCase(resolved, part);
    }
    return resolved;
}

fs::path DrivePath(const fs::path &driveRoot, std::string_view windowsPath) {
    std::string_view rest = windowsPath;
    if (rest.size() >= 2 && rest[1] == ':') {
        rest.remove_prefix(2);
    }
    while (!rest.empty() && (rest.front() == '\\' || rest.front() == '/')) {
        rest.remove_prefix(1);
    }
    return PathIgnoringCase(driveRoot.string() + "/" + std::string(rest));
}

long GetWindowsDirectoryA(std::string &buffer, long size) {
    static constexpr std::string_view folder = "C:\\WINDOWS";
    const long needed = static_cast<long>(folder.size()) + 1;
    if (size < needed || static_cast<long>(buffer.size()) < needed) {
        return needed;
    }
    buffer.replace(0, folder.size(), folder);
    buffer[folder.size()] = '\0';
    return needed - 1;
}

} // namespace vb
