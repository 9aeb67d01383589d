#include "hosts/script/Run.h"

#include "hosts/script/ControlProperties.h"
#include "hosts/script/Failure.h"
#include "hosts/script/Token.h"

#include "forms/ComboBox.h"
#include "forms/DatePicker.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/Input.h"
#include "forms/ListView.h"

#include "vb/Date.h"
#include "vb/DateText.h"

#include <optional>

#include <string>

namespace script {

namespace {

using forms::ControlKind;

Failure wrongKind(const forms::Control &control, std::string_view wanted) {
    return Failure("the line does not fit " + control.qualifiedName(), std::string(wanted),
                   control.qualifiedName() + " is a " + kindName(control));
}

void requireGridCell(const forms::FlexGrid &grid, int row, int col) {
    if (row < 0 || row >= grid.Rows() || col < 0 || col >= grid.Cols()) {
        throw Failure("no cell " + std::to_string(row) + " " + std::to_string(col) + " in " +
                          grid.Name(),
                      "a cell within " + std::to_string(grid.Rows()) + " rows and " +
                          std::to_string(grid.Cols()) + " columns",
                      "row " + std::to_string(row) + ", column " + std::to_string(col));
    }
}

void requireListRow(const forms::ListView &list, int row) {
    if (row < 1 || row > list.ListItems().Count()) {
        throw Failure("no row " + std::to_string(row) + " in " + list.Name(),
                      "a row from 1 to " + std::to_string(list.ListItems().Count()),
                      "row " + std::to_string(row));
    }
}

/// The column a person clicks to pick a grid row: the first one that shows,
/// past the fixed columns (a column of width 0 holds hidden ids).
int firstShownColumn(const forms::FlexGrid &grid) {
    for (int c = grid.FixedCols(); c < grid.Cols(); ++c) {
        if (grid.ColWidth(c) > 0) {
            return c;
        }
    }
    return grid.FixedCols() < grid.Cols() ? grid.FixedCols() : 0;
}

bool onGrid(forms::Input &input, PointerStep::Gesture gesture, forms::FlexGrid &grid, int row,
            int col) {
    requireGridCell(grid, row, col);
    switch (gesture) {
    case PointerStep::Gesture::Click:
        return input.clickCell(grid, row, col);
    case PointerStep::Gesture::DblClick:
        return input.dblClickCell(grid, row, col);
    case PointerStep::Gesture::Hover:
        return input.mouseMoveCell(grid, row, col);
    case PointerStep::Gesture::RightClick:
        break;
    }
    throw wrongKind(grid, "a list for a right click on a row");
}

bool onList(forms::Input &input, PointerStep::Gesture gesture, forms::ListView &list,
            const Spot &spot) {
    if (spot.kind == Spot::Kind::Column) {
        if (spot.col < 1 || spot.col > list.ColumnHeaders().Count()) {
            throw Failure("no column " + std::to_string(spot.col) + " in " + list.Name(),
                          "a column from 1 to " + std::to_string(list.ColumnHeaders().Count()),
                          "column " + std::to_string(spot.col));
        }
        return input.clickColumn(list, spot.col);
    }
    requireListRow(list, spot.row);
    switch (gesture) {
    case PointerStep::Gesture::Click:
        return input.clickItem(list, spot.row);
    case PointerStep::Gesture::DblClick:
        return input.dblClickItem(list, spot.row);
    case PointerStep::Gesture::RightClick:
        return input.rightClickItem(list, spot.row);
    case PointerStep::Gesture::Hover:
        break;
    }
    throw wrongKind(list, "a grid for hover on a cell");
}

bool onControl(forms::Input &input, PointerStep::Gesture gesture, forms::Control &control) {
    switch (gesture) {
    case PointerStep::Gesture::Click:
        return input.click(control);
    case PointerStep::Gesture::DblClick:
        return input.dblClick(control);
    case PointerStep::Gesture::RightClick:
        return input.rightClick(control);
    case PointerStep::Gesture::Hover:
        return input.mouseMove(control);
    }
    return false;
}

} // namespace

bool Run::gesture(const PointerStep &step, forms::Control &control) {
    forms::Input input(screen_);
    const Spot &spot = step.spot;
    if (spot.kind == Spot::Kind::Control) {
        return onControl(input, step.gesture, control);
    }
    if (control.kind() == ControlKind::ListView && spot.kind != Spot::Kind::Cell) {
        return onList(input, step.gesture, static_cast<forms::ListView &>(control), spot);
    }
    if (control.kind() == ControlKind::FlexGrid && spot.kind != Spot::Kind::Column) {
        auto &grid = static_cast<forms::FlexGrid &>(control);
        int col = spot.kind == Spot::Kind::Row ? firstShownColumn(grid) : spot.col;
        return onGrid(input, step.gesture, grid, spot.row, col);
    }
    throw wrongKind(control, spot.kind == Spot::Kind::Row    ? "a grid or a list"
                             : spot.kind == Spot::Kind::Cell ? "a grid"
                                                             : "a list");
}

void Run::refused(const forms::Control &control) const {
    throw Failure(current_->source + ": the input reached nothing",
                  control.qualifiedName() + " to take it", whyRefused(control));
}

void Run::apply(const PointerStep &step) {
    requireBoxesChecked();
    forms::Control &target = control(step.control);
    ui_.setPopupChoice(step.menuChoice);
    bool reached = gesture(step, target);
    if (ui_.popupChoicePending()) {
        ui_.setPopupChoice(std::nullopt);
        throw Failure("no popup menu came", "a popup menu to choose " + inQuotes(*step.menuChoice),
                      "none");
    }
    if (!reached) {
        refused(target);
    }
}

void Run::apply(const TypeStep &step) {
    requireBoxesChecked();
    forms::Form &form = activeForm();
    if (!forms::Input(screen_).typeText(step.text)) {
        throw Failure("type " + inQuotes(step.text) + ": the keys reached nothing",
                      "a form that takes keys", form.Name() + " is disabled");
    }
}

void Run::apply(const PressStep &step) {
    requireBoxesChecked();
    for (const forms::KeyStroke &key : step.keys) {
        forms::Form &form = activeForm();
        if (!forms::Input(screen_).keyStroke(key)) {
            throw Failure(current_->source + ": the key reached nothing", "a form that takes keys",
                          form.Name() + " is disabled");
        }
    }
}

void Run::apply(const ChooseStep &step) {
    requireBoxesChecked();
    forms::Control &target = control(step.control);
    forms::Input input(screen_);
    bool reached = false;
    if (target.kind() == ControlKind::ComboBox) {
        auto &combo = static_cast<forms::ComboBox &>(target);
        std::string items;
        for (int i = 0; i < combo.ListCount(); ++i) {
            if (combo.List(i) == step.item) {
                reached = input.chooseItem(combo, i);
                if (!reached) {
                    refused(target);
                }
                return;
            }
            items += (items.empty() ? "" : ", ") + inQuotes(combo.List(i));
        }
        throw Failure(combo.Name() + " has no item " + inQuotes(step.item),
                      "an item " + inQuotes(step.item),
                      "items: " + (items.empty() ? "none" : items));
    }
    if (target.kind() != ControlKind::DatePicker) {
        throw wrongKind(target, "a combo box or a date picker");
    }
    std::optional<vb::Date> date = vb::dateFromText(step.item);
    if (!date) {
        throw Failure("choose on the date picker " + target.Name() + " wants a date",
                      "a date as YYYY-MM-DD", inQuotes(step.item));
    }
    reached = input.setDate(static_cast<forms::DatePicker &>(target), *date);
    if (!reached) {
        refused(target);
    }
}

void Run::apply(const CloseStep &step) {
    requireBoxesChecked();
    forms::Form &form = shownForm(step.form);
    if (!forms::Input(screen_).closeForm(form)) {
        throw Failure(current_->source + ": the close box reached nothing",
                      form.Name() + " to close", form.Name() + " is not the active form");
    }
}

} // namespace script
