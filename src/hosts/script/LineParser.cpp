#include "hosts/script/LineParser.h"

#include "hosts/script/Text.h"

#include "hosts/script/Failure.h"

#include <cctype>
#include <charconv>
#include <utility>

namespace script {

namespace {

bool isName(std::string_view s) {
    if (s.empty() || std::isdigit(static_cast<unsigned char>(s.front()))) {
        return false;
    }
    for (char c : s) {
        if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_') {
            return false;
        }
    }
    return true;
}

} // namespace

LineParser::LineParser(std::string_view text, int line, std::vector<Token> tokens)
    : text_(text), line_(line), tokens_(std::move(tokens)) {}

void LineParser::fail(const std::string &message) const {
    throw BadScript(line_, message);
}

const Token &LineParser::take(std::string_view what) {
    if (atEnd()) {
        fail("missing " + std::string(what));
    }
    return tokens_[next_++];
}

std::string LineParser::keyword() {
    const Token &t = take("a command");
    if (t.quoted) {
        fail("a command word was expected, not the text " + inQuotes(t.text));
    }
    return lowerCase(t.text);
}

bool LineParser::atKeyword(std::string_view word) {
    if (atEnd() || tokens_[next_].quoted || lowerCase(tokens_[next_].text) != word) {
        return false;
    }
    ++next_;
    return true;
}

std::string LineParser::word(std::string_view what) {
    return take(what).text;
}

int LineParser::number(std::string_view what) {
    const Token &t = take(what);
    int value = 0;
    const char *first = t.text.data();
    const char *last = first + t.text.size();
    auto [end, ec] = std::from_chars(first, last, value);
    if (t.quoted || ec != std::errc() || end != last) {
        fail(std::string(what) + " must be a whole number, not " + inQuotes(t.text));
    }
    return value;
}

std::string LineParser::restOfLine(std::string_view what) {
    if (atEnd()) {
        fail("missing " + std::string(what));
    }
    std::string rest(trimBlanks(text_.substr(tokens_[next_].offset)));
    next_ = tokens_.size();
    return rest;
}

std::string LineParser::optionalName() {
    return atEnd() ? std::string() : take("a name").text;
}

void LineParser::end() {
    if (!atEnd()) {
        fail("unexpected " + inQuotes(tokens_[next_].text) + " at the end of the line");
    }
}

ControlRef LineParser::parseControl(std::string_view text) const {
    ControlRef ref;
    if (auto bang = text.find('!'); bang != std::string_view::npos) {
        ref.form = std::string(text.substr(0, bang));
        text.remove_prefix(bang + 1);
        if (!isName(ref.form)) {
            fail("bad form name " + inQuotes(ref.form));
        }
    }
    if (auto open = text.find('('); open != std::string_view::npos) {
        std::string_view index = text.substr(open + 1);
        if (index.size() < 2 || index.back() != ')') {
            fail("bad control index in " + inQuotes(text));
        }
        index.remove_suffix(1);
        auto [end, ec] = std::from_chars(index.data(), index.data() + index.size(), ref.index);
        if (ec != std::errc() || end != index.data() + index.size() || ref.index < 0) {
            fail("bad control index in " + inQuotes(text));
        }
        text = text.substr(0, open);
    }
    if (!isName(text)) {
        fail("bad control name " + inQuotes(text));
    }
    ref.name = std::string(text);
    return ref;
}

ControlRef LineParser::control() {
    const Token &t = take("a control");
    if (t.quoted) {
        fail("a control name was expected, not the text " + inQuotes(t.text));
    }
    return parseControl(t.text);
}

ControlRef LineParser::controlWithProperty() {
    const Token &t = take("a control");
    std::string_view text = t.text;
    property_.clear();
    // The control part ends at the first dot after its index, if any:
    // "lvwRequest.ListItems.Count" names the property "ListItems.Count".
    std::size_t from = text.find(')');
    std::size_t dot = text.find('.', from == std::string_view::npos ? 0 : from);
    if (dot != std::string_view::npos) {
        property_ = std::string(text.substr(dot + 1));
        text = text.substr(0, dot);
        if (property_.empty()) {
            fail("missing the property after " + inQuotes(t.text));
        }
    }
    return parseControl(text);
}

std::vector<std::string> LineParser::blockCells(std::string_view text) {
    char separator = text.find('\t') != std::string_view::npos ? '\t' : '|';
    std::vector<std::string> cells;
    std::size_t start = 0;
    for (;;) {
        std::size_t end = text.find(separator, start);
        std::string_view cell = trimBlanks(text.substr(
            start, end == std::string_view::npos ? std::string_view::npos : end - start));
        cells.emplace_back(cell == "\"\"" ? std::string_view() : cell);
        if (end == std::string_view::npos) {
            return cells;
        }
        start = end + 1;
    }
}

} // namespace script
