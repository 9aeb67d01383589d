#include "ado/sqlite/SqlTree.h"

#include "ado/sqlite/ErrorMapping.h"

namespace ado::sqlite {

std::string Node::text() const {
    if (!group)
        return std::string(token.text);
    std::string out = "(";
    for (const auto &child : children)
        out += child.text();
    return out + ")";
}

namespace {

std::vector<Node> buildLevel(const std::vector<Token> &tokens, std::size_t &i, bool nested) {
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
            node.children = buildLevel(tokens, i, true);
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
    return buildLevel(tokens, i, false);
}

std::vector<std::size_t> significantPositions(std::span<const Node> nodes) {
    std::vector<std::size_t> out;
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (nodes[i].significant())
            out.push_back(i);
    return out;
}

} // namespace ado::sqlite
