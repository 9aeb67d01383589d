// script::Failure and script::BadScript: a scenario that failed, and one that cannot run.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace script {

/// A scenario that did not go as written: what the line was about, what was
/// expected and what was found (one line each, or several for rows). It is
/// not a vb::Error on purpose: the forms' failure handlers catch those, and a
/// failed expectation must reach the runner, not a handler.
class Failure : public std::runtime_error {
public:
    Failure(std::string what, std::vector<std::string> expected, std::vector<std::string> found);
    Failure(std::string what, std::string expected, std::string found);

    const std::string &summary() const { return summary_; }
    const std::vector<std::string> &expected() const { return expected_; }
    const std::vector<std::string> &found() const { return found_; }

    /// The line that failed; 0 until the runner knows it.
    int line() const { return line_; }
    void setLine(int line) { line_ = line; }

    /// "FILE:LINE: what", then expected and found: under each other when they
    /// are one line each, side by side (differences marked "!") otherwise.
    std::string report(const std::string &fileName) const;

private:
    std::string summary_;
    std::vector<std::string> expected_;
    std::vector<std::string> found_;
    int line_ = 0;
};

/// A scenario that cannot run: an unknown command, bad syntax, an unknown show
/// target. Found before the first line runs.
class BadScript : public std::runtime_error {
public:
    BadScript(int line, std::string message);

    int line() const { return line_; }
    const std::string &message() const { return message_; }
    std::string report(const std::string &fileName) const;

private:
    int line_;
    std::string message_;
};

} // namespace script
