// report::Definition: a report file of the project's own format, read into its parts.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace report {

enum class Align { Left, Center, Right };

/// A line of text with placeholders: {?Name} a parameter, {Field} a field of
/// the first row, {page} and {pages} the page numbers.
struct TextLine {
    Align align = Align::Left;
    std::string text;
};

/// A column of the detail rows: its heading, the field it shows ({serial}
/// counts the rows from 1), its width in characters, its alignment, a number
/// pattern ("0.000") or none, and whether the total line sums it.
struct Column {
    std::string caption;
    std::string field;
    int width = 10;
    Align align = Align::Left;
    std::string format;
    bool sum = false;
};

struct Parameter {
    std::string name;
    /// "number" or "text": what the value is shown as.
    std::string kind;
};

/// What a report file says. docs/printing.md describes the format.
struct Definition {
    std::string title;
    /// Characters on a line and lines on a page.
    int width = 96;
    int lines = 60;
    std::vector<Parameter> parameters;
    /// The statement of the rows, SQL Server text with {?Name} placeholders.
    std::string query;
    /// Printed once, at the top of the first page.
    std::vector<TextLine> header;
    /// Printed at the top of every page, above the column headings.
    std::vector<TextLine> pageHeader;
    std::vector<Column> columns;
    /// Caption of the line of sums, under the first column that is not summed.
    std::string totalCaption;
    /// Printed once, after the rows and totals.
    std::vector<TextLine> footer;
    /// Printed at the foot of every page.
    std::vector<TextLine> pageFooter;
    /// Shown when the statement brings no rows.
    std::string emptyText;
};

/// Reads a report definition from its text. Raises vb::Error 5 naming the
/// line for an unknown keyword, a malformed column or a missing query.
/// `origin` names the file in messages.
Definition parseDefinition(std::string_view text, std::string_view origin);

/// The engine's number for a report file it cannot find.
inline constexpr std::int32_t InvalidFileName = 20504;

/// Reads a report file. Raises vb::Error InvalidFileName when it does not
/// exist, with the old engine's words "Invalid file name.", 75 when it cannot be read or is
/// not text, and what parseDefinition raises.
Definition readDefinition(const std::filesystem::path &file);

} // namespace report
