#include "hosts/tui/TextFit.h"

#include "hosts/tui/Canvas.h"

#include "forms/Utf8.h"

#include "vb/Conversion.h"
#include "vb/Variant.h"

#include <algorithm>

namespace tui {

int columnsOf(std::string_view utf8) {
    return forms::utf8::length(utf8);
}

void drawAligned(Canvas &canvas, int x, int y, int width, std::string_view utf8, Align align,
                 Style style) {
    if (width <= 0) {
        return;
    }
    int n = columnsOf(utf8);
    int offset = 0;
    if (n < width) {
        if (align == Align::Right) {
            offset = width - n;
        } else if (align == Align::Center) {
            offset = (width - n) / 2;
        }
    }
    canvas.text(x + offset, y, utf8, style, width - offset);
}

void drawCell(Canvas &canvas, int x, int y, int width, std::string_view utf8, Align align,
              Style style) {
    if (width <= 0) {
        return;
    }
    int room = width > 1 ? width - 1 : width;
    int n = columnsOf(utf8);
    bool separator = width > 1;
    if (n > room && !utf8.empty() && vb::IsNumeric(vb::Variant(std::string(utf8)))) {
        if (n <= width) {
            drawAligned(canvas, x, y, width, utf8, Align::Right, style);
            return;
        }
        std::u32string chars = forms::utf8::decode(utf8);
        std::string cut;
        for (int i = 0; i + 1 < room; ++i) {
            cut += forms::utf8::encode(chars[static_cast<std::size_t>(i)]);
        }
        drawAligned(canvas, x, y, room, cut + "…", align, style);
    } else {
        drawAligned(canvas, x, y, room, utf8, align, style);
    }
    if (separator) {
        canvas.put(x + width - 1, y, U'│', style);
    }
}

namespace {

std::vector<std::u32string> splitLines(std::u32string_view text) {
    std::vector<std::u32string> lines(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (c == U'\r' || c == U'\n') {
            if (c == U'\r' && i + 1 < text.size() && text[i + 1] == U'\n') {
                ++i;
            }
            lines.emplace_back();
        } else {
            lines.back() += c;
        }
    }
    return lines;
}

std::string encodeAll(std::u32string_view text) {
    std::string out;
    for (char32_t c : text) {
        out += forms::utf8::encode(c);
    }
    return out;
}

void wrapLine(std::u32string_view line, std::size_t width, std::vector<std::string> &out) {
    std::u32string current;
    std::size_t i = 0;
    while (i <= line.size()) {
        std::size_t end = std::min(line.find(U' ', i), line.size());
        std::u32string_view word = line.substr(i, end - i);
        std::size_t need = current.empty() ? word.size() : current.size() + 1 + word.size();
        if (need <= width) {
            if (!current.empty()) {
                current += U' ';
            }
            current += word;
        } else {
            if (!current.empty()) {
                out.push_back(encodeAll(current));
                current.clear();
            }
            // A word longer than a line fills whole lines on its own.
            while (word.size() > width) {
                out.push_back(encodeAll(word.substr(0, width)));
                word.remove_prefix(width);
            }
            current = word;
        }
        i = end + 1;
    }
    out.push_back(encodeAll(current));
}

} // namespace

std::vector<std::string> wrapText(std::string_view utf8, int width) {
    std::vector<std::string> out;
    std::size_t w = width > 0 ? static_cast<std::size_t>(width) : 1;
    for (const auto &line : splitLines(forms::utf8::decode(utf8))) {
        wrapLine(line, w, out);
    }
    return out;
}

} // namespace tui
