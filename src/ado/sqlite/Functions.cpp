#include "ado/sqlite/Functions.h"

#include "ado/sql/ColumnType.h"
#include "ado/sql/DateText.h"
#include "ado/sqlite/ErrorMapping.h"
#include "ado/sqlite/ExactDecimal.h"
#include "ado/sqlite/ValueConversion.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Strings.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <limits>
#include <memory>
#include <new>
#include <optional>
#include <sqlite3.h>
#include <string>
#include <string_view>
#include <vector>

namespace ado::sqlite {

using sql::canonicalDate;

namespace {

std::string_view trimmedRight(const void *data, int size) {
    std::string_view s(static_cast<const char *>(data), static_cast<std::size_t>(size));
    while (!s.empty() && s.back() == ' ')
        s.remove_suffix(1);
    return s;
}

// The next character of UTF-8 text at i (moving i past it), folded to lower
// case: ASCII, Latin-1, Latin Extended-A, Greek and Cyrillic capitals, as
// SQL Server's case-insensitive collation takes 'É' for 'é'. A byte that
// starts no valid character stands for itself.
char32_t nextFolded(std::string_view s, std::size_t &i) {
    auto byte = [&](std::size_t k) { return static_cast<unsigned char>(s[k]); };
    char32_t c = byte(i);
    std::size_t n = 1;
    if (c >= 0x80) {
        if ((c & 0xE0) == 0xC0 && i + 1 < s.size() && (byte(i + 1) & 0xC0) == 0x80)
            c = ((c & 0x1F) << 6) | (byte(i + 1) & 0x3F), n = 2;
        else if ((c & 0xF0) == 0xE0 && i + 2 < s.size() && (byte(i + 1) & 0xC0) == 0x80 &&
                 (byte(i + 2) & 0xC0) == 0x80)
            c = ((c & 0x0F) << 12) | ((byte(i + 1) & 0x3F) << 6) | (byte(i + 2) & 0x3F), n = 3;
        else
            c = 0x110000 + c; // a stray byte: after every character, by its value
    }
    i += n;
    if (c >= 'A' && c <= 'Z')
        return c + 0x20;
    if (c < 0xC0)
        return c;
    if ((c <= 0xDE && c != 0xD7) || (c >= 0x391 && c <= 0x3AB && c != 0x3A2) ||
        (c >= 0x410 && c <= 0x42F))
        return c + 0x20;
    if (c >= 0x400 && c <= 0x40F)
        return c + 0x50;
    if (c == 0x178)
        return 0xFF;
    bool pairs = (c >= 0x100 && c <= 0x137 && c != 0x130) || (c >= 0x14A && c <= 0x177);
    if (pairs && c % 2 == 0)
        return c + 1;
    if (((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E)) && c % 2 == 1)
        return c + 1;
    return c;
}

int compareCitext(void *, int sizeA, const void *a, int sizeB, const void *b) {
    auto x = trimmedRight(a, sizeA), y = trimmedRight(b, sizeB);
    std::size_t i = 0, j = 0;
    while (i < x.size() && j < y.size()) {
        char32_t cx = nextFolded(x, i);
        char32_t cy = nextFolded(y, j);
        if (cx != cy)
            return cx < cy ? -1 : 1;
    }
    return i == x.size() && j == y.size() ? 0 : (i == x.size() ? -1 : 1);
}

std::string textOf(sqlite3_value *v) {
    const auto *p = sqlite3_value_text(v);
    return p ? std::string(reinterpret_cast<const char *>(p),
                           static_cast<std::size_t>(sqlite3_value_bytes(v)))
             : std::string();
}

bool anyNull(int argc, sqlite3_value **argv) {
    for (int i = 0; i < argc; ++i)
        if (sqlite3_value_type(argv[i]) == SQLITE_NULL)
            return true;
    return false;
}

void resultText(sqlite3_context *ctx, const std::string &s) {
    sqlite3_result_text64(ctx, s.data(), s.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
}

void resultStored(sqlite3_context *ctx, const StoredValue &value) {
    if (const auto *i = std::get_if<std::int64_t>(&value))
        sqlite3_result_int64(ctx, *i);
    else if (const auto *d = std::get_if<double>(&value))
        sqlite3_result_double(ctx, *d);
    else if (const auto *s = std::get_if<std::string>(&value))
        resultText(ctx, *s);
    else
        sqlite3_result_null(ctx);
}

// Runs a function body; a vb::Error becomes the statement's error message.
template <class Body> void guarded(sqlite3_context *ctx, Body &&body) {
    try {
        body();
    } catch (const vb::Error &e) {
        sqlite3_result_error(ctx, e.description().c_str(), -1);
    }
}

void checkLength(std::int64_t n, const char *function) {
    if (n < 0)
        throw vb::Error(0, "",
                        std::string("Invalid length parameter passed to the ") + function +
                            " function.");
}

void svLen(sqlite3_context *ctx, int argc, sqlite3_value **argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    sqlite3_result_int64(ctx, vb::Len(vb::RTrim(textOf(argv[0]))));
}

void svLeft(sqlite3_context *ctx, int argc, sqlite3_value **argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    guarded(ctx, [&] {
        auto n = sqlite3_value_int64(argv[1]);
        checkLength(n, "left");
        resultText(ctx, vb::Left(textOf(argv[0]), static_cast<long>(n)));
    });
}

void svRight(sqlite3_context *ctx, int argc, sqlite3_value **argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    guarded(ctx, [&] {
        auto n = sqlite3_value_int64(argv[1]);
        checkLength(n, "right");
        resultText(ctx, vb::Right(textOf(argv[0]), static_cast<long>(n)));
    });
}

// substring(s, start, n): the characters from start to start + n - 1 that
// lie inside the text; a start before 1 eats into the length.
void svSubstring(sqlite3_context *ctx, int argc, sqlite3_value **argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    guarded(ctx, [&] {
        std::int64_t start = sqlite3_value_int64(argv[1]);
        std::int64_t n = sqlite3_value_int64(argv[2]);
        checkLength(n, "substring");
        std::int64_t end = start + n; // one past the last character
        start = std::max<std::int64_t>(start, 1);
        if (end <= start)
            return resultText(ctx, "");
        resultText(ctx, vb::Mid(textOf(argv[0]), static_cast<long>(start),
                                static_cast<long>(end - start)));
    });
}

// An operand of / and %: text that spells a number counts as that number,
// as SQL Server converts text next to a number; other text is refused.
sqlite3_value *arithmeticOperand(sqlite3_value *v) {
    if (sqlite3_value_numeric_type(v) == SQLITE_TEXT)
        throw conversionError("Conversion failed when converting the varchar value '" +
                              textOf(v) + "' to data type int.");
    return v;
}

// a / b and a % b as SQL Server computes them: a divisor of zero refuses the
// statement (SQLite would give null), an integer quotient is cut toward
// zero, and null on either side gives null without looking at the other.
// A third argument says that a side is decimal, whatever the values hold.
void divideOrModulo(sqlite3_context *ctx, int argc, sqlite3_value **argv, bool modulo) {
    if (anyNull(2, argv))
        return sqlite3_result_null(ctx);
    guarded(ctx, [&] {
        sqlite3_value *a = arithmeticOperand(argv[0]);
        sqlite3_value *b = arithmeticOperand(argv[1]);
        if (argc == 2 && sqlite3_value_type(a) == SQLITE_INTEGER &&
            sqlite3_value_type(b) == SQLITE_INTEGER) {
            std::int64_t x = sqlite3_value_int64(a), y = sqlite3_value_int64(b);
            if (y == 0)
                throw divideByZeroError();
            // The lowest value negated does not fit; the machine would trap on it.
            if (y == -1 && x == std::numeric_limits<std::int64_t>::min()) {
                if (!modulo)
                    throw conversionError(
                        "Arithmetic overflow error converting expression to data type bigint.");
                return sqlite3_result_int64(ctx, 0);
            }
            return sqlite3_result_int64(ctx, modulo ? x % y : x / y);
        }
        double x = sqlite3_value_double(a), y = sqlite3_value_double(b);
        if (y == 0)
            throw divideByZeroError();
        sqlite3_result_double(ctx, modulo ? std::fmod(x, y) : x / y);
    });
}

void svDivide(sqlite3_context *ctx, int argc, sqlite3_value **argv) {
    divideOrModulo(ctx, argc, argv, false);
}

void svModulo(sqlite3_context *ctx, int argc, sqlite3_value **argv) {
    divideOrModulo(ctx, argc, argv, true);
}

// sv_fit(n, x): a value written by an expression into a text column of n
// characters, held to the column as a written literal is: longer text
// refuses the statement, blanks past the end go without a word.
void svFit(sqlite3_context *ctx, int, sqlite3_value **argv) {
    if (sqlite3_value_type(argv[1]) == SQLITE_NULL)
        return sqlite3_result_null(ctx);
    guarded(ctx, [&] {
        ColumnType type = columnTypeOf("varchar");
        type.length = static_cast<int>(sqlite3_value_int64(argv[0]));
        std::string text = textOf(argv[1]);
        std::string fitted = sqlite::fittedText(text, type);
        if (fitted.size() == text.size())
            return sqlite3_result_value(ctx, argv[1]);
        resultText(ctx, fitted);
    });
}

// The bytes of the currency sign that text starts with (UTF-8), 0 for none:
// the signs SQL Server's money conversion takes, "$" and "£" and "€" among them.
std::size_t currencySignLength(std::string_view s) {
    auto byte = [&](std::size_t i) { return static_cast<unsigned char>(s[i]); };
    if (s.empty())
        return 0;
    if (s[0] == '$')
        return 1;
    char32_t c = 0;
    std::size_t n = 0;
    if ((byte(0) & 0xE0) == 0xC0 && s.size() >= 2)
        c = ((byte(0) & 0x1Fu) << 6) | (byte(1) & 0x3Fu), n = 2;
    else if ((byte(0) & 0xF0) == 0xE0 && s.size() >= 3)
        c = ((byte(0) & 0x0Fu) << 12) | ((byte(1) & 0x3Fu) << 6) | (byte(2) & 0x3Fu), n = 3;
    else
        return 0;
    bool sign = (c >= 0xA2 && c <= 0xA5) || c == 0x9F2 || c == 0x9F3 || c == 0xE3F || c == 0x17DB ||
                (c >= 0x20A0 && c <= 0x20AC) || c == 0xFDFC || c == 0xFE69 || c == 0xFF04 ||
                c == 0xFFE0 || c == 0xFFE1 || c == 0xFFE5 || c == 0xFFE6;
    return sign ? n : 0;
}

// SQL Server's isnumeric: blanks around, an optional currency sign and sign,
// digits with thousands commas, one point, an exponent with e or d. A lone
// sign, point or currency sign passes too, as it does there.
bool isNumericText(std::string_view s) {
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.front())))
        s.remove_prefix(1);
    while (!s.empty() && std::isspace(static_cast<unsigned char>(s.back())))
        s.remove_suffix(1);
    if (s.empty())
        return false;
    std::size_t i = currencySignLength(s);
    if (i < s.size() && (s[i] == '+' || s[i] == '-'))
        ++i;
    std::size_t digits = 0;
    bool point = false;
    for (; i < s.size(); ++i) {
        char c = s[i];
        if (std::isdigit(static_cast<unsigned char>(c)))
            ++digits;
        else if (c == ',' && !point)
            continue;
        else if (c == '.' && !point)
            point = true;
        else
            break;
    }
    if (i < s.size() && digits > 0 && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
        ++i;
        if (i < s.size() && (s[i] == '+' || s[i] == '-'))
            ++i;
        std::size_t exponentDigits = 0;
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i])))
            ++i, ++exponentDigits;
        if (exponentDigits == 0)
            return false;
    }
    return i == s.size();
}

void svIsnumeric(sqlite3_context *ctx, int, sqlite3_value **argv) {
    int type = sqlite3_value_type(argv[0]);
    if (type == SQLITE_NULL)
        return sqlite3_result_int(ctx, 0);
    if (type == SQLITE_INTEGER || type == SQLITE_FLOAT)
        return sqlite3_result_int(ctx, 1);
    sqlite3_result_int(ctx, isNumericText(textOf(argv[0])) ? 1 : 0);
}

void svGetdate(sqlite3_context *ctx, int, sqlite3_value **) {
    guarded(ctx, [&] { resultText(ctx, canonicalDate(vb::Now())); });
}

// A float as convert(varchar, x) writes it: at most 6 significant digits,
// and the exponent form, with three exponent digits, for numbers of more
// than 6 digits before the point or less than 0.0001 ("1.23457e+006").
std::string floatText(double x) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.6g", x);
    std::string text = buffer;
    auto e = text.find('e');
    if (e == std::string::npos)
        return text;
    std::string digits = text.substr(e + 2);
    while (digits.size() < 3)
        digits.insert(digits.begin(), '0');
    return text.substr(0, e + 2) + digits;
}

std::string numberText(sqlite3_value *v) {
    if (sqlite3_value_type(v) == SQLITE_INTEGER)
        return std::to_string(sqlite3_value_int64(v));
    if (sqlite3_value_type(v) == SQLITE_FLOAT)
        return floatText(sqlite3_value_double(v));
    return textOf(v);
}

StoredValue convertValue(const ColumnType &type, sqlite3_value *v) {
    int storage = sqlite3_value_type(v);
    bool isText = storage == SQLITE_TEXT || storage == SQLITE_BLOB;
    switch (type.kind) {
    case ColumnKind::Integer:
        if (isText)
            return textToInteger(textOf(v), type);
        // A number converts to an integer type by dropping its fraction.
        return numberToInteger(std::trunc(sqlite3_value_double(v)), type);
    case ColumnKind::Bit:
    case ColumnKind::Decimal:
    case ColumnKind::Money:
    case ColumnKind::Float:
        if (isText)
            return toStored(vb::Variant(textOf(v)), type);
        if (storage == SQLITE_INTEGER && type.kind != ColumnKind::Float)
            return exactNumeric(static_cast<std::int64_t>(sqlite3_value_int64(v)), type);
        return toStored(vb::Variant(sqlite3_value_double(v)), type);
    case ColumnKind::Date:
        if (isText)
            return toStored(vb::Variant(textOf(v)), type);
        // Numbers count days from 1 January 1900.
        return canonicalDate(vb::Date{sqlite3_value_double(v) + 2.0});
    case ColumnKind::Text: {
        std::string text = numberText(v);
        long length = type.length > 0 ? type.length : 30;
        return vb::Left(text, length);
    }
    case ColumnKind::Unknown:
        break;
    }
    throw vb::Error(0, "", "Type " + type.name + " is not a defined system type.");
}

void svConvert(sqlite3_context *ctx, int, sqlite3_value **argv) {
    if (sqlite3_value_type(argv[1]) == SQLITE_NULL)
        return sqlite3_result_null(ctx);
    guarded(ctx, [&] { resultStored(ctx, convertValue(columnTypeOf(textOf(argv[0])), argv[1])); });
}

// One piece of a LIKE pattern: a character, _ (any one), % (any run) or a
// bracket set of characters and ranges, [^...] for the ones outside it.
struct LikePiece {
    enum Kind { Character, One, Run, Set } kind;
    char32_t c = 0;
    std::vector<std::pair<char32_t, char32_t>> ranges;
    bool negated = false;
    bool matches(char32_t x) const {
        if (kind == Character)
            return x == c;
        if (kind != Set)
            return true;
        bool inside = false;
        for (auto [low, high] : ranges)
            inside = inside || (x >= low && x <= high);
        return inside != negated;
    }
};

// SQL Server's pattern language: a [ without its ] stands for itself, so does
// [[]; the escape character makes the next one plain.
std::vector<LikePiece> likePieces(std::string_view pattern, std::optional<char32_t> escape) {
    std::vector<LikePiece> pieces;
    std::size_t i = 0;
    while (i < pattern.size()) {
        char32_t c = nextFolded(pattern, i);
        if (escape && c == *escape && i < pattern.size()) {
            pieces.push_back({LikePiece::Character, nextFolded(pattern, i), {}, false});
        } else if (c == '%') {
            if (pieces.empty() || pieces.back().kind != LikePiece::Run)
                pieces.push_back({LikePiece::Run, 0, {}, false});
        } else if (c == '_') {
            pieces.push_back({LikePiece::One, 0, {}, false});
        } else if (c == '[' && pattern.find(']', i + 1) != std::string_view::npos) {
            LikePiece set{LikePiece::Set, 0, {}, false};
            std::size_t k = i;
            if (pattern[k] == '^') {
                set.negated = true;
                ++k;
            }
            bool first = true;
            while (k < pattern.size() && (first || pattern[k] != ']')) {
                first = false;
                char32_t low = nextFolded(pattern, k);
                char32_t high = low;
                if (k + 1 < pattern.size() && pattern[k] == '-' && pattern[k + 1] != ']') {
                    ++k;
                    high = nextFolded(pattern, k);
                }
                set.ranges.emplace_back(low, high);
            }
            i = k + 1; // past the ]
            pieces.push_back(std::move(set));
        } else {
            pieces.push_back({LikePiece::Character, c, {}, false});
        }
    }
    return pieces;
}

// The usual walk with one point to go back to: the last % and where it
// stood. `at(t)` is the t-th character of the text, folded.
template <class CharAt>
bool likeWalk(const std::vector<LikePiece> &pieces, std::size_t size, CharAt at) {
    std::size_t p = 0, t = 0, runAt = pieces.size(), runText = 0;
    while (t < size) {
        if (p < pieces.size() && pieces[p].kind == LikePiece::Run) {
            runAt = p++;
            runText = t;
        } else if (p < pieces.size() && pieces[p].matches(at(t))) {
            ++p;
            ++t;
        } else if (runAt != pieces.size()) {
            p = runAt + 1;
            t = ++runText;
        } else {
            return false;
        }
    }
    while (p < pieces.size() && pieces[p].kind == LikePiece::Run)
        ++p;
    return p == pieces.size();
}

// Trailing blanks of the text may be left unmatched, as SQL Server lets them
// be: 'abc  ' is like 'abc', where 'abc' is not like 'abc '.
template <class CharAt>
bool likeWalkBlanksAside(const std::vector<LikePiece> &pieces, std::size_t size, CharAt at) {
    for (;;) {
        if (likeWalk(pieces, size, at))
            return true;
        if (size == 0 || at(size - 1) != U' ')
            return false;
        --size;
    }
}

bool likeMatches(const std::vector<LikePiece> &pieces, std::string_view text) {
    // Text of ASCII alone (most item names) is tested byte by byte, folded
    // on the way; other text is folded character by character first.
    if (std::all_of(text.begin(), text.end(),
                    [](char c) { return static_cast<unsigned char>(c) < 0x80; }))
        return likeWalkBlanksAside(pieces, text.size(), [&](std::size_t t) -> char32_t {
            char c = text[t];
            return c >= 'A' && c <= 'Z' ? static_cast<char32_t>(c + 0x20)
                                        : static_cast<char32_t>(c);
        });
    thread_local std::vector<char32_t> chars; // one buffer for every row a statement tests
    chars.clear();
    for (std::size_t i = 0; i < text.size();)
        chars.push_back(nextFolded(text, i));
    return likeWalkBlanksAside(pieces, chars.size(), [&](std::size_t t) { return chars[t]; });
}

std::string_view textView(sqlite3_value *v) {
    const auto *p = sqlite3_value_text(v);
    return p ? std::string_view(reinterpret_cast<const char *>(p),
                                static_cast<std::size_t>(sqlite3_value_bytes(v)))
             : std::string_view();
}

// like(pattern, text [, escape]): SQLite's form of "text LIKE pattern". A
// pattern that stays the same from row to row (a literal) is taken apart
// once for the statement: a search over every item of a godown tests it on
// each of them.
void svLike(sqlite3_context *ctx, int argc, sqlite3_value **argv) {
    if (anyNull(argc, argv))
        return sqlite3_result_null(ctx);
    guarded(ctx, [&] {
        auto *kept = static_cast<std::vector<LikePiece> *>(sqlite3_get_auxdata(ctx, 0));
        if (!kept) {
            std::optional<char32_t> escape;
            if (argc == 3) {
                std::string e = textOf(argv[2]);
                std::size_t i = 0;
                if (e.empty())
                    throw vb::Error(0, "",
                                    "The invalid escape character \"\" was specified in a "
                                    "LIKE predicate.");
                escape = nextFolded(e, i);
            }
            auto pieces = std::make_unique<std::vector<LikePiece>>(
                likePieces(textOf(argv[0]), escape));
            sqlite3_set_auxdata(ctx, 0, pieces.release(), [](void *p) {
                delete static_cast<std::vector<LikePiece> *>(p);
            });
            // SQLite may drop it at once (a pattern that changes): then ask again.
            kept = static_cast<std::vector<LikePiece> *>(sqlite3_get_auxdata(ctx, 0));
            if (!kept) {
                sqlite3_result_int(ctx, likeMatches(likePieces(textOf(argv[0]), escape),
                                                    textView(argv[1])));
                return;
            }
        }
        sqlite3_result_int(ctx, likeMatches(*kept, textView(argv[1])));
    });
}

// The running sum of an aggregate, made in SQLite's zeroed memory at the
// first row: a mark byte, then the sum at its alignment (SQLite aligns the
// memory for 8 bytes, the 128-bit total wants 16).
DecimalSum *sumOf(sqlite3_context *ctx, bool make) {
    constexpr std::size_t room = 1 + alignof(DecimalSum) + sizeof(DecimalSum);
    auto *raw = static_cast<unsigned char *>(sqlite3_aggregate_context(ctx, make ? room : 0));
    if (!raw)
        return nullptr;
    void *place = raw + 1;
    std::size_t space = room - 1;
    auto *sum = static_cast<DecimalSum *>(
        std::align(alignof(DecimalSum), sizeof(DecimalSum), place, space));
    if (raw[0] == 0) {
        new (sum) DecimalSum();
        raw[0] = 1;
    }
    return sum;
}

void sumStep(sqlite3_context *ctx, int, sqlite3_value **argv) {
    guarded(ctx, [&] {
        switch (sqlite3_value_type(argv[0])) {
        case SQLITE_NULL:
            break;
        case SQLITE_INTEGER:
            sumOf(ctx, true)->add(static_cast<std::int64_t>(sqlite3_value_int64(argv[0])));
            break;
        case SQLITE_FLOAT:
            sumOf(ctx, true)->add(sqlite3_value_double(argv[0]));
            break;
        default:
            throw vb::Error(0, "", "Operand data type varchar is invalid for sum operator.");
        }
    });
}

void resultDecimal(sqlite3_context *ctx, const Decimal &value, bool integer) {
    if (integer && value.units >= std::numeric_limits<std::int64_t>::min() &&
        value.units <= std::numeric_limits<std::int64_t>::max())
        sqlite3_result_int64(ctx, static_cast<std::int64_t>(value.units));
    else
        sqlite3_result_double(ctx, toDouble(value));
}

void sumFinal(sqlite3_context *ctx) {
    const DecimalSum *sum = sumOf(ctx, false);
    if (!sum || sum->count() == 0)
        return sqlite3_result_null(ctx);
    resultDecimal(ctx, sum->total(), sum->integers());
}

// The mean of integers is an integer, cut towards zero; of other numbers it
// keeps at least 6 places, as SQL Server's avg of a numeric column does.
void avgFinal(sqlite3_context *ctx) {
    const DecimalSum *sum = sumOf(ctx, false);
    if (!sum || sum->count() == 0)
        return sqlite3_result_null(ctx);
    Decimal total = sum->total();
    if (sum->integers())
        return resultDecimal(ctx, {total.units / sum->count(), 0}, true);
    int places = std::max(total.scale, 6);
    Decimal widened{total.units, total.scale};
    for (; widened.scale < places + 1; ++widened.scale)
        widened.units *= 10;
    Decimal mean = rounded({widened.units / sum->count(), widened.scale}, places);
    resultDecimal(ctx, mean, false);
}

} // namespace

void registerFunctions(sqlite3 *db) {
    constexpr int pure = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
    sqlite3_create_collation(db, "CITEXT", SQLITE_UTF8, nullptr, &compareCitext);
    sqlite3_create_function(db, "sv_len", 1, pure, nullptr, &svLen, nullptr, nullptr);
    sqlite3_create_function(db, "sv_left", 2, pure, nullptr, &svLeft, nullptr, nullptr);
    sqlite3_create_function(db, "sv_right", 2, pure, nullptr, &svRight, nullptr, nullptr);
    sqlite3_create_function(db, "sv_substring", 3, pure, nullptr, &svSubstring, nullptr, nullptr);
    sqlite3_create_function(db, "sv_isnumeric", 1, pure, nullptr, &svIsnumeric, nullptr, nullptr);
    sqlite3_create_function(db, "sv_getdate", 0, SQLITE_UTF8, nullptr, &svGetdate, nullptr,
                            nullptr);
    sqlite3_create_function(db, "sv_convert", 2, pure, nullptr, &svConvert, nullptr, nullptr);
    sqlite3_create_function(db, "sv_fit", 2, pure, nullptr, &svFit, nullptr, nullptr);
    for (int arguments : {2, 3}) {
        sqlite3_create_function(db, "sv_divide", arguments, pure, nullptr, &svDivide, nullptr,
                                nullptr);
        sqlite3_create_function(db, "sv_modulo", arguments, pure, nullptr, &svModulo, nullptr,
                                nullptr);
    }
    // SQL Server's LIKE in place of SQLite's: bracket sets, and letter case
    // ignored beyond ASCII as the comparison of text ignores it.
    sqlite3_create_function(db, "like", 2, pure, nullptr, &svLike, nullptr, nullptr);
    sqlite3_create_function(db, "like", 3, pure, nullptr, &svLike, nullptr, nullptr);
    sqlite3_create_function(db, "sv_sum", 1, pure, nullptr, nullptr, &sumStep, &sumFinal);
    sqlite3_create_function(db, "sv_avg", 1, pure, nullptr, nullptr, &sumStep, &avgFinal);
}

} // namespace ado::sqlite
