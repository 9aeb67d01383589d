#include "services/TableExpression.h"

#include "vb/Strings.h"

#include <cctype>

namespace services {

namespace {

bool isWordCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '@' || c == '#' ||
           c == '$';
}

// Length of the quoted part that starts at `at` (a ' or a "), doubled quotes included.
std::size_t quotedLength(std::string_view text, std::size_t at) {
    const char quote = text[at];
    std::size_t i = at + 1;
    while (i < text.size()) {
        if (text[i] == quote) {
            if (i + 1 < text.size() && text[i + 1] == quote) {
                i += 2;
                continue;
            }
            return i + 1 - at;
        }
        ++i;
    }
    return text.size() - at;
}

} // namespace

bool hasWhereClause(std::string_view tableExpression) {
    int depth = 0;
    std::size_t i = 0;
    while (i < tableExpression.size()) {
        const char c = tableExpression[i];
        if (c == '\'' || c == '"') {
            i += quotedLength(tableExpression, i);
        } else if (c == '(' || c == '[') {
            ++depth;
            ++i;
        } else if (c == ')' || c == ']') {
            --depth;
            ++i;
        } else if (isWordCharacter(c)) {
            std::size_t end = i;
            while (end < tableExpression.size() && isWordCharacter(tableExpression[end])) {
                ++end;
            }
            if (depth == 0 &&
                vb::StrComp(tableExpression.substr(i, end - i), "where", vb::Compare::Text) == 0) {
                return true;
            }
            i = end;
        } else {
            ++i;
        }
    }
    return false;
}

std::string withCondition(std::string_view tableExpression, std::string_view condition) {
    std::string text(tableExpression);
    if (vb::Trim(condition).empty()) {
        return text;
    }
    text += hasWhereClause(tableExpression) ? " and " : " where ";
    text += condition;
    return text;
}

} // namespace services
