#include "ado/sql/SqlTree.h"

#include "ado/sql/Catalog.h"
#include "ado/sql/FrontError.h"

#include <set>

namespace ado::sql {

std::string Node::text() const {
    if (!group)
        return std::string(token.text);
    std::string out = "(";
    for (const auto &child : children)
        out += child.text();
    return out + ")";
}

namespace {

const std::set<std::string> reservedWords = {
    "all",       "and",    "any",     "as",     "asc",   "begin",    "between", "by",    "case",
    "collate",   "cross",  "default", "delete", "desc",  "distinct", "else",    "end",   "escape",
    "except",    "exists", "from",    "full",   "group", "having",   "in",      "inner", "insert",
    "intersect", "into",   "is",      "join",   "left",  "like",     "limit",   "not",   "null",
    "on",        "or",     "order",   "outer",  "right", "select",   "set",     "some",  "then",
    "top",       "union",  "update",  "values", "when",  "where",    "with"};

// Deeper than any statement a person writes, within what SQLite's parser
// takes, and far from the depth at which building (and every later walk of)
// the tree would run out of stack.
constexpr int deepestNesting = 64;

std::vector<Node> buildLevel(const std::vector<Token> &tokens, std::size_t &i, int depth) {
    if (depth > deepestNesting)
        throw statementError("Some part of your SQL statement is nested too deeply. Rewrite the "
                             "query or break it up into smaller queries.");
    const bool nested = depth > 0;
    std::vector<Node> nodes;
    while (i < tokens.size()) {
        const Token &t = tokens[i++];
        if (t.isSymbol(")")) {
            if (!nested)
                throw statementError("Incorrect syntax near ')'.");
            return nodes;
        }
        Node node{t, false, {}};
        if (t.isSymbol("(")) {
            node.group = true;
            node.children = buildLevel(tokens, i, depth + 1);
        }
        nodes.push_back(std::move(node));
    }
    if (nested)
        throw statementError("Incorrect syntax near '('.");
    return nodes;
}

} // namespace

std::vector<Node> buildTree(const std::vector<Token> &tokens) {
    std::size_t i = 0;
    return buildLevel(tokens, i, 0);
}

bool isReservedWord(std::string_view word) {
    return reservedWords.count(lowerCase(word)) > 0;
}

std::vector<std::size_t> significantPositions(std::span<const Node> nodes) {
    std::vector<std::size_t> out;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (nodes[i].significant())
            out.push_back(i);
    return out;
}

} // namespace ado::sql
