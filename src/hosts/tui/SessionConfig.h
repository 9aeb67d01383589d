// tui::SessionConfig: the session values of `stockverify run`, from options and a config file.
#pragma once

#include "vb/Date.h"
#include "vb/Error.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tui {

/// How `stockverify run` ends when it cannot start a session; `run --help`
/// and the manual list them.
namespace exitcode {
inline constexpr int Options = 2;       // an option it cannot use
inline constexpr int Configuration = 3; // a config file missing, unreadable or with a bad line
inline constexpr int Clerk = 4;         // the login is no clerk, or --user is not allowed for it
} // namespace exitcode

/// A config file that is missing, unreadable, or holds a line that cannot be
/// used; the description names the file and, for a line, its number.
class ConfigFileError : public vb::Error {
public:
    using vb::Error::Error;
};

/// Where config files are looked for. Either folder may be empty: then it is
/// not looked in.
struct ConfigFolders {
    /// The administrator's files (/etc/stockverify): the only place where
    /// allow-user-option counts.
    std::filesystem::path system;
    /// The user's own files ($XDG_CONFIG_HOME/stockverify).
    std::filesystem::path user;
};

/// /etc/stockverify, and $XDG_CONFIG_HOME/stockverify (~/.config/stockverify
/// when XDG_CONFIG_HOME is unset or relative; none without HOME). A build made
/// with STOCKVERIFY_TEST_SYSCONFDIR takes the system folder from the
/// environment variable of that name when it is set, so that tests and trial
/// setups need not write to /etc; the Debian package is built without it.
ConfigFolders configFoldersFromEnvironment();

/// What a terminal session starts with: where the database is, the session
/// values the module is shown with, and the host's own settings. Each value
/// can come from an option (`--company 1`) or from a line of a config file
/// (`company = 1`); later files win over earlier ones, and options over every
/// file, wherever `--config` stands. docs/configuration.md lists them all.
struct SessionConfig {
    /// The connection string: "sqlite:PATH" (from --db PATH) or as given by --connection.
    std::string connection;
    std::int32_t companyId = 0;
    /// The user asked for by --user or a `user` line; the clerk is otherwise
    /// the one the login maps to (ClerkLogin.h).
    std::optional<std::int32_t> userId;
    /// The logins that may choose the user with --user; read only from the
    /// files of the system folder.
    std::vector<std::string> userOptionLogins;
    std::int32_t godownId = 0;
    /// 1005 "Stock Verification" (the default) or 1013 "Total Stock Verification".
    std::int32_t interfaceId = 1005;
    /// The session's working date; today when not set.
    std::optional<vb::Date> processDate;
    /// Title of the module's message boxes.
    std::string title = "Stock Verification";
    /// The program folder (ShopSetting.txt, reports/); the executable's when empty.
    std::string home;
    /// Where --trace-sql writes; empty for no trace. A relative path lies in
    /// the state folder.
    std::string traceSql;
    /// The folder of the session's state (the slip file, the fault log,
    /// traces); $XDG_STATE_HOME/stockverify when empty.
    std::string state;
    /// How dates show as text.
    std::string shortDate = "dd/mm/yyyy";
    /// Whether the bottom line shows the keys of the form in front (on by default).
    bool keyStrip = true;
    /// How long a lone ESC waits for the rest of a key sequence before it is
    /// the Escape key: the ESCDELAY environment variable (milliseconds, as
    /// ncurses reads it), else 25 ms; the file and options win over both.
    std::chrono::milliseconds escapeDelay{25};
    /// Printer ports ("LPT1") and the file or device each one writes to.
    std::map<std::string, std::string> printers;
    /// The print queue a report preview prints on; the system's default when empty.
    std::string reportPrinter;
    /// Where a report preview saves its PDF; the current folder when empty.
    std::string reportFolder;
    /// The config files read, in the order they were applied.
    std::vector<std::string> files;

    /// The SQLite file of the connection, or "" for another provider.
    std::string sqlitePath() const;
};

/// Reads the options of `stockverify run` over the config files, in this
/// order: the system folder's stockverify.conf and NAME.conf, then the user
/// folder's stockverify.conf and NAME.conf, where NAME is the group of
/// `--config NAME`; a `--config` value that holds a "/" or ends in ".conf" is
/// a file read after those instead. Raises vb::Error 5 with a message for the
/// user for an unknown or malformed option, or a value that is missing (--db
/// or --connection, --company and --godown are required); ConfigFileError
/// (53 not found, 75 unreadable, 5 a bad line) for a config file.
/// `escapeDelayVariable` is the value of ESCDELAY (none when it is not
/// set); a malformed one is refused as an option is.
SessionConfig parseRunOptions(std::span<const std::string> args, const ConfigFolders &folders = {},
                              std::optional<std::string_view> escapeDelayVariable = std::nullopt);

/// Applies one setting by its config file name ("company", "printer.LPT1").
/// Raises vb::Error 5 for an unknown name or a malformed value.
void applySetting(SessionConfig &config, std::string_view key, std::string_view value);

/// Applies the lines of a config file's text: "key = value", blank lines and
/// "#" comments. `origin` names the file in messages. allow-user-option is
/// accepted only from a file of the system folder (`systemFile`). Raises
/// ConfigFileError 5 for a line it cannot use.
void applyConfigText(SessionConfig &config, std::string_view text, std::string_view origin,
                     bool systemFile = false);

/// The folder of the session's state: `state` when set, else
/// $XDG_STATE_HOME/stockverify.
std::filesystem::path stateFolder(const SessionConfig &config);

} // namespace tui
