// frmOrders: the runner's main test form, with a control of every kind the scenarios drive.
#pragma once

#include "testforms/frmLine.h"

#include "hosts/script/ShowTarget.h"

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/DatePicker.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/FormSlot.h"
#include "forms/Label.h"
#include "forms/ListView.h"
#include "forms/Menu.h"
#include "forms/TextBox.h"

#include "ado/Connection.h"

#include <filesystem>

namespace script::test {

/// An order: a customer, a kind, lines added through frmLine (button, popup
/// menu or Ctrl+Enter), saved into the table `orders` of the scenario's
/// database (which the scenario creates) and listed in a grid. Message boxes
/// carry the session's message title, but for the untitled one a double click
/// on an order shows; the save runs in a transaction; the session values show in lblSession;
/// the grid's tool tip is the cell under the pointer. Print sends a slip to
/// the printer port LPT1 when the order is urgent, else shows it in the
/// viewer (from a file in the scenario's scratch folder); Report previews reports/orders.rpt of the
/// program folder.
class frmOrders : public forms::Form {
public:
    explicit frmOrders(const ShowContext &context);

    forms::Label lblSession{*this, "lblSession"};
    forms::Label lblCustomer{*this, "lblCustomer"};
    forms::TextBox txtCustomer{*this, "txtCustomer"};
    forms::ComboBox cboKind{*this, "cboKind"};
    forms::CheckBox chkUrgent{*this, "chkUrgent"};
    forms::DatePicker dtpDue{*this, "dtpDue"};
    forms::Label lblDue{*this, "lblDue"};
    forms::ListView lvwLines{*this, "lvwLines"};
    forms::FlexGrid flxOrders{*this, "flxOrders"};
    forms::CommandButton cmdLine{*this, "cmdLine"};
    forms::CommandButton cmdDelete{*this, "cmdDelete"};
    forms::CommandButton cmdSave{*this, "cmdSave"};
    forms::CommandButton cmdPrint{*this, "cmdPrint"};
    forms::CommandButton cmdReport{*this, "cmdReport"};
    forms::CommandButton cmdClose{*this, "cmdClose"};
    forms::Menu mnuPopup{*this, "mnuPopup"};
    forms::Menu mnuAdd{mnuPopup, "mnuAdd"};
    forms::Menu mnuRemove{mnuPopup, "mnuRemove"};

private:
    void Form_Load();
    void Form_KeyPress(int &KeyAscii);
    void txtCustomer_KeyPress(int &KeyAscii);
    void cmdLine_Click();
    void cmdDelete_Click();
    void cmdSave_Click();
    void cmdPrint_Click();
    void cmdReport_Click();
    void flxOrders_DblClick();
    void lvwLines_MouseUp(int Button);
    void addLine(const std::string &item, const std::string &qty);

    Session session_;
    ado::Connection connection_;
    std::filesystem::path scratchDir_;
    forms::FormSlot<frmLine> frmLine_;
};

} // namespace script::test
