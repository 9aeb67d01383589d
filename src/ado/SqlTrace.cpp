#include "ado/SqlTrace.h"

#include <chrono>
#include <cstdio>
#include <ctime>

namespace ado {

namespace {

std::string wallClock() {
    auto now = std::chrono::system_clock::now();
    std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    auto ms = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()) % 1000;
    std::tm local{};
    localtime_r(&seconds, &local);
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d.%03d", local.tm_year + 1900,
                  local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec,
                  static_cast<int>(ms.count()));
    return buffer;
}

} // namespace

void SqlTrace::open(std::string_view path) {
    out_.close();
    path_ = path;
    if (path_.empty())
        return;
    out_.open(path_, std::ios::app);
    if (!out_)
        throw vb::Error(75, "ADODB.Connection",
                        "Path/File access error: cannot write the SQL trace '" + path_ + "'");
}

// A label and its text; the lines of a text of several lines line up under the first.
void SqlTrace::line(std::string_view label, std::string_view text) {
    out_ << label;
    for (std::size_t i = label.size(); i < 9; ++i)
        out_ << ' ';
    for (char c : text) {
        if (c == '\r')
            continue;
        out_ << c;
        if (c == '\n')
            out_ << "         ";
    }
    out_ << '\n';
}

void SqlTrace::write(const Call &call) {
    if (!active())
        return;
    out_ << '#' << call.sequence << ' ' << wallClock() << ' ' << call.what << '\n';
    if (!call.sent.empty())
        line("sent:", call.sent);
    if (!call.log.translated.empty())
        line("sqlite:", call.log.translated);
    if (call.error) {
        line("error:", std::to_string(call.error->number()) + " " + call.error->description());
    } else if (call.log.rows >= 0) {
        line("rows:", std::to_string(call.log.rows) + " " + call.log.rowsMeaning);
    } else if (call.log.rowsMeaning == "read") {
        line("rows:", "not read yet");
    }
    char ms[32];
    std::snprintf(ms, sizeof ms, "%.3f ms", call.milliseconds);
    line("time:", ms);
    out_ << '\n';
    out_.flush();
}

void SqlTrace::writeClosed(long sequence, long read, long added, long changed) {
    if (!active())
        return;
    out_ << '#' << sequence << ' ' << wallClock() << " close\n";
    line("rows:", std::to_string(read) + " read, " + std::to_string(added) + " added, " +
                      std::to_string(changed) + " changed");
    out_ << '\n';
    out_.flush();
}

} // namespace ado
