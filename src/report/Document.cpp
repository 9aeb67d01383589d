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

std::vector<std::string> lines(const std::vector<TextLine> &source, const Definition &d,
                               const std::vector<vb::Variant> &values, const Table &table) {
    std::vector<std::string> out;
    for (const TextLine &line : source) {
        out.push_back(vb::RTrim(fit(fill(line.text, d, values, table), d.width, line.align)));
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

void replaceAll(std::string &text, std::string_view what, std::string_view with) {
    text = vb::Replace(text, what, with);
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
            replaceAll(query, placeholder, parameterText(definition, parameters, p.name));
        }
    }
    return query;
}

Document layOut(const Definition &d, const std::vector<vb::Variant> &parameters,
                const Table &table) {
    Document doc{d.title, d.width, d.lines, {}};
    const std::vector<std::string> header = lines(d.header, d, parameters, table);
    const std::vector<std::string> pageHeader = lines(d.pageHeader, d, parameters, table);
    const std::vector<std::string> footer = lines(d.footer, d, parameters, table);
    const std::vector<std::string> pageFooter = lines(d.pageFooter, d, parameters, table);

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

    // Pages: what a page holds around its rows is fixed, so rows fill the rest.
    std::size_t next = 0;
    std::size_t nextClosing = 0;
    do {
        std::vector<std::string> page;
        if (doc.pages.empty()) {
            page = header;
        }
        page.insert(page.end(), pageHeader.begin(), pageHeader.end());
        page.push_back(rule);
        page.push_back(joinColumns(d.columns, captions));
        page.push_back(rule);
        const std::size_t bottom = static_cast<std::size_t>(d.lines) - pageFooter.size();
        if (page.size() >= bottom) {
            fail("The report's headers leave no room for rows on a page of " +
                 std::to_string(d.lines) + " lines");
        }
        while (next < body.size() && page.size() < bottom) {
            page.push_back(body[next++]);
        }
        while (next == body.size() && nextClosing < closing.size() && page.size() < bottom) {
            page.push_back(closing[nextClosing++]);
        }
        page.resize(bottom);
        page.insert(page.end(), pageFooter.begin(), pageFooter.end());
        doc.pages.push_back(std::move(page));
    } while (next < body.size() || nextClosing < closing.size());

    const std::string pages = std::to_string(doc.pages.size());
    for (std::size_t p = 0; p < doc.pages.size(); ++p) {
        for (std::string &line : doc.pages[p]) {
            replaceAll(line, "{page}", std::to_string(p + 1));
            replaceAll(line, "{pages}", pages);
        }
    }
    return doc;
}

} // namespace report
