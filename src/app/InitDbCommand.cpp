// stockverify init-db: makes a database file, or the schema on a PostgreSQL server's
// database, empty or with the demo company.
#include "app/Command.h"
#include "hosts/tui/ClerkLogin.h"
#include "module/records/DatabaseFile.h"
#include "module/records/ServerDatabase.h"
#include "vb/Error.h"

#include <charconv>
#include <chrono>
#include <ctime>
#include <iostream>
#include <optional>
#include <set>
#include <string>
#include <unistd.h>

namespace {

const char *usage =
    "Usage: stockverify init-db PATH [--demo] [--items N] [--date YYYY-MM-DD] [--force]\n"
    "       stockverify init-db postgresql://USER@HOST/DATABASE [--demo] [--items N]\n"
    "                           [--date YYYY-MM-DD]\n"
    "\n"
    "Creates the SQLite database file PATH with the tables, views and stored\n"
    "procedures that the module runs against; or creates them in an existing,\n"
    "empty database of a PostgreSQL server (docs/database.md), refusing one that\n"
    "holds them already.\n"
    "\n"
    "  --demo         also load the demo company (docs/database.md); the login\n"
    "                 that runs init-db, and root, are mapped to its store clerk\n"
    "                 RAHUL MEHTA (user 1), so that 'stockverify run' opens for them\n"
    "  --items N      number of demo items, at least 12 (default 200)\n"
    "  --date DATE    the day the demo is seen from, YYYY-MM-DD: its entries,\n"
    "                 stock moves and closings lie before it (default today);\n"
    "                 run the register on the same date to see them\n"
    "  --force        replace PATH if it exists (database files only)\n";

bool isServer(const std::string &target) {
    return target.starts_with("postgresql://") || target.starts_with("postgres://");
}

// A command line that cannot be run as written: told with the usage text.
vb::Error usageError(std::string message) {
    return vb::Error(vb::err::InvalidProcedureCall, "init-db", std::move(message));
}

int parseCount(const std::string &text) {
    int value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (ec != std::errc() || end != text.data() + text.size() || value < 1)
        throw usageError("--items wants a whole number, not '" + text + "'");
    return value;
}

// Today on this machine's calendar, which is the day a clerk expects the
// register to open on.
std::chrono::sys_days today() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return std::chrono::sys_days{std::chrono::year{local.tm_year + 1900} /
                                 static_cast<unsigned>(local.tm_mon + 1) /
                                 static_cast<unsigned>(local.tm_mday)};
}

std::chrono::sys_days parseDate(const std::string &text) {
    int y = 0;
    unsigned m = 0, d = 0;
    const char *p = text.data();
    const char *end = text.data() + text.size();
    auto number = [&](auto &out, std::size_t digits) {
        auto [next, ec] = std::from_chars(p, end, out);
        bool ok = ec == std::errc() && static_cast<std::size_t>(next - p) == digits;
        p = next;
        return ok;
    };
    const bool shaped = text.size() == 10 && number(y, 4) && p < end && *p++ == '-' &&
                        number(m, 2) && p < end && *p++ == '-' && number(d, 2) && p == end;
    const std::chrono::year_month_day date{std::chrono::year{y}, std::chrono::month{m},
                                           std::chrono::day{d}};
    if (!shaped || !date.ok())
        throw usageError("--date wants a day as YYYY-MM-DD, not '" + text + "'");
    return std::chrono::sys_days{date};
}

struct Arguments {
    std::string path;
    records::DatabaseFileOptions options;
};

Arguments parse(std::span<const std::string> args) {
    Arguments parsed;
    bool demo = false;
    records::DemoOptions demoOptions;
    demoOptions.date = today();
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string &arg = args[i];
        auto value = [&]() -> const std::string & {
            if (i + 1 >= args.size())
                throw usageError(arg + " wants a value");
            return args[++i];
        };
        if (arg == "--demo")
            demo = true;
        else if (arg == "--force")
            parsed.options.replace = true;
        else if (arg == "--items")
            demoOptions.items = parseCount(value());
        else if (arg == "--date")
            demoOptions.date = parseDate(value());
        else if (arg.starts_with("-"))
            throw usageError("unknown option '" + arg + "'");
        else if (parsed.path.empty())
            parsed.path = arg;
        else
            throw usageError("one PATH only, not also '" + arg + "'");
    }
    if (parsed.path.empty())
        throw usageError("PATH is missing");
    if (isServer(parsed.path) && parsed.options.replace)
        throw usageError("--force replaces database files only; a server's database is "
                         "emptied by its administrator");
    if (demo) {
        // The person who makes the demo is the one who tries it next.
        demoOptions.logins = {"root"};
        try {
            demoOptions.logins.push_back(tui::processLogin());
        } catch (const tui::ClerkRefusal &e) {
            std::cerr << "stockverify init-db: " << e.description() << "; only root is mapped\n";
        }
        parsed.options.demo = demoOptions;
    }
    return parsed;
}

// A progress line that rewrites itself, only where somebody watches the terminal.
records::DemoProgress progressLine() {
    if (!isatty(STDERR_FILENO))
        return {};
    return [](std::string_view stage, long done, long total) {
        std::cerr << "\rinit-db: " << stage << " " << done << " of " << total << "   "
                  << std::flush;
    };
}

int run(std::span<const std::string> args) {
    Arguments parsed;
    try {
        parsed = parse(args);
    } catch (const vb::Error &e) {
        std::cerr << "stockverify init-db: " << e.description() << "\n\n" << usage;
        return 2;
    }
    const auto progress = progressLine();
    try {
        if (isServer(parsed.path))
            records::createServerDatabase(parsed.path, parsed.options.demo, progress);
        else
            records::createDatabaseFile(parsed.path, parsed.options, progress);
    } catch (const vb::Error &e) {
        if (progress)
            std::cerr << "\n";
        std::cerr << "stockverify init-db: " << e.description() << "\n";
        if (e.number() == records::fileerr::AlreadyExists && !isServer(parsed.path))
            std::cerr << "(--force replaces it)\n";
        return 1;
    }
    if (progress)
        std::cerr << "\n";
    std::cout << "Created " << parsed.path;
    if (parsed.options.demo) {
        std::cout << " with the demo company (" << parsed.options.demo->items << " items)";
        std::set<std::string> logins(parsed.options.demo->logins.begin(),
                                     parsed.options.demo->logins.end());
        std::cout << "; the clerk of login";
        const char *separator = logins.size() > 1 ? "s " : " ";
        for (const auto &login : logins) {
            std::cout << separator << login;
            separator = ", ";
        }
        std::cout << " is RAHUL MEHTA (user 1)";
    }
    std::cout << "\n";
    return 0;
}

const app::Registration registration{{
    "init-db",
    "create a database (file or PostgreSQL), empty or with the demo company",
    usage,
    run,
}};

} // namespace
