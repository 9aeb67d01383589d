#include "hosts/script/FormDump.h"

#include "hosts/script/ControlProperties.h"
#include "hosts/script/Token.h"

#include "forms/ComboBox.h"
#include "forms/Control.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/Screen.h"

#include <algorithm>
#include <iomanip>

namespace script {

namespace {

constexpr int nameWidth = 18;
constexpr int kindWidth = 14;

std::string indent() {
    return std::string(2 + nameWidth + kindWidth, ' ');
}

void gridRows(const forms::FlexGrid &grid, std::ostream &out) {
    for (int r = 0; r < grid.Rows(); ++r) {
        out << indent() << "|";
        for (int c = 0; c < grid.Cols(); ++c) {
            out << " " << grid.TextMatrix(r, c) << " |";
        }
        out << "\n";
    }
}

void listRows(const forms::ListView &list, std::ostream &out) {
    int columns = std::max(1, list.ColumnHeaders().Count());
    out << indent() << "|";
    for (int c = 1; c <= list.ColumnHeaders().Count(); ++c) {
        out << " " << list.ColumnHeaders()(c).Text() << " |";
    }
    out << "\n";
    for (int i = 1; i <= list.ListItems().Count(); ++i) {
        const forms::ListItem &item = list.ListItems()(i);
        out << indent() << "|";
        for (int c = 1; c <= columns; ++c) {
            out << " " << (c == 1 ? item.Text() : item.SubItems(c - 1)) << " |";
        }
        out << (item.Selected() ? " selected" : "") << "\n";
    }
}

/// What the control shows: its caption or text, or a summary of its items.
std::string shown(const forms::Control &control) {
    using forms::ControlKind;
    switch (control.kind()) {
    case ControlKind::FlexGrid: {
        const auto &grid = static_cast<const forms::FlexGrid &>(control);
        return std::to_string(grid.Rows()) + "x" + std::to_string(grid.Cols()) + " row " +
               std::to_string(grid.Row()) + " col " + std::to_string(grid.Col());
    }
    case ControlKind::ListView:
        return std::to_string(static_cast<const forms::ListView &>(control).ListItems().Count()) +
               " items";
    case ControlKind::ComboBox: {
        const auto &combo = static_cast<const forms::ComboBox &>(control);
        std::string items;
        for (int i = 0; i < combo.ListCount(); ++i) {
            items += (i ? ", " : "") + combo.List(i);
        }
        return inQuotes(combo.Text()) + " [" + items + "]";
    }
    case ControlKind::DatePicker:
        return *controlProperty(control, "Value");
    default:
        break;
    }
    for (const char *property : {"Text", "Caption"}) {
        if (auto value = controlProperty(control, property)) {
            return inQuotes(*value);
        }
    }
    return "";
}

std::string state(const forms::Control &control) {
    std::string out;
    if (control.kind() == forms::ControlKind::CheckBox ||
        control.kind() == forms::ControlKind::OptionButton) {
        out += " value " + *controlProperty(control, "Value");
    }
    if (!control.Enabled()) {
        out += " disabled";
    }
    if (!control.Visible()) {
        out += " hidden";
    }
    if (control.hasFocus()) {
        out += " focus";
    }
    return out;
}

} // namespace

void dumpForm(const forms::Form &form, std::ostream &out) {
    const forms::Screen &screen = form.screen();
    out << "form " << form.Name() << " " << inQuotes(form.Caption());
    if (screen.ActiveForm() == &form) {
        out << " active";
    } else if (!form.Visible()) {
        out << " hidden";
    }
    out << (form.isModal() ? " modal" : "") << "\n";
    for (const forms::Control *control : form.controls()) {
        out << "  " << std::left << std::setw(nameWidth) << control->qualifiedName() + " "
            << std::setw(kindWidth) << kindName(*control) + " " << shown(*control)
            << state(*control) << "\n";
        if (control->kind() == forms::ControlKind::FlexGrid) {
            gridRows(static_cast<const forms::FlexGrid &>(*control), out);
        } else if (control->kind() == forms::ControlKind::ListView) {
            listRows(static_cast<const forms::ListView &>(*control), out);
        }
    }
}

} // namespace script
