#include "ado/sql/Tokenizer.h"

#include "ado/sql/FrontError.h"

#include <cctype>
#include <string>

namespace ado::sql {

namespace {

bool isNameStart(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) || c == '_' || c == '#' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isNamePart(char c) {
    return isNameStart(c) || std::isdigit(static_cast<unsigned char>(c)) || c == '$' || c == '@';
}

bool isDigit(char c) {
    return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

[[noreturn]] void unclosed(std::string_view rest) {
    throw statementError("Unclosed quotation mark after the character string '" +
                         std::string(rest.substr(0, 40)) + "'.");
}

// Length of the quoted piece at the start of `s`, which begins with `open`;
// a doubled closing character stands for itself.
std::size_t quotedLength(std::string_view s, char close) {
    for (std::size_t i = 1; i < s.size(); ++i) {
        if (s[i] != close)
            continue;
        if (i + 1 < s.size() && s[i + 1] == close) {
            ++i;
            continue;
        }
        return i + 1;
    }
    unclosed(s.substr(1));
}

std::size_t numberLength(std::string_view s) {
    std::size_t i = 0;
    while (i < s.size() && isDigit(s[i]))
        ++i;
    if (i < s.size() && s[i] == '.') {
        ++i;
        while (i < s.size() && isDigit(s[i]))
            ++i;
    }
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < s.size() && (s[j] == '+' || s[j] == '-'))
            ++j;
        if (j < s.size() && isDigit(s[j])) {
            while (j < s.size() && isDigit(s[j]))
                ++j;
            i = j;
        }
    }
    return i;
}

std::size_t symbolLength(std::string_view s) {
    static constexpr std::string_view pairs[] = {"<>", "<=", ">=", "!=", "!<", "!>", "||"};
    for (auto p : pairs)
        if (s.substr(0, 2) == p)
            return 2;
    return 1;
}

Token next(std::string_view s) {
    using K = Token::Kind;
    const char c = s[0];
    if (std::isspace(static_cast<unsigned char>(c))) {
        std::size_t i = 1;
        while (i < s.size() && std::isspace(static_cast<unsigned char>(s[i])))
            ++i;
        return {K::Space, s.substr(0, i)};
    }
    if (s.substr(0, 2) == "--")
        return {K::Comment, s.substr(0, s.find('\n'))};
    if (s.substr(0, 2) == "/*") {
        auto end = s.find("*/", 2);
        if (end == std::string_view::npos)
            throw statementError("Missing end comment mark '*/'.");
        return {K::Comment, s.substr(0, end + 2)};
    }
    if (c == '\'')
        return {K::String, s.substr(0, quotedLength(s, '\''))};
    if ((c == 'N' || c == 'n') && s.size() > 1 && s[1] == '\'')
        return {K::String, s.substr(0, 1 + quotedLength(s.substr(1), '\''))};
    if (c == '[')
        return {K::Quoted, s.substr(0, quotedLength(s, ']'))};
    if (c == '"')
        return {K::Quoted, s.substr(0, quotedLength(s, '"'))};
    if (isDigit(c) || (c == '.' && s.size() > 1 && isDigit(s[1])))
        return {K::Number, s.substr(0, numberLength(s))};
    if (c == '@') {
        std::size_t i = 1;
        while (i < s.size() && isNamePart(s[i]))
            ++i;
        return {K::Variable, s.substr(0, i)};
    }
    if (isNameStart(c)) {
        std::size_t i = 1;
        while (i < s.size() && isNamePart(s[i]))
            ++i;
        return {K::Word, s.substr(0, i)};
    }
    return {K::Symbol, s.substr(0, symbolLength(s))};
}

} // namespace

bool Token::isWord(std::string_view word) const {
    if (kind != Kind::Word || text.size() != word.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(text[i])) !=
            std::tolower(static_cast<unsigned char>(word[i])))
            return false;
    return true;
}

std::string Token::name() const {
    if (kind != Kind::Quoted)
        return std::string(text);
    char close = text.front() == '[' ? ']' : '"';
    std::string out;
    for (std::size_t i = 1; i + 1 < text.size(); ++i) {
        out += text[i];
        if (text[i] == close)
            ++i;
    }
    return out;
}

std::string Token::stringValue() const {
    std::string_view body = text;
    if (body.front() != '\'')
        body.remove_prefix(1); // the N of N'...'
    body = body.substr(1, body.size() - 2);
    std::string out;
    out.reserve(body.size());
    for (std::size_t i = 0; i < body.size(); ++i) {
        out += body[i];
        if (body[i] == '\'')
            ++i;
    }
    return out;
}

std::vector<Token> tokenize(std::string_view text) {
    std::vector<Token> tokens;
    while (!text.empty()) {
        Token t = next(text);
        text.remove_prefix(t.text.size());
        tokens.push_back(t);
    }
    return tokens;
}

} // namespace ado::sql
