#include "hosts/tui/PrintSpooler.h"

#include "vb/Error.h"
#include "vb/Strings.h"
#include "vb/WindowsPath.h"

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char **environ;

namespace tui {

namespace {

/// Keeps what is written and hands it to `send` when flushed.
class SendOnFlush : public std::stringbuf {
public:
    explicit SendOnFlush(std::function<void(const std::string &)> send) : send_(std::move(send)) {}

protected:
    int sync() override {
        try {
            send_(str());
        } catch (const vb::Error &) {
            // The channel's close sees the badbit and raises its own
            // "Device I/O error": the bytes were not printed.
            return -1;
        }
        str({});
        return 0;
    }

private:
    std::function<void(const std::string &)> send_;
};

class PrinterStream : public std::ostream {
public:
    explicit PrinterStream(std::function<void(const std::string &)> send)
        : std::ostream(nullptr), buffer_(std::move(send)) {
        rdbuf(&buffer_);
    }

private:
    SendOnFlush buffer_;
};

void writeTo(const std::filesystem::path &target, const std::string &bytes) {
    std::ofstream out(target, std::ios::binary | std::ios::out);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) {
        throw vb::Error(vb::err::DeviceIOError, "tui",
                        "Device I/O error: the printer " + target.string() + " refused the bytes");
    }
}

[[noreturn]] void noPrinter(const std::string &why) {
    throw vb::Error(vb::err::PathFileAccessError, "tui", "Path/File access error: " + why);
}

} // namespace

void sendToSpooler(const std::string &queue, const std::string &file, bool raw) {
    std::vector<std::string> args{"lp"};
    if (!queue.empty()) {
        args.insert(args.end(), {"-d", queue});
    }
    if (raw) {
        args.insert(args.end(), {"-o", "raw"});
    }
    args.push_back(file);
    std::vector<char *> argv;
    for (std::string &a : args) {
        argv.push_back(a.data());
    }
    argv.push_back(nullptr);

    // lp's own words go nowhere near the terminal's screen.
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    const int spawned = posix_spawnp(&pid, "lp", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0) {
        throw vb::Error(vb::err::DeviceIOError, "tui",
                        "Device I/O error: the print spooler (lp) cannot be started");
    }
    int status = 0;
    waitpid(pid, &status, 0);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw vb::Error(vb::err::DeviceIOError, "tui",
                        "Device I/O error: the print spooler refused the job" +
                            (queue.empty() ? std::string() : " for " + queue));
    }
}

std::unique_ptr<std::ostream> openPrinterPort(const std::string &name,
                                              const std::map<std::string, std::string> &ports) {
    for (const auto &[port, target] : ports) {
        if (vb::StrComp(port, name, vb::Compare::Text) == 0) {
            const std::filesystem::path file = target;
            std::error_code error;
            if (!std::filesystem::is_directory(file.parent_path().empty() ? "." : file.parent_path(),
                                               error)) {
                noPrinter(target + " (printer port " + name + ")");
            }
            return std::make_unique<PrinterStream>(
                [file](const std::string &bytes) { writeTo(file, bytes); });
        }
    }
    if (name.starts_with("/")) {
        const std::filesystem::path device = vb::PathIgnoringCase(name);
        std::error_code error;
        if (!std::filesystem::exists(device, error) ||
            std::filesystem::is_directory(device, error)) {
            noPrinter("no printer device " + name);
        }
        return std::make_unique<PrinterStream>(
            [device](const std::string &bytes) { writeTo(device, bytes); });
    }
    if (name.empty()) {
        noPrinter("no printer port is named");
    }
    return std::make_unique<PrinterStream>([name](const std::string &bytes) {
        char temp[] = "/tmp/stockverify-slip-XXXXXX";
        const int fd = mkstemp(temp);
        if (fd < 0) {
            throw vb::Error(vb::err::DeviceIOError, "tui", "Device I/O error: no temporary file");
        }
        close(fd);
        const std::string file = temp;
        try {
            writeTo(file, bytes);
            sendToSpooler(name, file, true);
        } catch (const vb::Error &) {
            std::filesystem::remove(file);
            throw;
        }
        std::filesystem::remove(file);
    });
}

} // namespace tui
