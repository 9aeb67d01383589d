// stockverify sql: runs one statement through the data layer the module uses and prints the result.
#include "ado/Connection.h"
#include "ado/sql/DateText.h"
#include "ado/sqlite/Database.h"
#include "ado/sqlite/NativeStatement.h"
#include "app/Command.h"
#include "vb/Conversion.h"
#include "vb/Error.h"

#include <iostream>
#include <optional>
#include <string>

namespace {

const char *usage =
    "Usage: stockverify sql --db PATH [--trace-sql FILE] \"STATEMENT\"\n"
    "       stockverify sql --db PATH --native \"SQLITE STATEMENTS\"\n"
    "\n"
    "Runs one statement, written in SQL Server's dialect as the module writes it,\n"
    "through the same translation and provider the module uses, on the database\n"
    "file PATH (which must exist: sql never makes one). As for the module, a text\n"
    "of more than one statement, and SQLite's own statements (pragma, attach,\n"
    "vacuum, limit), are refused.\n"
    "\n"
    "With --native the text is SQLite's own SQL, for the database's administrator:\n"
    "untranslated, any number of statements separated by semicolons, pragma and\n"
    "the rest included, each run in turn; it reads the last committed state\n"
    "without waiting for other users. The rows of each statement print as below;\n"
    "values print as SQLite holds them.\n"
    "\n"
    "A statement that returns rows prints a header line of the column names, then\n"
    "one line per row, fields separated by tabs: null as an empty field, dates as\n"
    "YYYY-MM-DD (with HH:MM:SS when there is a time), bit as 1 or 0; tabs and line\n"
    "ends inside a value print as blanks. Any other statement prints\n"
    "\"N rows affected\". A refused statement prints its error number and\n"
    "description on stderr and exits with 1.\n"
    "\n"
    "  --db PATH         the SQLite database file\n"
    "  --trace-sql FILE  append the statement, its translation, rows and time to FILE\n"
    "  --native          run SQLite's own SQL as written (not with --trace-sql)\n";

struct UsageError {
    std::string message;
};

struct Arguments {
    std::string db;
    std::optional<std::string> trace;
    bool native = false;
    std::string statement;
};

Arguments parse(std::span<const std::string> args) {
    Arguments parsed;
    bool haveStatement = false;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string &arg = args[i];
        auto value = [&]() -> const std::string & {
            if (i + 1 >= args.size())
                throw UsageError{arg + " wants a value"};
            return args[++i];
        };
        if (arg == "--db")
            parsed.db = value();
        else if (arg == "--trace-sql")
            parsed.trace = value();
        else if (arg == "--native")
            parsed.native = true;
        else if (arg.rfind("--", 0) == 0)
            throw UsageError{"unknown option " + arg};
        else if (haveStatement)
            throw UsageError{"one statement at a time: put it in quotes"};
        else
            parsed.statement = arg, haveStatement = true;
    }
    if (parsed.db.empty())
        throw UsageError{"--db PATH is needed"};
    if (!haveStatement)
        throw UsageError{"no statement given"};
    if (parsed.native && parsed.trace)
        throw UsageError{"--trace-sql traces the module's statements; --native runs past it"};
    return parsed;
}

std::string fieldText(const vb::Variant &v) {
    std::string text;
    if (v.isNull() || v.isEmpty())
        return "";
    if (v.isDate()) {
        text = ado::sql::canonicalDate(v.asDate());
        if (text.substr(10) == " 00:00:00")
            text.resize(10);
    } else if (v.isBoolean()) {
        text = v.asBoolean() ? "1" : "0";
    } else {
        text = vb::CStr(v);
    }
    for (auto &c : text)
        if (c == '\t' || c == '\n' || c == '\r')
            c = ' ';
    return text;
}

void printRows(ado::Recordset &rs) {
    const int count = rs.Fields().Count();
    for (int i = 0; i < count; ++i)
        std::cout << (i ? "\t" : "") << rs.Fields(i).Name();
    std::cout << '\n';
    while (!rs.Eof()) {
        for (int i = 0; i < count; ++i)
            std::cout << (i ? "\t" : "") << fieldText(rs.Fields(i).Value());
        std::cout << '\n';
        rs.MoveNext();
    }
}

// SQLite's own statements, one after the other; each one's rows or changes.
void runNative(const ado::Connection &connection, std::string_view text) {
    ado::sqlite::Database &db = ado::sqlite::databaseOf(connection);
    std::string_view rest = text;
    while (auto statement = ado::sqlite::NativeStatement::prepareFirst(db, rest)) {
        const int count = statement->columnCount();
        if (count == 0) {
            auto before = db.totalChanges();
            statement->step();
            std::cout << db.totalChanges() - before << " rows affected\n";
            continue;
        }
        for (int i = 0; i < count; ++i)
            std::cout << (i ? "\t" : "") << statement->columnName(i);
        std::cout << '\n';
        while (statement->step()) {
            for (int i = 0; i < count; ++i) {
                std::string value = statement->isNull(i) ? "" : statement->text(i);
                for (auto &c : value)
                    if (c == '\t' || c == '\n' || c == '\r')
                        c = ' ';
                std::cout << (i ? "\t" : "") << value;
            }
            std::cout << '\n';
        }
    }
}

int run(std::span<const std::string> args) {
    Arguments parsed;
    try {
        parsed = parse(args);
    } catch (const UsageError &e) {
        std::cerr << "stockverify sql: " << e.message << "\n\n" << usage;
        return 2;
    }
    try {
        ado::Connection connection;
        connection.Open("sqlite:" + parsed.db);
        if (parsed.native) {
            runNative(connection, parsed.statement);
            return 0;
        }
        if (parsed.trace)
            connection.traceSql(*parsed.trace);
        long affected = 0;
        ado::Recordset rs = connection.Execute(parsed.statement, &affected);
        if (rs.State() == ado::adStateOpen)
            printRows(rs);
        else
            std::cout << affected << " rows affected\n";
        return 0;
    } catch (const vb::Error &e) {
        std::cerr << "stockverify sql: error " << e.number() << ": " << e.description() << "\n";
        return 1;
    }
}

const app::Registration registration{app::Command{
    "sql", "run one SQL Server statement on a database file and print the result", usage, run}};

} // namespace
