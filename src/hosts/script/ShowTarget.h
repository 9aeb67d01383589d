// script::ShowTarget: what `show NAME` runs, given to the runner by its caller.
#pragma once

#include "hosts/script/Session.h"

#include "ado/Connection.h"

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace forms {
class Screen;
}

namespace script {

/// What a show target gets: the session values, the scenario's open
/// connection (empty when the scenario opened none), the screen whose Ui is
/// the runner, and the scenario's own scratch folder (for the state files of
/// what it shows, such as the fault desk's log; removed when the scenario
/// ends). The same connection serves the scenario's `sql` and `expect rows`,
/// so they see what the shown forms wrote, transaction or not.
struct ShowContext {
    const Session &session;
    const ado::Connection &connection;
    forms::Screen &screen;
    const std::filesystem::path &scratchDir;
    /// What the target keeps from one show to the next of the same scenario
    /// (a module's globals live for the session, as they lived for the
    /// process): empty at the first show, dropped when the scenario ends.
    std::shared_ptr<void> &kept;
};

/// Creates something and shows it modally on `context.screen`; returns when it
/// has closed. The rest of the scenario runs inside its modal loop.
using ShowTarget = std::function<void(const ShowContext &context)>;

/// Show targets by the name a scenario gives `show`.
using ShowTargets = std::map<std::string, ShowTarget>;

} // namespace script
