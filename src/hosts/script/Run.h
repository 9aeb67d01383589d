// script::Run: one scenario running, from its first line to its last.
#pragma once

#include "hosts/script/Runner.h"
#include "hosts/script/ScratchFolder.h"
#include "hosts/script/ScriptUi.h"
#include "hosts/script/Session.h"
#include "hosts/script/Step.h"

#include "forms/Screen.h"

#include "ado/Connection.h"

#include "module/records/ScratchServerDatabase.h"

#include "vb/Error.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>
#include <string>
#include <string_view>

namespace forms {
class Control;
class Form;
} // namespace forms

namespace script {

/// The state of one scenario while it runs: its lines and where it stands,
/// the session values, the screen and Ui, the connection and scratch folder.
/// `show` calls the target, whose modal loop calls back (through the Ui) for
/// the next line; so lines run nested inside the forms they act on.
class Run {
public:
    Run(const Scenario &scenario, const RunnerOptions &options);
    ~Run();
    Run(const Run &) = delete;
    Run &operator=(const Run &) = delete;

    /// Runs every line. Raises Failure, with its line, when the scenario fails.
    void execute();

private:
    void takeStep();
    void runStep(const Step &step);
    [[noreturn]] void endInsideForms();
    bool endsExpectingOpenForms() const;
    void finish();
    void requireBoxesChecked();
    void requireNoForms(std::string_view what) const;
    std::string shownFormNames() const;

    forms::Form &activeForm() const;
    forms::Form *findShownForm(std::string_view name) const;
    forms::Form &shownForm(std::string_view name) const;
    forms::Control *findControl(const ControlRef &ref) const;
    forms::Control &control(const ControlRef &ref) const;
    std::string whyRefused(const forms::Control &control) const;

    // Session and setup lines (Run_session.cpp).
    void apply(const SetStep &step);
    void apply(const DbStep &step);
    void apply(const SqlStep &step);
    void apply(const ShowStep &step);
    void apply(const AnswerStep &step);
    void apply(const FailStep &step);
    void apply(const MarkSqlStep &step);
    void openConnection(const std::string &connectionString);

    // What the user does (Run_input.cpp).
    void apply(const PointerStep &step);
    void apply(const TypeStep &step);
    void apply(const PressStep &step);
    void apply(const ChooseStep &step);
    void apply(const CloseStep &step);
    bool gesture(const PointerStep &step, forms::Control &control);
    void refused(const forms::Control &control) const;

    // Expectations (Run_expect.cpp).
    void apply(const ExpectPropertyStep &step);
    void apply(const ExpectCellStep &step);
    void apply(const ExpectControlRowsStep &step);
    void apply(const ExpectColumnStep &step);
    void apply(const ExpectFocusStep &step);
    void apply(const ExpectPointerStep &step);
    void apply(const ExpectFormStep &step);
    void apply(const ExpectMsgBoxStep &step);
    void apply(const ExpectRowsStep &step);
    void apply(const ExpectOutputStep &step);
    void apply(const ExpectSqlStep &step);
    void apply(const ExpectErrorStep &step);
    void expectText(const std::string &what, const std::string &found, const std::string &file);
    void apply(const DumpStep &step);

    const Scenario &scenario_;
    const RunnerOptions &options_;
    const Step *current_ = nullptr;
    std::size_t next_ = 0;
    Session session_;
    bool processDateSet_ = false;
    /// The error a line raised that no form handled, kept for the
    /// `expect error` line right under it.
    std::optional<vb::Error> hostError_;
    /// Lines that armed a fault, for the report of faults no call took.
    std::vector<int> failLines_;
    ScratchFolder scratch_;
    /// The databases `db` made on the server, when the scenario runs on one.
    std::vector<std::unique_ptr<records::ScratchServerDatabase>> serverDatabases_;
    ado::Connection connection_;
    ScriptUi ui_;
    forms::Screen screen_{ui_};
    /// What the show targets keep between shows; declared last so that it
    /// goes before the screen it was shown on.
    std::shared_ptr<void> kept_;
};

} // namespace script
