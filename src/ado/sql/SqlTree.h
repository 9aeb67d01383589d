// Statement tokens grouped by parentheses, the shape the translator works on.
#pragma once

#include "ado/sql/Tokenizer.h"

#include <span>
#include <string>
#include <vector>

namespace ado::sql {

/// A token, or a parenthesised group of nodes (`token` is then the opening
/// parenthesis and `children` what stands between it and its partner).
struct Node {
    Token token;
    bool group = false;
    std::vector<Node> children;

    bool significant() const { return group || token.significant(); }
    bool isWord(std::string_view w) const { return !group && token.isWord(w); }
    bool isSymbol(std::string_view s) const { return !group && token.isSymbol(s); }
    bool is(Token::Kind k) const { return !group && token.kind == k; }
    /// The text of the node as written, groups with their parentheses.
    std::string text() const;
};

/// Groups the tokens of a statement by parentheses. A parenthesis without
/// its partner raises -2147217900 "Incorrect syntax near ...".
std::vector<Node> buildTree(const std::vector<Token> &tokens);

/// Words that are never a column, a table alias or a column alias (any letter case).
bool isReservedWord(std::string_view word);

/// The positions of the significant nodes of a sequence, in order.
std::vector<std::size_t> significantPositions(std::span<const Node> nodes);

} // namespace ado::sql
