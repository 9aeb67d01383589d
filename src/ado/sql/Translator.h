// The translation of the module's SQL Server text into the dialect of the engine underneath.
#pragma once

#include "ado/sql/Catalog.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ado::sql {

/// How one engine writes what the translator has understood. The translator
/// decides what a piece of text means (a date literal, a text compare, a
/// function call, the row identity of an updatable select); the dialect only
/// says how the engine spells it, so that every engine shares one reading of
/// the module's text.
class Dialect {
public:
    virtual ~Dialect() = default;
    /// The engine's name for SQL Server's function `name` (lower case), "" to keep it.
    virtual std::string function(std::string_view name) const = 0;
    /// convert(type, value) and cast(value as type): `type` in lower case,
    /// `value` already translated.
    virtual std::string convert(std::string_view type, std::string_view value) const = 0;
    /// charindex(find, text), both already translated.
    virtual std::string charindex(std::string_view find, std::string_view text) const = 0;
    /// A string literal (quotes included, without an N before it) in a place
    /// where it compares as SQL Server compares text.
    virtual std::string comparedText(std::string literal) const = 0;
    /// What goes before and after a value written into a numeric or money
    /// column so that it takes the column's scale; both "" when the engine
    /// rounds to the column's scale itself.
    virtual std::pair<std::string, std::string> exactWrap(const ColumnType &type) const = 0;
    /// The content of a string literal that goes into, or is compared with,
    /// a column of `type`: raises SQL Server's refusal where the engine would
    /// not refuse it itself.
    virtual void checkLiteral(const std::string &text, const ColumnType &type) const = 0;
    /// How the engine tests `x [not] like p [escape e]` where its own LIKE
    /// is not SQL Server's: `like` becomes `op` (`negatedOp` in place of
    /// `not like`), and the pattern with its escape reads `before` p[, e]
    /// `after`, whatever p is (a literal, a parameter, an expression). An
    /// empty `op` keeps the text as written.
    struct PatternTest {
        std::string op, negatedOp, before, after;
    };
    virtual PatternTest patternTest() const = 0;
    /// True where the engine would not refuse by itself what SQL Server
    /// refuses in arithmetic and writes (a divisor of zero, text in a sum,
    /// text too long for its column): the translator then spells the
    /// engine's guarding functions (sv_divide, sv_modulo, sv_fit, sv_convert).
    /// Where false, text beside a number in arithmetic is converted to the
    /// number's type as `convert` spells it, and the engine refuses the rest.
    virtual bool guardsValues() const = 0;
    /// What follows an expression of a select list that has no name.
    virtual std::string unnamedAlias() const = 0;
    /// The expression that identifies a row of `table` (written `alias` in
    /// the statement) for a later change; "" when its rows cannot be.
    virtual std::string rowIdentity(std::string_view table, std::string_view alias,
                                    const Catalog &catalog) const = 0;
};

struct TranslateOptions {
    /// For a recordset that may change rows: a plain select from one table
    /// gets the row's identity as an extra, last result column.
    bool addRowid = false;
};

struct Translation {
    std::string sql;
    /// The one table a plain select reads ("select ... from T where ..."), or
    /// the table of an insert, update or delete; "" when there is none.
    std::string baseTable;
    /// The last result column identifies the row of `baseTable`, added for updating.
    bool rowidAdded = false;
    /// Statements in the text (parts between semicolons that hold any).
    int statements = 0;
    /// The items of the select list in order, each with the name it gives
    /// its column as the statement writes it (an alias, the last part of a
    /// plain column, "" for an expression without a name), or nothing for a
    /// star, which gives the columns of a table or view. An engine that folds
    /// names to lower case gives them back as written by these.
    std::vector<std::optional<std::string>> columnNames;
};

/// Translates SQL Server text, token by token; what stands inside string
/// literals is never touched. The catalog tells column types where the
/// meaning depends on them (date literals, + between strings). Text the
/// translator cannot take raises -2147217900 naming what it refused; a date
/// literal that is no date, compared with a date column, raises SQL Server's
/// conversion error. docs/sql-dialect.md lists every rule.
Translation translate(std::string_view text, const Catalog &catalog, const Dialect &dialect,
                      TranslateOptions options = {});

/// Native text of the engine (a stored procedure's body) with what SQL Server
/// would refuse refused as it refuses it, where the dialect guards values:
/// divisions by zero, and text written into a varchar column too short for it.
std::string guardNative(std::string_view nativeText, const Catalog &catalog,
                        const Dialect &dialect);

} // namespace ado::sql
