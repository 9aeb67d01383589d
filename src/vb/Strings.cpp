#include "vb/Strings.h"

#include "vb/Error.h"
#include "vb/Utf8.h"

#include <algorithm>

namespace vb {
namespace {

[[noreturn]] void invalidArgument(std::string_view source) {
    throw Error::standard(err::InvalidProcedureCall, std::string(source));
}

std::u32string lowered(std::u32string s) {
    for (char32_t &c : s)
        c = utf8::toLower(c);
    return s;
}

std::size_t clampedCount(long n, std::size_t size) {
    return std::min(static_cast<std::size_t>(n), size);
}

// Most texts (codes, numbers, dates, English names) are plain ASCII, where a
// byte is a character and case is a matter of 26 letters: the functions below
// work on their bytes then, and decode into characters only otherwise.
bool isAscii(std::string_view s) {
    return std::all_of(s.begin(), s.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char upperAscii(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}

char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

} // namespace

std::string Trim(std::string_view s) {
    std::size_t first = s.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return std::string();
    return std::string(s.substr(first, s.find_last_not_of(' ') - first + 1));
}

std::string LTrim(std::string_view s) {
    std::size_t first = s.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string() : std::string(s.substr(first));
}

std::string RTrim(std::string_view s) {
    std::size_t last = s.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string() : std::string(s.substr(0, last + 1));
}

std::string UCase(std::string_view s) {
    if (isAscii(s)) {
        std::string out(s);
        std::transform(out.begin(), out.end(), out.begin(), upperAscii);
        return out;
    }
    std::u32string chars = utf8::decode(s);
    for (char32_t &c : chars)
        c = utf8::toUpper(c);
    return utf8::encode(chars);
}

std::string LCase(std::string_view s) {
    if (isAscii(s)) {
        std::string out(s);
        std::transform(out.begin(), out.end(), out.begin(), lowerAscii);
        return out;
    }
    return utf8::encode(lowered(utf8::decode(s)));
}

std::string Left(std::string_view s, long length) {
    if (length < 0)
        invalidArgument("Left");
    if (isAscii(s))
        return std::string(s.substr(0, clampedCount(length, s.size())));
    std::u32string chars = utf8::decode(s);
    return utf8::encode(std::u32string_view(chars).substr(0, clampedCount(length, chars.size())));
}

std::string Right(std::string_view s, long length) {
    if (length < 0)
        invalidArgument("Right");
    std::u32string chars = utf8::decode(s);
    std::size_t n = clampedCount(length, chars.size());
    return utf8::encode(std::u32string_view(chars).substr(chars.size() - n));
}

std::string Mid(std::string_view s, long start) {
    if (start < 1)
        invalidArgument("Mid");
    std::u32string chars = utf8::decode(s);
    std::size_t from = clampedCount(start - 1, chars.size());
    return utf8::encode(std::u32string_view(chars).substr(from));
}

std::string Mid(std::string_view s, long start, long length) {
    if (start < 1 || length < 0)
        invalidArgument("Mid");
    std::u32string chars = utf8::decode(s);
    std::size_t from = clampedCount(start - 1, chars.size());
    return utf8::encode(std::u32string_view(chars).substr(from, static_cast<std::size_t>(length)));
}

long Len(std::string_view s) {
    return static_cast<long>(utf8::count(s));
}

long InStr(long start, std::string_view s, std::string_view find, Compare cmp) {
    if (start < 1)
        invalidArgument("InStr");
    if (isAscii(s) && isAscii(find)) {
        if (start > static_cast<long>(s.size()))
            return 0;
        if (find.empty())
            return start;
        std::string text(s);
        std::string wanted(find);
        if (cmp == Compare::Text) {
            std::transform(text.begin(), text.end(), text.begin(), lowerAscii);
            std::transform(wanted.begin(), wanted.end(), wanted.begin(), lowerAscii);
        }
        std::size_t at = text.find(wanted, static_cast<std::size_t>(start - 1));
        return at == std::string::npos ? 0 : static_cast<long>(at) + 1;
    }
    std::u32string text = utf8::decode(s);
    std::u32string wanted = utf8::decode(find);
    if (start > static_cast<long>(text.size()))
        return 0;
    if (wanted.empty())
        return start;
    if (cmp == Compare::Text) {
        text = lowered(std::move(text));
        wanted = lowered(std::move(wanted));
    }
    std::size_t at = text.find(wanted, static_cast<std::size_t>(start - 1));
    return at == std::u32string::npos ? 0 : static_cast<long>(at) + 1;
}

long InStr(std::string_view s, std::string_view find, Compare cmp) {
    return InStr(1, s, find, cmp);
}

std::string Replace(std::string_view s, std::string_view find, std::string_view with) {
    if (find.empty())
        return std::string(s);
    // Byte search is safe here: a well-formed UTF-8 text cannot match in the
    // middle of another character.
    std::string out;
    std::size_t pos = 0;
    for (std::size_t at; (at = s.find(find, pos)) != std::string_view::npos; pos = at + find.size())
        out.append(s.substr(pos, at - pos)).append(with);
    return out.append(s.substr(pos));
}

std::string Space(long n) {
    if (n < 0)
        invalidArgument("Space");
    return std::string(static_cast<std::size_t>(n), ' ');
}

std::string String(long n, std::string_view ch) {
    if (n < 0 || ch.empty())
        invalidArgument("String");
    std::string one = Left(ch, 1);
    std::string out;
    out.reserve(one.size() * static_cast<std::size_t>(n));
    for (long i = 0; i < n; ++i)
        out += one;
    return out;
}

std::vector<std::string> Split(std::string_view s, std::string_view delimiter) {
    std::vector<std::string> parts;
    if (s.empty())
        return parts;
    if (delimiter.empty())
        return {std::string(s)};
    std::size_t pos = 0;
    for (std::size_t at; (at = s.find(delimiter, pos)) != std::string_view::npos;
         pos = at + delimiter.size())
        parts.emplace_back(s.substr(pos, at - pos));
    parts.emplace_back(s.substr(pos));
    return parts;
}

std::string Join(const std::vector<std::string> &parts, std::string_view delimiter) {
    std::string out;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0)
            out += delimiter;
        out += parts[i];
    }
    return out;
}

std::string Chr(int code) {
    if (code < 0 || code > 255)
        invalidArgument("Chr");
    return utf8::encode(std::u32string(1, static_cast<char32_t>(code)));
}

int Asc(std::string_view s) {
    if (s.empty())
        invalidArgument("Asc");
    char32_t c = utf8::decode(s).front();
    if (c >= 0xDC80 && c <= 0xDCFF)
        return static_cast<int>(c - 0xDC00);
    // A character outside the single-byte code page read as "?", as it did there.
    return c <= 0xFF ? static_cast<int>(c) : '?';
}

int StrComp(std::string_view a, std::string_view b, Compare cmp) {
    std::u32string x = utf8::decode(a);
    std::u32string y = utf8::decode(b);
    if (cmp == Compare::Text) {
        x = lowered(std::move(x));
        y = lowered(std::move(y));
    }
    int c = x.compare(y);
    return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

} // namespace vb
