// tui::ReportViewer: a report's pages in the full-screen viewer, with keys to print and save as PDF.
#pragma once

#include "hosts/tui/TextViewer.h"

#include <functional>
#include <string>

namespace tui {

/// The preview window of a report: its pages one under the other, a form
/// feed line between them, scrolled as the text viewer scrolls. P prints
/// and S saves as PDF (when the report offers them); what came of it shows
/// on the status line, and a failure leaves the preview open.
class ReportViewer : public TextViewer {
public:
    struct Actions {
        /// Prints the report; returns what to tell the user.
        std::function<std::string()> print;
        /// Saves the report as a PDF; returns what to tell the user.
        std::function<std::string()> save;
    };

    ReportViewer(std::string title, std::string text, Actions actions);

    bool handleKey(const forms::KeyStroke &key) override;
    std::string statusText() const override;

private:
    void run(const std::function<std::string()> &action);

    Actions actions_;
    std::string status_;
};

} // namespace tui
