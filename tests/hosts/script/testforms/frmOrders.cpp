#include "testforms/frmOrders.h"

#include "forms/EventLoop.h"
#include "forms/Keys.h"
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "forms/Ui.h"

#include "ado/Recordset.h"

#include "vb/Clock.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Format.h"

#include <filesystem>
#include <fstream>
#include <memory>

namespace script::test {

frmOrders::frmOrders(const ShowContext &context)
    : Form(context.screen, "frmOrders"), session_(context.session), connection_(context.connection),
      scratchDir_(context.scratchDir), frmLine_([this] {
          return std::make_unique<frmLine>(
              screen(), session_.messageTitle,
              [this](const std::string &item, const std::string &qty) { addLine(item, qty); });
      }) {
    setKeyPreview(true);
    lblCustomer.setCaption("&Customer:");
    txtCustomer.setMaxLength(10);
    cboKind.setStyle(forms::vbComboDropdownList);
    chkUrgent.setCaption("&Urgent");
    cmdLine.setCaption("&Line");
    cmdDelete.setCaption("&Delete");
    cmdSave.setCaption("&Save");
    cmdPrint.setCaption("&Print");
    cmdReport.setCaption("&Report");
    cmdClose.setCaption("&Close");
    cmdClose.setCancel(true);
    mnuPopup.setVisible(false);
    mnuAdd.setCaption("&Add");
    mnuRemove.setCaption("&Remove");
    onLoad = [this] { Form_Load(); };
    onKeyPress = [this](int &KeyAscii) { Form_KeyPress(KeyAscii); };
    txtCustomer.onKeyPress = [this](int &KeyAscii) { txtCustomer_KeyPress(KeyAscii); };
    dtpDue.onChange = [this] { lblDue.setCaption(vb::Format(dtpDue.Value(), "dd/mm/yyyy")); };
    cmdLine.onClick = [this] { cmdLine_Click(); };
    cmdDelete.onClick = [this] { cmdDelete_Click(); };
    cmdSave.onClick = [this] { cmdSave_Click(); };
    cmdPrint.onClick = [this] { cmdPrint_Click(); };
    cmdReport.onClick = [this] { cmdReport_Click(); };
    cmdClose.onClick = [this] { Unload(); };
    flxOrders.onDblClick = [this] { flxOrders_DblClick(); };
    flxOrders.onMouseMove = [this](int, int, double, double) {
        flxOrders.setToolTipText(flxOrders.TextMatrix(flxOrders.MouseRow(), flxOrders.MouseCol()));
    };
    lvwLines.onMouseUp = [this](int Button, int, double, double) { lvwLines_MouseUp(Button); };
    mnuAdd.onClick = [this] { cmdLine_Click(); };
    mnuRemove.onClick = [this] { cmdDelete_Click(); };
}

void frmOrders::Form_Load() {
    setCaption(session_.messageTitle);
    lblSession.setCaption("company " + std::to_string(session_.companyId) + " user " +
                          std::to_string(session_.userId) + " godown " +
                          std::to_string(session_.godownId) + " interface " +
                          std::to_string(session_.interfaceId) + " date " +
                          vb::Format(session_.processDate, "yyyy-mm-dd"));
    cboKind.AddItem("Retail");
    cboKind.AddItem("Wholesale");
    lvwLines.ColumnHeaders().Add(0, {}, "Item");
    lvwLines.ColumnHeaders().Add(0, {}, "Qty", 900, forms::lvwColumnRight);
    flxOrders.setFixedCols(0);
    flxOrders.setCols(3);
    flxOrders.setRows(1);
    flxOrders.setTextMatrix(0, 0, "Id");
    flxOrders.setTextMatrix(0, 1, "Customer");
    flxOrders.setTextMatrix(0, 2, "Kind");
    flxOrders.setColWidth(0, 0);
}

void frmOrders::Form_KeyPress(int &KeyAscii) {
    if (KeyAscii == 4) { // Ctrl+D: to the list of lines
        lvwLines.SetFocus();
    } else if (KeyAscii == 10) { // Ctrl+Enter: a new line
        KeyAscii = 0;
        cmdLine_Click();
    }
}

void frmOrders::txtCustomer_KeyPress(int &KeyAscii) {
    if (KeyAscii == '\'') { // an apostrophe would break the statement that saves the order
        KeyAscii = 0;
    } else if (KeyAscii == forms::vbKeyReturn) {
        KeyAscii = 0;
        forms::SendKeys(screen(), "{TAB}");
    }
}

void frmOrders::cmdLine_Click() {
    frmLine_.get().Show(forms::vbModal, this);
}

void frmOrders::addLine(const std::string &item, const std::string &qty) {
    forms::ListItem &row = lvwLines.ListItems().Add(0, {}, item);
    row.setSubItems(1, qty);
}

void frmOrders::cmdDelete_Click() {
    forms::ListItem *row = lvwLines.selectedItemOrNull();
    if (!row) {
        forms::MsgBox(screen(), "Select a line first.", forms::vbExclamation,
                      session_.messageTitle);
        return;
    }
    int answer = forms::MsgBox(screen(), "Delete line " + std::to_string(row->Index()) + "?",
                               forms::vbYesNo + forms::vbQuestion + forms::vbDefaultButton2,
                               session_.messageTitle);
    if (answer == forms::vbYes) {
        lvwLines.ListItems().Remove(row->Index());
    }
}

void frmOrders::cmdSave_Click() {
    if (txtCustomer.Text().empty()) {
        forms::MsgBox(screen(), "Enter the customer.", forms::vbExclamation, session_.messageTitle);
        txtCustomer.SetFocus();
        return;
    }
    try {
        screen().setMousePointer(forms::vbHourglass);
        connection_.BeginTrans();
        connection_.Execute("insert into orders (customer, kind, urgent, lines, saved) values ('" +
                            txtCustomer.Text() + "', '" + cboKind.Text() + "', " +
                            std::to_string(chkUrgent.Value()) + ", " +
                            std::to_string(lvwLines.ListItems().Count()) + ", '" +
                            vb::Format(vb::Now(), "yyyy-mm-dd hh:nn:ss") + "')");
        ado::Recordset rs = connection_.Execute("select max(id) from orders");
        connection_.CommitTrans();
        flxOrders.setRows(flxOrders.Rows() + 1);
        int row = flxOrders.Rows() - 1;
        flxOrders.setTextMatrix(row, 0, vb::TextOf(rs.Fields(0).Value()));
        flxOrders.setTextMatrix(row, 1, txtCustomer.Text());
        flxOrders.setTextMatrix(row, 2, cboKind.Text());
        screen().setMousePointer(forms::vbDefault);
        forms::MsgBox(screen(), "Order saved.", forms::vbInformation, session_.messageTitle);
    } catch (const vb::Error &e) {
        // As in the forms this runner drives: the pointer reset lies on the
        // ordinary path, so after a failure it stays an hourglass.
        connection_.RollbackTrans();
        forms::MsgBox(screen(), "Could not save: " + e.description(), forms::vbCritical,
                      session_.messageTitle);
    }
}

void frmOrders::cmdPrint_Click() {
    std::string slip = "ORDER\nCustomer: " + txtCustomer.Text() + "\n";
    for (int i = 1; i <= lvwLines.ListItems().Count(); ++i) {
        const forms::ListItem &line = lvwLines.ListItems()(i);
        slip += line.Text() + " x " + line.SubItems(1) + "\n";
    }
    if (chkUrgent.Value() == forms::vbChecked) {
        *screen().ui().openPrinter("LPT1") << slip;
        return;
    }
    std::filesystem::path file = scratchDir_ / "orders-slip.txt";
    std::ofstream(file, std::ios::binary) << slip;
    screen().ui().showTextFile(file.string());
}

void frmOrders::cmdReport_Click() {
    forms::ReportPreview report;
    report.reportFile = (session_.homeDir / "reports" / "orders.rpt").string();
    report.title = "Orders of " + txtCustomer.Text();
    report.parameters = {vb::Variant(session_.companyId)};
    report.selectionFormula = "{orders.customer} = '" + txtCustomer.Text() + "'";
    screen().ui().previewReport(report);
}

// Reads the customer back from the database with no handler of its own, so
// that a failure here reaches the host; the box gives no title of its own.
void frmOrders::flxOrders_DblClick() {
    ado::Recordset rs = connection_.Execute("select customer from orders where id = " +
                                            flxOrders.TextMatrix(flxOrders.Row(), 0));
    forms::MsgBox(screen(), "Order of " + vb::TextOf(rs.Fields(0).Value()),
                  forms::vbInformation);
}

void frmOrders::lvwLines_MouseUp(int Button) {
    if (Button == forms::vbRightButton) {
        PopupMenu(mnuPopup);
    }
}

} // namespace script::test
