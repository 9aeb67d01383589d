// services::FaultReport: one failure as the fault desk records it, and its log file.
#pragma once

#include "vb/Date.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace services {

/// One failure: where it happened, who met it, what it was.
struct FaultReport {
    std::string source;  // the form or module name
    std::string user;    // the user's name
    std::string routine; // the routine that failed
    std::int32_t number = 0;
    std::string errorSource;
    std::string description;
    std::string mode; // the transaction mode of the session: "N", "E" or empty
    vb::Date time;
};

/// Name of the fault desk's log file in the state directory.
inline constexpr std::string_view faultLogFileName = "faults.log";

/// One line of the log: the time as "yyyy-mm-dd hh:mm:ss", the eight facts
/// of the report and `tableNote` (what became of the fault table's row),
/// separated by tabs. Tabs and line ends inside a fact become blanks, so that
/// a line is always one report.
std::string faultLogLine(const FaultReport &report, std::string_view tableNote);

/// Appends the line to faults.log in `directory`, making the directory if
/// needed. Returns false, and raises nothing, when the file cannot be written:
/// the fault desk reports failures and must not fail itself.
bool appendFaultLog(const std::filesystem::path &directory, const FaultReport &report,
                    std::string_view tableNote);

} // namespace services
