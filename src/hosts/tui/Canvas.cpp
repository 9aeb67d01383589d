#include "hosts/tui/Canvas.h"

#include "forms/Utf8.h"

#include <stdexcept>

namespace tui {

Canvas::Canvas(int width, int height) : width_(0), height_(0) {
    resize(width, height);
}

void Canvas::resize(int width, int height) {
    width_ = std::max(0, width);
    height_ = std::max(0, height);
    cells_.assign(static_cast<std::size_t>(width_) * height_, Cell{});
    clip_ = bounds();
    cursor_.reset();
}

void Canvas::clear(Style style) {
    std::fill(cells_.begin(), cells_.end(), Cell{U' ', style});
    clip_ = bounds();
    cursor_.reset();
}

const Cell &Canvas::at(int x, int y) const {
    if (x < 0 || x >= width_ || y < 0 || y >= height_) {
        throw std::out_of_range("canvas cell outside the canvas");
    }
    return cells_[static_cast<std::size_t>(y) * width_ + x];
}

void Canvas::put(int x, int y, char32_t ch, Style style) {
    if (!clip_.contains(x, y)) {
        return;
    }
    cells_[static_cast<std::size_t>(y) * width_ + x] = Cell{ch, style};
}

int Canvas::text(int x, int y, std::string_view utf8, Style style, int maxColumns) {
    int written = 0;
    for (char32_t c : forms::utf8::decode(utf8)) {
        if (maxColumns >= 0 && written >= maxColumns) {
            break;
        }
        // Control characters (a tab or line break inside a cell) show as a blank.
        put(x + written, y, c < 0x20 ? U' ' : c, style);
        ++written;
    }
    return written;
}

int Canvas::caption(int x, int y, std::string_view caption, Style style, int maxColumns) {
    int written = 0;
    bool marked = false;
    for (char32_t c : forms::utf8::decode(caption)) {
        if (c == U'&' && !marked) {
            marked = true;
            continue;
        }
        if (maxColumns >= 0 && written >= maxColumns) {
            break;
        }
        // The character after a single "&" is the access key; "&&" is a plain "&".
        bool accessKey = marked && c != U'&';
        put(x + written, y, c < 0x20 ? U' ' : c, accessKey ? style.with(attrUnderline) : style);
        marked = false;
        ++written;
    }
    return written;
}

void Canvas::fill(const Rect &r, char32_t ch, Style style) {
    Rect area = r.intersect(clip_);
    for (int y = area.y; y < area.bottom(); ++y) {
        for (int x = area.x; x < area.right(); ++x) {
            cells_[static_cast<std::size_t>(y) * width_ + x] = Cell{ch, style};
        }
    }
}

void Canvas::paint(const Rect &r, Style style) {
    Rect area = r.intersect(clip_);
    for (int y = area.y; y < area.bottom(); ++y) {
        for (int x = area.x; x < area.right(); ++x) {
            cells_[static_cast<std::size_t>(y) * width_ + x].style = style;
        }
    }
}

void Canvas::box(const Rect &r, Style style, std::string_view title) {
    if (r.w < 2 || r.h < 2) {
        return;
    }
    for (int x = r.x + 1; x < r.right() - 1; ++x) {
        put(x, r.y, U'─', style);
        put(x, r.bottom() - 1, U'─', style);
    }
    for (int y = r.y + 1; y < r.bottom() - 1; ++y) {
        put(r.x, y, U'│', style);
        put(r.right() - 1, y, U'│', style);
    }
    put(r.x, r.y, U'┌', style);
    put(r.right() - 1, r.y, U'┐', style);
    put(r.x, r.bottom() - 1, U'└', style);
    put(r.right() - 1, r.bottom() - 1, U'┘', style);
    if (!title.empty() && r.w > 4) {
        int room = r.w - 4;
        put(r.x + 1, r.y, U' ', style);
        int n = text(r.x + 2, r.y, title, style, room);
        put(r.x + 2 + n, r.y, U' ', style);
    }
}

std::string Canvas::row(int y) const {
    std::string line;
    int end = width_;
    while (end > 0 && at(end - 1, y).ch == U' ') {
        --end;
    }
    for (int x = 0; x < end; ++x) {
        line += forms::utf8::encode(at(x, y).ch);
    }
    return line;
}

std::string Canvas::dump() const {
    std::string all;
    for (int y = 0; y < height_; ++y) {
        all += row(y);
        all += '\n';
    }
    return all;
}

} // namespace tui
