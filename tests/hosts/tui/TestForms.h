// Small forms for the terminal host's tests, laid out in twips as the module's forms are.
#pragma once

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/Frame.h"
#include "forms/Label.h"
#include "forms/ListView.h"
#include "forms/Menu.h"
#include "forms/MsgBox.h"
#include "forms/OptionButton.h"
#include "forms/Screen.h"
#include "forms/TextBox.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tui::test {

/// What happened, in order.
struct Log {
    std::vector<std::string> lines;
    void operator()(std::string line) { lines.push_back(std::move(line)); }
    bool has(const std::string &line) const {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
};

/// One of each simple control: 50 x 15 cells at the usual scale.
class EntryDialog : public forms::Form {
public:
    EntryDialog(forms::Screen &screen, Log &log) : Form(screen, "frmEntry"), log_(log) {
        setCaption("Sample Entry");
        Move(0, 0, 6000, 3600);
        lblName.setCaption("&Name:");
        lblName.Move(120, 120, 1200, 240);
        txtName.Move(1440, 120, 2400, 300);
        txtName.setToolTipText("Scan or type the barcode");
        cboKind.setStyle(forms::vbComboDropdownList);
        cboKind.Move(1440, 480, 2400, 300);
        for (const char *kind : {"Good", "Bad", "Damaged"}) {
            cboKind.AddItem(kind);
        }
        fraOrder.setCaption("Order");
        fraOrder.Move(120, 960, 2880, 1200);
        optAscend.setCaption("&Ascending");
        optAscend.Move(120, 240, 2400, 240);
        optDescend.setCaption("&Descending");
        optDescend.Move(120, 720, 2400, 240);
        chkDone.setCaption("Confirm &Finished");
        chkDone.Move(3240, 1200, 2640, 240);
        txtRemarks.Move(3240, 1680, 2640, 300);
        txtRemarks.setToolTipText("What the count found");
        cmdOK.setCaption("&OK");
        cmdOK.setDefault(true);
        cmdOK.Move(1800, 3000, 1200, 360);
        cmdCancel.setCaption("&Close");
        cmdCancel.setCancel(true);
        cmdCancel.Move(3240, 3000, 1200, 360);
        bind();
    }

    forms::Label lblName{*this, "lblName"};
    forms::TextBox txtName{*this, "txtName"};
    forms::ComboBox cboKind{*this, "cboKind"};
    forms::Frame fraOrder{*this, "fraOrder"};
    forms::OptionButton optAscend{fraOrder, "optAscend"};
    forms::OptionButton optDescend{fraOrder, "optDescend"};
    forms::CheckBox chkDone{*this, "chkDone"};
    forms::TextBox txtRemarks{*this, "txtRemarks"};
    forms::CommandButton cmdOK{*this, "cmdOK"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};

private:
    void bind() {
        setKeyPreview(true);
        onKeyDown = [this](int &KeyCode, int Shift) {
            log_("KeyDown " + std::to_string(KeyCode) + " " + std::to_string(Shift));
        };
        onKeyPress = [this](int &KeyAscii) { log_("KeyPress " + std::to_string(KeyAscii)); };
        for (forms::Control *c : controls()) {
            c->onGotFocus = [this, c] { log_(c->Name() + ".GotFocus"); };
            c->onClick = [this, c] { log_(c->Name() + ".Click"); };
        }
        cmdCancel.onClick = [this] { Unload(); };
    }

    Log &log_;
};

/// A list view with a popup menu on its right click, as the entry form has.
class ListDialog : public forms::Form {
public:
    ListDialog(forms::Screen &screen, Log &log) : Form(screen, "frmList"), log_(log) {
        setCaption("Items");
        Move(0, 0, 6600, 2400);
        lvwItems.Move(120, 120, 6360, 1680);
        lvwItems.setFullRowSelect(true);
        auto &cols = lvwItems.ColumnHeaders();
        cols.Add(0, "", "SlNo", 720);
        cols.Add(0, "", "Code", 0);
        cols.Add(0, "", "Description", 3600);
        cols.Add(0, "", "Qty", 1200, forms::lvwColumnRight);
        cmdClose.setCaption("&Close");
        cmdClose.setCancel(true);
        cmdClose.Move(5280, 1920, 1200, 360);
        mnuPopup.setVisible(false);
        mnuAdd.setCaption("&Add");
        mnuEdit.setCaption("&Edit");
        mnuDelete.setCaption("&Delete");
        lvwItems.onMouseDown = [this](int Button, int, double, double) {
            if (Button == forms::vbRightButton) {
                PopupMenu(mnuPopup);
            }
        };
        for (forms::Menu *m : {&mnuAdd, &mnuEdit, &mnuDelete}) {
            m->onClick = [this, m] { log_(m->Name() + ".Click"); };
        }
        cmdClose.onClick = [this] { Unload(); };
    }

    void addRow(const std::string &description, const std::string &qty) {
        auto &item =
            lvwItems.ListItems().Add(0, "", std::to_string(lvwItems.ListItems().Count() + 1));
        item.setSubItems(1, "C" + item.Text());
        item.setSubItems(2, description);
        item.setSubItems(3, qty);
    }

    forms::ListView lvwItems{*this, "lvwItems"};
    forms::CommandButton cmdClose{*this, "cmdClose"};
    forms::Menu mnuPopup{*this, "mnuPopup"};
    forms::Menu mnuAdd{mnuPopup, "mnuAdd"};
    forms::Menu mnuEdit{mnuPopup, "mnuEdit"};
    forms::Menu mnuDelete{mnuPopup, "mnuDelete"};

private:
    Log &log_;
};

/// A register-like grid: a hidden id column, a header row, rows coloured by code.
class GridDialog : public forms::Form {
public:
    explicit GridDialog(forms::Screen &screen) : Form(screen, "frmGrid") {
        setCaption("Register");
        Move(0, 0, 6000, 2400);
        flexList.Move(120, 120, 5760, 1680);
        flexList.setFixedCols(0);
        flexList.setCols(4);
        flexList.setColWidth(0, 0);
        flexList.setColWidth(1, 1200);
        flexList.setColWidth(2, 1440);
        flexList.setColWidth(3, 2640);
        const char *headers[] = {"Id", "Number", "Date", "Remarks"};
        for (int c = 0; c < 4; ++c) {
            flexList.setTextMatrix(0, c, headers[c]);
        }
        cmdClose.setCaption("&Close");
        cmdClose.setCancel(true);
        cmdClose.Move(4680, 1920, 1200, 360);
        cmdClose.onClick = [this] { Unload(); };
    }

    /// Fills `rows` entries; those whose number is in `cancelled` are red.
    void fill(int rows, const std::vector<int> &cancelled = {}) {
        flexList.setRows(rows + 1);
        for (int r = 1; r <= rows; ++r) {
            flexList.setTextMatrix(r, 0, std::to_string(r));
            flexList.setTextMatrix(r, 1, "SV" + std::to_string(r));
            std::string day = std::to_string(r % 28 + 1);
            flexList.setTextMatrix(r, 2,
                                   "2026-11-" + std::string(day.size() == 1 ? "0" : "") + day);
            flexList.setTextMatrix(r, 3, "count " + std::to_string(r));
        }
        for (int r : cancelled) {
            flexList.setRow(r);
            for (int c = 0; c < 4; ++c) {
                flexList.setCol(c);
                flexList.setCellForeColor(forms::vbRed);
            }
        }
    }

    forms::FlexGrid flexList{*this, "flexList"};
    forms::CommandButton cmdClose{*this, "cmdClose"};
};

} // namespace tui::test
