// script::ScriptUi: the runner's forms::Ui, whose modal loops take the scenario's next lines.
#pragma once

#include "forms/Ui.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace script {

/// A Ui without a screen. A modal loop first runs the keystrokes SendKeys
/// queued and, when there are none, runs the scenario's next line, so a line
/// after a dialog opens acts on that dialog. Message boxes take the answers
/// the scenario queued; a box with no answer waiting, a popup menu nobody
/// asked for and a loop that turns too often without taking a line raise
/// script::Failure. Text files shown, printer output and report previews are
/// kept until the scenario checks them.
class ScriptUi : public forms::Ui {
public:
    struct Box {
        std::string prompt;
        int buttons = 0;
        std::string title;
        int answer = 0;
        bool untitled = false; // no title of its own: `title` is the application's
    };
    struct ShownText {
        std::string path;
        std::string text;
    };
    struct QueuedAnswer {
        int answer = 0;
        int line = 0; // the line that queued it
    };

    /// `takeStep` runs the scenario's next line; when there is none it raises.
    explicit ScriptUi(std::function<void()> takeStep);

    /// The most turns (queued keystrokes run, modal loops entered) allowed
    /// between two lines of the scenario.
    void setWatchdog(std::size_t turns) { watchdog_ = turns; }
    std::size_t watchdog() const { return watchdog_; }
    /// Tells the watchdog that a line of the scenario ran.
    void stepTaken() { turns_ = 0; }

    void queueAnswer(int answer, int line) { answers_.push_back({answer, line}); }
    const std::deque<QueuedAnswer> &queuedAnswers() const { return answers_; }
    /// Boxes shown that no `expect msgbox` has checked yet, oldest first.
    std::deque<Box> &uncheckedBoxes() { return unchecked_; }

    /// The item the next popup menu is to choose ("" dismisses it); none
    /// makes a popup menu a failure.
    void setPopupChoice(std::optional<std::string> choice) { popupChoice_ = std::move(choice); }
    bool popupChoicePending() const { return popupChoice_.has_value(); }

    /// Text files shown in the viewer and not yet checked, oldest first,
    /// with their text as it was when shown (the file may be written again).
    std::deque<ShownText> &uncheckedTextFiles() { return textFiles_; }
    /// Report previews not yet checked, oldest first.
    std::deque<forms::ReportPreview> &uncheckedReports() { return reports_; }
    /// Takes what was written to a printer port since the last call.
    std::string takePrinted(const std::string &port);

    void runModal(forms::Form &form) override;
    int msgBox(std::string_view prompt, int buttons, std::string_view title) override;
    int untitledMsgBox(std::string_view prompt, int buttons, std::string_view appTitle) override;
    forms::Menu *popupMenu(forms::Form &form, forms::Menu &menu) override;
    /// Queued keystrokes were run by the runtime; there is no screen to draw
    /// and nothing waits: the scenario's next line comes after the handler.
    void doEvents() override {}
    void showTextFile(const std::string &path) override;
    std::unique_ptr<std::ostream> openPrinter(const std::string &port) override;
    void previewReport(const forms::ReportPreview &report) override { reports_.push_back(report); }
    /// The pointer is read when a scenario checks it (Screen::effectivePointer).
    void mousePointerChanged(forms::Screen &) override {}

private:
    void countTurn(const forms::Form &form);
    int takeBox(std::string_view prompt, int buttons, std::string_view title, bool untitled);

    std::function<void()> takeStep_;
    std::size_t watchdog_ = 1000;
    std::size_t turns_ = 0;
    std::deque<QueuedAnswer> answers_;
    std::deque<Box> unchecked_;
    std::optional<std::string> popupChoice_;
    std::deque<ShownText> textFiles_;
    std::deque<forms::ReportPreview> reports_;
    std::map<std::string, std::shared_ptr<std::ostringstream>> printers_;
};

/// A message box as failures show it: "\"text\" style 48 title \"t\"", or
/// "\"text\" style 48 untitled (shows \"t\")" for a box with no title of its own.
std::string describeBox(std::string_view prompt, int buttons, std::string_view title,
                        bool untitled = false);

} // namespace script
