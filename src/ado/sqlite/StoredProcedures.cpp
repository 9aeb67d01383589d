#include "ado/sqlite/StoredProcedures.h"

#include "ado/sqlite/Catalog.h"
#include "ado/sqlite/ColumnType.h"
#include "ado/sqlite/Database.h"
#include "ado/sqlite/ErrorMapping.h"
#include "ado/sqlite/NativeStatement.h"
#include "ado/sqlite/Translator.h"
#include "ado/sqlite/ValueConversion.h"

#include <sqlite3.h>

namespace ado::sqlite {

namespace {

struct Parameter {
    std::string name; // with its @
    std::string type;
};

struct Definition {
    std::string name;
    std::vector<Parameter> parameters;
    std::string body;
};

std::string trim(std::string_view s) {
    auto b = s.find_first_not_of(" \t\r\n");
    auto e = s.find_last_not_of(" \t\r\n");
    return b == std::string_view::npos ? "" : std::string(s.substr(b, e - b + 1));
}

vb::Error notFound(std::string_view name) {
    return statementError("Could not find stored procedure '" + std::string(name) + "'.");
}

// "@svhid int,@qty numeric(18,3)": split at the commas outside parentheses.
std::vector<Parameter> parseParameters(std::string_view text, std::string_view procedure) {
    std::vector<Parameter> out;
    std::vector<std::string> pieces{""};
    int depth = 0;
    for (char c : text) {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (c == ',' && depth == 0)
            pieces.emplace_back();
        else
            pieces.back() += c;
    }
    for (const auto &piece : pieces) {
        std::string p = trim(piece);
        if (p.empty())
            continue;
        auto blank = p.find_first_of(" \t");
        if (p[0] != '@' || blank == std::string::npos)
            throw statementError("The parameter list of stored procedure '" +
                                 std::string(procedure) + "' is not \"@name type, ...\": \"" +
                                 std::string(text) + "\"");
        out.push_back({p.substr(0, blank), trim(p.substr(blank))});
    }
    return out;
}

Definition lookup(Database &db, std::string_view name) {
    NativeStatement exists(db, "select count(*) from sqlite_schema where type = 'table' and "
                               "name = 'sv_procedure' collate nocase");
    exists.step();
    if (exists.integer(0) == 0)
        throw notFound(name);
    NativeStatement find(db, "select name, params, body from sv_procedure where name = ?1");
    find.bindText(1, name);
    if (!find.step())
        throw notFound(name);
    return {find.text(0), parseParameters(find.text(1), name), find.text(2)};
}

std::vector<StoredValue> argumentValues(const Definition &d,
                                        const std::vector<vb::Variant> &arguments) {
    if (arguments.size() > d.parameters.size())
        throw statementError("Procedure or function " + d.name +
                             " has too many arguments specified.");
    std::vector<StoredValue> values;
    for (std::size_t i = 0; i < d.parameters.size(); ++i) {
        if (i >= arguments.size() || arguments[i].isEmpty())
            throw statementError("Procedure or function '" + d.name + "' expects parameter '" +
                                 d.parameters[i].name + "', which was not supplied.");
        values.push_back(toStored(arguments[i], columnTypeOf(d.parameters[i].type)));
    }
    return values;
}

void bindByName(NativeStatement &st, const Definition &d, const std::vector<StoredValue> &values) {
    for (int i = 1; i <= st.parameterCount(); ++i) {
        std::string wanted = lowerCase(st.parameterName(i));
        if (!wanted.empty() && (wanted[0] == ':' || wanted[0] == '$'))
            wanted[0] = '@';
        std::size_t p = 0;
        while (p < d.parameters.size() && lowerCase(d.parameters[p].name) != wanted)
            ++p;
        if (p == d.parameters.size())
            throw statementError("Must declare the scalar variable \"" + st.parameterName(i) +
                                 "\". (stored procedure '" + d.name + "')");
        st.bind(i, values[p]);
    }
}

void runBody(Database &db, const Definition &d, const std::vector<StoredValue> &values) {
    std::string_view rest = d.body;
    while (auto st = NativeStatement::prepareFirst(db, rest)) {
        bindByName(*st, d, values);
        while (st->step()) {
        }
    }
}

void native(Database &db, const char *sql) {
    if (sqlite3_exec(db.handle(), sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw db.lastError(sql);
}

} // namespace

std::vector<ParameterInfo> describeProcedure(Database &db, std::string_view name) {
    Definition d = lookup(db, name);
    std::vector<ParameterInfo> out{{"@RETURN_VALUE", "int", 4}};
    for (const auto &p : d.parameters)
        out.push_back({p.name, p.type, 1});
    return out;
}

long runProcedureBody(Database &db, const Catalog &catalog, std::string_view name,
                      const std::vector<vb::Variant> &arguments, StatementLog &log) {
    Definition d = lookup(db, name);
    d.body = guardNative(d.body, catalog);
    log.translated = d.body;
    auto values = argumentValues(d, arguments);
    auto before = db.totalChanges();
    // The caller's transaction starts first: the savepoint nests in it and
    // its release does not commit. Called outside one, the procedure is a
    // transaction of its own, holding the write lock from its start: a
    // deferred one would read a snapshot that another user's commit could
    // make stale before its first write.
    bool own = !db.transactionWanted() && db.autocommit();
    if (own)
        db.beginTransaction();
    db.beforeWrite(d.name);
    native(db, "SAVEPOINT sv_procedure_call");
    try {
        runBody(db, d, values);
    } catch (const vb::Error &e) {
        // Take back what the body did before it failed, and say what failed.
        native(db, "ROLLBACK TO sv_procedure_call");
        native(db, "RELEASE sv_procedure_call");
        if (own)
            db.rollbackTransaction();
        throw vb::Error(e.number(), e.source(),
                        e.description() + " (in stored procedure '" + d.name + "')");
    }
    native(db, "RELEASE sv_procedure_call");
    if (own)
        db.commitTransaction();
    log.rows = static_cast<long>(db.totalChanges() - before);
    return log.rows;
}

} // namespace ado::sqlite
