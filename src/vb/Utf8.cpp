#include "vb/Utf8.h"

namespace vb::utf8 {
namespace {

constexpr char32_t strayByteBase = 0xDC00;

bool isContinuation(unsigned char b) {
    return (b & 0xC0) == 0x80;
}

/// Length of the sequence that a lead byte opens, 0 when it opens none.
int sequenceLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead <= 0xDF)
        return 2;
    if (lead >= 0xE0 && lead <= 0xEF)
        return 3;
    if (lead >= 0xF0 && lead <= 0xF4)
        return 4;
    return 0;
}

/// The character at text[pos] if the bytes there form a well-formed sequence
/// of `length` bytes; 0xFFFFFFFF otherwise.
char32_t decodeSequence(std::string_view text, std::size_t pos, int length) {
    constexpr char32_t invalid = 0xFFFFFFFF;
    if (length == 0 || pos + length > text.size())
        return invalid;
    auto lead = static_cast<unsigned char>(text[pos]);
    if (length == 1)
        return lead;
    char32_t c = lead & (0x7F >> length);
    for (int i = 1; i < length; ++i) {
        auto b = static_cast<unsigned char>(text[pos + i]);
        if (!isContinuation(b))
            return invalid;
        c = (c << 6) | (b & 0x3F);
    }
    const char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (c < smallest[length] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
        return invalid;
    return c;
}

void append(std::string &out, char32_t c) {
    if (c < 0x80) {
        out += static_cast<char>(c);
    } else if (c < 0x800) {
        out += static_cast<char>(0xC0 | (c >> 6));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        out += static_cast<char>(0xE0 | (c >> 12));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (c >> 18));
        out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (c & 0x3F));
    }
}

/// Latin Extended-A pairs capitals and small letters side by side, the capital
/// on the even code in some runs and on the odd code in others.
bool isLatinExtendedCapital(char32_t c, bool &inPair) {
    inPair = c != 0x130 && c != 0x131; // the Turkish i has no partner in the run
    if (!inPair)
        return false;
    if ((c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177))
        return c % 2 == 0;
    if ((c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E))
        return c % 2 == 1;
    inPair = false;
    return false;
}

} // namespace

std::size_t count(std::string_view text) {
    std::size_t n = 0;
    std::size_t pos = 0;
    while (pos < text.size()) {
        const auto lead = static_cast<unsigned char>(text[pos]);
        if (lead < 0x80) {
            ++pos;
        } else {
            const int length = sequenceLength(lead);
            // A stray byte is a character of its own, as in decode.
            pos += decodeSequence(text, pos, length) == 0xFFFFFFFF ? 1
                                                                     : static_cast<std::size_t>(length);
        }
        ++n;
    }
    return n;
}

std::u32string decode(std::string_view text) {
    std::u32string out;
    out.reserve(text.size());
    std::size_t pos = 0;
    while (pos < text.size()) {
        int length = sequenceLength(static_cast<unsigned char>(text[pos]));
        char32_t c = decodeSequence(text, pos, length);
        if (c == 0xFFFFFFFF) {
            out += strayByteBase + static_cast<unsigned char>(text[pos]);
            ++pos;
        } else {
            out += c;
            pos += length;
        }
    }
    return out;
}

std::string encode(std::u32string_view chars) {
    std::string out;
    out.reserve(chars.size());
    for (char32_t c : chars) {
        if (c >= strayByteBase + 0x80 && c <= strayByteBase + 0xFF)
            out += static_cast<char>(c - strayByteBase);
        else
            append(out, c);
    }
    return out;
}

char32_t toUpper(char32_t c) {
    if (c >= 'a' && c <= 'z')
        return c - 32;
    if (c < 0x80)
        return c;
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7)
        return c - 32;
    if (c == 0xFF)
        return 0x178;
    bool inPair = false;
    if (!isLatinExtendedCapital(c, inPair) && inPair)
        return c - 1;
    if (c >= 0x3B1 && c <= 0x3C9 && c != 0x3C2)
        return c - 32;
    if (c >= 0x430 && c <= 0x44F)
        return c - 32;
    if (c >= 0x450 && c <= 0x45F)
        return c - 80;
    return c;
}

char32_t toLower(char32_t c) {
    if (c >= 'A' && c <= 'Z')
        return c + 32;
    if (c < 0x80)
        return c;
    if (c >= 0xC0 && c <= 0xDE && c != 0xD7)
        return c + 32;
    if (c == 0x178)
        return 0xFF;
    bool inPair = false;
    if (isLatinExtendedCapital(c, inPair) && inPair)
        return c + 1;
    if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2)
        return c + 32;
    if (c >= 0x410 && c <= 0x42F)
        return c + 32;
    if (c >= 0x400 && c <= 0x40F)
        return c + 80;
    return c;
}

} // namespace vb::utf8
