#include "hosts/script/Run.h"

#include "hosts/script/Failure.h"
#include "hosts/script/Token.h"

#include "vb/Conversion.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <vector>

namespace script {

namespace {

/// The lines of a text, with control characters (a slip's form feed, its
/// printer codes) written as \xNN so that a difference in them shows.
std::vector<std::string> visibleLines(const std::string &text) {
    std::vector<std::string> lines(1);
    for (char c : text) {
        if (c == '\n') {
            lines.emplace_back();
        } else if (static_cast<unsigned char>(c) < 0x20 && c != '\t') {
            char code[8];
            std::snprintf(code, sizeof code, "\\x%02X", static_cast<unsigned char>(c));
            lines.back() += code;
        } else {
            lines.back() += c;
        }
    }
    return lines;
}

std::string parameters(const std::vector<vb::Variant> &values) {
    std::string out;
    for (const vb::Variant &v : values) {
        out += (out.empty() ? "" : ", ") + (v.isNull() ? std::string("NULL") : vb::TextOf(v));
    }
    return out;
}

} // namespace

void Run::expectText(const std::string &what, const std::string &found, const std::string &file) {
    std::filesystem::path path = scenario_.baseDir / file;
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        throw Failure(current_->source, "the expected text in " + path.string(), "no such file");
    }
    std::ostringstream expected;
    expected << in.rdbuf();
    if (expected.str() != found) {
        throw Failure(current_->source + " (" + what + ")", visibleLines(expected.str()),
                      visibleLines(found));
    }
}

void Run::apply(const ExpectOutputStep &step) {
    if (step.kind == ExpectOutputStep::Kind::Printer) {
        expectText("printed on " + step.port, ui_.takePrinted(step.port), step.file);
        return;
    }
    if (step.kind == ExpectOutputStep::Kind::Viewer) {
        auto &shown = ui_.uncheckedTextFiles();
        if (shown.empty()) {
            throw Failure(current_->source, "a text file shown in the viewer", "none");
        }
        ScriptUi::ShownText text = shown.front();
        shown.pop_front();
        expectText("shown from " + text.path, text.text, step.file);
        return;
    }
    auto &reports = ui_.uncheckedReports();
    std::string expected = "report " + inQuotes(step.file) +
                           (step.title ? " title " + inQuotes(*step.title) : std::string());
    if (reports.empty()) {
        throw Failure(current_->source, expected, "no report preview");
    }
    forms::ReportPreview report = reports.front();
    reports.pop_front();
    // A relative report file is the scenario's, from its folder: the program
    // folder of a scenario's `set home` lies there too.
    const std::filesystem::path wanted =
        std::filesystem::path(step.file).is_absolute()
            ? std::filesystem::path(step.file)
            : (scenario_.baseDir / step.file).lexically_normal();
    if (std::filesystem::path(report.reportFile).lexically_normal() != wanted ||
        (step.title && *step.title != report.title)) {
        throw Failure(current_->source, expected,
                      "report " + inQuotes(report.reportFile) + " title " + inQuotes(report.title) +
                          " parameters " + parameters(report.parameters));
    }
}

} // namespace script
