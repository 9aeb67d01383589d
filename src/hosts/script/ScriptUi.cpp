#include "hosts/script/ScriptUi.h"

#include "hosts/script/Text.h"

#include "hosts/script/Failure.h"
#include "hosts/script/Token.h"

#include "forms/Form.h"
#include "forms/Input.h"
#include "forms/Menu.h"
#include "forms/MsgBox.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <utility>

namespace script {

namespace {

/// A printer port: collects the bytes and hands them over when closed.
class PortStream : public std::ostringstream {
public:
    explicit PortStream(std::shared_ptr<std::ostringstream> sink) : sink_(std::move(sink)) {}
    ~PortStream() override { *sink_ << str(); }

private:
    std::shared_ptr<std::ostringstream> sink_;
};

std::string answerNames(int buttons) {
    std::string names;
    for (int answer : forms::msgBoxAnswers(buttons)) {
        names +=
            (names.empty() ? "" : ", ") + forms::displayCaption(forms::msgBoxButtonCaption(answer));
    }
    return names;
}

std::string menuItems(const forms::Menu &menu) {
    std::string items;
    for (const forms::Menu *item : menu.items()) {
        if (item->Visible()) {
            items += (items.empty() ? "" : ", ") + item->Name();
        }
    }
    return "popup menu " + menu.Name() + " (" + (items.empty() ? "no items" : items) + ")";
}

} // namespace

std::string describeBox(std::string_view prompt, int buttons, std::string_view title,
                        bool untitled) {
    return inQuotes(prompt) + " style " + std::to_string(buttons) +
           (untitled ? " untitled (shows " + inQuotes(title) + ")" : " title " + inQuotes(title));
}

ScriptUi::ScriptUi(std::function<void()> takeStep) : takeStep_(std::move(takeStep)) {}

void ScriptUi::countTurn(const forms::Form &form) {
    if (++turns_ > watchdog_) {
        throw Failure("watchdog: the modal loop of " + form.Name() + " turned " +
                          std::to_string(watchdog_) + " times without taking a line",
                      "the form to wait for the next line",
                      "queued keystrokes or modal forms that never stop coming");
    }
}

void ScriptUi::runModal(forms::Form &form) {
    forms::Input input(form.screen());
    countTurn(form);
    while (form.Visible()) {
        if (input.processQueued() > 0) {
            countTurn(form);
            continue;
        }
        takeStep_();
    }
}

int ScriptUi::msgBox(std::string_view prompt, int buttons, std::string_view title) {
    return takeBox(prompt, buttons, title, false);
}

int ScriptUi::untitledMsgBox(std::string_view prompt, int buttons, std::string_view appTitle) {
    return takeBox(prompt, buttons, appTitle, true);
}

int ScriptUi::takeBox(std::string_view prompt, int buttons, std::string_view title,
                      bool untitled) {
    if (answers_.empty()) {
        throw Failure("unexpected message box", "no message box (or an answer line before it)",
                      "message box " + describeBox(prompt, buttons, title, untitled));
    }
    QueuedAnswer next = answers_.front();
    answers_.pop_front();
    std::vector<int> offered = forms::msgBoxAnswers(buttons);
    if (std::find(offered.begin(), offered.end(), next.answer) == offered.end()) {
        Failure failure("the answer queued at line " + std::to_string(next.line) +
                            " does not fit the message box " +
                            describeBox(prompt, buttons, title, untitled),
                        "one of the buttons " + answerNames(buttons),
                        forms::displayCaption(forms::msgBoxButtonCaption(next.answer)));
        throw failure;
    }
    unchecked_.push_back(
        {std::string(prompt), buttons, std::string(title), next.answer, untitled});
    return next.answer;
}

forms::Menu *ScriptUi::popupMenu(forms::Form &, forms::Menu &menu) {
    if (!popupChoice_) {
        throw Failure("unexpected popup menu", "no popup menu", menuItems(menu));
    }
    std::string choice = std::move(*popupChoice_);
    popupChoice_.reset();
    if (choice.empty()) {
        return nullptr;
    }
    for (forms::Menu *item : menu.items()) {
        if (sameName(item->Name(), choice) && item->Visible()) {
            if (!item->Enabled()) {
                throw Failure("the menu item " + choice + " is disabled",
                              "an enabled item " + choice, menuItems(menu));
            }
            return item;
        }
    }
    throw Failure("the popup menu has no item " + choice, "an item " + choice, menuItems(menu));
}

std::unique_ptr<std::ostream> ScriptUi::openPrinter(const std::string &port) {
    auto &sink = printers_[port];
    if (!sink) {
        sink = std::make_shared<std::ostringstream>();
    }
    return std::make_unique<PortStream>(sink);
}

std::string ScriptUi::takePrinted(const std::string &port) {
    auto it = printers_.find(port);
    if (it == printers_.end()) {
        return {};
    }
    std::string bytes = it->second->str();
    it->second->str({});
    return bytes;
}

void ScriptUi::showTextFile(const std::string &path) {
    // The old viewer opened a file that was not there as a new, empty one.
    if (!std::filesystem::exists(path)) {
        textFiles_.push_back({path, ""});
        return;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw Failure("the viewer cannot open the file it was given", "a readable file " + path,
                      "none");
    }
    std::ostringstream text;
    text << in.rdbuf();
    textFiles_.push_back({path, text.str()});
}

} // namespace script
