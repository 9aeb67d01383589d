// script::parseScenario: reads the text of a .scn file into steps (language in docs/scenarios.md).
#pragma once

#include "hosts/script/Step.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace script {

/// Parses a whole scenario before any of it runs, so that a bad line stops
/// the scenario before it has done anything. `targets` are the names `show`
/// accepts. Raises BadScript with the line of the first fault.
Scenario parseScenario(std::string_view text, std::string fileName, std::filesystem::path baseDir,
                       const std::vector<std::string> &targets);

} // namespace script
