#include "hosts/script/Runner.h"

#include "hosts/script/Failure.h"
#include "hosts/script/Run.h"
#include "hosts/script/ScenarioParser.h"
#include "vb/Error.h"
#include "vb/FileChannels.h"

#include <fstream>
#include <sstream>
#include <utility>

namespace script {

int exitCode(Outcome outcome) {
    switch (outcome) {
    case Outcome::Passed:
        return 0;
    case Outcome::Failed:
        return 1;
    case Outcome::BadScript:
        return 2;
    }
    return 2;
}

namespace {

/// A scenario stands for one run of the program: the file channels its forms
/// left open (a slip whose printing failed, a settings file after a bad
/// line) close with it, so that the next scenario starts with none.
struct ChannelsOfTheRun {
    ChannelsOfTheRun() = default;
    ChannelsOfTheRun(const ChannelsOfTheRun &) = delete;
    ChannelsOfTheRun &operator=(const ChannelsOfTheRun &) = delete;
    ~ChannelsOfTheRun() {
        try {
            vb::FileCloseAll();
        } catch (const vb::Error &) {
            // What a failed run left unwritten is lost with the run, as it
            // was when the program ended.
        }
    }
};

} // namespace

Runner::Runner(RunnerOptions options) : options_(std::move(options)) {}

Result Runner::runFile(const std::filesystem::path &file) const {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return {Outcome::BadScript, file.string() + ": bad script: cannot read the file\n"};
    }
    std::ostringstream text;
    text << in.rdbuf();
    return runText(text.str(), file.string(), file.parent_path());
}

Result Runner::runText(std::string_view text, const std::string &fileName,
                       const std::filesystem::path &baseDir) const {
    std::vector<std::string> targets;
    for (const auto &[name, target] : options_.targets) {
        targets.push_back(name);
    }
    Scenario scenario;
    try {
        scenario = parseScenario(text, fileName, baseDir, targets);
    } catch (const BadScript &bad) {
        return {Outcome::BadScript, bad.report(fileName)};
    }
    ChannelsOfTheRun channels;
    try {
        Run run(scenario, options_);
        run.execute();
    } catch (const Failure &failure) {
        return {Outcome::Failed, failure.report(fileName)};
    }
    return {};
}

int Runner::runFiles(std::span<const std::string> files, std::ostream &out,
                     std::ostream &err) const {
    int passed = 0;
    int failed = 0;
    Outcome worst = Outcome::Passed;
    for (const std::string &file : files) {
        Result result = runFile(file);
        if (result.outcome == Outcome::Passed) {
            ++passed;
            continue;
        }
        ++failed;
        err << result.report;
        if (exitCode(result.outcome) > exitCode(worst)) {
            worst = result.outcome;
        }
    }
    if (files.size() > 1) {
        out << passed << " passed, " << failed << " failed\n";
    }
    return exitCode(worst);
}

} // namespace script
