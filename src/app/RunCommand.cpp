// stockverify run: opens the register of a godown in the terminal.
#include "ado/Connection.h"
#include "app/Command.h"
#include "app/ProgramFolder.h"
#include "hosts/tui/ClerkLogin.h"
#include "hosts/tui/CursesTerminal.h"
#include "hosts/tui/SessionConfig.h"
#include "hosts/tui/SessionEnded.h"
#include "hosts/tui/TuiHost.h"
#include "hosts/tui/UnknownTerminal.h"
#include "module/frame/Module.h"
#include "module/frame/clsStockVerification.h"
#include "services/Context.h"
#include "services/CreateObject.h"
#include "vb/Clock.h"
#include "vb/Error.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

namespace {

const char *usage =
    "Usage: stockverify run [--config NAME|FILE] [OPTIONS]\n"
    "\n"
    "Opens the stock verification register of a godown in the terminal and\n"
    "exits when it is closed. The clerk is the user that the login running the\n"
    "program maps to in the database's table svUserLogin.\n"
    "\n"
    "Every value can also come from config files, lines 'key = value', read in\n"
    "this order, later ones winning: /etc/stockverify/stockverify.conf,\n"
    "/etc/stockverify/NAME.conf, then the same two in $XDG_CONFIG_HOME/stockverify\n"
    "(default ~/.config/stockverify); NAME is the group of --config NAME. A\n"
    "--config value with a '/' or ending in .conf is a file read after those.\n"
    "Options win over every file. See docs/configuration.md.\n"
    "\n"
    "  --db PATH            the SQLite database file (stockverify init-db makes one)\n"
    "  --connection TEXT    a connection string instead: sqlite:PATH or\n"
    "                       postgresql://USER@HOST/DATABASE (a server)\n"
    "  --company N          company id\n"
    "  --godown N           godown id\n"
    "  --user N             user id instead of the login's; only for the logins that\n"
    "                       allow-user-option lists in /etc/stockverify (the login's\n"
    "                       own user id is always accepted)\n"
    "  --interface N        1005 Stock Verification (default), 1013 Total Stock Verification\n"
    "  --date YYYY-MM-DD    the process date (default: today)\n"
    "  --title TEXT         title of message boxes (default: Stock Verification)\n"
    "  --home DIR           the program folder, where ShopSetting.txt and reports/ are\n"
    "                       (default: the installed share/stockverify, or the source\n"
    "                       tree of a build)\n"
    "  --state DIR          the folder of the slip file, the fault log and relative\n"
    "                       --trace-sql files (default: $XDG_STATE_HOME/stockverify,\n"
    "                       ~/.local/state/stockverify)\n"
    "  --trace-sql FILE     append every statement sent to the database to FILE\n"
    "  --short-date PATTERN how dates show as text (default: dd/mm/yyyy)\n"
    "  --printer PORT=PATH  the file or device a printer port (LPT1, ...) writes to\n"
    "  --key-strip on|off   the keys of the form in front on the bottom line (default: on)\n"
    "  --escape-delay MS    how long a lone Escape waits for the rest of a key's\n"
    "                       sequence (default: $ESCDELAY, else 25)\n"
    "  --config NAME|FILE   read the group NAME's config files, or FILE\n"
    "\n"
    "Keys (the bottom line shows those the form in front takes):\n"
    "  Tab, Shift+Tab       the next or previous field\n"
    "  Enter                presses the focused button, else moves on as Tab does\n"
    "  Alt+letter           the button or field whose letter is underlined:\n"
    "                       on the register Alt+N New; on an entry Alt+O saves it,\n"
    "                       Alt+C closes it (asking whether to save new lines),\n"
    "                       Alt+R goes to the remarks\n"
    "  Ctrl+D               the focus to the form's list\n"
    "  Ctrl+Enter           on the register a new entry, on an entry's list a new\n"
    "                       line (the item screen); Shift+F10 or the Menu key opens\n"
    "                       the list's Add, Edit, Delete menu. Ctrl+J does the same\n"
    "                       on every terminal; where the terminal cannot send\n"
    "                       Ctrl+Enter (Linux console, VT220, screen) the bottom\n"
    "                       line shows Ctrl+J\n"
    "  F3                   the item fetch dialog on the item screen, where offered\n"
    "  Left, Right          the columns of a list wider than the screen\n"
    "  F4, Alt+Down         opens a combo box's list\n"
    "  Escape               the form's Cancel button, where it has one\n"
    "  Ctrl+C               leaves at once; what is not saved is lost\n"
    "\n"
    "Keys are read with the terminal's terminfo entry (TERM); see docs/terminal.md.\n"
    "\n"
    "Exit codes:\n"
    "  0                    the register was closed\n"
    "  1                    a failure once the session started (the database could\n"
    "                       not be opened, the terminal was no terminal)\n"
    "  2                    an option it cannot use\n"
    "  3                    a config file missing, unreadable or with a line it\n"
    "                       cannot use\n"
    "  4                    no clerk: the login maps to no user or to several, or\n"
    "                       --user is not allowed for it\n"
    "  5                    the terminal type (TERM) is unknown to this machine\n"
    "                       or cannot place the cursor\n"
    "  130                  Ctrl+C\n"
    "  128+N                ended by signal N (SIGTERM, SIGHUP)\n";

/// The program folder: --home, else the installed one or the source tree's.
std::filesystem::path programFolder(const tui::SessionConfig &config) {
    if (!config.home.empty()) {
        if (!std::filesystem::is_directory(config.home)) {
            throw vb::Error(vb::err::PathNotFound, "stockverify run",
                            "Path not found: --home " + config.home);
        }
        return std::filesystem::absolute(config.home);
    }
    return app::defaultProgramFolder();
}

ado::Connection openDatabase(const tui::SessionConfig &config,
                             const std::filesystem::path &state) {
    // run opens what exists; making a database is init-db's work.
    std::string path = config.sqlitePath();
    if (!path.empty() && !std::filesystem::is_regular_file(path)) {
        throw vb::Error(vb::err::FileNotFound, "stockverify run",
                        "File not found: the database " + path + " (stockverify init-db " + path +
                            " --demo makes one)");
    }
    ado::Connection connection;
    connection.Open(config.connection);
    if (!config.traceSql.empty()) {
        // A relative trace lands with the session's other state.
        std::filesystem::create_directories(state);
        connection.traceSql((state / config.traceSql).string());
    }
    return connection;
}

void runSession(const tui::SessionConfig &config) {
    const std::filesystem::path home = programFolder(config);
    const std::filesystem::path state = tui::stateFolder(config);
    vb::setShortDateFormat(config.shortDate);
    ado::Connection connection = openDatabase(config, state);
    // Known before the terminal is taken, so that a refusal reads plainly.
    const std::int32_t userId = tui::sessionUser(config, connection, tui::processLogin());

    // From here the terminal is the host's until the register closes; its
    // destructor gives it back however this function is left.
    tui::CursesTerminal terminal;
    tui::HostSettings settings;
    settings.printers = config.printers;
    settings.keyStrip = config.keyStrip;
    settings.escapeDelay = config.escapeDelay;
    settings.reportPrinter = config.reportPrinter;
    settings.reportFolder = config.reportFolder;
    tui::TuiHost host(terminal, settings);
    host.screen().setAppTitle(config.title);

    services::Context context(host.screen(), state);
    context.connection = connection;
    context.companyId = config.companyId;
    // One module for the process: its globals outlive each Show, as they did.
    auto shared = std::make_shared<tqsv2731::Module>(context);
    shared->AppPath = home.string();
    auto module = std::make_shared<tqsv2731::clsStockVerification>(shared);
    module->adocon = connection;
    module->strMsgboxCaption = config.title;
    module->intCompanyID = config.companyId;
    module->intUserID = userId;
    module->dtProcessDate = config.processDate.value_or(vb::Today());
    module->intInterfaceID = config.interfaceId;
    module->intGodownID = config.godownId;
    module->Show();
}

int run(std::span<const std::string> args) {
    tui::SessionConfig config;
    try {
        // An empty ESCDELAY is unset, as ncurses takes it.
        const char *escDelay = std::getenv("ESCDELAY");
        config = tui::parseRunOptions(
            args, tui::configFoldersFromEnvironment(),
            escDelay && *escDelay ? std::optional<std::string_view>(escDelay) : std::nullopt);
    } catch (const tui::ConfigFileError &e) {
        std::cerr << "stockverify run: " << e.description() << "\n";
        return tui::exitcode::Configuration;
    } catch (const vb::Error &e) {
        std::cerr << "stockverify run: " << e.description() << "\n\n" << usage;
        return tui::exitcode::Options;
    }
    // Each failure is reported after runSession has given the terminal back.
    try {
        runSession(config);
    } catch (const tui::UnknownTerminal &e) {
        std::cerr << "stockverify run: " << e.what() << "\n";
        return tui::UnknownTerminal::exitCode;
    } catch (const tui::SessionEnded &e) {
        std::cerr << "stockverify run: " << e.what() << "\n";
        return e.exitCode();
    } catch (const tui::ClerkRefusal &e) {
        std::cerr << "stockverify run: " << e.description() << "\n";
        return tui::exitcode::Clerk;
    } catch (const vb::Error &e) {
        std::cerr << "stockverify run: " << e.description() << " (error " << e.number() << ")\n";
        return 1;
    } catch (const std::exception &e) {
        std::cerr << "stockverify run: " << e.what() << "\n";
        return 1;
    }
    return 0;
}

const app::Registration registration{{
    "run",
    "open the register of a godown in the terminal",
    usage,
    run,
}};

} // namespace
