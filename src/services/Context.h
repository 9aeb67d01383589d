// services::Context: what the sibling services need from the session that creates them.
#pragma once

#include "ado/Connection.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>

namespace forms {
class Screen;
}

namespace services {

/// What a service needs besides the arguments of its calls: the screen its
/// message boxes go to, the database it records into when no call hands it a
/// connection (the fault desk, the screen palette), the company whose palette
/// colours the forms, and the folder of its log files. The module fills one
/// at Show and hands it to CreateObject; every service keeps a copy, so a
/// change made later reaches the services created after it.
class Context {
public:
    /// `stateDirectory` is where the fault desk keeps its log file.
    Context(forms::Screen &screen, std::filesystem::path stateDirectory);
    /// The state directory from the environment (defaultStateDirectory).
    explicit Context(forms::Screen &screen);

    forms::Screen &screen() const { return *screen_; }

    /// The shared connection of the session; empty until the session sets it.
    ado::Connection connection;
    /// The company whose screen palette colours the forms.
    std::int32_t companyId = 0;
    /// Folder of the fault desk's log file; made when first written.
    std::filesystem::path stateDirectory;
    /// Connection strings of the report server's data source names, for the
    /// report engine's logon; a name not listed logs on to `connection`.
    std::map<std::string, std::string> dataSources;

private:
    forms::Screen *screen_;
};

/// $XDG_STATE_HOME/stockverify, or ~/.local/state/stockverify when that is not
/// set, as the XDG base directory rules say. Raises 76 ("Path not found") when
/// neither XDG_STATE_HOME nor HOME is set, since then there is no user folder
/// to keep state in.
std::filesystem::path defaultStateDirectory();

} // namespace services
