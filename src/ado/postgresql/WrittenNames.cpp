#include "ado/postgresql/WrittenNames.h"

#include "ado/sql/Catalog.h"
#include "ado/sql/SqlTree.h"

#include <span>

namespace ado::postgresql {

namespace {

using sql::Node;
using Kind = sql::Token::Kind;

bool isName(const Node &n) {
    return n.is(Kind::Word) && !sql::isReservedWord(n.token.text);
}

// Words that open a table constraint rather than a column definition.
bool opensConstraint(const Node &n) {
    for (std::string_view w : {"constraint", "primary", "unique", "foreign", "check", "exclude",
                               "like"})
        if (n.isWord(w))
            return true;
    return false;
}

// The significant nodes of a sequence.
std::vector<const Node *> significant(std::span<const Node> nodes) {
    std::vector<const Node *> out;
    for (const auto &n : nodes)
        if (n.significant())
            out.push_back(&n);
    return out;
}

// The parts of a sequence between its top-level commas, as significant nodes.
std::vector<std::vector<const Node *>> commaParts(std::span<const Node *const> nodes) {
    std::vector<std::vector<const Node *>> parts(1);
    for (const Node *n : nodes) {
        if (n->isSymbol(","))
            parts.emplace_back();
        else
            parts.back().push_back(n);
    }
    return parts;
}

// The name a select list item gives its column: its alias (with or without AS), or the
// last part of a plain (dotted) column; "" for an expression without an alias, whose last
// name follows an operator.
std::string itemName(const std::vector<const Node *> &item) {
    if (item.empty() || !isName(*item.back()))
        return "";
    const Node *before = item.size() > 1 ? item[item.size() - 2] : nullptr;
    if (before && before->is(Kind::Symbol) && !before->isSymbol("."))
        return "";
    return std::string(item.back()->token.text);
}

void addIfFolded(std::vector<WrittenName> &out, const std::string &relation,
                 const std::string &column) {
    if (!column.empty() && sql::lowerCase(column) != column)
        out.push_back({relation, column});
}

void tableColumns(const std::string &relation, const Node &definition,
                  std::vector<WrittenName> &out) {
    auto inside = significant(definition.children);
    for (const auto &part : commaParts(inside))
        if (!part.empty() && isName(*part.front()) && !opensConstraint(*part.front()))
            addIfFolded(out, relation, std::string(part.front()->token.text));
}

void viewColumns(const std::string &relation, std::span<const Node *const> rest,
                 std::vector<WrittenName> &out) {
    if (!rest.empty() && rest.front()->group) { // CREATE VIEW v (a, b) AS ...
        for (const auto &part : commaParts(significant(rest.front()->children)))
            if (part.size() == 1 && isName(*part.front()))
                addIfFolded(out, relation, std::string(part.front()->token.text));
        return;
    }
    std::size_t k = 0;
    while (k < rest.size() && !rest[k]->isWord("select"))
        ++k;
    if (++k < rest.size() && (rest[k]->isWord("distinct") || rest[k]->isWord("all")))
        ++k;
    std::size_t end = k;
    while (end < rest.size() && !rest[end]->isWord("from"))
        ++end;
    for (const auto &item : commaParts(rest.subspan(k, end - k)))
        addIfFolded(out, relation, itemName(item));
}

void statement(std::span<const Node *const> sig, std::vector<WrittenName> &out) {
    if (sig.size() < 3 || !sig[0]->isWord("create"))
        return;
    std::size_t k = 1;
    if (sig[k]->isWord("or") && k + 1 < sig.size() && sig[k + 1]->isWord("replace"))
        k += 2;
    bool table = sig[k]->isWord("table");
    bool view = sig[k]->isWord("view");
    if ((!table && !view) || k + 1 >= sig.size())
        return;
    ++k;
    if (sig[k]->isWord("if")) // IF NOT EXISTS
        k += 3;
    while (k + 2 < sig.size() && sig[k + 1]->isSymbol(".")) // a schema before the name
        k += 2;
    if (k >= sig.size() || !(sig[k]->is(Kind::Word) || sig[k]->is(Kind::Quoted)))
        return;
    std::string relation = sig[k]->token.name();
    if (table && k + 1 < sig.size() && sig[k + 1]->group)
        tableColumns(relation, *sig[k + 1], out);
    else if (view)
        viewColumns(relation, sig.subspan(k + 1), out);
}

} // namespace

std::vector<WrittenName> writtenNames(std::string_view ddl) {
    auto tokens = sql::tokenize(ddl);
    auto tree = sql::buildTree(tokens);
    std::vector<WrittenName> out;
    std::vector<const Node *> current;
    for (const auto &n : tree) {
        if (n.isSymbol(";")) {
            statement(current, out);
            current.clear();
        } else if (n.significant()) {
            current.push_back(&n);
        }
    }
    statement(current, out);
    return out;
}

std::string writtenNameComments(std::string_view ddl) {
    std::string out;
    for (const auto &name : writtenNames(ddl))
        out += "COMMENT ON COLUMN " + name.relation + "." + name.column + " IS '" + name.column +
               "';\n";
    return out;
}

} // namespace ado::postgresql
