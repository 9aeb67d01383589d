#include "ado/sql/GroupingCheck.h"

#include "ado/sql/FrontError.h"

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace ado::sql {

namespace {

using Kind = Token::Kind;
using Nodes = std::span<const Node>;

const std::set<std::string> aggregates = {"count", "count_big", "sum", "avg",         "min",
                                          "max",   "stdev",     "var", "checksum_agg"};

// Words that end one clause of a select and start the next.
const std::set<std::string> clauseWords = {"from",  "into",  "where",  "group",    "having",
                                           "order", "union", "except", "intersect"};

bool isName(const Node &n) {
    return (n.is(Kind::Word) && !isReservedWord(n.token.text)) || n.is(Kind::Quoted);
}

bool isClauseWord(const Node &n) {
    return n.is(Kind::Word) && clauseWords.count(lowerCase(n.token.text));
}

// The significant nodes of a sequence, by index.
struct Sequence {
    Nodes nodes;
    std::vector<std::size_t> sig;
    explicit Sequence(Nodes n) : nodes(n), sig(significantPositions(n)) {}
    const Node &at(std::size_t k) const { return nodes[sig[k]]; }
    std::size_t size() const { return sig.size(); }
    // The nodes from significant k to just before significant e; nothing when
    // e comes first, as for a clause word with nothing after it ("group order").
    Nodes span(std::size_t k, std::size_t e) const {
        std::size_t from = k < sig.size() ? sig[k] : nodes.size();
        std::size_t to = e < sig.size() ? sig[e] : nodes.size();
        return nodes.subspan(from, to > from ? to - from : 0);
    }
};

bool startsWithSelect(Nodes nodes) {
    for (const auto &n : nodes)
        if (n.significant())
            return n.isWord("select");
    return false;
}

// The expression as SQL Server matches a grouped expression: letter case and
// blanks do not count.
std::string normalized(Nodes nodes) {
    std::string out;
    for (const auto &n : nodes) {
        if (n.group)
            out += "(" + normalized(n.children) + ")";
        else if (n.significant())
            out += lowerCase(n.is(Kind::Quoted) ? n.token.name() : std::string(n.token.text)) + " ";
    }
    return out;
}

// The parts of a sequence between its commas.
std::vector<Nodes> commaParts(Nodes nodes) {
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

bool callsAggregate(Nodes nodes) {
    Sequence s(nodes);
    for (std::size_t k = 0; k < s.size(); ++k) {
        const Node &n = s.at(k);
        if (n.group && !startsWithSelect(n.children) && callsAggregate(n.children))
            return true;
        if (n.is(Kind::Word) && k + 1 < s.size() && s.at(k + 1).group &&
            aggregates.count(lowerCase(n.token.text)))
            return true;
    }
    return false;
}

// A column as written: its dotted parts.
using Reference = std::vector<std::string>;

// The column references of an expression that stand outside aggregates and
// subqueries. The type of convert and cast is no column.
void references(Nodes nodes, std::vector<Reference> &out) {
    Sequence s(nodes);
    for (std::size_t k = 0; k < s.size(); ++k) {
        const Node &n = s.at(k);
        if (n.is(Kind::Word) && k + 1 < s.size() && s.at(k + 1).group) {
            std::string fn = lowerCase(n.token.text);
            const Node &args = s.at(++k);
            if (aggregates.count(fn))
                continue;
            if (fn == "convert") {
                auto parts = commaParts(args.children);
                for (std::size_t i = 1; i < parts.size(); ++i)
                    references(parts[i], out);
            } else if (fn == "cast") {
                Sequence a(args.children);
                std::size_t as = 0;
                while (as < a.size() && !a.at(as).isWord("as"))
                    ++as;
                references(a.span(0, as), out);
            } else {
                references(args.children, out);
            }
            continue;
        }
        if (n.group) {
            if (!startsWithSelect(n.children))
                references(n.children, out);
            continue;
        }
        if (!isName(n))
            continue;
        Reference ref{n.token.name()};
        while (k + 2 < s.size() && s.at(k + 1).isSymbol(".") && isName(s.at(k + 2))) {
            ref.push_back(s.at(k + 2).token.name());
            k += 2;
        }
        if (k + 2 < s.size() && s.at(k + 1).isSymbol(".") && s.at(k + 2).isSymbol("*")) {
            k += 2;
            continue;
        }
        out.push_back(std::move(ref));
    }
}

// An item of a select list without its alias.
Nodes withoutAlias(Nodes item) {
    Sequence s(item);
    if (s.size() < 2)
        return item;
    const Node &last = s.at(s.size() - 1);
    if (!isName(last) && !last.is(Kind::String))
        return item;
    const Node &before = s.at(s.size() - 2);
    if (before.isWord("as"))
        return s.span(0, s.size() - 2);
    bool operandEnds = before.group || before.is(Kind::Quoted) || before.is(Kind::Number) ||
                       before.is(Kind::String) ||
                       (before.is(Kind::Word) && (!isReservedWord(before.token.text) ||
                                                  before.isWord("end") || before.isWord("null")));
    return operandEnds ? s.span(0, s.size() - 1) : item;
}

std::string aliasOf(Nodes item) {
    Nodes bare = withoutAlias(item);
    if (bare.size() == item.size())
        return "";
    Sequence s(item);
    const Node &last = s.at(s.size() - 1);
    return lowerCase(last.is(Kind::String) ? last.token.stringValue() : last.token.name());
}

class SelectCheck {
public:
    explicit SelectCheck(const Catalog &catalog) : catalog_(catalog) {}

    // One select: from its "select" to the end of its part of a union.
    void run(const Sequence &s, std::size_t begin, std::size_t end, bool lastOfUnion);

private:
    struct Source {
        std::string table;
        std::string shown; // the alias, or the table as written
    };
    struct Place {
        std::size_t source;
        std::string column;
        bool operator<(const Place &o) const {
            return std::tie(source, column) < std::tie(o.source, o.column);
        }
    };

    bool readSources(const Sequence &s, std::size_t k, std::size_t end);
    // Where a reference points, with the name SQL Server's message gives it;
    // nothing when it points nowhere or to more than one table.
    std::optional<std::pair<Place, std::string>> resolve(const Reference &ref) const;
    // The first column of `nodes` that is neither grouped nor aggregated, by
    // its shown name; nullopt when there is none or a reference points nowhere.
    bool firstUngrouped(Nodes nodes, std::string &shown, bool &unknown) const;

    const Catalog &catalog_;
    std::vector<Source> sources_;
    std::set<Place> groupedColumns_;
    std::set<std::string> groupedExpressions_;
};

bool SelectCheck::readSources(const Sequence &s, std::size_t k, std::size_t end) {
    bool expectTable = true;
    for (; k < end; ++k) {
        const Node &n = s.at(k);
        if (!expectTable) {
            expectTable = n.isSymbol(",") || n.isWord("join") || n.isWord("apply");
            continue;
        }
        if (!isName(n))
            return false; // a derived table: its columns are not known here
        std::string table = n.token.name();
        while (k + 2 < end && s.at(k + 1).isSymbol(".") && isName(s.at(k + 2))) {
            table = s.at(k + 2).token.name();
            k += 2;
        }
        if (!catalog_.has(table))
            return false;
        std::string shown = table;
        if (k + 1 < end && s.at(k + 1).isWord("as"))
            ++k;
        if (k + 1 < end && isName(s.at(k + 1)))
            shown = s.at(++k).token.name();
        sources_.push_back({table, shown});
        expectTable = false;
    }
    return !sources_.empty();
}

std::optional<std::pair<SelectCheck::Place, std::string>>
SelectCheck::resolve(const Reference &ref) const {
    const std::string &column = ref.back();
    auto hasColumn = [&](const Source &src) {
        for (const auto &c : catalog_.columns(src.table))
            if (lowerCase(c.name) == lowerCase(column))
                return true;
        return false;
    };
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < sources_.size(); ++i) {
        bool named =
            ref.size() == 1 || lowerCase(sources_[i].shown) == lowerCase(ref[ref.size() - 2]);
        if (!named || !hasColumn(sources_[i]))
            continue;
        if (found)
            return std::nullopt; // ambiguous: the engine says so
        found = i;
    }
    if (!found)
        return std::nullopt;
    std::string shown =
        (ref.size() == 1 ? sources_[*found].shown : ref[ref.size() - 2]) + "." + column;
    return std::pair{Place{*found, lowerCase(column)}, shown};
}

bool SelectCheck::firstUngrouped(Nodes nodes, std::string &shown, bool &unknown) const {
    std::vector<Reference> refs;
    references(nodes, refs);
    bool found = false;
    for (const auto &ref : refs) {
        auto place = resolve(ref);
        if (!place) {
            unknown = true;
            continue;
        }
        if (!found && !groupedColumns_.count(place->first)) {
            shown = place->second;
            found = true;
        }
    }
    return found;
}

void SelectCheck::run(const Sequence &s, std::size_t begin, std::size_t end, bool lastOfUnion) {
    std::size_t list = begin + 1;
    if (list < end && (s.at(list).isWord("distinct") || s.at(list).isWord("all")))
        ++list;
    if (list + 1 < end && s.at(list).isWord("top"))
        list += 2;
    std::size_t from = end, where = end, group = end, having = end, order = end;
    for (std::size_t k = list; k < end; ++k) {
        const Node &n = s.at(k);
        if (!isClauseWord(n))
            continue;
        std::size_t *slot = n.isWord("from")     ? &from
                            : n.isWord("where")  ? &where
                            : n.isWord("group")  ? &group
                            : n.isWord("having") ? &having
                            : n.isWord("order")  ? &order
                                                 : nullptr;
        if (slot && *slot == end)
            *slot = k;
    }
    std::size_t listEnd = std::min({from, where, group, having, order, end});
    Nodes selectList = s.span(list, listEnd);
    bool grouped = group < end || having < end;
    if (!grouped && !callsAggregate(selectList))
        return;
    std::size_t fromEnd = std::min({where, group, having, order, end});
    if (from == end || !readSources(s, from + 1, fromEnd))
        return;

    if (group < end) {
        std::size_t groupEnd = std::min({having < group ? end : having, order, end});
        for (Nodes item : commaParts(s.span(group + 2, groupEnd))) {
            groupedExpressions_.insert(normalized(item));
            std::vector<Reference> refs;
            references(item, refs);
            Sequence one(item);
            if (refs.size() == 1 && one.size() == 2 * refs[0].size() - 1)
                if (auto place = resolve(refs[0]))
                    groupedColumns_.insert(place->first);
        }
    }

    // Each clause is checked whole before its error is raised: a column that
    // does not exist anywhere in the statement is the engine's to name.
    struct Refusal {
        std::string message;
    };
    std::optional<Refusal> refusal;
    bool unknown = false;
    std::set<std::string> aliases, items;
    for (Nodes item : commaParts(selectList)) {
        Nodes bare = withoutAlias(item);
        aliases.insert(aliasOf(item));
        items.insert(normalized(bare));
        if (groupedExpressions_.count(normalized(bare)))
            continue;
        std::string shown;
        if (firstUngrouped(bare, shown, unknown) && !refusal)
            refusal = Refusal{"Column '" + shown +
                              "' is invalid in the select list because it is not contained in "
                              "either an aggregate function or the GROUP BY clause."};
    }
    if (having < end) {
        std::size_t havingEnd = std::min({group > having ? group : end, order, end});
        std::string shown;
        if (firstUngrouped(s.span(having + 1, havingEnd), shown, unknown) && !refusal)
            refusal = Refusal{"Column '" + shown +
                              "' is invalid in the HAVING clause because it is not contained in "
                              "either an aggregate function or the GROUP BY clause."};
    }
    if (order < end && lastOfUnion) {
        for (Nodes item : commaParts(s.span(order + 2, end))) {
            Sequence o(item);
            std::size_t n = o.size();
            if (n > 0 && (o.at(n - 1).isWord("asc") || o.at(n - 1).isWord("desc")))
                --n;
            Nodes bare = o.span(0, n);
            if (n == 1 && (o.at(0).is(Kind::Number) ||
                           (isName(o.at(0)) && aliases.count(lowerCase(o.at(0).token.name())))))
                continue;
            if (groupedExpressions_.count(normalized(bare)) || items.count(normalized(bare)))
                continue;
            std::string shown;
            if (firstUngrouped(bare, shown, unknown) && !refusal)
                refusal = Refusal{"Column \"" + shown +
                                  "\" is invalid in the ORDER BY clause because it is not "
                                  "contained in either an aggregate function or the GROUP BY "
                                  "clause."};
        }
    }
    if (refusal && !unknown)
        throw statementError(refusal->message);
}

void checkLevel(Nodes nodes, const Catalog &catalog) {
    Sequence s(nodes);
    std::vector<std::size_t> selects;
    std::size_t partStart = 0;
    bool inPart = false;
    for (std::size_t k = 0; k <= s.size(); ++k) {
        bool ends = k == s.size() || s.at(k).isWord("union") || s.at(k).isWord("except") ||
                    s.at(k).isWord("intersect");
        if (ends) {
            if (inPart)
                SelectCheck(catalog).run(s, partStart, k, k == s.size());
            inPart = false;
            continue;
        }
        if (!inPart && s.at(k).isWord("select")) {
            partStart = k;
            inPart = true;
        }
    }
    for (const auto &n : nodes)
        if (n.group)
            checkLevel(n.children, catalog);
}

} // namespace

void checkGrouping(std::span<const Node> statement, const Catalog &catalog) {
    checkLevel(statement, catalog);
}

} // namespace ado::sql
