#include "hosts/tui/SessionConfig.h"

#include "services/Context.h"
#include "vb/Error.h"
#include "vb/Strings.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <set>
#include <sstream>
#include <vector>

namespace tui {

namespace {

[[noreturn]] void refuse(const std::string &message) {
    throw vb::Error(vb::err::InvalidProcedureCall, "stockverify run", message);
}

std::int32_t parseId(std::string_view key, std::string_view text) {
    std::int32_t value = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size()) {
        refuse(std::string(key) + " wants a whole number, not '" + std::string(text) + "'");
    }
    return value;
}

vb::Date parseDay(std::string_view text) {
    int y = 0, m = 0, d = 0;
    bool shaped = text.size() == 10 && text[4] == '-' && text[7] == '-';
    auto digits = [&](std::size_t at, std::size_t n, int &out) {
        auto [end, ec] = std::from_chars(text.data() + at, text.data() + at + n, out);
        return ec == std::errc() && end == text.data() + at + n;
    };
    if (!shaped || !digits(0, 4, y) || !digits(5, 2, m) || !digits(8, 2, d) ||
        !vb::isValidCalendarDate(y, m, d)) {
        refuse("date wants a day as YYYY-MM-DD, not '" + std::string(text) + "'");
    }
    return vb::DateSerial(y, m, d);
}

[[noreturn]] void refuseFile(std::int32_t number, const std::string &message) {
    throw ConfigFileError(number, "stockverify run", message);
}

/// An escape delay in milliseconds: long enough for a sequence split by a
/// slow line, never so long that Escape feels stuck.
std::chrono::milliseconds parseEscapeDelay(std::string_view key, std::string_view text) {
    int value = 0;
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (text.empty() || ec != std::errc() || end != text.data() + text.size() || value < 1 ||
        value > 5000) {
        refuse(std::string(key) + " wants milliseconds from 1 to 5000, not '" + std::string(text) +
               "'");
    }
    return std::chrono::milliseconds(value);
}

/// Option names and the config keys they set; all take a value.
const std::set<std::string, std::less<>> &keys() {
    static const std::set<std::string, std::less<>> all{
        "db",         "connection", "company",        "user",          "godown",
        "interface",  "date",       "title",          "home",          "trace-sql",
        "short-date", "key-strip",  "report-printer", "report-folder", "state",
        "escape-delay"};
    return all;
}

std::string readFile(const std::filesystem::path &path) {
    std::error_code error;
    const auto type = std::filesystem::status(path, error).type();
    if (type == std::filesystem::file_type::not_found) {
        refuseFile(vb::err::FileNotFound, "File not found: the config file " + path.string());
    }
    if (error) {
        refuseFile(vb::err::PathFileAccessError, "Path/File access error: cannot read the config "
                                                 "file " +
                                                     path.string() + " (" + error.message() + ")");
    }
    if (type != std::filesystem::file_type::regular) {
        refuseFile(vb::err::PathFileAccessError,
                   "Path/File access error: the config file " + path.string() + " is not a file");
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        refuseFile(vb::err::PathFileAccessError,
                   "Path/File access error: cannot read the config file " + path.string() + " (" +
                       std::strerror(errno) + ")");
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

/// The logins of an allow-user-option line: separated by commas or blanks.
std::vector<std::string> loginList(std::string_view value) {
    std::vector<std::string> logins;
    std::string login;
    for (char c : value) {
        if (c == ',' || c == ' ' || c == '\t') {
            if (!login.empty()) {
                logins.push_back(std::move(login));
                login.clear();
            }
        } else {
            login += c;
        }
    }
    if (!login.empty()) {
        logins.push_back(std::move(login));
    }
    return logins;
}

/// Whether `file` lies directly in `folder`, however either is spelt. The
/// file's own name is not followed: a link in /etc/stockverify is the
/// administrator's wherever it points.
bool inFolder(const std::filesystem::path &file, const std::filesystem::path &folder) {
    if (folder.empty()) {
        return false;
    }
    std::error_code fileError;
    std::error_code folderError;
    const auto parent =
        std::filesystem::weakly_canonical(std::filesystem::absolute(file).parent_path(), fileError);
    const auto canonicalFolder = std::filesystem::weakly_canonical(folder, folderError);
    return !fileError && !folderError && parent == canonicalFolder;
}

/// A --config value that names a file rather than a group.
bool isFilePath(std::string_view name) {
    return name.find('/') != std::string_view::npos || name.ends_with(".conf");
}

/// The files to read, in order, for `--config NAME` (NAME may be empty).
std::vector<std::filesystem::path> configFiles(const std::string &name,
                                               const ConfigFolders &folders) {
    std::vector<std::filesystem::path> files;
    const bool group = !name.empty() && !isFilePath(name);
    std::vector<std::string> names{"stockverify"};
    if (group && name != "stockverify") {
        names.push_back(name);
    }
    for (const auto &folder : {folders.system, folders.user}) {
        if (folder.empty()) {
            continue;
        }
        for (const auto &file : names) {
            // A file that is there but cannot be read still stops the session:
            // readFile says why.
            std::error_code error;
            const auto path = folder / (file + ".conf");
            if (std::filesystem::symlink_status(path, error).type() !=
                std::filesystem::file_type::not_found) {
                files.push_back(path);
            }
        }
    }
    if (group) {
        const bool found = std::any_of(files.begin(), files.end(), [&](const auto &f) {
            return f.filename() == name + ".conf";
        });
        if (!found) {
            std::string looked;
            for (const auto &folder : {folders.system, folders.user}) {
                if (!folder.empty()) {
                    looked +=
                        (looked.empty() ? "" : " nor ") + (folder / (name + ".conf")).string();
                }
            }
            refuseFile(vb::err::FileNotFound,
                       "File not found: the config file of '" + name + "', neither " + looked);
        }
    } else if (!name.empty()) {
        files.emplace_back(name);
    }
    return files;
}

} // namespace

ConfigFolders configFoldersFromEnvironment() {
    ConfigFolders folders;
    folders.system = "/etc/stockverify";
#ifdef STOCKVERIFY_TEST_SYSCONFDIR
    if (const char *dir = std::getenv("STOCKVERIFY_SYSCONFDIR"); dir != nullptr && *dir != '\0') {
        folders.system = dir;
    }
#endif
    const char *xdg = std::getenv("XDG_CONFIG_HOME");
    // XDG says a relative value is invalid and is to be ignored.
    if (xdg != nullptr && *xdg != '\0' && std::filesystem::path(xdg).is_absolute()) {
        folders.user = std::filesystem::path(xdg) / "stockverify";
    } else if (const char *home = std::getenv("HOME"); home != nullptr && *home != '\0') {
        folders.user = std::filesystem::path(home) / ".config" / "stockverify";
    }
    return folders;
}

std::filesystem::path stateFolder(const SessionConfig &config) {
    if (!config.state.empty()) {
        return config.state;
    }
    return services::defaultStateDirectory();
}

std::string SessionConfig::sqlitePath() const {
    constexpr std::string_view prefix = "sqlite:";
    return connection.starts_with(prefix) ? connection.substr(prefix.size()) : std::string();
}

void applySetting(SessionConfig &config, std::string_view key, std::string_view value) {
    if (key.starts_with("printer.") && key.size() > 8) {
        config.printers[std::string(key.substr(8))] = std::string(value);
    } else if (key == "db") {
        config.connection = "sqlite:" + std::string(value);
    } else if (key == "connection") {
        config.connection = value;
    } else if (key == "company") {
        config.companyId = parseId(key, value);
    } else if (key == "user") {
        config.userId = parseId(key, value);
    } else if (key == "godown") {
        config.godownId = parseId(key, value);
    } else if (key == "interface") {
        config.interfaceId = parseId(key, value);
    } else if (key == "date") {
        config.processDate = parseDay(value);
    } else if (key == "title") {
        config.title = value;
    } else if (key == "home") {
        config.home = value;
    } else if (key == "trace-sql") {
        config.traceSql = value;
    } else if (key == "key-strip") {
        if (value != "on" && value != "off") {
            refuse("key-strip wants on or off, not '" + std::string(value) + "'");
        }
        config.keyStrip = value == "on";
    } else if (key == "escape-delay") {
        config.escapeDelay = parseEscapeDelay(key, value);
    } else if (key == "short-date") {
        config.shortDate = value;
    } else if (key == "report-printer") {
        config.reportPrinter = value;
    } else if (key == "report-folder") {
        config.reportFolder = value;
    } else if (key == "state") {
        config.state = value;
    } else if (key == "allow-user-option") {
        refuse("allow-user-option is read only from the files of the system folder "
               "(/etc/stockverify)");
    } else {
        refuse("unknown setting '" + std::string(key) + "'");
    }
}

void applyConfigText(SessionConfig &config, std::string_view text, std::string_view origin,
                     bool systemFile) {
    std::istringstream lines{std::string(text)};
    std::string line;
    int number = 0;
    while (std::getline(lines, line)) {
        ++number;
        std::string trimmed = vb::Trim(vb::Replace(line, "\r", ""));
        if (trimmed.empty() || trimmed[0] == '#') {
            continue;
        }
        auto eq = trimmed.find('=');
        if (eq == std::string::npos) {
            refuse(std::string(origin) + ":" + std::to_string(number) +
                   ": a setting reads 'key = value', not '" + trimmed + "'");
        }
        std::string key = vb::Trim(trimmed.substr(0, eq));
        std::string value = vb::Trim(trimmed.substr(eq + 1));
        try {
            if (key == "allow-user-option" && systemFile) {
                config.userOptionLogins = loginList(value);
            } else {
                applySetting(config, key, value);
            }
        } catch (const vb::Error &e) {
            refuseFile(vb::err::InvalidProcedureCall,
                       std::string(origin) + ":" + std::to_string(number) + ": " + e.description());
        }
    }
}

SessionConfig parseRunOptions(std::span<const std::string> args, const ConfigFolders &folders,
                              std::optional<std::string_view> escapeDelayVariable) {
    std::vector<std::pair<std::string, std::string>> given;
    std::string configFile;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string &arg = args[i];
        if (!arg.starts_with("--")) {
            refuse("unexpected argument '" + arg + "'");
        }
        std::string name = arg.substr(2);
        bool printer = name == "printer";
        if (name != "config" && !printer && !keys().contains(name)) {
            refuse("unknown option '" + arg + "'");
        }
        if (i + 1 >= args.size()) {
            refuse(arg + " wants a value");
        }
        const std::string &value = args[++i];
        if (name == "config") {
            configFile = value;
        } else if (printer) {
            auto eq = value.find('=');
            if (eq == std::string::npos || eq == 0) {
                refuse("--printer wants PORT=PATH, not '" + value + "'");
            }
            given.emplace_back("printer." + value.substr(0, eq), value.substr(eq + 1));
        } else {
            given.emplace_back(name, value);
        }
    }

    SessionConfig config;
    if (escapeDelayVariable) {
        config.escapeDelay = parseEscapeDelay("ESCDELAY", *escapeDelayVariable);
    }
    for (const auto &file : configFiles(configFile, folders)) {
        applyConfigText(config, readFile(file), file.string(), inFolder(file, folders.system));
        config.files.push_back(file.string());
    }
    for (const auto &[key, value] : given) {
        applySetting(config, key, value);
    }
    if (config.connection.empty()) {
        refuse("the database is missing: give --db PATH (or --connection)");
    }
    for (auto [key, value] :
         {std::pair{"--company", config.companyId}, std::pair{"--godown", config.godownId}}) {
        if (value == 0) {
            refuse(std::string(key) + " is missing");
        }
    }
    return config;
}

} // namespace tui
