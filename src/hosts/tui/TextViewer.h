// tui::TextViewer: a text file shown in a window over the forms (the slip on the screen).
#pragma once

#include "hosts/tui/Overlay.h"

#include <string>
#include <vector>

namespace tui {

/// A text file in a window that fills the screen. Up, Down, Page Up, Page
/// Down, Home and End scroll it; Left and Right move sideways; Escape, Enter
/// or "q" close it. It opens without waiting, as the old viewer program did:
/// the forms go on, and the window stays on top until it is closed.
class TextViewer : public Overlay {
public:
    TextViewer(std::string title, std::string text);
    /// Reads the file now; raises vb::Error 53 ("File not found") naming it
    /// when it cannot be read.
    static TextViewer fromFile(const std::string &path);

    int topLine() const { return top_; }
    int lineCount() const { return static_cast<int>(lines_.size()); }

    void paint(Canvas &canvas, const Rect &area) const override;
    bool handleKey(const forms::KeyStroke &key) override;
    std::string statusText() const override;

private:
    std::string title_;
    std::vector<std::string> lines_;
    int top_ = 0;
    int left_ = 0;
    mutable int page_ = 20; // rows shown in the last frame drawn
};

} // namespace tui
