#include "ado/sqlite/SqliteDialect.h"

#include "ado/sqlite/ValueConversion.h"

#include <map>

namespace ado::sqlite {

std::string SqliteDialect::function(std::string_view name) const {
    static const std::map<std::string, std::string, std::less<>> renamed = {
        {"isnull", "ifnull"},
        {"len", "sv_len"},
        {"left", "sv_left"},
        {"right", "sv_right"},
        {"substring", "sv_substring"},
        {"isnumeric", "sv_isnumeric"},
        {"getdate", "sv_getdate"},
        {"sum", "sv_sum"},
        {"avg", "sv_avg"}};
    auto it = renamed.find(name);
    return it == renamed.end() ? "" : it->second;
}

std::string SqliteDialect::convert(std::string_view type, std::string_view value) const {
    return "sv_convert('" + std::string(type) + "', " + std::string(value) + ")";
}

std::string SqliteDialect::charindex(std::string_view find, std::string_view text) const {
    return "instr(" + std::string(text) + ", " + std::string(find) + ")";
}

std::string SqliteDialect::comparedText(std::string literal) const {
    return literal + " COLLATE CITEXT";
}

std::pair<std::string, std::string> SqliteDialect::exactWrap(const sql::ColumnType &type) const {
    std::string name =
        type.kind == sql::ColumnKind::Money
            ? type.name
            : "numeric(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
    return {"sv_convert('" + name + "', ", ")"};
}

void SqliteDialect::checkLiteral(const std::string &text, const sql::ColumnType &type) const {
    if (type.kind == sql::ColumnKind::Text)
        sqlite::fittedText(text, type);
    else
        toStored(vb::Variant(text), type);
}

// The database's own like function takes SQL Server's patterns (Functions.h).
sql::Dialect::PatternTest SqliteDialect::patternTest() const {
    return {};
}

// SQLite gives null for a divisor of zero and keeps text of any length.
bool SqliteDialect::guardsValues() const {
    return true;
}

std::string SqliteDialect::unnamedAlias() const {
    return " AS \"\"";
}

std::string SqliteDialect::rowIdentity(std::string_view, std::string_view alias,
                                       const sql::Catalog &) const {
    return std::string(alias) + ".rowid";
}

std::string guardNative(std::string_view nativeText, const sql::Catalog &catalog) {
    static const SqliteDialect dialect;
    return sql::guardNative(nativeText, catalog, dialect);
}

sql::Translation translate(std::string_view text, const sql::Catalog &catalog,
                           sql::TranslateOptions options) {
    static const SqliteDialect dialect;
    return sql::translate(text, catalog, dialect, options);
}

} // namespace ado::sqlite
