#include "hosts/tui/ReportViewer.h"

#include "vb/Error.h"

namespace tui {

ReportViewer::ReportViewer(std::string title, std::string text, Actions actions)
    : TextViewer(std::move(title), std::move(text)), actions_(std::move(actions)) {}

void ReportViewer::run(const std::function<std::string()> &action) {
    try {
        status_ = action();
    } catch (const vb::Error &e) {
        // The preview stays: the user may fix the printer and try again.
        status_ = e.description();
    }
}

bool ReportViewer::handleKey(const forms::KeyStroke &key) {
    if ((key.character == U'p' || key.character == U'P') && actions_.print) {
        run(actions_.print);
        return false;
    }
    if ((key.character == U's' || key.character == U'S') && actions_.save) {
        run(actions_.save);
        return false;
    }
    status_.clear();
    return TextViewer::handleKey(key);
}

std::string ReportViewer::statusText() const {
    if (!status_.empty()) {
        return status_;
    }
    std::string keys;
    if (actions_.print) {
        keys += "P prints, ";
    }
    if (actions_.save) {
        keys += "S saves as PDF, ";
    }
    return keys + "arrows and Page Up/Down scroll, Esc closes";
}

} // namespace tui
