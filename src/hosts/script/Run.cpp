#include "hosts/script/Run.h"

#include "hosts/script/Text.h"

#include "hosts/script/Failure.h"
#include "hosts/script/Token.h"

#include "forms/Control.h"
#include "forms/Form.h"

#include "vb/Clock.h"
#include "vb/Error.h"

#include <algorithm>
#include <variant>

namespace script {

namespace {

/// Unwinds the modal loops of a scenario that ended, as it may, with forms
/// still open. Not a vb::Error, so that no form's failure handler takes it.
struct ScenarioEnded {};

} // namespace

Run::Run(const Scenario &scenario, const RunnerOptions &options)
    : scenario_(scenario), options_(options), ui_([this] { takeStep(); }) {
    session_.homeDir = options.homeDir;
    ui_.setWatchdog(options.watchdog);
}

Run::~Run() {
    if (session_.clock) {
        vb::setClock(std::nullopt);
    }
}

void Run::execute() {
    try {
        while (next_ < scenario_.steps.size()) {
            runStep(scenario_.steps[next_++]);
        }
        if (!screen_.shownForms().empty() && !endsExpectingOpenForms()) {
            endInsideForms();
        }
        finish();
    } catch (const ScenarioEnded &) {
        // The last line expected the forms that are still open: the scenario passed.
    }
}

void Run::takeStep() {
    if (next_ >= scenario_.steps.size()) {
        if (!endsExpectingOpenForms()) {
            endInsideForms();
        }
        finish();
        throw ScenarioEnded{};
    }
    runStep(scenario_.steps[next_++]);
}

void Run::runStep(const Step &step) {
    current_ = &step;
    ui_.stepTaken();
    try {
        std::visit([this](const auto &action) { apply(action); }, step.action);
    } catch (Failure &failure) {
        if (failure.line() == 0) {
            failure.setLine(current_->line);
        }
        throw;
    } catch (const vb::Error &error) {
        // A failure that reaches the host fails its line, unless the line
        // under it expects it; the forms stay as the failure left them.
        if (next_ < scenario_.steps.size() &&
            std::holds_alternative<ExpectErrorStep>(scenario_.steps[next_].action)) {
            hostError_ = error;
            return;
        }
        Failure failure(step.source, "no error",
                        "error " + std::to_string(error.number()) + ": " + error.description() +
                            (error.source().empty() ? "" : " (" + error.source() + ")"));
        failure.setLine(step.line);
        throw failure;
    } catch (const std::exception &fault) {
        // Not a failure the forms could report (those are vb::Error): a fault
        // of the program itself. The scenario fails on the line that met it.
        Failure failure(step.source, "no error", std::string("fault: ") + fault.what());
        failure.setLine(step.line);
        throw failure;
    }
}

bool Run::endsExpectingOpenForms() const {
    if (scenario_.steps.empty()) {
        return false;
    }
    const auto *last = std::get_if<ExpectFormStep>(&scenario_.steps.back().action);
    return last && last->state != ExpectFormStep::State::Closed;
}

void Run::endInsideForms() {
    Failure failure("the scenario ended with forms still open",
                    "every form closed, or a last line \"expect shown FORM\"",
                    "open: " + shownFormNames());
    failure.setLine(scenario_.lastLine);
    throw failure;
}

/// What the end of a scenario checks, wherever it ends: every queued answer
/// was used and every message box was expected.
void Run::finish() {
    try {
        requireBoxesChecked();
    } catch (Failure &failure) {
        failure.setLine(scenario_.lastLine);
        throw;
    }
    if (connection_.State() != 0 && connection_.pendingFaults() > 0) {
        std::string lines;
        for (int line : failLines_) {
            lines += (lines.empty() ? "" : ", ") + std::to_string(line);
        }
        Failure failure("a fault was armed and no call took it",
                        "every fault armed (lines " + lines + ") taken by a call",
                        std::to_string(connection_.pendingFaults()) + " still waiting");
        failure.setLine(failLines_.empty() ? scenario_.lastLine : failLines_.back());
        throw failure;
    }
    if (!ui_.queuedAnswers().empty()) {
        Failure failure("an answer was queued and no message box came to take it", "a message box",
                        "none");
        failure.setLine(ui_.queuedAnswers().front().line);
        throw failure;
    }
}

void Run::requireBoxesChecked() {
    auto &boxes = ui_.uncheckedBoxes();
    if (boxes.empty()) {
        return;
    }
    ScriptUi::Box box = boxes.front();
    boxes.clear();
    throw Failure("a message box was shown and no \"expect msgbox\" line checked it",
                  "\"expect msgbox\" after the line that showed it",
                  "message box " +
                      describeBox(box.prompt, box.buttons, box.title, box.untitled));
}

void Run::requireNoForms(std::string_view what) const {
    if (!screen_.shownForms().empty()) {
        throw Failure(std::string(what) + " cannot change while forms are open",
                      "no form open (session values are read by show)",
                      "open: " + shownFormNames());
    }
}

std::string Run::shownFormNames() const {
    std::string names;
    for (const forms::Form *form : screen_.shownForms()) {
        names += (names.empty() ? "" : ", ") + form->Name();
    }
    return names.empty() ? "none" : names;
}

forms::Form &Run::activeForm() const {
    forms::Form *form = screen_.ActiveForm();
    if (!form) {
        throw Failure("no form is shown", "a shown form", "none");
    }
    return *form;
}

forms::Form *Run::findShownForm(std::string_view name) const {
    for (forms::Form *form : screen_.shownForms()) {
        if (sameName(form->Name(), name)) {
            return form;
        }
    }
    return nullptr;
}

forms::Form &Run::shownForm(std::string_view name) const {
    if (name.empty()) {
        return activeForm();
    }
    if (forms::Form *form = findShownForm(name)) {
        return *form;
    }
    throw Failure("form " + std::string(name) + " is not shown", "form " + std::string(name),
                  "shown: " + shownFormNames());
}

forms::Control *Run::findControl(const ControlRef &ref) const {
    return shownForm(ref.form).findControl(ref.name, ref.index);
}

forms::Control &Run::control(const ControlRef &ref) const {
    if (forms::Control *found = findControl(ref)) {
        return *found;
    }
    forms::Form &form = shownForm(ref.form);
    throw Failure("no control " + ref.text(), "a control " + ref.text() + " on " + form.Name(),
                  form.Name() + " has none");
}

std::string Run::whyRefused(const forms::Control &control) const {
    if (!control.effectivelyVisible()) {
        return control.Name() + " is hidden";
    }
    if (!control.effectivelyEnabled()) {
        return control.Name() + " is disabled";
    }
    forms::Form *active = screen_.ActiveForm();
    if (&control.form() != active) {
        return control.Name() + " is on " + control.form().Name() + ", below the active form " +
               (active ? active->Name() : std::string("(none)"));
    }
    if (!control.form().Enabled()) {
        return control.form().Name() + " is disabled";
    }
    return control.Name() + " refused it";
}

} // namespace script
