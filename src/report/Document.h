// report::Document: a report laid out into pages of text lines.
#pragma once

#include "report/Definition.h"
#include "report/Table.h"
#include "vb/Variant.h"

#include <string>
#include <string_view>
#include <vector>

namespace report {

/// A report ready to show or print: pages of lines of a fixed width, the
/// same for the terminal's preview and the PDF.
struct Document {
    std::string title;
    int width = 0;
    int linesPerPage = 0;
    std::vector<std::vector<std::string>> pages;

    /// All pages as one text, a form feed line between pages.
    std::string text() const;
};

/// The statement of a report with its {?Name} placeholders replaced by the
/// parameters' values (numbers as the old Str gave them, without the leading
/// blank; text as it is). Raises vb::Error 5 for a parameter that has no value.
std::string boundQuery(const Definition &definition, const std::vector<vb::Variant> &parameters);

/// Lays the rows out into pages: the header on the first page, on every page
/// the page header, the column headings between rule lines, as many rows as
/// fit and the page footer; after the last row a rule, the sums and the
/// footer. Raises vb::Error 5 for a placeholder that names neither a
/// parameter nor a field, or a parameter without a value.
Document layOut(const Definition &definition, const std::vector<vb::Variant> &parameters,
                const Table &table);

} // namespace report
