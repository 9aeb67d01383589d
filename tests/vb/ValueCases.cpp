#include "ValueCases.h"

#include "vb/Conversion.h"
#include "vb/Format.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace vbtest {
namespace {

[[noreturn]] void bad(int line, const std::string &why) {
    throw std::runtime_error("case file line " + std::to_string(line) + ": " + why);
}

std::string readQuoted(std::string_view s, std::size_t &i, int line) {
    std::string out;
    for (++i; i < s.size() && s[i] != '"'; ++i) {
        if (s[i] != '\\') {
            out += s[i];
            continue;
        }
        if (++i == s.size())
            bad(line, "backslash at the end");
        char c = s[i];
        out += c == 't' ? '\t' : c == 'r' ? '\r' : c == 'n' ? '\n' : c;
    }
    if (i == s.size())
        bad(line, "unclosed text");
    ++i;
    return out;
}

vb::Variant dateLiteral(const std::string &text, int line) {
    int y = 0, mo = 0, d = 0, h = 0, mi = 0, s = 0;
    int n = std::sscanf(text.c_str(), "%d-%d-%d %d:%d:%d", &y, &mo, &d, &h, &mi, &s);
    if (n != 3 && n != 6)
        bad(line, "date literal " + text);
    return vb::Variant(vb::DateSerial(y, mo, d) + vb::TimeSerial(h, mi, s).serial);
}

vb::Variant wordLiteral(const std::string &word, int line) {
    if (word == "True")
        return vb::Variant(true);
    if (word == "False")
        return vb::Variant(false);
    if (word == "Null")
        return vb::Variant::null();
    if (word == "Empty")
        return vb::Variant();
    char suffix = word.back();
    std::string digits = word;
    if (suffix == '%' || suffix == '#')
        digits.pop_back();
    std::size_t used = 0;
    double value = std::stod(digits, &used);
    if (used != digits.size())
        bad(line, "bad literal " + word);
    if (suffix == '%')
        return vb::Variant(static_cast<std::int16_t>(value));
    bool fitsLong = value >= -2147483648.0 && value <= 2147483647.0;
    if (suffix == '#' || digits.find_first_of(".eE") != std::string::npos || !fitsLong)
        return vb::Variant(value);
    return vb::Variant(static_cast<std::int32_t>(value));
}

vb::Variant readLiteral(std::string_view s, std::size_t &i, int line) {
    if (s[i] == '"')
        return vb::Variant(readQuoted(s, i, line));
    if (s[i] == '#') {
        std::size_t close = s.find('#', i + 1);
        if (close == std::string_view::npos)
            bad(line, "unclosed date");
        std::string text(s.substr(i + 1, close - i - 1));
        i = close + 1;
        return dateLiteral(text, line);
    }
    std::size_t end = s.find_first_of(" \t", i);
    if (end == std::string_view::npos)
        end = s.size();
    std::string word(s.substr(i, end - i));
    i = end;
    return wordLiteral(word, line);
}

void skipBlanks(std::string_view s, std::size_t &i) {
    while (i < s.size() && (s[i] == ' ' || s[i] == '\t'))
        ++i;
}

ValueCase parseLine(std::string_view s, int line) {
    ValueCase c;
    c.line = line;
    std::size_t i = 0;
    skipBlanks(s, i);
    std::size_t end = s.find_first_of(" \t", i);
    if (end == std::string_view::npos)
        bad(line, "no arguments");
    c.function = std::string(s.substr(i, end - i));
    for (i = end, skipBlanks(s, i); i < s.size() && s.substr(i, 2) != "=>"; skipBlanks(s, i))
        c.args.push_back(readLiteral(s, i, line));
    if (i >= s.size())
        bad(line, "no =>");
    i += 2;
    skipBlanks(s, i);
    if (i < s.size() && s[i] == '!')
        c.expected = std::string(s.substr(i));
    else
        c.expected = render(readLiteral(s, i, line));
    skipBlanks(s, i);
    if (c.expected[0] != '!' && i < s.size())
        bad(line, "text after the expected value");
    return c;
}

} // namespace

std::vector<ValueCase> readValueCases(const std::string &path) {
    std::ifstream in(path);
    if (!in)
        throw std::runtime_error("cannot open " + path);
    std::vector<ValueCase> cases;
    std::string text;
    for (int line = 1; std::getline(in, text); ++line) {
        std::size_t first = text.find_first_not_of(" \t");
        if (first == std::string::npos || text[first] == '#')
            continue;
        cases.push_back(parseLine(text, line));
    }
    return cases;
}

std::string render(const vb::Variant &v) {
    switch (v.type()) {
    case vb::VarType::String:
        return "\"" + v.asString() + "\"";
    case vb::VarType::Date: {
        vb::Date d = v.asDate();
        return "#" + vb::Format(d, d.hasTime() ? "yyyy-mm-dd hh:nn:ss" : "yyyy-mm-dd") + "#";
    }
    case vb::VarType::Null:
        return "Null";
    case vb::VarType::Empty:
        return "Empty";
    default:
        return vb::CStr(v);
    }
}

} // namespace vbtest
