#include "services/FormSnapshot.h"

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/Control.h"
#include "forms/DatePicker.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/OptionButton.h"
#include "forms/TextBox.h"

#include <charconv>
#include <sstream>

namespace services {

namespace {

using Values = std::vector<std::pair<std::string, std::string>>;

// The exact serial of a date, so that a change of a second shows.
std::string serialText(vb::Date date) {
    std::ostringstream text;
    text.precision(17);
    text << date.serial;
    return text.str();
}

// "name(row)" and "name(row).n" for every cell: an edited entry of thousands of lines
// is snapshot twice per save, so each key is built in one buffer reused from cell to cell
// rather than from three temporaries.
void appendNumber(std::string &out, int n) {
    char digits[12];
    const auto end = std::to_chars(digits, digits + sizeof digits, n).ptr;
    out.append(digits, end);
}

void addListView(Values &values, const std::string &name, const forms::ListView &lvw) {
    const forms::ListItemCollection &items = lvw.ListItems();
    values.emplace_back(name + ".Count", std::to_string(items.Count()));
    std::string key;
    for (int i = 1; i <= items.Count(); ++i) {
        const forms::ListItem &item = items(i);
        key.assign(name);
        key += '(';
        appendNumber(key, i);
        key += ')';
        const std::size_t row = key.size();
        values.emplace_back(key, item.Text());
        for (int n = 1; n <= item.ListSubItemsCount(); ++n) {
            key.resize(row);
            key += '.';
            appendNumber(key, n);
            values.emplace_back(key, item.ListSubItems(n).Text());
        }
    }
}

void addFlexGrid(Values &values, const std::string &name, const forms::FlexGrid &grid) {
    values.emplace_back(name + ".Size",
                        std::to_string(grid.Rows()) + "x" + std::to_string(grid.Cols()));
    std::string key;
    for (int r = 0; r < grid.Rows(); ++r) {
        for (int c = 0; c < grid.Cols(); ++c) {
            key.assign(name);
            key += '(';
            appendNumber(key, r);
            key += ',';
            appendNumber(key, c);
            key += ')';
            values.emplace_back(key, grid.TextMatrix(r, c));
        }
    }
}

void addControl(Values &values, const forms::Control &control) {
    const std::string name = control.qualifiedName();
    switch (control.kind()) {
    case forms::ControlKind::TextBox:
        values.emplace_back(name + ".Text", static_cast<const forms::TextBox &>(control).Text());
        break;
    case forms::ControlKind::ComboBox: {
        const auto &combo = static_cast<const forms::ComboBox &>(control);
        values.emplace_back(name + ".Text", combo.Text());
        values.emplace_back(name + ".ListIndex", std::to_string(combo.ListIndex()));
        break;
    }
    case forms::ControlKind::CheckBox:
        values.emplace_back(name + ".Value",
                            std::to_string(static_cast<const forms::CheckBox &>(control).Value()));
        break;
    case forms::ControlKind::OptionButton:
        values.emplace_back(name + ".Value",
                            static_cast<const forms::OptionButton &>(control).Value() ? "True"
                                                                                      : "False");
        break;
    case forms::ControlKind::DatePicker:
        values.emplace_back(name + ".Value",
                            serialText(static_cast<const forms::DatePicker &>(control).Value()));
        break;
    case forms::ControlKind::ListView:
        addListView(values, name, static_cast<const forms::ListView &>(control));
        break;
    case forms::ControlKind::FlexGrid:
        addFlexGrid(values, name, static_cast<const forms::FlexGrid &>(control));
        break;
    default:
        break; // labels, buttons, frames, menus, pictures, lines: nothing a user enters
    }
}

} // namespace

FormSnapshot snapshotOf(const forms::Form &form) {
    FormSnapshot snapshot;
    for (const forms::Control *control : form.controls()) {
        addControl(snapshot.values, *control);
    }
    return snapshot;
}

} // namespace services
