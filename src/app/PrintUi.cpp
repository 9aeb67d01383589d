#include "app/PrintUi.h"

#include "forms/Form.h"
#include "vb/Error.h"

#include <fstream>
#include <sstream>
#include <system_error>

namespace app {

namespace {

/// Collects the slip, and puts it in place when the channel's close flushes it.
class CommitBuffer : public std::stringbuf {
public:
    CommitBuffer(std::filesystem::path target, bool &written, bool &failed)
        : target_(std::move(target)), written_(written), failed_(failed) {}

    // A slip during which the fault desk reported a failure is not put in
    // place: some of it is missing.

protected:
    int sync() override { return commit() ? 0 : -1; }

private:
    bool commit() {
        if (failed_) {
            return false;
        }
        const std::filesystem::path part = target_.string() + ".part";
        {
            std::ofstream out(part, std::ios::binary | std::ios::trunc);
            const std::string bytes = str();
            out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
            if (!out.flush()) {
                failed_ = true;
                return false;
            }
        }
        std::error_code error;
        std::filesystem::rename(part, target_, error);
        if (error) {
            std::filesystem::remove(part, error);
            failed_ = true;
            return false;
        }
        written_ = true;
        return true;
    }

    std::filesystem::path target_;
    bool &written_;
    bool &failed_;
};

class OutputStream : public std::ostream {
public:
    OutputStream(std::filesystem::path target, bool &written, bool &failed)
        : std::ostream(nullptr), buffer_(std::move(target), written, failed) {
        rdbuf(&buffer_);
    }

private:
    CommitBuffer buffer_;
};

} // namespace

PrintUi::PrintUi(std::filesystem::path output, std::ostream &messages)
    : output_(std::move(output)), messages_(messages) {}

PrintUi::~PrintUi() = default;

void PrintUi::runModal(forms::Form &form) {
    throw vb::Error(vb::err::InvalidProcedureCall, "stockverify print",
                    "the form " + form.Name() + " waits for a user, and print has none");
}

int PrintUi::msgBox(std::string_view prompt, int buttons, std::string_view title) {
    messages_ << title << ": " << prompt << "\n";
    // The fault desk's reports read "Error N in ROUTINE (SOURCE):"; other
    // messages (a settings key that is missing) warn and the printing goes on.
    if ((buttons & 0x70) == 16 && prompt.starts_with("Error ")) {
        failed_ = true;
    }
    return 1;
}

forms::Menu *PrintUi::popupMenu(forms::Form &, forms::Menu &) {
    return nullptr;
}

void PrintUi::showTextFile(const std::string &) {}

std::unique_ptr<std::ostream> PrintUi::openPrinter(const std::string &) {
    return std::make_unique<OutputStream>(output_, written_, failed_);
}

void PrintUi::previewReport(const forms::ReportPreview &report) {
    if (!report.writePdf) {
        throw vb::Error(429, "stockverify print", "no report engine laid out the report");
    }
    report.writePdf(output_.string());
    written_ = true;
}

} // namespace app
