// tui::Canvas: the screen as a buffer of cells, drawn by the host and read as text by tests.
#pragma once

#include "hosts/tui/Cell.h"
#include "hosts/tui/Rect.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tui {

/// Where the terminal's cursor stands, in cells.
struct Point {
    int x = 0;
    int y = 0;
    friend bool operator==(const Point &, const Point &) = default;
};

/// A width x height buffer of cells. Everything the host shows is drawn here
/// first; the terminal only copies it out, and tests read it back as text.
/// Drawing is clipped to the current clip rectangle (the whole canvas unless
/// a ClipScope narrows it), so a control never draws outside its form.
class Canvas {
public:
    Canvas(int width, int height);

    int width() const { return width_; }
    int height() const { return height_; }
    Rect bounds() const { return {0, 0, width_, height_}; }
    /// Resizes and blanks the canvas.
    void resize(int width, int height);
    /// Blanks every cell with `style`, forgets the cursor and the clip.
    void clear(Style style = {});

    const Cell &at(int x, int y) const;

    void put(int x, int y, char32_t ch, Style style);
    /// Writes UTF-8 text from (x, y) on one row, at most `maxColumns` cells
    /// (all of it when negative); returns how many cells it covered.
    int text(int x, int y, std::string_view utf8, Style style, int maxColumns = -1);
    /// Writes text from (x, y) on one row, as `text`, with the access key
    /// (the character after a single "&") underlined and the markers removed.
    int caption(int x, int y, std::string_view caption, Style style, int maxColumns = -1);
    void fill(const Rect &r, char32_t ch, Style style);
    /// Sets the style of the cells in `r`, keeping their characters.
    void paint(const Rect &r, Style style);
    /// A single-line box around `r`, with `title` (plain text) in its top edge when given.
    void box(const Rect &r, Style style, std::string_view title = {});

    /// The terminal cursor (a text box's caret); none hides it.
    void setCursor(std::optional<Point> at) { cursor_ = at; }
    std::optional<Point> cursor() const { return cursor_; }

    Rect clip() const { return clip_; }

    /// One row as text, trailing blanks removed.
    std::string row(int y) const;
    /// The whole canvas as text: one line per row, trailing blanks removed.
    std::string dump() const;

private:
    friend class ClipScope;

    int width_;
    int height_;
    std::vector<Cell> cells_;
    Rect clip_;
    std::optional<Point> cursor_;
};

/// Narrows a canvas's clip rectangle for as long as it lives.
class ClipScope {
public:
    ClipScope(Canvas &canvas, const Rect &r) : canvas_(canvas), saved_(canvas.clip_) {
        canvas.clip_ = saved_.intersect(r);
    }
    ~ClipScope() { canvas_.clip_ = saved_; }
    ClipScope(const ClipScope &) = delete;
    ClipScope &operator=(const ClipScope &) = delete;

private:
    Canvas &canvas_;
    Rect saved_;
};

} // namespace tui
