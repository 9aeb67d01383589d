// scenario_forms: runs scenario files against the scenario runner's test forms.
#include "testforms/TestTargets.h"

#include "hosts/script/Runner.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char **argv) {
    std::vector<std::string> files(argv + 1, argv + argc);
    if (files.empty()) {
        std::cerr << "Usage: scenario_forms FILE.scn...\n";
        return 2;
    }
    script::RunnerOptions options;
    options.targets = script::test::testTargets();
    options.homeDir = std::filesystem::current_path();
    return script::Runner(std::move(options)).runFiles(files, std::cout, std::cerr);
}
