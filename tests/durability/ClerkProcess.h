// A durability_clerk running as a child process, its output kept in files.
#pragma once

#include <filesystem>
#include <string>
#include <sys/types.h>
#include <vector>

namespace durability {

/// Starts the clerk program with `args`, its standard output and error going to
/// `folder`/`name`.out and .err. A clerk still running when the object goes is
/// killed and reaped, so that a failed test leaves no process behind.
class ClerkProcess {
public:
    ClerkProcess(const std::filesystem::path &folder, const std::string &name,
                 const std::vector<std::string> &args);
    ~ClerkProcess();
    ClerkProcess(ClerkProcess &&other) noexcept;
    ClerkProcess(const ClerkProcess &) = delete;
    ClerkProcess &operator=(const ClerkProcess &) = delete;
    ClerkProcess &operator=(ClerkProcess &&) = delete;

    /// Waits for the clerk to end; its exit status, or 128 + the signal that ended it.
    int wait();
    /// Ends the clerk at once with SIGKILL, as a power cut or `kill -9` would, and reaps it.
    void killNow();
    /// Waits until the clerk has printed `line` (a whole line); false if it ended first.
    bool waitForLine(const std::string &line);

    std::string output() const;
    std::string errors() const;

private:
    pid_t pid_ = -1;
    int status_ = -1;
    std::filesystem::path out_;
    std::filesystem::path err_;
};

} // namespace durability
