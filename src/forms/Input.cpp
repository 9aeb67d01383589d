#include "forms/Input.h"

#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/Control.h"
#include "forms/DatePicker.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/ListView.h"
#include "forms/Screen.h"
#include "forms/Utf8.h"

namespace forms {

namespace {

bool usable(const Control *c) {
    return c && c->effectivelyEnabled() && c->effectivelyVisible();
}

} // namespace

Input::Input(Screen &screen) : screen_(screen) {}

bool Input::keyStroke(int keyCode, int shift) {
    return keyStroke(keyStrokeFor(keyCode, shift));
}

bool Input::keyStroke(const KeyStroke &key) {
    bool delivered = deliverKey(key);
    afterInput();
    return delivered;
}

bool Input::typeText(std::string_view text) {
    for (char32_t c : utf8::decode(text)) {
        if (!keyStroke(keyStrokeForCharacter(c))) {
            return false;
        }
    }
    return true;
}

bool Input::deliverKey(const KeyStroke &key) {
    ++screen_.dispatchCount_;
    Form *form = screen_.ActiveForm();
    if (!form || !form->Enabled()) {
        return false;
    }
    Control *focused = form->ActiveControl();
    if (!usable(focused)) {
        focused = nullptr;
    }
    if (navigationKey(*form, focused, key) || keyDown(*form, focused, key)) {
        return true;
    }
    keyPress(*form, focused, key);
    keyUp(*form, focused, key);
    return true;
}

bool Input::navigationKey(Form &form, Control *focused, const KeyStroke &key) {
    bool plain = (key.shift & (vbCtrlMask | vbAltMask)) == 0;
    if (key.keyCode == vbKeyTab && plain) {
        form.tabFrom(focused, (key.shift & vbShiftMask) != 0);
        return true;
    }
    Control *button = nullptr;
    if (key.keyCode == vbKeyReturn && key.shift == 0) {
        // Enter presses the focused button, else the default button.
        button = focused && focused->kind() == ControlKind::CommandButton ? focused
                                                                          : form.defaultButton();
    } else if (key.keyCode == vbKeyEscape && key.shift == 0) {
        button = form.cancelButton();
    }
    if (!usable(button)) {
        return false;
    }
    button->userClick();
    return true;
}

bool Input::keyDown(Form &form, Control *focused, const KeyStroke &key) {
    int keyCode = key.keyCode;
    if (form.KeyPreview() || !focused) {
        form.fireKeyDown(keyCode, key.shift);
    }
    if (keyCode != 0 && focused) {
        focused->fireKeyDown(keyCode, key.shift);
    }
    if (keyCode != 0 && (key.shift & vbAltMask) != 0 && keyCode >= vbKeyA &&
        keyCode < vbKeyA + 26 && form.Loaded()) {
        auto letter = static_cast<char32_t>('A' + keyCode - vbKeyA);
        for (Control *c : form.controlsInTabOrder()) {
            if (c->accessKey() == letter && usable(c)) {
                c->accessKeyPressed();
                return true;
            }
        }
    }
    if (keyCode != 0 && usable(focused) && focused->hasFocus()) {
        focused->defaultKeyDown(keyCode, key.shift);
    }
    return false;
}

void Input::keyPress(Form &form, Control *focused, const KeyStroke &key) {
    if (key.character == 0 || !form.Loaded()) {
        return;
    }
    // The character goes to the control that had the focus at KeyDown, as the
    // old platform posted it there, even if a KeyDown handler moved the focus.
    int keyAscii = static_cast<int>(key.character);
    if (form.KeyPreview() || !focused) {
        form.fireKeyPress(keyAscii);
    }
    if (keyAscii != 0 && focused) {
        focused->fireKeyPress(keyAscii);
    }
    if (keyAscii != 0 && focused && focused->hasFocus()) {
        focused->defaultKeyPress(static_cast<char32_t>(keyAscii));
    }
}

void Input::keyUp(Form &form, Control *focused, const KeyStroke &key) {
    if (!form.Loaded()) {
        return;
    }
    int keyCode = key.keyCode;
    if (form.KeyPreview() || !focused) {
        form.fireKeyUp(keyCode, key.shift);
    }
    if (keyCode != 0 && focused) {
        focused->fireKeyUp(keyCode, key.shift);
    }
}

bool Input::reachable(Control &control) const {
    Form &form = control.form();
    return screen_.ActiveForm() == &form && form.Enabled() && usable(&control);
}

bool Input::focusForClick(Control &control) {
    if (!control.focusable()) {
        return true;
    }
    return control.form().moveFocus(&control);
}

void Input::afterInput() {
    processQueued();
}

bool Input::click(Control &control) {
    ++screen_.dispatchCount_;
    if (!reachable(control)) {
        return false;
    }
    if (focusForClick(control)) {
        double x = control.Width() / 2.0;
        double y = control.Height() / 2.0;
        control.fireMouse(control.onMouseDown, vbLeftButton, 0, x, y);
        control.fireMouse(control.onMouseUp, vbLeftButton, 0, x, y);
        control.userClick();
    }
    afterInput();
    return true;
}

bool Input::dblClick(Control &control) {
    if (!click(control)) {
        return false;
    }
    if (reachable(control)) {
        control.raise(control.onDblClick);
    }
    afterInput();
    return true;
}

bool Input::rightClick(Control &control) {
    ++screen_.dispatchCount_;
    if (!reachable(control)) {
        return false;
    }
    if (focusForClick(control)) {
        double x = control.Width() / 2.0;
        double y = control.Height() / 2.0;
        control.fireMouse(control.onMouseDown, vbRightButton, 0, x, y);
        control.fireMouse(control.onMouseUp, vbRightButton, 0, x, y);
    }
    afterInput();
    return true;
}

bool Input::mouseMove(Control &control, double x, double y) {
    ++screen_.dispatchCount_;
    if (!reachable(control)) {
        return false;
    }
    control.fireMouse(control.onMouseMove, 0, 0, x, y);
    afterInput();
    return true;
}

bool Input::clickCell(FlexGrid &grid, int row, int col) {
    ++screen_.dispatchCount_;
    if (!reachable(grid) || row < 0 || row >= grid.Rows() || col < 0 || col >= grid.Cols()) {
        return false;
    }
    if (focusForClick(grid)) {
        grid.mouseRow_ = row;
        grid.mouseCol_ = col;
        grid.fireMouse(grid.onMouseDown, vbLeftButton, 0, 0, 0);
        grid.moveByUser(row, col);
        grid.fireMouse(grid.onMouseUp, vbLeftButton, 0, 0, 0);
        grid.raise(grid.onClick);
    }
    afterInput();
    return true;
}

bool Input::dblClickCell(FlexGrid &grid, int row, int col) {
    if (!clickCell(grid, row, col)) {
        return false;
    }
    if (reachable(grid)) {
        grid.raise(grid.onDblClick);
    }
    afterInput();
    return true;
}

bool Input::mouseMoveCell(FlexGrid &grid, int row, int col) {
    ++screen_.dispatchCount_;
    if (!reachable(grid) || row < 0 || row >= grid.Rows() || col < 0 || col >= grid.Cols()) {
        return false;
    }
    grid.mouseRow_ = row;
    grid.mouseCol_ = col;
    grid.fireMouse(grid.onMouseMove, 0, 0, 0, 0);
    afterInput();
    return true;
}

bool Input::clickItem(ListView &list, int index) {
    ++screen_.dispatchCount_;
    if (!reachable(list) || index < 1 || index > list.ListItems().Count()) {
        return false;
    }
    if (focusForClick(list)) {
        list.fireMouse(list.onMouseDown, vbLeftButton, 0, 0, 0);
        list.selectByUser(list.ListItems().Item(index));
        list.fireMouse(list.onMouseUp, vbLeftButton, 0, 0, 0);
        list.raise(list.onClick);
    }
    afterInput();
    return true;
}

bool Input::dblClickItem(ListView &list, int index) {
    if (!clickItem(list, index)) {
        return false;
    }
    if (reachable(list)) {
        list.raise(list.onDblClick);
    }
    afterInput();
    return true;
}

bool Input::rightClickItem(ListView &list, int index) {
    ++screen_.dispatchCount_;
    if (!reachable(list) || index < 1 || index > list.ListItems().Count()) {
        return false;
    }
    if (focusForClick(list)) {
        list.selectByUser(list.ListItems().Item(index));
        list.fireMouse(list.onMouseDown, vbRightButton, 0, 0, 0);
        list.fireMouse(list.onMouseUp, vbRightButton, 0, 0, 0);
    }
    afterInput();
    return true;
}

bool Input::clickColumn(ListView &list, int column) {
    ++screen_.dispatchCount_;
    if (!reachable(list) || column < 1 || column > list.ColumnHeaders().Count()) {
        return false;
    }
    list.raise(list.onColumnClick, list.ColumnHeaders().Item(column));
    afterInput();
    return true;
}

bool Input::chooseItem(ComboBox &combo, int index) {
    ++screen_.dispatchCount_;
    if (!reachable(combo) || index < 0 || index >= combo.ListCount()) {
        return false;
    }
    if (focusForClick(combo)) {
        combo.userChoose(index);
    }
    afterInput();
    return true;
}

bool Input::setDate(DatePicker &picker, vb::Date date) {
    ++screen_.dispatchCount_;
    if (!reachable(picker)) {
        return false;
    }
    if (focusForClick(picker)) {
        picker.setValue(date);
    }
    afterInput();
    return true;
}

bool Input::closeForm(Form &form) {
    ++screen_.dispatchCount_;
    if (screen_.ActiveForm() != &form) {
        return false;
    }
    form.Unload(vbFormControlMenu);
    afterInput();
    return true;
}

int Input::processQueued() {
    std::size_t waiting = screen_.queuedKeyCount();
    int ran = 0;
    for (std::size_t i = 0; i < waiting && screen_.hasQueuedKeys(); ++i) {
        deliverKey(screen_.takeQueuedKey());
        ++ran;
    }
    return ran;
}

} // namespace forms
