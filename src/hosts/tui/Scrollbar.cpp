#include "hosts/tui/Scrollbar.h"

#include "hosts/tui/Canvas.h"

#include <algorithm>

namespace tui {

void paintScrollbar(Canvas &canvas, int x, int y, int height, int first, int shown, int total,
                    Style style) {
    if (height <= 0) {
        return;
    }
    for (int i = 0; i < height; ++i) {
        canvas.put(x, y + i, U'░', style);
    }
    int hidden = std::max(1, total - shown);
    int thumb = height == 1 ? 0 : std::clamp(first * (height - 1) / hidden, 0, height - 1);
    canvas.put(x, y + thumb, U'█', style);
}

int scrollWindow(int top, int current, int shown, int base, int total) {
    shown = std::max(1, shown);
    if (current >= base) {
        if (current < top) {
            top = current;
        } else if (current >= top + shown) {
            top = current - shown + 1;
        }
    }
    int last = std::max(base, base + total - shown);
    return std::clamp(top, base, last);
}

} // namespace tui
