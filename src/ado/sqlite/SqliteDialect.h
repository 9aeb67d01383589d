// How SQLite spells what the translator understood of the module's text.
#pragma once

#include "ado/sql/Translator.h"

namespace ado::sqlite {

/// SQL Server's functions are the sv_ functions the database registers
/// (Functions.h); text compares through the collation CITEXT; numeric
/// values written go through sv_convert, since SQLite keeps what it is given;
/// rows are identified by SQLite's rowid.
class SqliteDialect : public sql::Dialect {
public:
    std::string function(std::string_view name) const override;
    std::string convert(std::string_view type, std::string_view value) const override;
    std::string charindex(std::string_view find, std::string_view text) const override;
    std::string comparedText(std::string literal) const override;
    std::pair<std::string, std::string> exactWrap(const sql::ColumnType &type) const override;
    void checkLiteral(const std::string &text, const sql::ColumnType &type) const override;
    PatternTest patternTest() const override;
    bool guardsValues() const override;
    std::string unnamedAlias() const override;
    std::string rowIdentity(std::string_view table, std::string_view alias,
                            const sql::Catalog &catalog) const override;
};

/// A stored procedure's body with SQL Server's refusals guarded (sql::guardNative).
std::string guardNative(std::string_view nativeText, const sql::Catalog &catalog);

/// Translates the module's text for SQLite.
sql::Translation translate(std::string_view text, const sql::Catalog &catalog,
                           sql::TranslateOptions options = {});

} // namespace ado::sqlite
