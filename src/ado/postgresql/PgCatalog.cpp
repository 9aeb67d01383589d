#include "ado/postgresql/PgCatalog.h"

#include "ado/postgresql/PgConnection.h"

#include <cstdlib>
#include <regex>

namespace ado::postgresql {

namespace {

// One row per column of every table and view of the current schema, with
// the table's integer key and the text of a length check on the column.
constexpr const char *catalogQuery = R"(
select c.oid, c.relname, c.relkind, a.attnum, a.attname,
       format_type(a.atttypid, a.atttypmod),
       (select k.attname from pg_index i
          join pg_attribute k on k.attrelid = i.indrelid and k.attnum = i.indkey[0]
         where i.indrelid = c.oid and i.indisprimary and i.indnatts = 1
           and k.atttypid in ('int2'::regtype, 'int4'::regtype, 'int8'::regtype)),
       (select string_agg(pg_get_constraintdef(x.oid), ' ') from pg_constraint x
         where x.conrelid = c.oid and x.contype = 'c' and x.conkey = array[a.attnum]),
       col_description(c.oid, a.attnum)
  from pg_class c
  join pg_namespace n on n.oid = c.relnamespace
  join pg_attribute a on a.attrelid = c.oid and a.attnum > 0 and not a.attisdropped
 where n.nspname = current_schema() and c.relkind in ('r', 'v', 'p', 'm')
 order by c.relname, a.attnum
)";

// The limit of a check such as CHECK ((length((svhno)::text) <= 20)).
int checkedLength(const std::string &checks) {
    static const std::regex limit(R"(length\(.*\) <= (\d+))");
    std::smatch m;
    return std::regex_search(checks, m, limit) ? std::atoi(m[1].str().c_str()) : 0;
}

} // namespace

std::string sqlServerType(std::string_view pgType, int length) {
    std::string t(pgType);
    auto starts = [&](std::string_view p) { return t.rfind(p, 0) == 0; };
    auto suffix = [&](std::size_t from) { return t.substr(from); };
    if (t == "integer")
        return "int";
    if (t == "boolean" || t == "sv_bit")
        return "bit";
    if (t == "double precision")
        return "float";
    if (starts("character varying"))
        return "varchar" + suffix(17);
    if (starts("character"))
        return "char" + suffix(9);
    if (t == "sv_text" || t == "bpchar")
        return length > 0 ? "varchar(" + std::to_string(length) + ")" : "varchar";
    if (starts("timestamp"))
        return "datetime";
    return t;
}

PgCatalog readCatalog(PgConnection &conn) {
    PgCatalog out;
    PgResult r = conn.run(catalogQuery, {}, "");
    std::string table, key;
    bool isView = false;
    std::vector<std::pair<std::string, std::string>> columns;
    auto flush = [&] {
        if (!table.empty())
            out.tables.add(table, isView, columns, key);
        columns.clear();
    };
    for (int i = 0; i < PQntuples(r.get()); ++i) {
        auto oid = static_cast<Oid>(std::strtoul(PQgetvalue(r.get(), i, 0), nullptr, 10));
        std::string name = PQgetvalue(r.get(), i, 1);
        if (name != table) {
            flush();
            table = name;
            isView = PQgetvalue(r.get(), i, 2)[0] == 'v' || PQgetvalue(r.get(), i, 2)[0] == 'm';
            key = PQgetvalue(r.get(), i, 6);
            out.tableName[oid] = name;
        }
        std::string column = PQgetvalue(r.get(), i, 4);
        const int number = std::atoi(PQgetvalue(r.get(), i, 3));
        out.columnAt[{oid, number}] = column;
        // A comment that is the column's name with capitals is its name as the schema wrote it
        // (WrittenNames.h); any other comment is someone's note and says nothing of the name.
        std::string written = PQgetvalue(r.get(), i, 8);
        if (written != column && sql::lowerCase(written) == column)
            out.writtenAt[{oid, number}] = written;
        columns.emplace_back(column, sqlServerType(PQgetvalue(r.get(), i, 5),
                                                   checkedLength(PQgetvalue(r.get(), i, 7))));
    }
    flush();
    return out;
}

} // namespace ado::postgresql
