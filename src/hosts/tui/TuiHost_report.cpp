// TuiHost's report preview: the engine's pages in a viewer that prints and saves PDFs.
#include "hosts/tui/TuiHost.h"

#include "hosts/tui/PrintSpooler.h"
#include "hosts/tui/ReportViewer.h"

#include "vb/Error.h"
#include "vb/Strings.h"

#include <ctime>
#include <filesystem>
#include <unistd.h>

namespace tui {

namespace {

/// "rptGodownStockVerification-20261122-093015.pdf": the report's name and
/// the moment, so that saving twice keeps both.
std::string pdfName(const std::string &reportFile) {
    std::string stem = std::filesystem::path(vb::Replace(reportFile, "\\", "/")).stem().string();
    if (stem.empty()) {
        stem = "report";
    }
    const std::time_t now = std::time(nullptr);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y%m%d-%H%M%S", std::localtime(&now));
    return stem + "-" + stamp + ".pdf";
}

} // namespace

void TuiHost::showReportPages(const forms::ReportPreview &report) {
    std::string text;
    for (std::size_t p = 0; p < report.pages.size(); ++p) {
        text += (p ? "\n\f" : "") + report.pages[p];
    }
    ReportViewer::Actions actions;
    const auto writePdf = report.writePdf;
    if (report.canPrint && writePdf) {
        const std::string queue = settings_.reportPrinter;
        actions.print = [writePdf, queue] {
            char temp[] = "/tmp/stockverify-report-XXXXXX";
            const int fd = mkstemp(temp);
            if (fd < 0) {
                throw vb::Error(vb::err::DeviceIOError, "tui", "Device I/O error: no temporary file");
            }
            close(fd);
            const std::string file = temp;
            try {
                writePdf(file);
                sendToSpooler(queue, file, false);
            } catch (const vb::Error &) {
                std::filesystem::remove(file);
                throw;
            }
            std::filesystem::remove(file);
            return std::string("Sent to the printer") + (queue.empty() ? "" : " " + queue);
        };
    }
    if (report.canExport && writePdf) {
        const std::filesystem::path folder =
            settings_.reportFolder.empty() ? std::filesystem::current_path()
                                           : std::filesystem::path(settings_.reportFolder);
        const std::string reportFile = report.reportFile;
        actions.save = [writePdf, folder, reportFile] {
            const std::filesystem::path file = folder / pdfName(reportFile);
            writePdf(file.string());
            return "Saved as " + file.string();
        };
    }
    auto viewer = std::make_unique<ReportViewer>(report.title, text, std::move(actions));
    overlays_.push_back(viewer.get());
    viewers_.push_back(std::move(viewer));
}

} // namespace tui
