// A subcommand of the stockverify executable.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace app {

struct Command {
    std::string name;
    std::string summary; // one line for --help
    std::string usage;   // the command's own --help text
    std::function<int(std::span<const std::string> args)> run;
};

/// Every subcommand, in the order --help lists them. Each command file adds
/// its own entry with a static Registration.
std::vector<Command>& commands();

struct Registration {
    explicit Registration(Command c) { commands().push_back(std::move(c)); }
};

} // namespace app
