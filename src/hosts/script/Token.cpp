#include "hosts/script/Token.h"

#include "hosts/script/Failure.h"

namespace script {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

char unescape(char c, int line) {
    switch (c) {
    case '"':
    case '\\':
        return c;
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        throw BadScript(line, std::string("unknown escape \\") + c + " in a quoted text");
    }
}

} // namespace

std::vector<Token> tokenize(std::string_view text, int line) {
    std::vector<Token> tokens;
    std::size_t i = 0;
    while (i < text.size()) {
        if (isBlank(text[i])) {
            ++i;
            continue;
        }
        Token token;
        token.offset = i;
        if (text[i] == '"') {
            token.quoted = true;
            ++i;
            for (;;) {
                if (i >= text.size()) {
                    throw BadScript(line, "a quoted text is not closed");
                }
                char c = text[i++];
                if (c == '"') {
                    break;
                }
                if (c == '\\') {
                    if (i >= text.size()) {
                        throw BadScript(line, "a quoted text is not closed");
                    }
                    c = unescape(text[i++], line);
                }
                token.text += c;
            }
            if (i < text.size() && !isBlank(text[i])) {
                throw BadScript(line, "a blank must follow a quoted text");
            }
        } else {
            while (i < text.size() && !isBlank(text[i])) {
                token.text += text[i++];
            }
        }
        tokens.push_back(std::move(token));
    }
    return tokens;
}

std::string inQuotes(std::string_view text) {
    std::string out = "\"";
    for (char c : text) {
        switch (c) {
        case '"':
            out += "\\\"";
            break;
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            out += c;
        }
    }
    return out + "\"";
}

} // namespace script
