#include "hosts/tui/FormPainter.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/CellScale.h"
#include "hosts/tui/ControlPainter.h"
#include "hosts/tui/FormFit.h"
#include "hosts/tui/GridPainter.h"
#include "hosts/tui/ListViewPainter.h"
#include "hosts/tui/Palette.h"
#include "hosts/tui/ScreenLayout.h"

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/Container.h"
#include "forms/DatePicker.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/Frame.h"
#include "forms/Label.h"
#include "forms/Line.h"
#include "forms/ListView.h"
#include "forms/OptionButton.h"
#include "forms/TextBox.h"

#include <algorithm>

namespace tui {

namespace {

CellScale scaleFor(const forms::Form &form, const Rect &area) {
    if (auto packed = fitForm(form, area.w - 2, area.h - 2)) {
        return *packed;
    }
    // Too small a screen shows a notice instead (paintScreen); this is only
    // for a form drawn on its own into an area too small for it.
    return CellScale::fitting(form.Width(), form.Height(), area.w - 2, area.h - 2);
}

void paintControl(const PaintContext &pc, const forms::Control &c, const Rect &client) {
    using forms::ControlKind;
    switch (c.kind()) {
    case ControlKind::Label:
        paintLabel(pc, static_cast<const forms::Label &>(c));
        break;
    case ControlKind::TextBox:
        paintTextBox(pc, static_cast<const forms::TextBox &>(c));
        break;
    case ControlKind::CommandButton:
        paintCommandButton(pc, static_cast<const forms::CommandButton &>(c));
        break;
    case ControlKind::CheckBox:
        paintCheckBox(pc, static_cast<const forms::CheckBox &>(c));
        break;
    case ControlKind::OptionButton:
        paintOptionButton(pc, static_cast<const forms::OptionButton &>(c));
        break;
    case ControlKind::ComboBox:
        paintComboBox(pc, static_cast<const forms::ComboBox &>(c));
        break;
    case ControlKind::DatePicker:
        paintDatePicker(pc, static_cast<const forms::DatePicker &>(c));
        break;
    case ControlKind::Frame:
        paintFrame(pc, static_cast<const forms::Frame &>(c));
        break;
    case ControlKind::Line:
        paintLine(pc, static_cast<const forms::Line &>(c), client.x, client.y);
        break;
    case ControlKind::FlexGrid:
        paintFlexGrid(pc, static_cast<const forms::FlexGrid &>(c));
        break;
    case ControlKind::ListView:
        paintListView(pc, static_cast<const forms::ListView &>(c));
        break;
    case ControlKind::PictureBox: // a borderless holder of option buttons
    case ControlKind::Image:      // pictures have no place on a terminal
    case ControlKind::Menu:       // menus show only as popups
        break;
    }
}

} // namespace

Rect formWindow(const forms::Form &form, const Rect &area) {
    CellScale scale = scaleFor(form, area);
    int w = std::min(scale.col(form.Width()) + 2, area.w);
    int h = std::min(scale.row(form.Height()) + 2, area.h);
    return {area.x + (area.w - w) / 2, area.y + (area.h - h) / 2, w, h};
}

void paintForm(Canvas &canvas, const forms::Form &form, const Rect &area, bool active,
               ScreenLayout &layout) {
    Rect window = formWindow(form, area);
    layout.setForm(form, window);
    canvas.fill(window, U' ', styles::plain);
    canvas.box(window, active ? styles::plain.with(attrBold) : styles::plain.with(attrDim),
               form.Caption());

    Rect client = window.inset(1);
    CellScale scale = scaleFor(form, area);
    ClipScope inWindow(canvas, client);
    for (const forms::Control *c : form.controls()) {
        if (c->kind() == forms::ControlKind::Menu || !c->effectivelyVisible()) {
            continue;
        }
        TwipsRect at = formTwips(*c);
        Rect r = scale.rect(at.left, at.top, at.width, at.height);
        r.x += client.x;
        r.y += client.y;
        layout.setControl(*c, r);

        // A control stands inside its container and is cut off at its edges.
        Rect limit = client;
        if (c->container()) {
            if (auto holder = layout.controlRect(*c->container())) {
                limit = holder->intersect(client);
            }
        }
        ClipScope inContainer(canvas, limit);
        PaintContext pc{canvas, scale, r, form.Enabled() && c->effectivelyEnabled(),
                        active && c->hasFocus()};
        if (c->kind() == forms::ControlKind::ListView) {
            pc.listScroll = &layout.listScroll(*c);
        }
        paintControl(pc, *c, client);
    }
}

} // namespace tui
