#include "ado/sql/Translator.h"

#include "ado/sql/DateText.h"
#include "ado/sql/FittedText.h"
#include "ado/sql/FrontError.h"
#include "ado/sql/GroupingCheck.h"
#include "ado/sql/SqlTree.h"

#include <map>
#include <set>
#include <span>

namespace ado::sql {

namespace {

using Kind = Token::Kind;
using Nodes = std::span<const Node>;
using Positions = std::vector<std::size_t>;

// Functions whose result is text, so that + next to them joins strings.
const std::set<std::string> textFunctions = {"left",  "right",   "substring", "upper", "lower",
                                             "ltrim", "rtrim",   "replace",   "space", "char",
                                             "str",   "reverse", "stuff"};

// Statements of SQLite's own that SQL Server does not know: it reads the
// first word of such a statement as the name of a stored procedure.
const std::set<std::string> sqliteStatements = {"pragma",  "attach",  "detach", "vacuum",
                                                "reindex", "analyze", "explain"};

// The module's text never says limit (top says it); SQL Server would not take it.
void refuseLimit(Nodes nodes) {
    for (const auto &n : nodes) {
        if (n.group)
            refuseLimit(n.children);
        else if (n.isWord("limit"))
            throw statementError("Incorrect syntax near '" + std::string(n.token.text) + "'.");
    }
}

const std::set<std::string> comparisons = {"=", "<>", "!=", "<", ">", "<=", ">=", "!<", "!>"};

// Words that end a select list at its own level.
const std::set<std::string> selectListEnds = {"from",   "into",  "where",  "group",    "order",
                                              "having", "union", "except", "intersect"};

bool isReserved(const Node &n) {
    return !n.group && n.token.kind == Kind::Word && isReservedWord(n.token.text);
}

bool isName(const Node &n) {
    return (n.is(Kind::Word) && !isReserved(n)) || n.is(Kind::Quoted);
}

// A node after which a value has ended, so that a name or string literal
// standing next is an alias.
bool endsOperand(const Node &n) {
    if (n.group || n.is(Kind::Quoted) || n.is(Kind::Number) || n.is(Kind::String) ||
        n.is(Kind::Variable))
        return true;
    return n.is(Kind::Word) && (!isReserved(n) || n.isWord("end") || n.isWord("null"));
}

std::string quoteName(std::string_view name) {
    std::string out = "\"";
    for (char c : name) {
        out += c;
        if (c == '"')
            out += '"';
    }
    return out + "\"";
}

std::string trimmed(std::string s) {
    auto b = s.find_first_not_of(" \t\r\n");
    auto e = s.find_last_not_of(" \t\r\n");
    return b == std::string::npos ? "" : s.substr(b, e - b + 1);
}

// The parts of a group's content between its top-level commas.
std::vector<Nodes> splitArguments(Nodes nodes) {
    std::vector<Nodes> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (nodes[i].isSymbol(",")) {
            parts.push_back(nodes.subspan(start, i - start));
            start = i + 1;
        }
    parts.push_back(nodes.subspan(start));
    return parts;
}

// The one significant node of a part, or nullptr.
const Node *single(Nodes part) {
    const Node *found = nullptr;
    for (const auto &n : part)
        if (n.significant()) {
            if (found)
                return nullptr;
            found = &n;
        }
    return found;
}

struct Edits {
    std::set<std::size_t> skip;
    std::map<std::size_t, std::string> before;
    std::map<std::size_t, std::string> replace;
    std::map<std::size_t, std::string> close; // right after the node, before `after`
    std::map<std::size_t, std::string> after;
};

bool isSign(const Node &n) {
    return n.isSymbol("-") || n.isSymbol("+") || n.isSymbol("~");
}

bool isMultiplicative(const Node &n) {
    return n.isSymbol("*") || n.isSymbol("/") || n.isSymbol("%");
}

class Rewriter {
public:
    Rewriter(const Catalog &catalog, const Dialect &dialect, TranslateOptions options,
             bool native = false)
        : catalog_(catalog), dialect_(dialect), options_(options), native_(native) {}

    Translation run(std::string_view text);

private:
    // One level of nodes (a statement, or what stands inside parentheses).
    struct Level {
        Nodes nodes;
        Positions sig;
        Edits edits;
        const Node &at(std::size_t k) const { return nodes[sig[k]]; }
        bool has(std::size_t k) const { return k < sig.size(); }
    };

    std::string statement(Nodes nodes, Translation &result);
    std::string sequence(Nodes nodes);
    std::string emit(Level &level);
    void planLevel(Level &level);

    void planTop(Level &level);
    void planCalls(Level &level);
    void planHints(Level &level);
    void planConcatenation(Level &level);
    void planTextArithmetic(Level &level, std::size_t k);
    void planDivisions(Level &level);
    std::size_t primaryStart(const Level &level, std::size_t k) const;
    std::size_t primaryEnd(const Level &level, std::size_t k) const;
    std::size_t operandStart(const Level &level, std::size_t k) const;
    bool holdsDecimal(const Node &n) const;
    ColumnType numberOperand(const Level &level, std::size_t k, bool before) const;
    void convertText(Level &level, std::size_t first, std::size_t last, const ColumnType &type);
    void planDateComparisons(Level &level);
    void planStrings(Level &level);
    std::size_t arithmeticEnd(const Level &level, std::size_t j) const;
    void planPatterns(Level &level);

    void refuseSqliteOnly(const Level &level);
    void planDeleteInsert(Level &level);
    void planInsertValues(Level &level);
    void planInsertSelect(Level &level);
    bool insertTarget(const Level &level, std::size_t &k, std::string &table,
                      std::vector<std::string> &columns) const;
    bool needsFit(const Node *literal, const ColumnType &type) const;
    void planUpdateSet(Level &level);
    void planWrittenLiteral(const Node *value, const ColumnType &type);
    std::string exactWrite(const std::string &value, const ColumnType &type);
    void planSelectList(Level &level, Translation &result);
    bool nameItem(Level &level, std::size_t a, std::size_t b,
                  std::vector<std::optional<std::string>> &names);
    void planRowid(Level &level, std::size_t from, bool aggregate, Translation &result);

    std::string convertArguments(const Node &group, std::string_view function);
    std::string charindexArguments(const Node &group);
    bool isTextOperandBefore(const Level &level, std::size_t k) const;
    bool isTextOperandAfter(const Level &level, std::size_t k) const;
    bool isTextCall(const Node &name, const Node &group) const;
    ColumnKind kindBefore(const Level &level, std::size_t k) const;
    bool isDateCall(const Node &name, const Node &group) const;
    void checkComparedText(const Node &text, ColumnKind kind);
    ColumnKind kindAfter(const Level &level, std::size_t k) const;
    std::size_t nameChainEnd(const Level &level, std::size_t k) const;
    std::string singleTable(const Level &level, std::size_t from, std::string *alias) const;

    const Catalog &catalog_;
    const Dialect &dialect_;
    TranslateOptions options_;
    // Native SQLite text: only divisions and the text written into columns change.
    bool native_;
    std::set<const Node *> dateStrings_;
};

// ---- driving -------------------------------------------------------------

Translation Rewriter::run(std::string_view text) {
    auto tokens = tokenize(text);
    auto tree = buildTree(tokens);
    Translation result;
    Nodes all(tree);
    std::size_t start = 0;
    for (std::size_t i = 0; i <= all.size(); ++i) {
        if (i < all.size() && !all[i].isSymbol(";"))
            continue;
        result.sql += statement(all.subspan(start, i - start), result);
        if (i < all.size())
            result.sql += ";";
        start = i + 1;
    }
    return result;
}

std::string Rewriter::statement(Nodes nodes, Translation &result) {
    Level level{nodes, significantPositions(nodes), {}};
    if (level.sig.empty())
        return sequence(nodes);
    ++result.statements;
    if (native_) {
        planInsertValues(level);
        planInsertSelect(level);
        planUpdateSet(level);
        planLevel(level);
        return emit(level);
    }
    refuseSqliteOnly(level);
    checkGrouping(nodes, catalog_);
    planDeleteInsert(level);
    planInsertValues(level);
    planInsertSelect(level);
    planUpdateSet(level);
    planSelectList(level, result);
    planLevel(level);
    return emit(level);
}

std::string Rewriter::sequence(Nodes nodes) {
    Level level{nodes, significantPositions(nodes), {}};
    planLevel(level);
    return emit(level);
}

void Rewriter::planLevel(Level &level) {
    planDivisions(level);
    if (native_)
        return;
    planTop(level);
    planCalls(level);
    planHints(level);
    planConcatenation(level);
    planDateComparisons(level);
    planStrings(level);
    planPatterns(level);
}

std::string Rewriter::emit(Level &level) {
    std::string out;
    const auto &e = level.edits;
    for (std::size_t i = 0; i < level.nodes.size(); ++i) {
        const Node &n = level.nodes[i];
        if (e.skip.count(i))
            continue;
        if (auto b = e.before.find(i); b != e.before.end())
            out += b->second;
        if (auto r = e.replace.find(i); r != e.replace.end())
            out += r->second;
        else if (n.group)
            out += "(" + sequence(n.children) + ")";
        else if (n.is(Kind::Quoted))
            out += quoteName(n.token.name());
        else if (n.isSymbol("!<"))
            out += ">=";
        else if (n.isSymbol("!>"))
            out += "<=";
        else
            out += n.token.text;
        // SQL Server reads "1005AND" as a number and a word; SQLite wants the blank.
        if (n.is(Kind::Number) && i + 1 < level.nodes.size() && level.nodes[i + 1].is(Kind::Word))
            out += ' ';
        if (auto c = e.close.find(i); c != e.close.end())
            out += c->second;
        if (auto a = e.after.find(i); a != e.after.end())
            out += a->second;
    }
    return out;
}

// ---- rules of every level --------------------------------------------------

// select top N ... becomes select ... LIMIT N at the end of the same level.
void Rewriter::planTop(Level &level) {
    std::string limit;
    for (std::size_t k = 0; k + 1 < level.sig.size(); ++k) {
        if (!level.at(k).isWord("select"))
            continue;
        std::size_t t = k + 1;
        if (level.at(t).isWord("distinct") || level.at(t).isWord("all"))
            ++t;
        if (!level.has(t + 1) || !level.at(t).isWord("top"))
            continue;
        const Node &count = level.at(t + 1);
        const Node *number = count.group ? single(count.children) : &count;
        if (!number || !number->is(Kind::Number))
            throw statementError("TOP takes a plain number here: \"" + count.text() + "\"");
        if (level.has(t + 2) &&
            (level.at(t + 2).isWord("percent") || level.at(t + 2).isWord("with")))
            throw statementError("TOP ... PERCENT and TOP ... WITH TIES are not supported");
        if (!limit.empty())
            throw statementError("TOP in more than one select of a statement is not supported");
        limit = std::string(number->token.text);
        for (std::size_t p : {level.sig[t], level.sig[t + 1]}) {
            level.edits.skip.insert(p);
            if (p + 1 < level.nodes.size() && level.nodes[p + 1].is(Kind::Space))
                level.edits.skip.insert(p + 1);
        }
    }
    if (!limit.empty())
        level.edits.after[level.sig.back()] += " LIMIT " + limit;
}

void Rewriter::planCalls(Level &level) {
    for (std::size_t k = 0; k + 1 < level.sig.size(); ++k) {
        const Node &name = level.at(k);
        const Node &args = level.at(k + 1);
        if (!name.is(Kind::Word) || !args.group || (k > 0 && level.at(k - 1).isSymbol(".")))
            continue;
        std::string fn = lowerCase(name.token.text);
        auto &e = level.edits;
        if (fn == "convert" || fn == "cast") {
            e.skip.insert(level.sig[k]);
            e.replace[level.sig[k + 1]] = convertArguments(args, fn);
        } else if (fn == "charindex") {
            e.skip.insert(level.sig[k]);
            e.replace[level.sig[k + 1]] = charindexArguments(args);
        } else if (auto renamed = dialect_.function(fn); !renamed.empty()) {
            e.replace[level.sig[k]] = renamed;
        }
    }
}

// Table hints such as with (nolock) mean nothing to SQLite; dbo. is the only schema.
void Rewriter::planHints(Level &level) {
    for (std::size_t k = 0; k < level.sig.size(); ++k) {
        const Node &n = level.at(k);
        if (n.isWord("dbo") && level.has(k + 1) && level.at(k + 1).isSymbol(".")) {
            level.edits.skip.insert(level.sig[k]);
            level.edits.skip.insert(level.sig[k + 1]);
        }
        if (!n.group || k == 0)
            continue;
        const Node *hint = single(n.children);
        if (!hint || !(hint->isWord("nolock") || hint->isWord("readuncommitted")))
            continue;
        std::size_t first = level.at(k - 1).isWord("with") ? level.sig[k - 1] : level.sig[k];
        if (first > 0 && level.nodes[first - 1].is(Kind::Space))
            --first;
        for (std::size_t p = first; p <= level.sig[k]; ++p)
            level.edits.skip.insert(p);
    }
}

// + decides by the types of its sides, as SQL Server's type precedence does:
// text and text join; text next to a number converts to the number's type,
// so that 1 + '2' is 3 and 1 + 'x' refuses the statement (a literal before
// anything runs, a column's value when it is read). Where the other side's
// type is not known (an expression), text on one side still joins.
void Rewriter::planConcatenation(Level &level) {
    for (std::size_t k = 1; k + 1 < level.sig.size(); ++k) {
        const Node &op = level.at(k);
        if (!endsOperand(level.at(k - 1)))
            continue; // a sign, not an addition
        if (!op.isSymbol("+")) {
            if (op.isSymbol("-") || isMultiplicative(op))
                planTextArithmetic(level, k);
            continue;
        }
        bool textBefore = isTextOperandBefore(level, k);
        bool textAfter = isTextOperandAfter(level, k);
        if (textBefore && !textAfter) {
            ColumnType number = numberOperand(level, k, false);
            if (number.numeric()) {
                convertText(level, primaryStart(level, k - 1), k - 1, number);
                continue;
            }
        }
        if (textAfter && !textBefore) {
            ColumnType number = numberOperand(level, k, true);
            if (number.numeric()) {
                convertText(level, k + 1, primaryEnd(level, k + 1), number);
                continue;
            }
        }
        if (textBefore || textAfter)
            level.edits.replace[level.sig[k]] = "||";
    }
}

// - * / % between text and a number: the text converts to the number's type,
// as for +. The embedded engine computes with text by itself (its division
// guards take text); an engine that has no such operators gets the
// conversion spelled.
void Rewriter::planTextArithmetic(Level &level, std::size_t k) {
    if (dialect_.guardsValues())
        return;
    bool textBefore = isTextOperandBefore(level, k);
    bool textAfter = isTextOperandAfter(level, k);
    if (textBefore == textAfter)
        return;
    ColumnType number = numberOperand(level, k, textAfter);
    if (!number.numeric())
        return;
    if (textBefore)
        convertText(level, primaryStart(level, k - 1), k - 1, number);
    else
        convertText(level, k + 1, primaryEnd(level, k + 1), number);
}

// The type of the number standing on one side of the operator at k: a
// number literal, a number column or a function that counts; a type of kind
// Unknown for anything else.
ColumnType Rewriter::numberOperand(const Level &level, std::size_t k, bool before) const {
    std::size_t j = before ? primaryStart(level, k - 1) : k + 1;
    while (level.has(j + 1) && isSign(level.at(j)))
        ++j;
    const Node &n = level.at(j);
    if (n.is(Kind::Number)) {
        std::string_view text = n.token.text;
        if (text.find_first_of("eE") != std::string_view::npos)
            return columnTypeOf("float");
        auto point = text.find('.');
        if (point != std::string_view::npos)
            return columnTypeOf("numeric(38," + std::to_string(text.size() - point - 1) + ")");
        return columnTypeOf(text.size() > 9 ? "numeric(38,0)" : "int");
    }
    if (n.is(Kind::Word) && level.has(j + 1) && level.at(j + 1).group) {
        static const std::set<std::string> counting = {"len", "count", "charindex", "datalength",
                                                       "isnumeric", "datediff"};
        return columnTypeOf(counting.count(lowerCase(n.token.text)) ? "int" : "");
    }
    if (!isName(n))
        return {};
    std::size_t end = nameChainEnd(level, j);
    if (level.has(end + 1) && level.at(end + 1).group)
        return {};
    switch (catalog_.kindOfColumn(level.at(end).token.name())) {
    case ColumnKind::Integer:
        return columnTypeOf("int");
    case ColumnKind::Decimal:
        return columnTypeOf("numeric(38,10)");
    case ColumnKind::Float:
        return columnTypeOf("float");
    case ColumnKind::Money:
        return columnTypeOf("money");
    default:
        return {};
    }
}

// Text at positions first to last converts to a number type: a literal is
// checked now, so that text that is no number refuses the statement before
// anything of it runs.
void Rewriter::convertText(Level &level, std::size_t first, std::size_t last,
                           const ColumnType &type) {
    std::string name = type.precision > 0 && type.kind == ColumnKind::Decimal
                           ? "numeric(" + std::to_string(type.precision) + "," +
                                 std::to_string(type.scale) + ")"
                           : type.name;
    if (!dialect_.guardsValues()) {
        // An engine that refuses text that is no number when it converts it
        // gets the conversion as it spells convert(): the text is the value.
        constexpr std::string_view value = "\x1f";
        std::string spelled = dialect_.convert(name, value);
        auto at = spelled.find(value);
        level.edits.before[level.sig[first]] += spelled.substr(0, at);
        level.edits.close[level.sig[last]] += spelled.substr(at + value.size());
        return;
    }
    if (first == last && level.at(first).is(Kind::String))
        dialect_.checkLiteral(level.at(first).token.stringValue(), type);
    level.edits.before[level.sig[first]] += "sv_convert('" + name + "', ";
    level.edits.close[level.sig[last]] += ")";
}

// / and % as SQL Server computes them (sv_divide, sv_modulo): a divisor of
// zero refuses the statement where SQLite would give null. The left side is
// everything since the last operator of lower precedence (a * b / c divides
// a * b); the right side is one operand. A later operator of a chain wraps
// the earlier ones: a / b % c is sv_modulo(sv_divide(a, b), c).
void Rewriter::planDivisions(Level &level) {
    if (!dialect_.guardsValues())
        return;
    for (std::size_t k = 1; k + 1 < level.sig.size(); ++k) {
        const Node &op = level.at(k);
        if (!op.isSymbol("/") && !op.isSymbol("%"))
            continue;
        std::size_t first = operandStart(level, k - 1);
        std::size_t last = primaryEnd(level, k + 1);
        auto &before = level.edits.before[level.sig[first]];
        before = (op.isSymbol("/") ? "sv_divide(" : "sv_modulo(") + before;
        level.edits.replace[level.sig[k]] = ",";
        // A decimal column holds 10.000 as the integer 10: its quotient must
        // not be cut as an integer's.
        bool decimal = false;
        for (std::size_t j = first; j <= last && !decimal; ++j)
            decimal = holdsDecimal(level.at(j));
        level.edits.close[level.sig[last]] += decimal ? ", 1)" : ")";
    }
}

// Whether a node is, or holds, a number with places: a literal with a point
// or an exponent, a numeric, float or money column, or a conversion to one.
bool Rewriter::holdsDecimal(const Node &n) const {
    static const std::set<std::string> types = {"numeric", "decimal",    "float", "real",
                                                "money",   "smallmoney", "double"};
    if (n.group) {
        for (const auto &child : n.children)
            if (holdsDecimal(child))
                return true;
        return false;
    }
    if (n.is(Kind::Number))
        return n.token.text.find_first_of(".eE") != std::string_view::npos;
    if (n.is(Kind::Word) && types.count(lowerCase(n.token.text)))
        return true;
    if (!isName(n))
        return false;
    ColumnKind kind = catalog_.kindOfColumn(n.token.name());
    return kind == ColumnKind::Decimal || kind == ColumnKind::Float || kind == ColumnKind::Money;
}

// The first position of the operand of * / % whose last node stands at j,
// with its sign and the operands multiplied or divided before it.
std::size_t Rewriter::operandStart(const Level &level, std::size_t j) const {
    for (;;) {
        j = primaryStart(level, j);
        while (j > 0 && isSign(level.at(j - 1)) && (j == 1 || !endsOperand(level.at(j - 2))))
            --j;
        if (j >= 2 && isMultiplicative(level.at(j - 1))) {
            j -= 2;
            continue;
        }
        return j;
    }
}

// The first position of the single operand that ends at j: a literal, a
// dotted name, a parenthesised group, a function call or case ... end.
std::size_t Rewriter::primaryStart(const Level &level, std::size_t j) const {
    const Node &n = level.at(j);
    if (n.isWord("end")) {
        int depth = 0;
        for (std::size_t i = j + 1; i-- > 0;) {
            if (level.at(i).isWord("end"))
                ++depth;
            else if (level.at(i).isWord("case") && --depth == 0)
                return i;
        }
        return j;
    }
    if (n.group) {
        if (j == 0 || !level.at(j - 1).is(Kind::Word))
            return j;
        const Node &name = level.at(j - 1);
        if (isReserved(name) && !name.isWord("left") && !name.isWord("right"))
            return j;
        --j;
    }
    while (j >= 2 && level.at(j - 1).isSymbol(".") && isName(level.at(j - 2)))
        j -= 2;
    return j;
}

// The last position of the single operand that starts at j, with its signs.
std::size_t Rewriter::primaryEnd(const Level &level, std::size_t j) const {
    while (level.has(j + 1) && isSign(level.at(j)))
        ++j;
    const Node &n = level.at(j);
    if (n.isWord("case")) {
        int depth = 0;
        for (std::size_t i = j; level.has(i); ++i) {
            if (level.at(i).isWord("case"))
                ++depth;
            else if (level.at(i).isWord("end") && --depth == 0)
                return i;
        }
        return level.sig.size() - 1;
    }
    if (n.is(Kind::Word) || n.is(Kind::Quoted)) {
        std::size_t end = nameChainEnd(level, j);
        if (level.has(end + 1) && level.at(end + 1).group)
            return end + 1;
        return end;
    }
    return j;
}

// A string literal compared with a date column is a date: it takes the form
// the column stores, so that the texts compare as the dates do.
void Rewriter::planDateComparisons(Level &level) {
    for (std::size_t k = 0; k < level.sig.size(); ++k) {
        const Node &n = level.at(k);
        if (n.group && k > 0 && level.at(k - 1).is(Kind::Word) &&
            (level.at(k - 1).isWord("isnull") || level.at(k - 1).isWord("coalesce")) &&
            isDateCall(level.at(k - 1), n))
            for (const auto &child : n.children)
                if (child.is(Kind::String))
                    dateStrings_.insert(&child);
        if (n.group && k > 0 && level.at(k - 1).isWord("in") &&
            kindBefore(level, k - 1) == ColumnKind::Date) {
            for (const auto &child : n.children)
                if (child.is(Kind::String))
                    dateStrings_.insert(&child);
            continue;
        }
        if (!n.is(Kind::String))
            continue;
        ColumnKind kind = ColumnKind::Unknown;
        if (k > 0) {
            const Node &before = level.at(k - 1);
            if ((before.is(Kind::Symbol) && comparisons.count(std::string(before.token.text))) ||
                before.isWord("between"))
                kind = kindBefore(level, k - 1);
            else if (before.isWord("and") && k >= 3 && level.at(k - 2).is(Kind::String) &&
                     level.at(k - 3).isWord("between"))
                kind = kindBefore(level, k - 3);
        }
        if (kind == ColumnKind::Unknown && level.has(k + 1) && level.at(k + 1).is(Kind::Symbol) &&
            comparisons.count(std::string(level.at(k + 1).token.text)))
            kind = kindAfter(level, k + 1);
        if (kind == ColumnKind::Date)
            dateStrings_.insert(&n);
        else
            checkComparedText(n, kind);
    }
}

// Text compared with a number column converts to the column's type, as SQL
// Server converts it; text that is no number refuses the statement
// ("Conversion failed when converting the varchar value 'x' to data type int.").
void Rewriter::checkComparedText(const Node &text, ColumnKind kind) {
    const char *type = kind == ColumnKind::Integer   ? "int"
                       : kind == ColumnKind::Decimal ? "numeric"
                       : kind == ColumnKind::Float   ? "float"
                       : kind == ColumnKind::Money   ? "money"
                       : kind == ColumnKind::Bit     ? "bit"
                                                     : nullptr;
    if (type)
        dialect_.checkLiteral(text.token.stringValue(), columnTypeOf(type));
}

// String literals compare as SQL Server compares text: ignoring letter case
// and trailing blanks. An N before the quote means nothing here.
void Rewriter::planStrings(Level &level) {
    for (std::size_t k = 0; k < level.sig.size(); ++k) {
        const Node &n = level.at(k);
        if (!n.is(Kind::String))
            continue;
        std::string text;
        if (dateStrings_.count(&n)) {
            auto date = canonicalDate(n.token.stringValue());
            if (!date)
                throw conversionError("Conversion failed when converting date and/or time from "
                                      "character string.");
            text = "'" + *date + "'";
        } else {
            text = std::string(n.token.text.substr(n.token.text.front() == '\'' ? 0 : 1));
        }
        bool alias = k > 0 && (endsOperand(level.at(k - 1)) || level.at(k - 1).isWord("as"));
        bool plain =
            k > 0 && (level.at(k - 1).isWord("default") || level.at(k - 1).isWord("escape"));
        if (!alias && !plain)
            text = dialect_.comparedText(std::move(text));
        level.edits.replace[level.sig[k]] = text;
    }
}

// The operand that starts at j and runs through arithmetic and joins of
// text ('%' + rtrim(x) + '%'): what LIKE takes as its pattern, since those
// operators bind more tightly than LIKE does.
std::size_t Rewriter::arithmeticEnd(const Level &level, std::size_t j) const {
    for (;;) {
        j = primaryEnd(level, j);
        if (!level.has(j + 2))
            return j;
        const Node &op = level.at(j + 1);
        if (!isSign(op) && !isMultiplicative(op) && !op.isSymbol("||"))
            return j;
        j += 2;
    }
}

// x [not] like p [escape e] in the engine's own spelling, where its LIKE
// knows nothing of SQL Server's bracket sets: the pattern may be any
// expression, so the engine takes it apart when the statement runs.
void Rewriter::planPatterns(Level &level) {
    const Dialect::PatternTest test = dialect_.patternTest();
    if (test.op.empty())
        return;
    for (std::size_t k = 1; k + 1 < level.sig.size(); ++k) {
        if (!level.at(k).isWord("like"))
            continue;
        bool negated = level.at(k - 1).isWord("not");
        if (negated) {
            std::size_t p = level.sig[k - 1];
            level.edits.skip.insert(p);
            if (level.nodes[p + 1].is(Kind::Space))
                level.edits.skip.insert(p + 1);
        }
        level.edits.replace[level.sig[k]] = negated ? test.negatedOp : test.op;
        std::size_t first = k + 1;
        std::size_t last = arithmeticEnd(level, first);
        if (level.has(last + 2) && level.at(last + 1).isWord("escape")) {
            level.edits.replace[level.sig[last + 1]] = ",";
            last = arithmeticEnd(level, last + 2);
        }
        auto &before = level.edits.before[level.sig[first]];
        before = test.before + before;
        level.edits.close[level.sig[last]] += test.after;
        k = last;
    }
}

// ---- statement-level rules -------------------------------------------------

void Rewriter::refuseSqliteOnly(const Level &level) {
    const Node &first = level.at(0);
    if (first.is(Kind::Word) && sqliteStatements.count(lowerCase(first.token.text)))
        throw statementError("Could not find stored procedure '" + std::string(first.token.text) +
                             "'.");
    refuseLimit(level.nodes);
}

// delete T where ... and insert T ... without from / into.
void Rewriter::planDeleteInsert(Level &level) {
    if (!level.has(1))
        return;
    const Node &first = level.at(0);
    if (first.isWord("delete") && !level.at(1).isWord("from"))
        level.edits.after[level.sig[0]] += " from";
    if (first.isWord("insert") && !level.at(1).isWord("into"))
        level.edits.after[level.sig[0]] += " into";
}

// insert [into] T [(c1, c2)]: the table, its columns as written or all in
// order, and k at the node after them; false when the statement is no insert.
bool Rewriter::insertTarget(const Level &level, std::size_t &k, std::string &table,
                            std::vector<std::string> &columns) const {
    if (!level.at(0).isWord("insert"))
        return false;
    k = level.has(1) && level.at(1).isWord("into") ? 2 : 1;
    if (!level.has(k) || !isName(level.at(k)))
        return false;
    std::size_t end = nameChainEnd(level, k);
    table = std::string(level.at(end).token.name());
    k = end + 1;
    if (level.has(k) && level.at(k).group) {
        for (const auto &child : level.at(k).children)
            if (child.is(Kind::Word) || child.is(Kind::Quoted))
                columns.emplace_back(child.token.name());
        ++k;
    } else {
        for (const auto &c : catalog_.columns(table))
            columns.push_back(c.name);
    }
    return true;
}

// Whether a value written into a text column must be held to its length
// when it is written: every expression, and a literal too long for it.
bool Rewriter::needsFit(const Node *literal, const ColumnType &type) const {
    if (!dialect_.guardsValues())
        return false;
    if (type.kind != ColumnKind::Text || type.length <= 0)
        return false;
    if (!literal || !literal->is(Kind::String))
        return true;
    std::string text = literal->token.stringValue();
    auto fitted = fittedText(text, type);
    return !fitted || fitted->size() != text.size();
}

// insert into T (c1, c2) values ('...', ...): date text going into a date
// column takes the stored form; numbers keep the column's scale; text is
// held to the column's length.
void Rewriter::planInsertValues(Level &level) {
    std::size_t k = 0;
    std::string table;
    std::vector<std::string> columns;
    if (!insertTarget(level, k, table, columns))
        return;
    if (!level.has(k) || !level.at(k).isWord("values"))
        return;
    for (++k; level.has(k); ++k) {
        if (!level.at(k).group)
            continue;
        auto parts = splitArguments(level.at(k).children);
        bool rewrite = false;
        for (std::size_t i = 0; i < parts.size() && i < columns.size(); ++i) {
            ColumnType type = catalog_.columnType(table, columns[i]);
            if (!native_)
                planWrittenLiteral(single(parts[i]), type);
            rewrite = rewrite || (type.precision > 0 && !native_) ||
                      needsFit(single(parts[i]), type);
        }
        if (!rewrite)
            continue;
        std::string values = "(";
        for (std::size_t i = 0; i < parts.size(); ++i) {
            ColumnType type =
                i < columns.size() ? catalog_.columnType(table, columns[i]) : ColumnType{};
            std::string value = sequence(parts[i]);
            if (needsFit(single(parts[i]), type))
                value = "sv_fit(" + std::to_string(type.length) + ", " + trimmed(value) + ")";
            else if (!native_)
                value = exactWrite(value, type);
            values += (i ? "," : "") + value;
        }
        level.edits.replace[level.sig[k]] = values + ")";
    }
}

// insert into T (c1, c2) select a, b from ...: what the select gives a text
// column is held to the column's length.
void Rewriter::planInsertSelect(Level &level) {
    std::size_t k = 0;
    std::string table;
    std::vector<std::string> columns;
    if (!insertTarget(level, k, table, columns) || !level.has(k) || !level.at(k).isWord("select"))
        return;
    ++k;
    if (level.has(k) && (level.at(k).isWord("distinct") || level.at(k).isWord("all")))
        ++k;
    if (level.has(k + 1) && level.at(k).isWord("top"))
        k += 2;
    for (std::size_t column = 0; level.has(k) && column < columns.size(); ++column) {
        std::size_t b = k;
        while (level.has(b) && !level.at(b).isSymbol(",") &&
               !(level.at(b).is(Kind::Word) && selectListEnds.count(lowerCase(level.at(b).token.text))))
            ++b;
        if (b == k)
            return;
        std::size_t last = b - 1;
        for (std::size_t a = k; a < b; ++a)
            if (level.at(a).isWord("as") && a > k)
                last = a - 1;
        ColumnType type = catalog_.columnType(table, columns[column]);
        if (needsFit(k == last ? &level.at(k) : nullptr, type)) {
            level.edits.before[level.sig[k]] += "sv_fit(" + std::to_string(type.length) + ", ";
            level.edits.close[level.sig[last]] += ")";
        }
        if (!level.has(b) || !level.at(b).isSymbol(","))
            return;
        k = b + 1;
    }
}

// A value written into a numeric or money column keeps the column's scale
// and is refused when too large for it, as SQL Server stores it.
std::string Rewriter::exactWrite(const std::string &value, const ColumnType &type) {
    if (type.precision == 0)
        return value;
    std::size_t lead = value.find_first_not_of(" \t\r\n");
    if (lead == std::string::npos)
        return value;
    auto [before, after] = dialect_.exactWrap(type);
    return value.substr(0, lead) + before + trimmed(value) + after;
}

// update T set c = '...', ...: the same rules as for inserted values.
void Rewriter::planUpdateSet(Level &level) {
    if (!level.at(0).isWord("update") || !level.has(1) || !isName(level.at(1)))
        return;
    std::size_t k = nameChainEnd(level, 1);
    std::string table = level.at(k).token.name();
    auto endsValue = [&](std::size_t e) {
        return !level.has(e) || level.at(e).isSymbol(",") || level.at(e).isWord("where") ||
               level.at(e).isWord("from");
    };
    for (++k; level.has(k) && !level.at(k).isWord("where") && !level.at(k).isWord("from"); ++k) {
        if (!level.at(k).isSymbol("=") || k == 0 || !isName(level.at(k - 1)) || !level.has(k + 1))
            continue;
        ColumnType type = catalog_.columnType(table, level.at(k - 1).token.name());
        if (endsValue(k + 2) && !native_)
            planWrittenLiteral(&level.at(k + 1), type);
        std::size_t last = k + 1;
        while (!endsValue(last + 1))
            ++last;
        if (dialect_.guardsValues() &&
            needsFit(last == k + 1 ? &level.at(k + 1) : nullptr, type)) {
            level.edits.before[level.sig[k + 1]] += "sv_fit(" + std::to_string(type.length) + ", ";
            level.edits.close[level.sig[last]] += ")";
            k = last;
            continue;
        }
        if (type.precision == 0 || native_)
            continue;
        auto [before, after] = dialect_.exactWrap(type);
        if (!before.empty() || !after.empty()) {
            level.edits.after[level.sig[k]] += " " + trimmed(before);
            level.edits.after[level.sig[last]] += after;
        }
        k = last;
    }
}

// A string literal written into a column: a date column takes the stored
// form; a numeric column refuses text that is no number, as SQL Server does.
void Rewriter::planWrittenLiteral(const Node *value, const ColumnType &type) {
    if (!value || !value->is(Kind::String))
        return;
    if (type.kind == ColumnKind::Date)
        dateStrings_.insert(value);
    else if (type.numeric() || type.kind == ColumnKind::Text)
        dialect_.checkLiteral(value->token.stringValue(), type);
}

// The names of the result columns are those the statement gives: a column
// keeps the spelling it has in the statement, an expression without an alias
// has no name (the engines would name both otherwise). A recordset that may
// change rows also reads the identity of the rows of the one table it selects from.
void Rewriter::planSelectList(Level &level, Translation &result) {
    if (!level.at(0).isWord("select"))
        return;
    std::size_t begin = 1;
    if (level.has(begin) && (level.at(begin).isWord("distinct") || level.at(begin).isWord("all")))
        ++begin;
    if (level.has(begin + 1) && level.at(begin).isWord("top"))
        begin += 2;
    std::size_t end = begin;
    while (level.has(end) && !(level.at(end).is(Kind::Word) &&
                               selectListEnds.count(lowerCase(level.at(end).token.text))))
        ++end;
    bool aggregate = false;
    for (std::size_t a = begin; a < end;) {
        std::size_t b = a;
        while (b < end && !level.at(b).isSymbol(","))
            ++b;
        if (b == a)
            throw statementError("Incorrect syntax near ','.");
        aggregate = nameItem(level, a, b, result.columnNames) || aggregate;
        a = b + 1;
    }
    if (end > begin && level.has(end) && level.at(end).isWord("from"))
        planRowid(level, end, aggregate, result);
}

namespace {

bool isAggregate(std::string_view function) {
    const std::string fn = lowerCase(function);
    return fn == "count" || fn == "sum" || fn == "min" || fn == "max" || fn == "avg";
}

// True when the nodes call an aggregate, at any depth short of a subquery of their own.
bool callsAggregate(const std::vector<Node> &nodes) {
    const Node *previous = nullptr;
    for (const Node &node : nodes) {
        if (!node.significant())
            continue;
        if (!previous && node.isWord("select"))
            return false;
        if (node.group) {
            if (previous && previous->is(Token::Kind::Word) && isAggregate(previous->token.text))
                return true;
            if (callsAggregate(node.children))
                return true;
        }
        previous = &node;
    }
    return false;
}

} // namespace

// Names one item of the select list (positions a to b - 1), adding the name it
// gives to `names`; true when it calls an aggregate function.
bool Rewriter::nameItem(Level &level, std::size_t a, std::size_t b,
                        std::vector<std::optional<std::string>> &names) {
    const Node &last = level.at(b - 1);
    bool star = last.isSymbol("*");
    bool column = !star && isName(level.at(a)) && nameChainEnd(level, a) == b - 1;
    bool aliasLike = isName(last) || last.is(Kind::String);
    bool aliased =
        b - a >= 2 && aliasLike && (level.at(b - 2).isWord("as") || endsOperand(level.at(b - 2)));
    if (column)
        level.edits.after[level.sig[b - 1]] += " AS " + quoteName(last.token.name());
    else if (!star && !aliased)
        level.edits.after[level.sig[b - 1]] += dialect_.unnamedAlias();
    if (star)
        names.emplace_back();
    else if (column || aliased)
        names.emplace_back(last.is(Kind::String) ? last.token.stringValue() : last.token.name());
    else
        names.emplace_back("");
    bool aggregate = false;
    for (std::size_t i = a; i < b; ++i) {
        if (i + 1 < b && level.at(i + 1).group && level.at(i).is(Kind::Word))
            aggregate = aggregate || isAggregate(level.at(i).token.text);
        // An aggregate inside a call (isnull(max(x), 0)) makes the item one too.
        if (level.at(i).group)
            aggregate = aggregate || callsAggregate(level.at(i).children);
    }
    return aggregate;
}

// A plain select of one table (no group, aggregate or distinct) that may
// change rows reads the identity of that table's rows too; `from` stands at
// position `from`.
void Rewriter::planRowid(Level &level, std::size_t from, bool aggregate, Translation &result) {
    std::string alias;
    result.baseTable = singleTable(level, from, &alias);
    bool grouped = false;
    for (std::size_t k = from; k < level.sig.size(); ++k)
        grouped = grouped || level.at(k).isWord("group");
    if (options_.addRowid && !result.baseTable.empty() && !grouped && !aggregate &&
        !level.at(1).isWord("distinct")) {
        std::string identity = dialect_.rowIdentity(result.baseTable, quoteName(alias), catalog_);
        if (!identity.empty()) {
            level.edits.after[level.sig[from - 1]] += ", " + identity + " AS \"sv_rowid\"";
            result.rowidAdded = true;
        }
    }
}

// from T [alias] followed by nothing or a clause: T when it is a table.
std::string Rewriter::singleTable(const Level &level, std::size_t from, std::string *alias) const {
    std::size_t k = from + 1;
    if (!level.has(k) || !isName(level.at(k)))
        return "";
    k = nameChainEnd(level, k);
    std::string table(level.at(k).token.name());
    *alias = table;
    ++k;
    if (level.has(k) && level.at(k).isWord("as"))
        ++k;
    if (level.has(k) && isName(level.at(k)))
        *alias = std::string(level.at(k++).token.name());
    bool clause = !level.has(k) || level.at(k).isWord("where") || level.at(k).isWord("order") ||
                  level.at(k).isWord("group") || level.at(k).isWord("having");
    return clause && catalog_.hasTable(table) ? table : "";
}

// ---- helpers ----------------------------------------------------------------

// convert(type, x) and cast(x as type) read alike: a type and a value.
std::string Rewriter::convertArguments(const Node &group, std::string_view function) {
    Nodes all(group.children);
    Nodes typePart, valuePart;
    if (function == "cast") {
        std::size_t as = all.size();
        for (std::size_t i = 0; i < all.size() && as == all.size(); ++i)
            if (all[i].isWord("as"))
                as = i;
        if (as == all.size())
            throw statementError("cast needs 'as' and a type: \"cast" + group.text() + "\"");
        valuePart = all.subspan(0, as);
        typePart = all.subspan(as + 1);
    } else {
        auto parts = splitArguments(all);
        if (parts.size() == 3)
            throw statementError("convert with a style is not supported: \"convert" + group.text() +
                                 "\"");
        if (parts.size() != 2)
            throw statementError("convert takes a type and a value: \"convert" + group.text() +
                                 "\"");
        typePart = parts[0];
        valuePart = parts[1];
    }
    std::string type;
    for (const auto &n : typePart)
        if (n.significant())
            type += lowerCase(n.text());
    if (columnTypeOf(type).kind == ColumnKind::Unknown)
        throw statementError("Type " + type + " is not a defined system type.");
    return dialect_.convert(type, trimmed(sequence(valuePart)));
}

// charindex(find, text): the engines name it and order its arguments each their own way.
std::string Rewriter::charindexArguments(const Node &group) {
    auto parts = splitArguments(group.children);
    if (parts.size() != 2)
        throw statementError("charindex with a start position is not supported: \"charindex" +
                             group.text() + "\"");
    return dialect_.charindex(trimmed(sequence(parts[0])), trimmed(sequence(parts[1])));
}

bool Rewriter::isTextCall(const Node &name, const Node &group) const {
    std::string fn = lowerCase(name.token.text);
    if (textFunctions.count(fn))
        return true;
    Nodes all(group.children);
    if (fn == "convert") {
        const Node *type = nullptr;
        for (const auto &n : all)
            if (n.significant()) {
                type = &n;
                break;
            }
        return type && columnTypeOf(type->token.text).kind == ColumnKind::Text;
    }
    if (fn == "isnull" || fn == "coalesce") {
        for (auto part : splitArguments(all)) {
            const Node *n = single(part);
            if (n && (n->is(Kind::String) ||
                      (isName(*n) && catalog_.kindOfColumn(n->token.name()) == ColumnKind::Text)))
                return true;
        }
    }
    return false;
}

bool Rewriter::isTextOperandBefore(const Level &level, std::size_t k) const {
    const Node &n = level.at(k - 1);
    if (n.is(Kind::String))
        return true;
    if (n.group)
        return k >= 2 && level.at(k - 2).is(Kind::Word) && isTextCall(level.at(k - 2), n);
    return isName(n) && catalog_.kindOfColumn(n.token.name()) == ColumnKind::Text;
}

bool Rewriter::isTextOperandAfter(const Level &level, std::size_t k) const {
    const Node &n = level.at(k + 1);
    if (n.is(Kind::String))
        return true;
    if (n.is(Kind::Word) && level.has(k + 2) && level.at(k + 2).group)
        return isTextCall(n, level.at(k + 2));
    if (!isName(n))
        return false;
    const Node &last = level.at(nameChainEnd(level, k + 1));
    return catalog_.kindOfColumn(last.token.name()) == ColumnKind::Text;
}

// The kind of the column that ends just before position k (a "not" between
// them is passed over: x not between ..., x not in ...).
ColumnKind Rewriter::kindBefore(const Level &level, std::size_t k) const {
    if (k > 0 && level.at(k - 1).isWord("not"))
        --k;
    if (k >= 2 && level.at(k - 1).group && level.at(k - 2).is(Kind::Word) &&
        isDateCall(level.at(k - 2), level.at(k - 1)))
        return ColumnKind::Date;
    if (k == 0 || !isName(level.at(k - 1)))
        return ColumnKind::Unknown;
    return catalog_.kindOfColumn(level.at(k - 1).token.name());
}

// isnull, coalesce, max or min of a date column gives a date: isnull(svhdate,
// '19000101') > '20261101', having max(svhdate) > '...'. Text among the
// arguments of isnull and coalesce is a date too.
bool Rewriter::isDateCall(const Node &name, const Node &group) const {
    static const std::set<std::string> dateKeeping = {"isnull", "coalesce", "max", "min"};
    if (!dateKeeping.count(lowerCase(name.token.text)))
        return false;
    auto parts = splitArguments(group.children);
    std::vector<std::size_t> sig = significantPositions(parts[0]);
    if (sig.empty() || sig.size() % 2 == 0)
        return false;
    for (std::size_t i = 0; i < sig.size(); ++i) {
        const Node &n = parts[0][sig[i]];
        if (i % 2 ? !n.isSymbol(".") : !isName(n))
            return false;
    }
    return catalog_.kindOfColumn(parts[0][sig.back()].token.name()) == ColumnKind::Date;
}

// The kind of the column (a.b.c) that starts just after position k.
ColumnKind Rewriter::kindAfter(const Level &level, std::size_t k) const {
    if (!level.has(k + 1) || !isName(level.at(k + 1)))
        return ColumnKind::Unknown;
    std::size_t end = nameChainEnd(level, k + 1);
    if (level.has(end + 1) && level.at(end + 1).group) // a function call
        return end == k + 1 && isDateCall(level.at(end), level.at(end + 1)) ? ColumnKind::Date
                                                                            : ColumnKind::Unknown;
    return catalog_.kindOfColumn(level.at(end).token.name());
}

// The last position of a dotted name a.b.c that starts at k.
std::size_t Rewriter::nameChainEnd(const Level &level, std::size_t k) const {
    while (level.has(k + 2) && level.at(k + 1).isSymbol(".") &&
           (isName(level.at(k + 2)) || level.at(k + 2).isSymbol("*")))
        k += 2;
    return k;
}

} // namespace

Translation translate(std::string_view text, const Catalog &catalog, const Dialect &dialect,
                      TranslateOptions options) {
    return Rewriter(catalog, dialect, options).run(text);
}

std::string guardNative(std::string_view nativeText, const Catalog &catalog,
                        const Dialect &dialect) {
    return Rewriter(catalog, dialect, {}, true).run(nativeText).sql;
}

} // namespace ado::sql
