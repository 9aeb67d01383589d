#include "services/FaultReport.h"

#include "vb/Format.h"

#include <fstream>
#include <system_error>

namespace services {

namespace {

std::string oneLine(std::string_view text) {
    std::string line(text);
    for (char &c : line) {
        if (c == '\t' || c == '\r' || c == '\n') {
            c = ' ';
        }
    }
    return line;
}

} // namespace

std::string faultLogLine(const FaultReport &report, std::string_view tableNote) {
    const std::string number = std::to_string(report.number);
    std::string line = vb::Format(report.time, "yyyy-mm-dd hh:mm:ss");
    for (std::string_view fact :
         {std::string_view(report.source), std::string_view(report.user),
          std::string_view(report.routine), std::string_view(number),
          std::string_view(report.errorSource), std::string_view(report.description),
          std::string_view(report.mode), tableNote}) {
        line += '\t';
        line += oneLine(fact);
    }
    return line;
}

bool appendFaultLog(const std::filesystem::path &directory, const FaultReport &report,
                    std::string_view tableNote) {
    std::error_code error;
    std::filesystem::create_directories(directory, error);
    if (error) {
        return false;
    }
    std::ofstream log(directory / faultLogFileName, std::ios::app);
    log << faultLogLine(report, tableNote) << '\n';
    log.flush();
    return static_cast<bool>(log);
}

} // namespace services
