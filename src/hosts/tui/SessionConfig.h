// tui::SessionConfig: the session values of `stockverify run`, from options and a config file.
#pragma once

#include "vb/Date.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tui {

/// What a terminal session starts with: where the database is, the session
/// values the module is shown with, and the host's own settings. Each value
/// can come from an option (`--company 1`) or from a line of a config file
/// (`company = 1`); options win over the file, wherever `--config` stands.
/// docs/configuration.md lists them all.
struct SessionConfig {
    /// The connection string: "sqlite:PATH" (from --db PATH) or as given by --connection.
    std::string connection;
    std::int32_t companyId = 0;
    std::int32_t userId = 0;
    std::int32_t godownId = 0;
    /// 1005 "Stock Verification" (the default) or 1013 "Total Stock Verification".
    std::int32_t interfaceId = 1005;
    /// The session's working date; today when not set.
    std::optional<vb::Date> processDate;
    /// Title of the module's message boxes.
    std::string title = "Stock Verification";
    /// The program folder (ShopSetting.txt, reports/); the executable's when empty.
    std::string home;
    /// Where --trace-sql writes; empty for no trace.
    std::string traceSql;
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

    /// The SQLite file of the connection, or "" for another provider.
    std::string sqlitePath() const;
};

/// Reads the options of `stockverify run` (and the file of --config, if
/// any). Raises vb::Error 5 with a message for the user for an unknown or
/// malformed option or line, or a value that is missing (--db or
/// --connection, --company, --user and --godown are required); 53 when the
/// config file cannot be read. `escapeDelayVariable` is the value of ESCDELAY
/// (none when it is not set); a malformed one is refused as an option is.
SessionConfig parseRunOptions(std::span<const std::string> args,
                              std::optional<std::string_view> escapeDelayVariable = std::nullopt);

/// Applies one setting by its config file name ("company", "printer.LPT1").
/// Raises vb::Error 5 for an unknown name or a malformed value.
void applySetting(SessionConfig &config, std::string_view key, std::string_view value);

/// Applies the lines of a config file's text: "key = value", blank lines and
/// "#" comments. `origin` names the file in messages.
void applyConfigText(SessionConfig &config, std::string_view text, std::string_view origin);

} // namespace tui
