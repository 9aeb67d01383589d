// stockverify print: one entry's slip or report, written to a file without the screen.
#include "app/Command.h"
#include "app/PrintUi.h"

#include "ado/Connection.h"
#include "forms/Screen.h"
#include "module/frame/Module.h"
#include "module/printing/frmPrint.h"
#include "module/register/frmMaster.h"
#include "services/Context.h"
#include "vb/Clock.h"
#include "vb/Error.h"

#include <charconv>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>

namespace {

const char *usage =
    "Usage: stockverify print --db PATH --godown N --entry ID --to slip|pdf FILE [OPTIONS]\n"
    "\n"
    "Prints one verification entry of a godown's register without the screen, by\n"
    "the routines of the Print dialog:\n"
    "  --to slip FILE  the text slip, shaped by ShopSetting.txt of the program\n"
    "                  folder, as \"To Printer\" sends it: the exact bytes a\n"
    "                  character printer takes (CR LF line ends, form feeds)\n"
    "  --to pdf FILE   the report reports/rptGodownStockVerification.rpt of the\n"
    "                  program folder, as \"Windows Print\" previews it, as a PDF\n"
    "\n"
    "The entry must stand in the register: not older than the godown's floor\n"
    "date. FILE is replaced only when the printing ends well; a failure leaves\n"
    "it as it was, prints the messages the Print dialog would show on stderr and\n"
    "exits with 1. See docs/printing.md.\n"
    "\n"
    "  --db PATH             the SQLite database file\n"
    "  --connection TEXT     a connection string instead (sqlite:PATH, postgresql://...)\n"
    "  --godown N            godown id\n"
    "  --entry ID            the entry's id (svhid)\n"
    "  --company N           company id (default 1)\n"
    "  --user N              user id, named in the slip's footer (default 1)\n"
    "  --interface N         1005 Stock Verification (default), 1013 Total\n"
    "  --date YYYY-MM-DD     the process date (default: today)\n"
    "  --home DIR            the program folder (default: the folder of this program)\n"
    "  --title TEXT          title of messages (default: Stock Verification)\n"
    "  --data-source NAME=CONNECTION\n"
    "                        the database of a report server's data source name\n"
    "                        (default: the database of --db)\n";

struct UsageError {
    std::string message;
};

struct Arguments {
    std::string connection;
    std::int32_t godown = 0;
    std::int32_t entry = 0;
    std::int32_t company = 1;
    std::int32_t user = 1;
    std::int32_t interfaceId = 1005;
    std::optional<vb::Date> date;
    std::string to;
    std::filesystem::path file;
    std::filesystem::path home;
    std::string title = "Stock Verification";
    std::map<std::string, std::string> dataSources;
};

std::int32_t integer(const std::string &option, const std::string &text) {
    std::int32_t value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw UsageError{option + " wants a whole number, not '" + text + "'"};
    }
    return value;
}

Arguments parse(std::span<const std::string> args) {
    Arguments a;
    bool haveGodown = false;
    bool haveEntry = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string &arg = args[i];
        auto value = [&]() -> const std::string & {
            if (i + 1 >= args.size()) {
                throw UsageError{arg + " wants a value"};
            }
            return args[++i];
        };
        if (arg == "--db") {
            a.connection = "sqlite:" + value();
        } else if (arg == "--connection") {
            a.connection = value();
        } else if (arg == "--godown") {
            a.godown = integer(arg, value());
            haveGodown = true;
        } else if (arg == "--entry") {
            a.entry = integer(arg, value());
            haveEntry = true;
        } else if (arg == "--company") {
            a.company = integer(arg, value());
        } else if (arg == "--user") {
            a.user = integer(arg, value());
        } else if (arg == "--interface") {
            a.interfaceId = integer(arg, value());
        } else if (arg == "--date") {
            const std::string &text = value();
            int y = 0, m = 0, d = 0;
            if (std::sscanf(text.c_str(), "%4d-%2d-%2d", &y, &m, &d) != 3) {
                throw UsageError{"--date wants YYYY-MM-DD, not '" + text + "'"};
            }
            a.date = vb::DateSerial(y, m, d);
        } else if (arg == "--to") {
            a.to = value();
            if (a.to != "slip" && a.to != "pdf") {
                throw UsageError{"--to is slip or pdf, not '" + a.to + "'"};
            }
            a.file = value();
        } else if (arg == "--home") {
            a.home = value();
        } else if (arg == "--title") {
            a.title = value();
        } else if (arg == "--data-source") {
            const std::string &text = value();
            const std::size_t eq = text.find('=');
            if (eq == std::string::npos || eq == 0) {
                throw UsageError{"--data-source wants NAME=CONNECTION, not '" + text + "'"};
            }
            a.dataSources[text.substr(0, eq)] = text.substr(eq + 1);
        } else {
            throw UsageError{"unknown option " + arg};
        }
    }
    if (a.connection.empty()) {
        throw UsageError{"--db or --connection is required"};
    }
    if (!haveGodown || !haveEntry || a.to.empty()) {
        throw UsageError{"--godown, --entry and --to are required"};
    }
    return a;
}

std::filesystem::path programFolder(const Arguments &a) {
    if (!a.home.empty()) {
        if (!std::filesystem::is_directory(a.home)) {
            throw vb::Error(vb::err::PathNotFound, "stockverify print",
                            "Path not found: --home " + a.home.string());
        }
        return std::filesystem::absolute(a.home);
    }
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

/// Selects the entry's row in the register, as a user would before Print.
void selectEntry(tqsv2731::frmMaster &master, const Arguments &a) {
    for (int row = 1; row < master.flexMaster.Rows(); ++row) {
        if (master.flexMaster.TextMatrix(row, 0) == std::to_string(a.entry)) {
            master.flexMaster.setRow(row);
            return;
        }
    }
    throw vb::Error(vb::err::InvalidProcedureCall, "stockverify print",
                    "the entry " + std::to_string(a.entry) + " is not in the register of godown " +
                        std::to_string(a.godown) +
                        " (no such entry, or older than the godown's floor date)");
}

int printEntry(const Arguments &a) {
    const std::filesystem::path home = programFolder(a);
    const std::string sqlite = a.connection.starts_with("sqlite:") ? a.connection.substr(7) : "";
    if (!sqlite.empty() && !std::filesystem::is_regular_file(sqlite)) {
        throw vb::Error(vb::err::FileNotFound, "stockverify print",
                        "File not found: the database " + sqlite);
    }
    ado::Connection connection;
    connection.Open(a.connection);

    app::PrintUi ui(a.file, std::cerr);
    forms::Screen screen(ui);
    screen.setAppTitle(a.title);
    services::Context context(screen);
    context.connection = connection;
    context.companyId = a.company;
    context.dataSources = a.dataSources;

    tqsv2731::Module m(context);
    m.adocon = connection;
    m.intCompanyID = a.company;
    m.intUserID = a.user;
    m.intGodownID = a.godown;
    m.intInterfaceID = a.interfaceId;
    m.strMsgboxCaption = a.title;
    m.dtProcessDate = a.date.value_or(vb::Today());
    m.AppPath = home.string();

    tqsv2731::frmMaster &master = m.frmMaster();
    selectEntry(master, a);
    tqsv2731::frmPrint &dialog = m.frmPrint();
    if (a.to == "slip") {
        dialog.optPrint.setValue(true);
    } else {
        dialog.Optwindowsprint.setValue(true);
    }
    dialog.cmdOK_Click();

    if (ui.failed() || !ui.written()) {
        std::cerr << "stockverify print: nothing was printed; " << a.file.string()
                  << " is left as it was\n";
        return 1;
    }
    return 0;
}

int run(std::span<const std::string> args) {
    Arguments a;
    try {
        a = parse(args);
    } catch (const UsageError &e) {
        std::cerr << "stockverify print: " << e.message << "\n\n" << usage;
        return 2;
    }
    try {
        return printEntry(a);
    } catch (const vb::Error &e) {
        std::cerr << "stockverify print: " << e.description() << " (error " << e.number()
                  << ")\n";
        return 1;
    }
}

const app::Registration registration{app::Command{
    "print", "print one entry's slip or report to a file, without the screen", usage, run}};

} // namespace
