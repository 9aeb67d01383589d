#include "hosts/tui/SessionConfig.h"

#include "vb/Error.h"
#include "vb/Strings.h"

#include <charconv>
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
        "db",   "connection", "company", "user",      "godown",     "interface",
        "date", "title",      "home",    "trace-sql", "short-date", "key-strip",
        "report-printer", "report-folder", "escape-delay"};
    return all;
}

std::string readFile(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw vb::Error(vb::err::FileNotFound, "stockverify run",
                        "File not found: the config file " + path);
    }
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

} // namespace

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
    } else {
        refuse("unknown setting '" + std::string(key) + "'");
    }
}

void applyConfigText(SessionConfig &config, std::string_view text, std::string_view origin) {
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
            applySetting(config, key, value);
        } catch (const vb::Error &e) {
            refuse(std::string(origin) + ":" + std::to_string(number) + ": " + e.description());
        }
    }
}

SessionConfig parseRunOptions(std::span<const std::string> args,
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
    if (!configFile.empty()) {
        applyConfigText(config, readFile(configFile), configFile);
    }
    for (const auto &[key, value] : given) {
        applySetting(config, key, value);
    }
    if (config.connection.empty()) {
        refuse("the database is missing: give --db PATH (or --connection)");
    }
    for (auto [key, value] :
         {std::pair{"--company", config.companyId}, std::pair{"--user", config.userId},
          std::pair{"--godown", config.godownId}}) {
        if (value == 0) {
            refuse(std::string(key) + " is missing");
        }
    }
    return config;
}

} // namespace tui
