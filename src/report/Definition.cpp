#include "report/Definition.h"

#include "vb/Error.h"
#include "vb/Strings.h"

#include <fstream>
#include <sstream>
#include <system_error>

namespace report {

namespace {

/// A report file larger than this is no report definition.
constexpr std::uintmax_t maxFileSize = 1 << 20;

[[noreturn]] void malformed(std::string_view origin, int lineNo, const std::string &what) {
    throw vb::Error(vb::err::InvalidProcedureCall, "report",
                    std::string(origin) + ":" + std::to_string(lineNo) + ": " + what);
}

int number(std::string_view text, std::string_view origin, int lineNo, int low, int high) {
    const std::string t = vb::Trim(text);
    int value = 0;
    std::size_t used = 0;
    try {
        value = std::stoi(t, &used);
    } catch (const std::exception &) {
        used = 0;
    }
    if (t.empty() || used != t.size() || value < low || value > high) {
        malformed(origin, lineNo,
                  "'" + t + "' is no number from " + std::to_string(low) + " to " +
                      std::to_string(high));
    }
    return value;
}

bool alignOf(std::string_view word, Align &align) {
    const std::string w = vb::LCase(word);
    if (w == "left") {
        align = Align::Left;
    } else if (w == "center") {
        align = Align::Center;
    } else if (w == "right") {
        align = Align::Right;
    } else {
        return false;
    }
    return true;
}

/// "[left|center|right] TEXT"; left when no alignment leads.
TextLine textLine(std::string_view rest) {
    TextLine line;
    const std::size_t blank = rest.find(' ');
    if (alignOf(rest.substr(0, blank), line.align)) {
        line.text = blank == std::string_view::npos ? "" : std::string(rest.substr(blank + 1));
    } else {
        line.text = std::string(rest);
    }
    return line;
}

Column column(std::string_view rest, std::string_view origin, int lineNo) {
    std::vector<std::string> parts = vb::Split(rest, ";");
    for (std::string &part : parts) {
        part = vb::Trim(part);
    }
    if (parts.size() < 4 || parts.size() > 6) {
        malformed(origin, lineNo,
                  "a column is CAPTION; FIELD; WIDTH; ALIGN, then a number pattern and 'sum' if wanted");
    }
    Column c;
    c.caption = parts[0];
    c.field = parts[1];
    if (c.field.empty()) {
        malformed(origin, lineNo, "the column " + c.caption + " names no field");
    }
    c.width = number(parts[2], origin, lineNo, 1, 200);
    if (!alignOf(parts[3], c.align)) {
        malformed(origin, lineNo, "'" + parts[3] + "' is no alignment (left, center, right)");
    }
    for (std::size_t i = 4; i < parts.size(); ++i) {
        if (vb::LCase(parts[i]) == "sum") {
            c.sum = true;
        } else {
            c.format = parts[i];
        }
    }
    return c;
}

} // namespace

Definition parseDefinition(std::string_view text, std::string_view origin) {
    Definition d;
    std::istringstream in{std::string(text)};
    std::string raw;
    int lineNo = 0;
    while (std::getline(in, raw)) {
        ++lineNo;
        if (!raw.empty() && raw.back() == '\r') {
            raw.pop_back();
        }
        const std::string line = vb::Trim(raw);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        const std::size_t blank = line.find(' ');
        const std::string keyword = vb::LCase(line.substr(0, blank));
        const std::string rest = blank == std::string::npos ? "" : vb::Trim(line.substr(blank + 1));
        if (keyword == "title") {
            d.title = rest;
        } else if (keyword == "size") {
            const std::vector<std::string> sizes = vb::Split(rest, " ");
            if (sizes.size() != 2) {
                malformed(origin, lineNo, "size is WIDTH LINES");
            }
            d.width = number(sizes[0], origin, lineNo, 20, 250);
            d.lines = number(sizes[1], origin, lineNo, 10, 200);
        } else if (keyword == "parameter") {
            const std::vector<std::string> words = vb::Split(rest, " ");
            if (words.size() != 2 || (words[1] != "number" && words[1] != "text")) {
                malformed(origin, lineNo, "a parameter is NAME number or NAME text");
            }
            d.parameters.push_back({words[0], words[1]});
        } else if (keyword == "query") {
            d.query += (d.query.empty() ? "" : " ") + rest;
        } else if (keyword == "header") {
            d.header.push_back(textLine(rest));
        } else if (keyword == "pageheader") {
            d.pageHeader.push_back(textLine(rest));
        } else if (keyword == "column") {
            d.columns.push_back(column(rest, origin, lineNo));
        } else if (keyword == "total") {
            d.totalCaption = rest;
        } else if (keyword == "footer") {
            d.footer.push_back(textLine(rest));
        } else if (keyword == "pagefooter") {
            d.pageFooter.push_back(textLine(rest));
        } else if (keyword == "empty") {
            d.emptyText = rest;
        } else {
            malformed(origin, lineNo, "unknown keyword '" + keyword + "'");
        }
    }
    if (d.query.empty()) {
        malformed(origin, lineNo, "the report has no query");
    }
    if (d.columns.empty()) {
        malformed(origin, lineNo, "the report has no column");
    }
    return d;
}

Definition readDefinition(const std::filesystem::path &file) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) {
        // The old engine's words for a report file it could not find.
        throw vb::Error(InvalidFileName, "report", "Invalid file name.");
    }
    if (std::filesystem::file_size(file, error) > maxFileSize || error) {
        throw vb::Error(vb::err::PathFileAccessError, "report",
                        file.string() + " is too large to be a report definition");
    }
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    if (!in) {
        throw vb::Error(vb::err::PathFileAccessError, "report", "cannot read " + file.string());
    }
    const std::string bytes = text.str();
    if (bytes.find('\0') != std::string::npos) {
        throw vb::Error(vb::err::PathFileAccessError, "report",
                        file.string() + " is not a report definition (binary data)");
    }
    return parseDefinition(bytes, file.string());
}

} // namespace report
