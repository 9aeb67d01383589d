#include "hosts/script/Failure.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace script {

Failure::Failure(std::string what, std::vector<std::string> expected,
                 std::vector<std::string> found)
    : std::runtime_error(what), summary_(std::move(what)), expected_(std::move(expected)),
      found_(std::move(found)) {}

Failure::Failure(std::string what, std::string expected, std::string found)
    : Failure(std::move(what), std::vector<std::string>{std::move(expected)},
              std::vector<std::string>{std::move(found)}) {}

namespace {

/// Expected and found side by side, so that a wrong row stands next to the
/// row that should have been there.
void sideBySide(std::ostream &out, const std::vector<std::string> &expected,
                const std::vector<std::string> &found) {
    std::size_t width = std::string("expected").size();
    for (const auto &line : expected) {
        width = std::max(width, line.size());
    }
    auto padded = [width](const std::string &s) { return s + std::string(width - s.size(), ' '); };
    out << "  " << padded("expected") << " | found\n";
    std::size_t rows = std::max(expected.size(), found.size());
    for (std::size_t i = 0; i < rows; ++i) {
        bool hasExpected = i < expected.size();
        bool hasFound = i < found.size();
        bool same = hasExpected && hasFound && expected[i] == found[i];
        out << (same ? "  " : "! ") << padded(hasExpected ? expected[i] : "") << " |";
        if (hasFound) {
            out << " " << found[i];
        }
        out << "\n";
    }
}

} // namespace

std::string Failure::report(const std::string &fileName) const {
    std::ostringstream out;
    out << fileName << ":" << line_ << ": " << summary_ << "\n";
    if (expected_.size() == 1 && found_.size() == 1) {
        out << "  expected: " << expected_.front() << "\n"
            << "  found:    " << found_.front() << "\n";
    } else {
        sideBySide(out, expected_, found_);
    }
    return out.str();
}

BadScript::BadScript(int line, std::string message)
    : std::runtime_error(message), line_(line), message_(std::move(message)) {}

std::string BadScript::report(const std::string &fileName) const {
    return fileName + ":" + std::to_string(line_) + ": bad script: " + message_ + "\n";
}

} // namespace script
