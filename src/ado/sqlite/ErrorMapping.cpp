#include "ado/sqlite/ErrorMapping.h"

#include "ado/Errors.h"

#include <cctype>
#include <sqlite3.h>

namespace ado::sqlite {

namespace {

vb::Error make(std::int32_t number, std::string description) {
    return vb::Error(number, std::string(providerSource), std::move(description));
}

bool startsWith(std::string_view s, std::string_view prefix) {
    return s.substr(0, prefix.size()) == prefix;
}

// Messages that SQL Server words in its own way, and that the module's
// users know by those words.
std::string sqlServerWording(std::string_view message, std::int32_t &number) {
    if (startsWith(message, "no such table: ")) {
        number = errnum::InvalidObject;
        auto name = message.substr(15);
        if (auto dot = name.rfind('.'); dot != std::string_view::npos && startsWith(name, "main."))
            name = name.substr(dot + 1);
        return "Invalid object name '" + std::string(name) + "'.";
    }
    if (startsWith(message, "no such column: ")) {
        number = errnum::Statement;
        return "Invalid column name '" + std::string(message.substr(16)) + "'.";
    }
    if (startsWith(message, "no such function: ")) {
        number = errnum::Statement;
        return "'" + std::string(message.substr(18)) +
               "' is not a recognized built-in function name.";
    }
    if (startsWith(message, "parser stack overflow") ||
        startsWith(message, "Expression tree is too large")) {
        number = errnum::Statement;
        return "Some part of your SQL statement is nested too deeply. Rewrite the query or break "
               "it up into smaller queries.";
    }
    // Refusals raised inside the functions that stand in for SQL Server's
    // arithmetic and conversions reach here as the engine's message.
    if (startsWith(message, "Divide by zero error encountered.")) {
        number = errnum::DivideByZero;
        return std::string(message);
    }
    if (startsWith(message, "String or binary data would be truncated.")) {
        number = errnum::Truncation;
        return std::string(message);
    }
    for (auto prefix :
         {"Conversion failed", "Error converting", "The conversion of", "Arithmetic overflow"})
        if (startsWith(message, prefix)) {
            number = errnum::Conversion;
            return std::string(message);
        }
    return "";
}

} // namespace

vb::Error statementError(std::string description) {
    return make(errnum::Statement, std::move(description));
}

vb::Error conversionError(std::string description) {
    return make(errnum::Conversion, std::move(description));
}

vb::Error truncationError() {
    return make(errnum::Truncation, "String or binary data would be truncated.");
}

vb::Error divideByZeroError() {
    return make(errnum::DivideByZero, "Divide by zero error encountered.");
}

vb::Error connectionError(std::string description) {
    return make(errnum::Unspecified, std::move(description));
}

std::string firstWords(std::string_view statement) {
    std::string out;
    for (char c : statement) {
        bool blank = std::isspace(static_cast<unsigned char>(c)) != 0;
        if (blank && (out.empty() || out.back() == ' '))
            continue;
        out += blank ? ' ' : c;
        if (out.size() >= 60) {
            out += "...";
            return out;
        }
    }
    while (!out.empty() && out.back() == ' ')
        out.pop_back();
    return out;
}

vb::Error engineError(int resultCode, std::string_view message, std::string_view statement) {
    std::int32_t number = errnum::Statement;
    std::string worded = sqlServerWording(message, number);
    if (!worded.empty())
        return make(number, worded);
    std::string where = statement.empty() ? "" : " in \"" + firstWords(statement) + "\"";
    switch (resultCode & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        return make(errnum::Timeout, "Query timeout expired: the database is locked by another "
                                     "user (" +
                                         std::string(message) + ")" + where);
    case SQLITE_INTERRUPT:
        return make(errnum::Timeout, "Query timeout expired" + where);
    case SQLITE_CONSTRAINT:
        return make(errnum::Constraint,
                    "The statement conflicted with a constraint: " + std::string(message) + where);
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
    case SQLITE_CANTOPEN:
    case SQLITE_IOERR:
    case SQLITE_FULL:
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return make(errnum::Unspecified, std::string(message) + where);
    default:
        return make(errnum::Statement, std::string(message) + where);
    }
}

} // namespace ado::sqlite
