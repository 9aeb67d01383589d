#include "forms/Utf8.h"

#include "vb/Utf8.h"

namespace forms::utf8 {

namespace {
bool isContinuation(unsigned char c) {
    return (c & 0xC0) == 0x80;
}
} // namespace

int length(std::string_view text) {
    int n = 0;
    for (unsigned char c : text) {
        if (!isContinuation(c)) {
            ++n;
        }
    }
    return n;
}

std::size_t offsetOf(std::string_view text, int index) {
    int seen = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!isContinuation(static_cast<unsigned char>(text[i]))) {
            if (seen == index) {
                return i;
            }
            ++seen;
        }
    }
    return text.size();
}

std::string substr(std::string_view text, int start, int count) {
    std::size_t from = offsetOf(text, start);
    std::size_t to = offsetOf(text, start + count);
    return std::string(text.substr(from, to - from));
}

std::string encode(char32_t c) {
    return vb::utf8::encode(std::u32string_view(&c, 1));
}

std::u32string decode(std::string_view text) {
    std::u32string out;
    std::size_t i = 0;
    while (i < text.size()) {
        auto c = static_cast<unsigned char>(text[i]);
        int extra = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
        char32_t cp = extra == 0 ? c : (c & (0x3F >> extra));
        ++i;
        for (int k = 0; k < extra && i < text.size(); ++k, ++i) {
            cp = (cp << 6) | (static_cast<unsigned char>(text[i]) & 0x3F);
        }
        out += cp;
    }
    return out;
}

} // namespace forms::utf8
