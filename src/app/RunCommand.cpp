// stockverify run: opens the register of a godown in the terminal.
#include "ado/Connection.h"
#include "app/Command.h"
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
    "Usage: stockverify run --db PATH --company N --user N --godown N [OPTIONS]\n"
    "\n"
    "Opens the stock verification register of a godown in the terminal and\n"
    "exits when it is closed. Every value can also come from a config file\n"
    "(--config FILE, lines 'key = value'); options win over the file.\n"
    "See docs/configuration.md.\n"
    "\n"
    "  --db PATH            the SQLite database file (stockverify init-db makes one)\n"
    "  --connection TEXT    a connection string instead: sqlite:PATH or odbc:...\n"
    "  --company N          company id\n"
    "  --user N             user id\n"
    "  --godown N           godown id\n"
    "  --interface N        1005 Stock Verification (default), 1013 Total Stock Verification\n"
    "  --date YYYY-MM-DD    the process date (default: today)\n"
    "  --title TEXT         title of message boxes (default: Stock Verification)\n"
    "  --home DIR           the program folder, where ShopSetting.txt and reports/ are\n"
    "                       (default: the folder of the stockverify program)\n"
    "  --trace-sql FILE     append every statement sent to the database to FILE\n"
    "  --short-date PATTERN how dates show as text (default: dd/mm/yyyy)\n"
    "  --printer PORT=PATH  the file or device a printer port (LPT1, ...) writes to\n"
    "  --key-strip on|off   the keys of the form in front on the bottom line (default: on)\n"
    "  --escape-delay MS    how long a lone Escape waits for the rest of a key's\n"
    "                       sequence (default: $ESCDELAY, else 25)\n"
    "  --config FILE        read settings from FILE\n"
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
    "Exit code: 0 closed, 1 an error, 2 bad options, 3 the terminal type (TERM) is\n"
    "unknown to this machine, 128+N stopped by signal N (130 Ctrl+C).\n";

/// The program folder: --home, else the folder of the running program.
std::filesystem::path programFolder(const tui::SessionConfig &config) {
    if (!config.home.empty()) {
        if (!std::filesystem::is_directory(config.home)) {
            throw vb::Error(vb::err::PathNotFound, "stockverify run",
                            "Path not found: --home " + config.home);
        }
        return std::filesystem::absolute(config.home);
    }
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

ado::Connection openDatabase(const tui::SessionConfig &config) {
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
        connection.traceSql(config.traceSql);
    }
    return connection;
}

void runSession(const tui::SessionConfig &config) {
    const std::filesystem::path home = programFolder(config);
    vb::setShortDateFormat(config.shortDate);
    ado::Connection connection = openDatabase(config);

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

    services::Context context(host.screen());
    context.connection = connection;
    context.companyId = config.companyId;
    // One module for the process: its globals outlive each Show, as they did.
    auto shared = std::make_shared<tqsv2731::Module>(context);
    shared->AppPath = home.string();
    auto module = std::make_shared<tqsv2731::clsStockVerification>(shared);
    module->adocon = connection;
    module->strMsgboxCaption = config.title;
    module->intCompanyID = config.companyId;
    module->intUserID = config.userId;
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
            args, escDelay && *escDelay ? std::optional<std::string_view>(escDelay) : std::nullopt);
    } catch (const vb::Error &e) {
        std::cerr << "stockverify run: " << e.description() << "\n\n" << usage;
        return 2;
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
