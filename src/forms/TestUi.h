// forms::TestUi: a scripted Ui for tests, with queued actions and answers under a watchdog.
#pragma once

#include "forms/Ui.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace forms {

class Input;

/// A fault of a test script (an unexpected message box, a modal loop left
/// with nothing to do, the watchdog). It is not a vb::Error on purpose: the
/// module's failure handlers catch vb::Error, and a script fault must reach
/// the test instead of being reported by the module and passed over.
class ScriptFailure : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

/// A Ui for unit tests. Tests queue what the user will do, in order:
/// actions (run one per turn of whichever modal loop is innermost when their
/// turn comes), message box answers and popup menu choices. Everything the
/// module showed is recorded. Whatever goes wrong raises ScriptFailure and is
/// also kept in failures(), so a test that a handler swallowed still fails
/// when it checks failures().
class TestUi : public Ui {
public:
    struct Box {
        std::string prompt;
        int buttons = 0;
        std::string title;
        int answer = 0;
    };

    /// `watchdog`: the most turns all modal loops together may take.
    explicit TestUi(std::size_t watchdog = 1000) : watchdog_(watchdog) {}

    /// The next thing the user does, when a modal loop takes its next turn.
    void queueAction(std::function<void(Input &)> action);
    /// The answer to the next message box. With `expectedPrompt` set, a box
    /// with another prompt is a failure.
    void queueAnswer(int answer, std::string expectedPrompt = {});
    /// The next popup menu: the name of the item to choose, or "" to dismiss.
    void queuePopupChoice(std::string itemName);

    const std::vector<Box> &boxes() const { return boxes_; }
    const std::vector<std::string> &failures() const { return failures_; }
    const std::vector<std::string> &textFilesShown() const { return textFiles_; }
    const std::vector<ReportPreview> &reportsPreviewed() const { return reports_; }
    /// What was written to each printer port, by port name.
    std::string printed(const std::string &port) const;
    /// Every value of the effective mouse pointer, in order of change.
    const std::vector<int> &pointerHistory() const { return pointers_; }
    /// Forms whose modal loop ran, by name, in the order they were shown.
    const std::vector<std::string> &modalForms() const { return modalForms_; }
    std::size_t turns() const { return turns_; }
    std::size_t pendingActions() const { return actions_.size(); }
    std::size_t pendingAnswers() const { return answers_.size(); }
    /// Ports that refuse to open (openPrinter raises 75 for them).
    void refusePrinter(std::string port) { refusedPorts_.push_back(std::move(port)); }

    void runModal(Form &form) override;
    int msgBox(std::string_view prompt, int buttons, std::string_view title) override;
    Menu *popupMenu(Form &form, Menu &menu) override;
    void doEvents() override {}
    void showTextFile(const std::string &path) override { textFiles_.push_back(path); }
    std::unique_ptr<std::ostream> openPrinter(const std::string &port) override;
    void previewReport(const ReportPreview &report) override { reports_.push_back(report); }
    void mousePointerChanged(Screen &screen) override;

private:
    struct Answer {
        int answer;
        std::string expectedPrompt;
    };
    [[noreturn]] void fail(std::string message);

    std::size_t watchdog_;
    std::size_t turns_ = 0;
    std::deque<std::function<void(Input &)>> actions_;
    std::deque<Answer> answers_;
    std::deque<std::string> popupChoices_;
    std::vector<Box> boxes_;
    std::vector<std::string> failures_;
    std::vector<std::string> textFiles_;
    std::vector<ReportPreview> reports_;
    std::map<std::string, std::shared_ptr<std::ostringstream>> printers_;
    std::vector<std::string> refusedPorts_;
    std::vector<int> pointers_;
    std::vector<std::string> modalForms_;
};

} // namespace forms
