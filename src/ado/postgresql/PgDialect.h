// How PostgreSQL spells what the translator understood of the module's text.
#pragma once

#include "ado/sql/Translator.h"

#include <cstdint>

namespace ado::postgresql {

/// The text columns of a database for this module are of the domain
/// sv_text: blank-padded text under a collation that ignores letter case
/// (also beyond ASCII letters) and is not byte for byte, so that they
/// compare, group and sort as SQL Server's varchar does: ignoring letter case
/// and trailing blanks, while the value read back keeps its blanks. Their
/// length is a check named COLUMN_length, refused as SQL Server refuses text
/// too long. String literals stay untyped, so that they take the type of the
/// column they meet (a literal cast to text would not go into an int column
/// as '5' does on SQL Server). The server refuses LIKE, regular expressions
/// and searches inside text under such a collation: those name a collation
/// of their own.
///
/// numeric(p,s) columns round to their scale by themselves, so written values
/// are not wrapped. SQL Server's len, isnumeric and getdate are functions of
/// the connection's temporary schema (PgConnection.h). Rows are identified by
/// their table's one-column integer primary key: the ctid of a row changes
/// whenever it is written, so it could not find the row again.
class PgDialect : public sql::Dialect {
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

/// The name an expression without a name gets in a result: read as "".
inline constexpr std::string_view unnamedColumn = "?column?";

/// The rowid that stands for a row's ctid "(block,offset)", and back.
std::int64_t rowidOfTid(std::string_view tid);
std::string tidOfRowid(std::int64_t rowid);

/// A name as the server keeps a name written without quotes: in lower case, quoted.
std::string serverName(std::string_view name);

} // namespace ado::postgresql
