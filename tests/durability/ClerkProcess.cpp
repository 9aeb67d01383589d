#include "ClerkProcess.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <stdexcept>
#include <sys/wait.h>
#include <thread>

extern char **environ;

namespace durability {

namespace {

std::string readFile(const std::filesystem::path &file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

int decode(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace

ClerkProcess::ClerkProcess(const std::filesystem::path &folder, const std::string &name,
                           const std::vector<std::string> &args)
    : out_(folder / (name + ".out")), err_(folder / (name + ".err")) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, out_.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0644);
    posix_spawn_file_actions_addopen(&actions, 2, err_.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0644);
    std::vector<std::string> all{CLERK_PROGRAM};
    all.insert(all.end(), args.begin(), args.end());
    std::vector<char *> argv;
    for (std::string &a : all) {
        argv.push_back(a.data());
    }
    argv.push_back(nullptr);
    const int rc = posix_spawn(&pid_, CLERK_PROGRAM, &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (rc != 0) {
        throw std::runtime_error(std::string("cannot start the clerk: ") + std::strerror(rc));
    }
}

ClerkProcess::ClerkProcess(ClerkProcess &&other) noexcept
    : pid_(other.pid_), status_(other.status_), out_(std::move(other.out_)),
      err_(std::move(other.err_)) {
    other.pid_ = -1;
}

ClerkProcess::~ClerkProcess() {
    if (pid_ > 0) {
        killNow();
    }
}

int ClerkProcess::wait() {
    if (pid_ > 0) {
        int status = 0;
        while (waitpid(pid_, &status, 0) < 0 && errno == EINTR) {
        }
        status_ = decode(status);
        pid_ = -1;
    }
    return status_;
}

void ClerkProcess::killNow() {
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        wait();
    }
}

bool ClerkProcess::waitForLine(const std::string &line) {
    const std::string wanted = line + "\n";
    for (;;) {
        const std::string text = readFile(out_);
        if (text.rfind(wanted, 0) == 0 || text.find("\n" + wanted) != std::string::npos) {
            return true;
        }
        if (pid_ <= 0) {
            return false;
        }
        int status = 0;
        if (waitpid(pid_, &status, WNOHANG) == pid_) {
            status_ = decode(status);
            pid_ = -1;
            continue; // one last look at what it printed before it ended
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
}

std::string ClerkProcess::output() const {
    return readFile(out_);
}

std::string ClerkProcess::errors() const {
    return readFile(err_);
}

} // namespace durability
