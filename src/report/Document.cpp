#include "report/Document.h"

#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Format.h"
#include "vb/Strings.h"

#include <algorithm>

namespace report {

namespace {

[[noreturn]] void fail(const std::string &what) {
    throw vb::Error(vb::err::InvalidProcedureCall, "report", what);
}

const vb::Variant &parameterValue(const Definition &d, const std::vector<vb::Variant> &values,
                                  std::string_view name) {
    for (std::size_t i = 0; i < d.parameters.size(); ++i) {
        if (vb::StrComp(d.parameters[i].name, name, vb::Compare::Text) == 0) {
            if (i >= values.size() || vb::IsEmpty(values[i])) {
                fail("The parameter " + d.parameters[i].name + " has no value");
            }
            return values[i];
        }
    }
    fail("The report has no parameter " + std::string(name));
}

std::string parameterText(const Definition &d, const std::vector<vb::Variant> &values,
                          std::string_view name) {
    const vb::Variant &value = parameterValue(d, values, name);
    return vb::IsNumeric(value) && !vb::IsDate(value) ? vb::Trim(vb::Str(vb::CDbl(value)))
                                                       : vb::TextOf(value);
}

int displayWidth(std::string_view text) {
    return static_cast<int>(vb::Len(text));
}

std::string fit(std::string text, int width, Align align) {
    if (displayWidth(text) > width) {
        text = vb::Left(text, width);
    }
    const int room = width - displayWidth(text);
    switch (align) {
    case Align::Left:
        return text + std::string(room, ' ');
    case Align::Right:
        return std::string(room, ' ') + text;
    case Align::Center:
        return std::string(room / 2, ' ') + text + std::string(room - room / 2, ' ');
    }
    return text;
}

std::string cellText(const vb::Variant &value, const Column &c) {
    if (!c.format.empty() && vb::IsNumeric(value)) {
        return vb::Format(value, c.format);
    }
    return vb::TextOf(value);
}

/// Fills the placeholders of a text line; {page} and {pages} stay for later.
std::string fill(const std::string &text, const Definition &d,
                 const std::vector<vb::Variant> &values, const Table &table) {
    std::string out;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t open = text.find('{', at);
        const std::size_t close = open == std::string::npos ? open : text.find('}', open);
        if (close == std::string::npos) {
            out += text.substr(at);
            break;
        }
        out += text.substr(at, open - at);
        const std::string name = text.substr(open + 1, close - open - 1);
        if (name == "page" || name == "pages") {
            out += "{" + name + "}";
        } else if (!name.empty() && name.front() == '?') {
            out += parameterText(d, values, name.substr(1));
        } else if (auto col = table.column(name)) {
            out += table.rows.empty() ? "" : vb::TextOf(table.rows.front()[*col]);
        } else {
            fail("The report names {" + name + "}, which is neither a parameter nor a field");
        }
        at = close + 1;
    }
    return out;
}

/// The lines of a block, filled in and fitted to the page; {page} and
/// {pages} take the numbers given before the fitting.
std::vector<std::string> lines(const std::vector<TextLine> &source, const Definition &d,
                               const std::vector<vb::Variant> &values, const Table &table,
                               std::size_t page = 0, std::size_t pages = 0) {
    std::vector<std::string> out;
    for (const TextLine &line : source) {
        std::string text = fill(line.text, d, values, table);
        text = vb::Replace(text, "{page}", std::to_string(page));
        text = vb::Replace(text, "{pages}", std::to_string(pages));
        out.push_back(vb::RTrim(fit(text, d.width, line.align)));
    }
    return out;
}

std::string joinColumns(const std::vector<Column> &columns,
                        const std::vector<std::string> &cells) {
    std::string line;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        line += (i ? " " : "") + fit(cells[i], columns[i].width, columns[i].align);
    }
    return vb::RTrim(line);
}

} // namespace

std::string Document::text() const {
    std::string out;
    for (std::size_t p = 0; p < pages.size(); ++p) {
        if (p) {
            out += "\f\n";
        }
        for (const std::string &line : pages[p]) {
            out += line + "\n";
        }
    }
    return out;
}

std::string boundQuery(const Definition &definition, const std::vector<vb::Variant> &parameters) {
    std::string query = definition.query;
    for (const Parameter &p : definition.parameters) {
        const std::string placeholder = "{?" + p.name + "}";
        if (query.find(placeholder) != std::string::npos) {
            query = vb::Replace(query, placeholder, parameterText(definition, parameters, p.name));
        }
    }
    return query;
}

Document layOut(const Definition &d, const std::vector<vb::Variant> &parameters,
                const Table &table) {
    Document doc{d.title, d.width, d.lines, {}};
    const std::vector<std::string> header = lines(d.header, d, parameters, table);
    const std::vector<std::string> footer = lines(d.footer, d, parameters, table);

    std::vector<std::string> captions;
    int ruleWidth = -1;
    for (const Column &c : d.columns) {
        captions.push_back(c.caption);
        ruleWidth += c.width + 1;
    }
    const std::string rule(static_cast<std::size_t>(std::min(ruleWidth, d.width)), '-');

    // The rows, then what closes the report: a rule and the sums, the footer.
    std::vector<std::string> body;
    std::vector<double> sums(d.columns.size(), 0.0);
    long serial = 0;
    for (const auto &row : table.rows) {
        ++serial;
        std::vector<std::string> cells;
        for (std::size_t i = 0; i < d.columns.size(); ++i) {
            const Column &c = d.columns[i];
            if (c.field == "{serial}") {
                cells.push_back(std::to_string(serial));
                continue;
            }
            const auto col = table.column(c.field);
            if (!col) {
                fail("The column " + c.caption + " shows the field " + c.field +
                     ", which the report's rows lack");
            }
            cells.push_back(cellText(row[*col], c));
            if (c.sum && vb::IsNumeric(row[*col])) {
                sums[i] += vb::CDbl(row[*col]);
            }
        }
        body.push_back(joinColumns(d.columns, cells));
    }
    std::vector<std::string> closing;
    if (table.rows.empty()) {
        closing.push_back(d.emptyText);
    } else if (std::any_of(d.columns.begin(), d.columns.end(), [](auto &c) { return c.sum; })) {
        closing.push_back(rule);
        std::vector<std::string> cells(d.columns.size());
        const auto firstSum = std::find_if(d.columns.begin(), d.columns.end(),
                                           [](auto &c) { return c.sum; }) - d.columns.begin();
        if (firstSum > 0) {
            cells[static_cast<std::size_t>(firstSum - 1)] = d.totalCaption;
        }
        for (std::size_t i = 0; i < d.columns.size(); ++i) {
            if (d.columns[i].sum) {
                cells[i] = cellText(vb::Variant(sums[i]), d.columns[i]);
            }
        }
        closing.push_back(joinColumns(d.columns, cells));
    }
    closing.insert(closing.end(), footer.begin(), footer.end());

    // Pages: what a page holds around its rows is fixed, so the rows fill
    // the rest, and the page numbers are known before any page is written.
    const std::size_t headings = d.pageHeader.size() + 3;
    const std::size_t bottom = static_cast<std::size_t>(d.lines) - d.pageFooter.size();
    if (header.size() + headings >= bottom) {
        fail("The report's headers leave no room for rows on a page of " +
             std::to_string(d.lines) + " lines");
    }
    std::vector<std::vector<std::string>> bodies;
    std::size_t next = 0;
    std::size_t nextClosing = 0;
    do {
        std::vector<std::string> rowsOfPage;
        const std::size_t room = bottom - headings - (bodies.empty() ? header.size() : 0);
        while (next < body.size() && rowsOfPage.size() < room) {
            rowsOfPage.push_back(body[next++]);
        }
        while (next == body.size() && nextClosing < closing.size() && rowsOfPage.size() < room) {
            rowsOfPage.push_back(closing[nextClosing++]);
        }
        rowsOfPage.resize(room);
        bodies.push_back(std::move(rowsOfPage));
    } while (next < body.size() || nextClosing < closing.size());

    for (std::size_t p = 0; p < bodies.size(); ++p) {
        std::vector<std::string> page = p == 0 ? header : std::vector<std::string>{};
        for (std::string &line : lines(d.pageHeader, d, parameters, table, p + 1, bodies.size())) {
            page.push_back(std::move(line));
        }
        page.push_back(rule);
        page.push_back(joinColumns(d.columns, captions));
        page.push_back(rule);
        page.insert(page.end(), bodies[p].begin(), bodies[p].end());
        for (std::string &line : lines(d.pageFooter, d, parameters, table, p + 1, bodies.size())) {
            page.push_back(std::move(line));
        }
        doc.pages.push_back(std::move(page));
    }
    return doc;
}

} // namespace report
