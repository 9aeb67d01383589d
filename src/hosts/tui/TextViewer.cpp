#include "hosts/tui/TextViewer.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/Scrollbar.h"

#include "forms/Utf8.h"

#include "vb/Error.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace tui {

TextViewer::TextViewer(std::string title, std::string text) : title_(std::move(title)) {
    std::string line;
    for (char c : text) {
        if (c == '\n') {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            lines_.push_back(std::move(line));
            line.clear();
        } else if (c == '\f') {
            lines_.push_back(std::move(line)); // a form feed ends the page: a line of its own
            line.clear();
        } else if (c == '\t') {
            line.append(8 - line.size() % 8, ' ');
        } else {
            line += c;
        }
    }
    if (!line.empty()) {
        lines_.push_back(std::move(line));
    }
}

TextViewer TextViewer::fromFile(const std::string &path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw vb::Error(vb::err::FileNotFound, "tui", "File not found: " + path);
    }
    std::ostringstream text;
    text << in.rdbuf();
    return TextViewer(path, text.str());
}

bool TextViewer::handleKey(const forms::KeyStroke &key) {
    int last = std::max(0, lineCount() - page_);
    switch (key.keyCode) {
    case forms::vbKeyEscape:
    case forms::vbKeyReturn:
        return true;
    case forms::vbKeyUp:
        top_ = std::max(0, top_ - 1);
        break;
    case forms::vbKeyDown:
        top_ = std::min(last, top_ + 1);
        break;
    case forms::vbKeyPageUp:
        top_ = std::max(0, top_ - page_);
        break;
    case forms::vbKeyPageDown:
        top_ = std::min(last, top_ + page_);
        break;
    case forms::vbKeyHome:
        top_ = 0;
        break;
    case forms::vbKeyEnd:
        top_ = last;
        break;
    case forms::vbKeyLeft:
        left_ = std::max(0, left_ - 8);
        break;
    case forms::vbKeyRight:
        left_ += 8;
        break;
    default:
        return key.character == U'q' || key.character == U'Q';
    }
    return false;
}

std::string TextViewer::statusText() const {
    return "Arrows and Page Up/Down scroll, Esc closes";
}

void TextViewer::paint(Canvas &canvas, const Rect &area) const {
    ClipScope clip(canvas, area);
    canvas.fill(area, U' ', styles::plain);
    canvas.box(area, styles::plain.with(attrBold), title_);
    Rect inside = area.inset(1);
    page_ = std::max(1, inside.h);
    bool scrolls = lineCount() > inside.h;
    int width = scrolls ? inside.w - 1 : inside.w;
    for (int i = 0; i < inside.h && top_ + i < lineCount(); ++i) {
        std::u32string line = forms::utf8::decode(lines_[static_cast<std::size_t>(top_ + i)]);
        for (int x = 0; x < width && left_ + x < static_cast<int>(line.size()); ++x) {
            char32_t c = line[static_cast<std::size_t>(left_ + x)];
            canvas.put(inside.x + x, inside.y + i, c < 0x20 ? U' ' : c, styles::plain);
        }
    }
    if (scrolls) {
        paintScrollbar(canvas, inside.right() - 1, inside.y, inside.h, top_, inside.h, lineCount(),
                       styles::plain);
    }
}

} // namespace tui
