#include "forms/TestUi.h"

#include "forms/Form.h"
#include "forms/Input.h"
#include "forms/Menu.h"
#include "forms/Screen.h"

#include "vb/Error.h"

#include <algorithm>
#include <utility>

namespace forms {

namespace {

/// A printer port: collects the bytes and hands them over when closed.
class PortStream : public std::ostringstream {
public:
    explicit PortStream(std::shared_ptr<std::ostringstream> sink) : sink_(std::move(sink)) {}
    ~PortStream() override { *sink_ << str(); }

private:
    std::shared_ptr<std::ostringstream> sink_;
};

} // namespace

void TestUi::queueAction(std::function<void(Input &)> action) {
    actions_.push_back(std::move(action));
}

void TestUi::queueAnswer(int answer, std::string expectedPrompt) {
    answers_.push_back({answer, std::move(expectedPrompt)});
}

void TestUi::queuePopupChoice(std::string itemName) {
    popupChoices_.push_back(std::move(itemName));
}

void TestUi::fail(std::string message) {
    failures_.push_back(message);
    throw ScriptFailure(message);
}

void TestUi::runModal(Form &form) {
    modalForms_.push_back(form.Name());
    Input input(form.screen());
    while (form.Visible()) {
        if (++turns_ > watchdog_) {
            fail("watchdog: more than " + std::to_string(watchdog_) + " turns, " + form.Name() +
                 " still open");
        }
        if (input.processQueued() > 0) {
            continue;
        }
        if (actions_.empty()) {
            fail("modal form " + form.Name() + " is waiting for input and no action is queued");
        }
        auto action = std::move(actions_.front());
        actions_.pop_front();
        action(input);
    }
}

int TestUi::msgBox(std::string_view prompt, int buttons, std::string_view title) {
    if (answers_.empty()) {
        fail("unexpected message box: \"" + std::string(prompt) + "\"");
    }
    Answer next = std::move(answers_.front());
    answers_.pop_front();
    if (!next.expectedPrompt.empty() && next.expectedPrompt != prompt) {
        fail("message box \"" + std::string(prompt) + "\" where \"" + next.expectedPrompt +
             "\" was expected");
    }
    boxes_.push_back({std::string(prompt), buttons, std::string(title), next.answer});
    return next.answer;
}

Menu *TestUi::popupMenu(Form &, Menu &menu) {
    if (popupChoices_.empty()) {
        fail("unexpected popup menu " + menu.Name());
    }
    std::string choice = std::move(popupChoices_.front());
    popupChoices_.pop_front();
    if (choice.empty()) {
        return nullptr;
    }
    for (Menu *item : menu.items()) {
        if (item->Name() == choice) {
            if (!item->Visible() || !item->Enabled()) {
                fail("popup item " + choice + " cannot be chosen: it is disabled or hidden");
            }
            return item;
        }
    }
    fail("popup menu " + menu.Name() + " has no item " + choice);
}

std::unique_ptr<std::ostream> TestUi::openPrinter(const std::string &port) {
    if (std::find(refusedPorts_.begin(), refusedPorts_.end(), port) != refusedPorts_.end()) {
        throw vb::Error::standard(75);
    }
    auto &sink = printers_[port];
    if (!sink) {
        sink = std::make_shared<std::ostringstream>();
    }
    return std::make_unique<PortStream>(sink);
}

std::string TestUi::printed(const std::string &port) const {
    auto it = printers_.find(port);
    return it == printers_.end() ? std::string() : it->second->str();
}

void TestUi::mousePointerChanged(Screen &screen) {
    int pointer = screen.effectivePointer();
    if (pointers_.empty() || pointers_.back() != pointer) {
        pointers_.push_back(pointer);
    }
}

} // namespace forms
