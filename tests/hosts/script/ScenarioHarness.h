// A runner over the test forms, for the scenario runner's tests.
#pragma once

#include "testforms/TestTargets.h"

#include "hosts/script/Runner.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>

namespace script::test {

struct Harness {
    std::ostringstream dumped;

    Result run(std::string_view text, std::size_t watchdog = 1000) {
        RunnerOptions options;
        options.targets = testTargets();
        options.homeDir = std::filesystem::temp_directory_path();
        options.dumpOutput = &dumped;
        options.watchdog = watchdog;
        return Runner(options).runText(text, "t.scn", std::filesystem::temp_directory_path());
    }
};

/// The head of every scenario over frmOrders: session values and the show.
inline std::string ordersScenario(std::string_view body) {
    return "set company 1\n"
           "set user 2\n"
           "set godown 3\n"
           "set interface 1005\n"
           "set processdate 2026-11-22\n"
           "set title \"Orders\"\n"
           "show orders\n" +
           std::string(body);
}

/// Line 8 is the first line of `body` in an ordersScenario.
inline constexpr int firstBodyLine = 8;

inline std::string at(int line) {
    return "t.scn:" + std::to_string(line) + ":";
}

} // namespace script::test
