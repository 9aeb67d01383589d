#include "services/Context.h"

#include "vb/Error.h"

#include <cstdlib>
#include <utility>

namespace services {

Context::Context(forms::Screen &screen, std::filesystem::path stateDirectory)
    : stateDirectory(std::move(stateDirectory)), screen_(&screen) {}

Context::Context(forms::Screen &screen) : Context(screen, defaultStateDirectory()) {}

std::filesystem::path defaultStateDirectory() {
    const char *xdg = std::getenv("XDG_STATE_HOME");
    // XDG says a relative value is invalid and is to be ignored.
    if (xdg != nullptr && *xdg != '\0' && std::filesystem::path(xdg).is_absolute()) {
        return std::filesystem::path(xdg) / "stockverify";
    }
    const char *home = std::getenv("HOME");
    if (home == nullptr || *home == '\0') {
        throw vb::Error(vb::err::PathNotFound, "services",
                        "No folder for the program's state: neither XDG_STATE_HOME nor HOME "
                        "is set");
    }
    return std::filesystem::path(home) / ".local" / "state" / "stockverify";
}

} // namespace services
