#include "ado/postgresql/PgDialect.h"

#include <cstdlib>
#include <map>

namespace ado::postgresql {

std::int64_t rowidOfTid(std::string_view tid) {
    // "(block,offset)": the offset is below 2^16, the block below 2^32.
    auto comma = tid.find(',');
    if (tid.size() < 5 || comma == std::string_view::npos)
        return 0;
    std::int64_t block = std::strtoll(std::string(tid.substr(1, comma - 1)).c_str(), nullptr, 10);
    std::int64_t offset = std::strtoll(std::string(tid.substr(comma + 1)).c_str(), nullptr, 10);
    return (block << 16) | offset;
}

std::string tidOfRowid(std::int64_t rowid) {
    return "(" + std::to_string(rowid >> 16) + "," + std::to_string(rowid & 0xffff) + ")";
}

std::string serverName(std::string_view name) {
    std::string out = "\"";
    for (char c : sql::lowerCase(name)) {
        out += c;
        if (c == '"')
            out += '"';
    }
    return out + "\"";
}

std::string PgDialect::function(std::string_view name) const {
    static const std::map<std::string, std::string, std::less<>> renamed = {
        {"isnull", "pg_temp.sv_isnull"},
        {"len", "pg_temp.sv_len"},
        {"isnumeric", "pg_temp.sv_isnumeric"},
        {"getdate", "pg_temp.sv_getdate"},
        {"left", "pg_temp.sv_left"},
        {"right", "pg_temp.sv_right"},
        {"substring", "pg_temp.sv_substring"},
        {"upper", "pg_temp.sv_upper"},
        {"lower", "pg_temp.sv_lower"},
        {"ltrim", "pg_temp.sv_ltrim"},
        {"rtrim", "pg_temp.sv_rtrim"},
        {"replace", "pg_temp.sv_replace"},
        {"avg", "pg_temp.sv_avg"}};
    auto it = renamed.find(name);
    return it == renamed.end() ? "" : it->second;
}

std::string PgDialect::convert(std::string_view type, std::string_view value) const {
    sql::ColumnType t = sql::columnTypeOf(type);
    std::string v(value);
    switch (t.kind) {
    case sql::ColumnKind::Text: {
        // convert(varchar, x) without a length keeps 30 characters, as SQL Server's does.
        int length = t.length > 0 ? t.length : 30;
        return "CAST(CAST(pg_temp.sv_text(" + v + ") AS varchar(" + std::to_string(length) +
               ")) AS bpchar)";
    }
    case sql::ColumnKind::Integer:
        // SQL Server cuts the fraction off where the server would round it.
        return t.name == "bigint" ? "CAST(trunc(" + v + ") AS bigint)"
                                  : "pg_temp.sv_int(" + v + ")";
    case sql::ColumnKind::Bit:
        return "CAST(" + v + " AS boolean)";
    case sql::ColumnKind::Decimal:
        return "CAST(" + v + " AS numeric(" + std::to_string(t.precision) + "," +
               std::to_string(t.scale) + "))";
    case sql::ColumnKind::Money:
        return "CAST(" + v + " AS numeric(" + std::to_string(t.precision) + ",4))";
    case sql::ColumnKind::Float:
        return "CAST(" + v + " AS double precision)";
    case sql::ColumnKind::Date:
        return "CAST(" + v + " AS timestamp(3))";
    case sql::ColumnKind::Unknown:
        break;
    }
    return "CAST(" + v + " AS " + std::string(type) + ")";
}

std::string PgDialect::charindex(std::string_view find, std::string_view text) const {
    // The columns' collation refuses a search inside text; the lower-cased
    // texts are searched byte by byte.
    return "strpos(lower(CAST(" + std::string(text) + " AS text)) COLLATE \"C\", lower(CAST(" +
           std::string(find) + " AS text)))";
}

std::string PgDialect::comparedText(std::string literal) const {
    return literal;
}

std::pair<std::string, std::string> PgDialect::exactWrap(const sql::ColumnType &) const {
    return {"", ""};
}

void PgDialect::checkLiteral(const std::string &, const sql::ColumnType &) const {
    // The server refuses such a literal itself; the refusal is mapped to SQL
    // Server's number and text (PgErrorMapping.h).
}

// The server's LIKE knows no bracket sets ([a-c], [^x], [[]), and refuses
// the columns' collation, which is not byte for byte: the pattern becomes a
// regular expression (pg_temp.sv_like_regex, PgConnection.cpp), matched
// ignoring letter case under a collation that is. The function is
// immutable, so a literal pattern is taken apart once when the statement is
// planned; one built from a row's values is taken apart for each row.
sql::Dialect::PatternTest PgDialect::patternTest() const {
    return {"~*", "!~*", "(pg_temp.sv_like_regex(", ") COLLATE \"und-x-icu\")"};
}

// The server refuses a divisor of zero and text too long for its column itself.
bool PgDialect::guardsValues() const {
    return false;
}

std::string PgDialect::unnamedAlias() const {
    return " AS \"" + std::string(unnamedColumn) + "\"";
}

std::string PgDialect::rowIdentity(std::string_view table, std::string_view alias,
                                   const sql::Catalog &catalog) const {
    const std::string &key = catalog.keyColumn(table);
    std::string name(alias);
    if (name.size() >= 2 && name.front() == '"')
        name = name.substr(1, name.size() - 2);
    return serverName(name) + "." + (key.empty() ? std::string("ctid") : serverName(key));
}

} // namespace ado::postgresql
