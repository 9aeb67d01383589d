#include "ado/postgresql/PgErrorMapping.h"

#include "ado/Errors.h"
#include "ado/sql/Catalog.h"
#include "ado/sql/Tokenizer.h"

#include <cctype>
#include <cstdint>
#include <vector>

namespace ado::postgresql {

namespace {

// SQL Server's "Login failed" as the old data layer numbered it.
constexpr std::int32_t loginFailed = -2147217843;

const char *const networkError =
    "[DBNETLIB][ConnectionWrite (send()).]General network error. Check your network "
    "documentation.";

vb::Error make(std::int32_t number, std::string description) {
    return vb::Error(number, std::string(providerSource), std::move(description));
}

std::string field(const PGresult *r, int code) {
    const char *v = r ? PQresultErrorField(r, code) : nullptr;
    return v ? v : "";
}

// The text between the first pair of double quotes of a message: the name
// the server quotes ("relation \"aitem\" does not exist").
std::string quoted(std::string_view message) {
    auto a = message.find('"');
    auto b = a == std::string_view::npos ? a : message.find('"', a + 1);
    return b == std::string_view::npos ? "" : std::string(message.substr(a + 1, b - a - 1));
}

// SQL Server's name for the type the server names in a conversion message.
std::string sqlServerType(std::string_view message) {
    for (auto [pg, ms] : {std::pair{"type integer", "int"},
                          {"type smallint", "smallint"},
                          {"type bigint", "bigint"},
                          {"type numeric", "numeric"},
                          {"type double precision", "float"},
                          {"type real", "real"},
                          {"type boolean", "bit"},
                          {"type money", "money"}})
        if (message.find(pg) != std::string_view::npos)
            return ms;
    return "";
}

// The value a conversion message quotes at its end: ... type integer: "abc"
std::string refusedValue(std::string_view message) {
    auto colon = message.rfind(": \"");
    if (colon == std::string_view::npos || message.back() != '"')
        return "";
    return std::string(message.substr(colon + 3, message.size() - colon - 4));
}

// The name a "does not exist" message reports: column "x" does not exist, column a.x does
// not exist, column "x" of relation "t" does not exist, relation "t" does not exist.
std::string reportedName(std::string_view message) {
    auto space = message.find(' ');
    if (space == std::string_view::npos)
        return "";
    std::string_view rest = message.substr(space + 1);
    for (std::string_view end : {" of relation ", " does not exist"})
        if (auto at = rest.find(end); at != std::string_view::npos)
            rest = rest.substr(0, at);
    std::string name;
    for (char c : rest)
        if (c != '"')
            name += c;
    return name;
}

// The server folds the names it reports to lower case; the module's own errors named them
// as the statement wrote them (a.ItemDescription, svdItemCost). The name is looked for among
// the statement's names, dotted ones whole, and kept as reported where it is not there.
std::string asWritten(const std::string &reported, std::string_view statement) {
    std::vector<sql::Token> tokens;
    try {
        tokens = sql::tokenize(statement);
    } catch (const vb::Error &) {
        return reported; // text the server took but the tokenizer does not: keep its name
    }
    std::vector<const sql::Token *> sig;
    for (const auto &t : tokens)
        if (t.significant())
            sig.push_back(&t);
    const std::string wanted = sql::lowerCase(reported);
    auto isName = [](const sql::Token *t) {
        return t->kind == sql::Token::Kind::Word || t->kind == sql::Token::Kind::Quoted;
    };
    for (std::size_t i = 0; i < sig.size(); ++i) {
        if (!isName(sig[i]))
            continue;
        std::string chain = sig[i]->name();
        for (std::size_t j = i;;) {
            if (sql::lowerCase(chain) == wanted)
                return chain;
            if (j + 2 >= sig.size() || !sig[j + 1]->isSymbol(".") || !isName(sig[j + 2]))
                break;
            j += 2;
            chain += "." + sig[j]->name();
        }
    }
    return reported;
}

} // namespace

std::string firstWords(std::string_view statement) {
    std::string out;
    for (char c : statement) {
        bool blank = std::isspace(static_cast<unsigned char>(c)) != 0;
        if (blank && (out.empty() || out.back() == ' '))
            continue;
        out += blank ? ' ' : c;
        if (out.size() >= 60)
            return out + "...";
    }
    while (!out.empty() && out.back() == ' ')
        out.pop_back();
    return out;
}

vb::Error serverError(const PGresult *r, std::string_view statement) {
    std::string state = field(r, PG_DIAG_SQLSTATE);
    std::string message = field(r, PG_DIAG_MESSAGE_PRIMARY);
    if (message.empty() && r)
        message = PQresultErrorMessage(r);
    std::string where = statement.empty() ? "" : " in \"" + firstWords(statement) + "\"";
    auto cls = state.substr(0, 2);
    if (state.empty() || cls == "08" || state == "57P01" || state == "57P02" || state == "57P03")
        return make(errnum::Unspecified, networkError);
    if (state == "42P01")
        return make(errnum::InvalidObject,
                    "Invalid object name '" + asWritten(quoted(message), statement) + "'.");
    if (state == "42703")
        return make(errnum::Statement, "Invalid column name '" +
                                           asWritten(reportedName(message), statement) + "'.");
    if (state == "42883") {
        auto name = message.substr(message.find(' ') + 1);
        name = name.substr(0, name.find('('));
        auto bare = name.substr(name.rfind('.') == std::string::npos ? 0 : name.rfind('.') + 1);
        bool onText = message.find("(sv_text)") != std::string::npos ||
                      message.find("(character)") != std::string::npos ||
                      message.find("(text)") != std::string::npos ||
                      message.find("(character varying)") != std::string::npos;
        if ((bare == "sum" || bare == "sv_avg") && onText)
            return make(errnum::Statement, "Operand data type varchar is invalid for " +
                                               std::string(bare == "sum" ? "sum" : "avg") +
                                               " operator.");
        return make(errnum::Statement,
                    "'" + name + "' is not a recognized built-in function name.");
    }
    if (state == "42601")
        return make(errnum::Statement, "Incorrect syntax near '" + quoted(message) + "'.");
    if (state == "22001")
        return make(errnum::Truncation, "String or binary data would be truncated.");
    if (state == "23514") {
        std::string constraint = field(r, PG_DIAG_CONSTRAINT_NAME);
        if (constraint.size() > 7 && constraint.substr(constraint.size() - 7) == "_length")
            return make(errnum::Truncation, "String or binary data would be truncated.");
        return make(errnum::Constraint, "The statement conflicted with the CHECK constraint \"" +
                                            constraint + "\"." + where);
    }
    if (state == "22003")
        return make(errnum::Conversion,
                    "Arithmetic overflow error converting numeric to data type numeric.");
    if (state == "22012")
        return make(errnum::DivideByZero, "Divide by zero error encountered.");
    if (state == "22P02") {
        std::string type = sqlServerType(message);
        // SQL Server words the refusal of text by numeric and float its own way.
        if (type == "numeric" || type == "float" || type == "real" || type == "money")
            return make(errnum::Conversion, "Error converting data type varchar to " + type + ".");
        if (!type.empty())
            return make(errnum::Conversion,
                        "Conversion failed when converting the varchar value '" +
                            refusedValue(message) + "' to data type " + type + ".");
        return make(errnum::Conversion, message + where);
    }
    if (state == "22007" || state == "22008")
        return make(errnum::Conversion,
                    "Conversion failed when converting date and/or time from character string.");
    if (state == "23505")
        return make(errnum::Constraint, "Violation of PRIMARY KEY constraint '" +
                                            field(r, PG_DIAG_CONSTRAINT_NAME) +
                                            "'. Cannot insert duplicate key in object 'dbo." +
                                            field(r, PG_DIAG_TABLE_NAME) + "'.");
    if (state == "23502")
        return make(errnum::Constraint, "Cannot insert the value NULL into column '" +
                                            field(r, PG_DIAG_COLUMN_NAME) + "', table '" +
                                            field(r, PG_DIAG_TABLE_NAME) +
                                            "'; column does not allow nulls. INSERT fails.");
    if (cls == "23")
        return make(errnum::Constraint,
                    "The statement conflicted with a constraint: " + message + where);
    if (state == "57014" || state == "55P03")
        return make(errnum::Timeout, "Query timeout expired" + where);
    if (state == "40P01" || state == "40001")
        return make(errnum::Unspecified,
                    "Transaction was deadlocked on lock resources with another process and has "
                    "been chosen as the deadlock victim. Rerun the transaction.");
    if (cls == "28")
        return make(loginFailed, "Login failed: " + message);
    if (state == "3D000")
        return make(errnum::Unspecified,
                    "Cannot open database requested by the login. The login failed. (" + message +
                        ")");
    if (state == "P0001") // raised by the helper functions with SQL Server's own text
        return make(errnum::Statement, message);
    if (state == "54001")
        return make(errnum::Statement, "Some part of your SQL statement is nested too deeply. "
                                       "Rewrite the query or break it up into smaller queries.");
    return make(errnum::Statement, message + where);
}

vb::Error connectionError(const PGconn *conn) {
    std::string message = conn ? PQerrorMessage(conn) : "out of memory";
    while (!message.empty() && (message.back() == '\n' || message.back() == ' '))
        message.pop_back();
    if (message.find("password authentication failed") != std::string::npos ||
        message.find("no password supplied") != std::string::npos)
        return make(loginFailed, "Login failed. (" + message + ")");
    if (message.find("database \"") != std::string::npos &&
        message.find("does not exist") != std::string::npos)
        return make(errnum::Unspecified,
                    "Cannot open database requested by the login. The login failed. (" + message +
                        ")");
    return make(errnum::Unspecified,
                "[DBNETLIB][ConnectionOpen (Connect()).]SQL Server does not exist or access "
                "denied. (" +
                    message + ")");
}

} // namespace ado::postgresql
