#include "hosts/script/Run.h"

#include "hosts/script/Text.h"

#include "hosts/script/ControlProperties.h"
#include "hosts/script/Failure.h"
#include "hosts/script/FormDump.h"
#include "hosts/script/Token.h"

#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/ListView.h"

#include "ado/Recordset.h"
#include "ado/Session.h"

#include "vb/Conversion.h"
#include "vb/DateFormat.h"

#include <algorithm>
#include <iostream>

namespace script {

namespace {

std::string joined(const std::vector<std::string> &cells) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        line += (i ? "|" : "") + std::string(trimBlanks(cells[i]));
    }
    return line;
}

std::vector<std::string> lines(const Rows &rows) {
    std::vector<std::string> out;
    for (const auto &row : rows) {
        out.push_back(joined(row));
    }
    return out;
}

/// Compares rows value by value; blanks at either end of a value do not count.
void compareRows(const std::string &what, const Rows &expected, const Rows &found) {
    auto same = [](const std::vector<std::string> &a, const std::vector<std::string> &b) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](const std::string &x, const std::string &y) {
                              return trimBlanks(x) == trimBlanks(y);
                          });
    };
    if (!std::equal(expected.begin(), expected.end(), found.begin(), found.end(), same)) {
        throw Failure(what, lines(expected), lines(found));
    }
}

/// A database value as a rows block writes it, as `stockverify sql` prints
/// it, so that its output can be pasted under `expect rows`: dates as
/// YYYY-MM-DD (with the time when there is one), bits as 1 or 0, numbers as
/// CStr gives them; but NULL for null, which must not pass for empty text.
std::string cellText(const vb::Variant &value) {
    if (value.isNull()) {
        return "NULL";
    }
    if (value.isDate()) {
        return vb::formatDate(value.asDate(),
                              value.asDate().hasTime() ? "yyyy-mm-dd hh:nn:ss" : "yyyy-mm-dd");
    }
    if (value.isBoolean()) {
        return value.asBoolean() ? "1" : "0";
    }
    return vb::TextOf(value);
}

std::string listCell(const forms::ListItem &item, int col) {
    return col == 1 ? item.Text() : item.SubItems(col - 1);
}

int listColumns(const forms::ListView &list) {
    return std::max(1, list.ColumnHeaders().Count());
}

Rows gridRows(const forms::FlexGrid &grid) {
    Rows rows;
    for (int r = grid.FixedRows(); r < grid.Rows(); ++r) {
        std::vector<std::string> row;
        for (int c = 0; c < grid.Cols(); ++c) {
            row.push_back(grid.TextMatrix(r, c));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

Rows listRows(const forms::ListView &list) {
    Rows rows;
    for (int i = 1; i <= list.ListItems().Count(); ++i) {
        std::vector<std::string> row;
        for (int c = 1; c <= listColumns(list); ++c) {
            row.push_back(listCell(list.ListItems()(i), c));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::string listOf(const std::vector<std::string> &names) {
    std::string out;
    for (const auto &n : names) {
        out += (out.empty() ? "" : ", ") + n;
    }
    return out;
}

void compareValue(const std::string &what, const std::string &expected, const std::string &found) {
    if (expected != found) {
        throw Failure(what, inQuotes(expected), inQuotes(found));
    }
}

} // namespace

void Run::apply(const ExpectPropertyStep &step) {
    const ControlRef &ref = step.control;
    forms::Control *target = findControl(ref);
    std::optional<std::string> value;
    std::vector<std::string> known;
    if (target) {
        value = controlProperty(*target, step.property);
        known = controlPropertyNames(*target);
    } else if (forms::Form *form =
                   ref.form.empty() && ref.index < 0 ? findShownForm(ref.name) : nullptr) {
        value = formProperty(*form, step.property);
        known = formPropertyNames();
    } else {
        control(ref); // raises: no such control
    }
    if (!value) {
        throw Failure(ref.text() + " has no property " + step.property, "one of " + listOf(known),
                      step.property);
    }
    compareValue(current_->source, step.value, *value);
}

void Run::apply(const ExpectCellStep &step) {
    forms::Control &target = control(step.control);
    std::string found;
    std::string where = "row " + std::to_string(step.row) + ", column " + std::to_string(step.col);
    if (target.kind() == forms::ControlKind::FlexGrid) {
        const auto &grid = static_cast<const forms::FlexGrid &>(target);
        if (step.row < 0 || step.row >= grid.Rows() || step.col < 0 || step.col >= grid.Cols()) {
            throw Failure(current_->source, "a cell at " + where,
                          std::to_string(grid.Rows()) + " rows and " + std::to_string(grid.Cols()) +
                              " columns");
        }
        found = grid.TextMatrix(step.row, step.col);
    } else if (target.kind() == forms::ControlKind::ListView) {
        const auto &list = static_cast<const forms::ListView &>(target);
        if (step.row < 1 || step.row > list.ListItems().Count() || step.col < 1 ||
            step.col > listColumns(list)) {
            throw Failure(current_->source, "a cell at " + where,
                          std::to_string(list.ListItems().Count()) + " rows and " +
                              std::to_string(listColumns(list)) + " columns");
        }
        found = listCell(list.ListItems()(step.row), step.col);
    } else {
        throw Failure(current_->source, "a grid or a list",
                      target.qualifiedName() + " is a " + kindName(target));
    }
    compareValue(current_->source, step.value, found);
}

void Run::apply(const ExpectControlRowsStep &step) {
    forms::Control &target = control(step.control);
    if (target.kind() == forms::ControlKind::FlexGrid) {
        compareRows(current_->source, step.rows,
                    gridRows(static_cast<const forms::FlexGrid &>(target)));
    } else if (target.kind() == forms::ControlKind::ListView) {
        compareRows(current_->source, step.rows,
                    listRows(static_cast<const forms::ListView &>(target)));
    } else {
        throw Failure(current_->source, "a grid or a list",
                      target.qualifiedName() + " is a " + kindName(target));
    }
}

void Run::apply(const ExpectFocusStep &step) {
    forms::Form &form = shownForm(step.control ? step.control->form : std::string());
    forms::Control *focused = form.ActiveControl();
    std::string found = focused ? focused->qualifiedName() : "none";
    if (step.negated) {
        forms::Control *unwanted = step.control ? &control(*step.control) : nullptr;
        if (focused == unwanted) {
            throw Failure(current_->source,
                          "the focus anywhere but on " +
                              (unwanted ? unwanted->qualifiedName() : std::string("none")),
                          found);
        }
        return;
    }
    if (!step.control) {
        compareValue(current_->source, "none", found);
        return;
    }
    forms::Control &wanted = control(*step.control);
    if (&wanted != focused) {
        throw Failure(current_->source, wanted.qualifiedName(), found);
    }
}

void Run::apply(const ExpectPointerStep &step) {
    int pointer = screen_.effectivePointer();
    if (pointer != step.pointer) {
        throw Failure(current_->source, std::to_string(step.pointer), std::to_string(pointer));
    }
}

void Run::apply(const ExpectFormStep &step) {
    bool ok = false;
    std::string expected;
    std::string found = "shown: " + shownFormNames();
    switch (step.state) {
    case ExpectFormStep::State::Shown:
        ok = findShownForm(step.form) != nullptr;
        expected = step.form + " shown";
        break;
    case ExpectFormStep::State::Closed:
        ok = findShownForm(step.form) == nullptr;
        expected = step.form + " closed";
        break;
    case ExpectFormStep::State::Active: {
        forms::Form *active = screen_.ActiveForm();
        ok = active && findShownForm(step.form) == active;
        expected = step.form + " active";
        found = "active: " + (active ? active->Name() : std::string("none"));
        break;
    }
    }
    if (!ok) {
        throw Failure(current_->source, expected, found);
    }
}

void Run::apply(const ExpectMsgBoxStep &step) {
    auto &boxes = ui_.uncheckedBoxes();
    std::string expected = inQuotes(step.text);
    if (step.style) {
        expected += " style " + std::to_string(*step.style);
    }
    if (step.title) {
        expected += " title " + inQuotes(*step.title);
    }
    if (step.untitled) {
        expected += " untitled";
    }
    if (boxes.empty()) {
        throw Failure(current_->source, "message box " + expected, "no message box");
    }
    ScriptUi::Box box = boxes.front();
    boxes.pop_front();
    // A title named on the line is a title the box gave itself: a box that
    // left it out carries the application's title and does not match it.
    if (box.prompt != step.text || (step.style && *step.style != box.buttons) ||
        (step.title && (box.untitled || *step.title != box.title)) ||
        (step.untitled && !box.untitled)) {
        throw Failure(current_->source, "message box " + expected,
                      "message box " +
                          describeBox(box.prompt, box.buttons, box.title, box.untitled));
    }
}

void Run::apply(const ExpectRowsStep &step) {
    ado::Session::Unobserved scenarioOwn(connection_.session());
    ado::Recordset rs = connection_.Execute(step.query);
    Rows found;
    if (rs.State() == 0) {
        throw Failure(current_->source, "a statement that returns rows",
                      "a statement that returns none");
    }
    while (!rs.Eof()) {
        std::vector<std::string> row;
        for (int i = 0; i < rs.Fields().Count(); ++i) {
            row.push_back(cellText(rs.Fields(i).Value()));
        }
        found.push_back(std::move(row));
        rs.MoveNext();
    }
    compareRows(current_->source, step.rows, found);
}

void Run::apply(const ExpectColumnStep &step) {
    forms::Control &target = control(step.control);
    int width = 0;
    int alignment = 0;
    int position = 0;
    if (target.kind() == forms::ControlKind::FlexGrid) {
        const auto &grid = static_cast<const forms::FlexGrid &>(target);
        if (step.col < 0 || step.col >= grid.Cols()) {
            throw Failure(current_->source, "a column " + std::to_string(step.col),
                          std::to_string(grid.Cols()) + " columns, from 0");
        }
        width = grid.ColWidth(step.col);
        alignment = grid.ColAlignment(step.col);
        // A grid shows its columns in their order; those of width 0 take no
        // place, so the position is what a person counts from the left.
        if (width > 0) {
            for (int c = 0; c <= step.col; ++c) {
                position += grid.ColWidth(c) > 0 ? 1 : 0;
            }
        }
    } else if (target.kind() == forms::ControlKind::ListView) {
        const auto &list = static_cast<const forms::ListView &>(target);
        if (step.col < 1 || step.col > list.ColumnHeaders().Count()) {
            throw Failure(current_->source, "a column " + std::to_string(step.col),
                          std::to_string(list.ColumnHeaders().Count()) + " columns, from 1");
        }
        const forms::ColumnHeader &column = list.ColumnHeaders()(step.col);
        width = column.Width();
        alignment = column.Alignment();
        position = column.Position();
    } else {
        throw Failure(current_->source, "a grid or a list",
                      target.qualifiedName() + " is a " + kindName(target));
    }
    std::string expected;
    std::string found;
    auto part = [&](const char *name, const std::optional<int> &wanted, int value) {
        if (wanted) {
            expected += std::string(expected.empty() ? "" : " ") + name + " " +
                        std::to_string(*wanted);
            found += std::string(found.empty() ? "" : " ") + name + " " + std::to_string(value);
        }
    };
    part("width", step.width, width);
    part("alignment", step.alignment, alignment);
    part("position", step.position, position);
    if (expected != found) {
        throw Failure(current_->source, expected, found);
    }
}

namespace {

/// A statement as an `expect sql` block writes it: as it is, or in quotes
/// when blanks at an end or a line break would be lost on a plain line.
std::string statementLine(const std::string &statement) {
    bool plain = !statement.empty() && trimBlanks(statement) == statement &&
                 statement.front() != '"' && statement.front() != '#' &&
                 statement.find_first_of("\r\n\t") == std::string::npos;
    return plain ? statement : inQuotes(statement);
}

} // namespace

void Run::apply(const ExpectSqlStep &step) {
    std::vector<std::string> found = connection_.takeStatements();
    if (found != step.statements) {
        std::vector<std::string> expectedLines;
        std::vector<std::string> foundLines;
        for (const auto &s : step.statements) {
            expectedLines.push_back(statementLine(s));
        }
        for (const auto &s : found) {
            foundLines.push_back(statementLine(s));
        }
        throw Failure(current_->source, expectedLines, foundLines);
    }
}

void Run::apply(const ExpectErrorStep &step) {
    std::string expected = "error " + std::to_string(step.number) +
                           (step.description ? ": " + *step.description : std::string());
    if (!hostError_) {
        throw Failure(current_->source, expected, "no error");
    }
    vb::Error error = std::move(*hostError_);
    hostError_.reset();
    if (error.number() != step.number ||
        (step.description && *step.description != error.description())) {
        throw Failure(current_->source, expected,
                      "error " + std::to_string(error.number()) + ": " + error.description());
    }
}

void Run::apply(const DumpStep &step) {
    dumpForm(shownForm(step.form), options_.dumpOutput ? *options_.dumpOutput : std::cout);
}

} // namespace script
