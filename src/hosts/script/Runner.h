// script::Runner: runs scenario files (.scn) against the show targets its caller registers.
#pragma once

#include "hosts/script/ShowTarget.h"

#include <cstddef>
#include <filesystem>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace script {

struct RunnerOptions {
    /// What `show NAME` may show.
    ShowTargets targets;
    /// The program folder the session starts with (`set home` changes it).
    std::filesystem::path homeDir;
    /// Where `dump` writes; nullptr: standard output.
    std::ostream *dumpOutput = nullptr;
    /// The most turns of modal loops between two lines (`set watchdog` changes it).
    std::size_t watchdog = 1000;
    /// A PostgreSQL server (a postgresql:// URI naming a database from which the user may
    /// create databases): `db demo` and `db empty` then make a database of their own there,
    /// dropped when the scenario ends, instead of an SQLite file. "": SQLite files.
    std::string server;
};

enum class Outcome {
    Passed,
    Failed,    // an expectation failed, or the scenario met something it did not expect
    BadScript, // the file cannot be read or parsed; nothing of it ran
};

/// The exit code of an outcome: 0 passed, 1 failed, 2 bad script.
int exitCode(Outcome outcome);

struct Result {
    Outcome outcome = Outcome::Passed;
    /// Empty when passed; else "FILE:LINE: what", then expected and found.
    std::string report;
};

/// Runs scenarios, each in a session of its own: a fresh screen, fresh session
/// values, its own scratch folder for databases; the clock is given back to
/// the system when it ends.
class Runner {
public:
    explicit Runner(RunnerOptions options);

    Result runFile(const std::filesystem::path &file) const;
    /// Runs the text of a scenario; `fileName` names it in reports and
    /// relative paths in it start at `baseDir`.
    Result runText(std::string_view text, const std::string &fileName,
                   const std::filesystem::path &baseDir) const;

    /// Runs the files in order, writes each report to `err` and, for more
    /// than one file, "N passed, N failed" to `out`. Returns the exit code
    /// of the worst outcome.
    int runFiles(std::span<const std::string> files, std::ostream &out, std::ostream &err) const;

private:
    RunnerOptions options_;
};

} // namespace script
