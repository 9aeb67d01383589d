// app::PrintUi: the Ui of `stockverify print`, which prints without a screen.
#pragma once

#include "forms/Ui.h"

#include <filesystem>
#include <ostream>
#include <string>

namespace app {

/// What the module's print routines get when nobody watches: message boxes
/// go to stderr (a report of the fault desk counts as a failure),
/// the printer port and the report preview both write to the one output
/// file, and a form shown modally is a failure, since nobody could close it.
///
/// The output is written to a file beside the target and renamed over it
/// only when the printing closes its output: a slip that fails half way
/// leaves the target as it was.
class PrintUi : public forms::Ui {
public:
    PrintUi(std::filesystem::path output, std::ostream &messages);
    ~PrintUi() override;

    /// True once the fault desk reported a failure or the output could not be written.
    bool failed() const { return failed_; }
    /// True once the output file was written whole.
    bool written() const { return written_; }

    void runModal(forms::Form &form) override;
    int msgBox(std::string_view prompt, int buttons, std::string_view title) override;
    forms::Menu *popupMenu(forms::Form &form, forms::Menu &menu) override;
    void doEvents() override {}
    void showTextFile(const std::string &path) override;
    std::unique_ptr<std::ostream> openPrinter(const std::string &port) override;
    void previewReport(const forms::ReportPreview &report) override;
    void mousePointerChanged(forms::Screen &) override {}

private:
    std::filesystem::path output_;
    std::ostream &messages_;
    bool failed_ = false;
    bool written_ = false;
};

} // namespace app
