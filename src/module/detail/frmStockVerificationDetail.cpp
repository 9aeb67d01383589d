#include "module/detail/frmStockVerificationDetail.h"

#include "forms/Keys.h"
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "module/entry/frmStockVerification.h"
#include "module/fetch/FrmFetch.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "services/CreateObject.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "services/clsBaseTools.h"
#include "services/clsScreenPalette.h"
#include "vb/Conversion.h"

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerificationDetail";
constexpr int KeyF3 = forms::vbKeyF1 + 2;

/// An object variable that was never set fails as the old one did.
template <class Service> Service &made(const std::shared_ptr<Service> &service) {
    if (!service) {
        throw vb::Error::standard(vb::err::ObjectNotSet);
    }
    return *service;
}

} // namespace

// The module's touch of this form: loads it when it is not loaded.
tqsv2731::frmStockVerificationDetail &Module::frmStockVerificationDetail() {
    return slotOf<tqsv2731::frmStockVerificationDetail>(frmStockVerificationDetail_).get();
}

frmStockVerificationDetail::frmStockVerificationDetail(Module &m)
    : Form(m.screen(), FormName), m_(m) {
    setCaption("Stock Verification");
    // F3 opens the fetch dialog wherever the focus stands.
    setKeyPreview(true);
    Label5.setCaption("&Item : ");
    cboItem.setStyle(forms::vbComboDropdownList);
    cboAllItems.setStyle(forms::vbComboDropdownList);
    lblscanbc.setCaption("Sca&n Barcode :");
    cmdfetch.setCaption(" ...");
    cmdfetch.setToolTipText("To open Item Fetch interface. Shortcut: F3");
    Label1.setCaption("Avl Good Stock :");
    Label2.setCaption("Ver &Good Stock :");
    // The frame only holds the bad stock pair, so that the total interface can
    // hide it; its design caption ("Frame2") never showed.
    fraBadStock.setCaption("");
    Label4.setCaption("Avl Bad Stock :");
    Label3.setCaption("Ver &Bad Stock :");
    // The book stock is shown, never typed.
    txtAvailStock.setEnabled(false);
    txtBadStock.setEnabled(false);
    for (forms::TextBox *box :
         {&txtAvailStock, &txtVerifiedStock, &txtBadStock, &txtVerifiedBadStock}) {
        box->setAlignment(1);
    }
    optAllItems.setCaption("&All Items");
    optAllItems.setToolTipText("Shortcut: Alt+A");
    optGodownItems.setCaption("&Stock Items");
    optGodownItems.setToolTipText("Shortcut: Alt+S");
    optAllItems.setValue(true);
    cmdOK.setCaption("&Ok");
    cmdCancel.setCaption("&Close");
    lblQtyLocationWise.setCaption("Ver Good Stock - Location Wise");
    lblQtyExpiryWise.setCaption("Ver Good Stock - Expiry Date Wise");
    layOut();
    layOutPanels();
    bindEvents();
    bindKeys();
}

void frmStockVerificationDetail::layOut() {
    // Twips for the terminal's cells of 120 by 240: the compact form is about
    // 70 cells wide and 15 high, the height ArrangeWindow gives it.
    Move(0, 2700, 8325, 3620);
    lblscanbc.Move(120, 240, 1920, 240);
    txtBarcode.Move(2040, 240, 2400, 285);
    cmdfetch.Move(4560, 240, 480, 285);
    Frame1.Move(6120, 0, 2040, 960);
    Picture1.Move(120, 240, 1800, 480);
    optAllItems.Move(0, 0, 1800, 240);
    optGodownItems.Move(0, 240, 1800, 240);
    Label5.Move(120, 720, 1920, 240);
    cboItem.Move(2040, 720, 3960, 315);
    cboAllItems.Move(2040, 720, 3960, 315);
    Label1.Move(120, 1200, 1920, 240);
    txtAvailStock.Move(2040, 1200, 1800, 285);
    Label2.Move(120, 1680, 1920, 240);
    txtVerifiedStock.Move(2040, 1680, 1800, 285);
    fraBadStock.Move(4080, 960, 4080, 1200);
    Label4.Move(120, 240, 1800, 240);
    txtBadStock.Move(1920, 240, 1920, 285);
    Label3.Move(120, 720, 1800, 240);
    txtVerifiedBadStock.Move(1920, 720, 1920, 285);
    Line1.setX1(120);
    Line1.setY1(2160);
    Line1.setX2(8160);
    Line1.setY2(2160);
    Line2.setX1(120);
    Line2.setY1(2175);
    Line2.setX2(8160);
    Line2.setY2(2175);
    fraButtons.Move(120, 2470, 8040, 720);
    cmdFirst.Move(120, 240, 600, 360);
    cmdPrev.Move(780, 240, 600, 360);
    cmdNext.Move(1440, 240, 600, 360);
    cmdLast.Move(2100, 240, 600, 360);
    cmdOK.Move(5280, 240, 1200, 360);
    cmdCancel.Move(6600, 240, 1200, 360);
}

void frmStockVerificationDetail::layOutPanels() {
    lblQtyLocationWise.Move(60, 2520, 3960, 240);
    flxLocations.Move(60, 2760, 3960, 1620);
    flxLocations.setCols(8);
    flxLocations.setRows(2);
    flxLocations.setFixedRows(1);
    flxLocations.setFixedCols(0);
    txtLocationQuantity.setVisible(false);
    lblQtyExpiryWise.Move(4125, 2520, 3960, 240);
    flxexpiry.Move(4125, 2760, 3960, 1620);
    flxexpiry.setCols(7);
    flxexpiry.setRows(2);
    flxexpiry.setFixedRows(1);
    flxexpiry.setFixedCols(0);
    txtexpiryqty.setVisible(false);
    dtpExpiry.setVisible(false);
}

void frmStockVerificationDetail::bindEvents() {
    onLoad = [this] { Form_Load(); };
    onActivate = [this] { Form_Activate(); };
    onKeyDown = [this](int &KeyCode, int Shift) { Form_KeyDown(KeyCode, Shift); };
    cmdfetch.onClick = [this] { cmdfetch_Click(); };
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdFirst.onClick = [this] { cmdFirst_Click(); };
    cmdPrev.onClick = [this] { cmdPrev_Click(); };
    cmdNext.onClick = [this] { cmdNext_Click(); };
    cmdLast.onClick = [this] { cmdLast_Click(); };
    cboItem.onClick = [this] { cboItem_Click(); };
    optAllItems.onClick = [this] { optAllItems_Click(); };
    optGodownItems.onClick = [this] { optGodownItems_Click(); };
    txtBarcode.onChange = [this] { txtBarcode_Change(); };
    txtVerifiedStock.onChange = [this] { txtVerifiedStock_Change(); };
    txtVerifiedStock.onGotFocus = [this] { txtVerifiedStock_GotFocus(); };
    txtVerifiedBadStock.onGotFocus = [this] { txtVerifiedBadStock_GotFocus(); };
    txtVerifiedBadStock.onMouseMove = [this](int Button, int Shift, double X, double Y) {
        txtVerifiedBadStock_MouseMove(Button, Shift, X, Y);
    };
    txtAvailStock.onMouseMove = [this](int Button, int Shift, double X, double Y) {
        txtAvailStock_MouseMove(Button, Shift, X, Y);
    };
    txtBadStock.onMouseMove = [this](int Button, int Shift, double X, double Y) {
        txtBadStock_MouseMove(Button, Shift, X, Y);
    };
}

void frmStockVerificationDetail::bindKeys() {
    cboItem.onKeyPress = [this](int &KeyAscii) { cboItem_KeyPress(KeyAscii); };
    optAllItems.onKeyPress = [this](int &KeyAscii) { optAllItems_KeyPress(KeyAscii); };
    optGodownItems.onKeyPress = [this](int &KeyAscii) { optGodownItems_KeyPress(KeyAscii); };
    txtBarcode.onKeyPress = [this](int &KeyAscii) { txtBarcode_KeyPress(KeyAscii); };
    txtVerifiedStock.onKeyPress = [this](int &KeyAscii) { txtVerifiedStock_KeyPress(KeyAscii); };
    txtVerifiedBadStock.onKeyPress = [this](int &KeyAscii) {
        txtVerifiedBadStock_KeyPress(KeyAscii);
    };
    txtAvailStock.onKeyPress = [this](int &KeyAscii) { txtAvailStock_KeyPress(KeyAscii); };
}

forms::ListView &frmStockVerificationDetail::lvwRequest() {
    return m_.frmStockVerification().lvwRequest;
}

BaseServices::clsBaseTools &frmStockVerificationDetail::tools() const {
    return made(objBaseTools);
}

BaseServices::clsBaseData &frmStockVerificationDetail::data() const {
    return made(objBaseData);
}

StockActivityTrail::clsActivityTrail &frmStockVerificationDetail::auditTrail() const {
    return made(m_.objActivityTrail);
}

void frmStockVerificationDetail::inform(std::string_view text) {
    forms::MsgBox(m_.screen(), text, forms::vbInformation, m_.strMsgboxCaption);
}

void frmStockVerificationDetail::Form_Load() {
    try {
        objBaseTools = services::CreateObject<BaseServices::clsBaseTools>(
            "BaseServices.clsBaseTools", m_.context());
        objBaseData = services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseData",
                                                                        m_.context());
        if (lvwRequest().ListItems().Count() <= 1) {
            cmdFirst.setEnabled(false);
            cmdNext.setEnabled(false);
            cmdPrev.setEnabled(false);
            cmdLast.setEnabled(false);
        }
        made(m_.objScreenPalette).ApplyScreenPalette(*this);
        data().adocon = m_.adocon;
        cboAllItems.setVisible(false);
        if (m_.strDetailMode == "E") {
            optAllItems.setEnabled(false);
            optGodownItems.setEnabled(false);
        }
        flxexpiry.setVisible(false);
        flxLocations.setVisible(false);
        bool blnNone = false;
        ArrangeWindow(false, blnNone);
        // The total count takes good stock only.
        fraBadStock.setVisible(m_.intInterfaceID == 1005);
        ArrangeWindow(false, blnNone);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Load ", e);
    }
}

void frmStockVerificationDetail::Form_Activate() {
    try {
        if (m_.strDetailMode == "E") {
            cmdfetch.setEnabled(false);
            txtBarcode.setEnabled(false);
            cboItem.setEnabled(false);
            ShowData();
        } else {
            cboItem.setEnabled(true);
            cmdfetch.setEnabled(true);
        }
        setTop(2700);
        setTag("loaded");
        auditTrail().SaveInToTag(*this);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Activate ", e);
    }
}

void frmStockVerificationDetail::Form_KeyDown(int &KeyCode, int /*Shift*/) {
    try {
        if (KeyCode == KeyF3 && cmdfetch.Enabled()) {
            cmdfetch_Click();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_KeyDown", e);
    }
}

void frmStockVerificationDetail::cmdfetch_Click() {
    try {
        m_.FrmFetch().Show(forms::vbModal, this);
        txtVerifiedStock.SetFocus();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdfetch_Click", e);
    }
}

void frmStockVerificationDetail::cmdCancel_Click() {
    Unload();
}

void frmStockVerificationDetail::ShowData() {
    try {
        cboItem.setEnabled(false);
        cmdfetch.setEnabled(false);
        // From here on the form edits rows, also when it was opened to add them.
        m_.strDetailMode = "E";
        cboAllItems.setVisible(false);
        cboItem.setVisible(true);

        // The combo is not cleared: it grows by one entry with every step.
        cboItem.AddItem(lvwRequest().SelectedItem().SubItems(3));
        cboItem.setItemData(cboItem.NewIndex(),
                            vb::CLng(vb::Variant(lvwRequest().SelectedItem().SubItems(8))));
        cboItem.setListIndex(0);
        setCaption(lvwRequest().SelectedItem().SubItems(3));
        tools().selectcomboitembyvalue(cboItem,
                                       vb::Variant(lvwRequest().SelectedItem().SubItems(8)));
        setCaption(lvwRequest().SelectedItem().SubItems(3));

        // The row's own values win over the stock that cboItem_Click has just
        // read: an edited row shows what was accepted.
        txtAvailStock.setText(lvwRequest().SelectedItem().SubItems(4));
        txtBadStock.setText(lvwRequest().SelectedItem().SubItems(6));
        txtVerifiedStock.setText(lvwRequest().SelectedItem().SubItems(5));
        txtVerifiedBadStock.setText(lvwRequest().SelectedItem().SubItems(7));

        if (m_.strDetailMode == "E") {
            flxexpiry.setVisible(false);
            RetrieveExpiryList();
            InitializeFlex();
        }
        ArrangeWindow(blnShowLocations, blnShowExpiry);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ShowData", e);
    }
}

void frmStockVerificationDetail::ArrangeWindow(bool blnLocations, bool &blnExpiry) {
    try {
        // The panels are switched off here, for every caller: the form keeps
        // its compact size and no split is asked for.
        blnLocations = false;
        blnExpiry = false;
        setHeight(3620);
        fraButtons.setTop(2470);
        lblQtyLocationWise.setVisible(blnLocations);
        lblQtyExpiryWise.setVisible(blnExpiry);
        if (blnExpiry) {
            const int left = blnLocations ? 4185 : 120;
            flxexpiry.setLeft(left);
            lblQtyExpiryWise.setLeft(left);
        }
        flxLocations.setVisible(blnLocations);
        flxexpiry.setVisible(blnExpiry);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ArrangeWindow", e);
    }
}

void frmStockVerificationDetail::SetWindowSize() {
    try {
        if (blnShowLocations) {
            setHeight(5565);
            fraButtons.setTop(4545);
            const double width = flxLocations.Width();
            flxLocations.setColWidth(0, static_cast<int>(width * 0.1));
            flxLocations.setColWidth(1, static_cast<int>(width * 0.6));
            flxLocations.setColWidth(2, static_cast<int>(width * 0.2));
            for (int col = 3; col <= 5; ++col) {
                flxLocations.setColWidth(col, 0);
            }
            flxLocations.setTextMatrix(0, 0, "Sl No");
            flxLocations.setTextMatrix(0, 1, "Location Name");
            flxLocations.setTextMatrix(0, 2, "Quantity");
            flxLocations.setTextMatrix(1, 0, "1");
        } else {
            setHeight(3500);
            fraButtons.setTop(2470);
            flxLocations.setVisible(false);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "SetWindowSize", e);
    }
}

void frmStockVerificationDetail::ClearAll(bool & /*blnAll*/) {
    try {
        cboAllItems.Clear();
        cboItem.Clear();
        txtAvailStock.setText("");
        txtVerifiedStock.setText("");
        txtBadStock.setText("");
        txtVerifiedBadStock.setText("");
        blnShowExpiry = false;
        blnExpiryRowOpen = false;
        flxexpiry.Clear();
        flxexpiry.setRows(2);
        flxLocations.Clear();
        flxLocations.setRows(2);
        txtexpiryqty.setVisible(false);
        dtpExpiry.setVisible(false);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ClearAll", e);
    }
}

void frmStockVerificationDetail::showSelectedRow() {
    // The audit snapshot always follows the row on the screen.
    lvwRequest().ListItems()(m_.frmStockVerification().intSelectedItem).setSelected(true);
    ShowData();
    auditTrail().SaveInToTag(*this);
}

void frmStockVerificationDetail::cmdFirst_Click() {
    try {
        cmdFirst.setEnabled(false);
        cmdPrev.setEnabled(false);
        if (lvwRequest().ListItems().Count() >= 2) {
            cmdNext.setEnabled(true);
            cmdLast.setEnabled(true);
        }
        m_.frmStockVerification().intSelectedItem = 1;
        showSelectedRow();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdFirst_Click", e);
    }
}

void frmStockVerificationDetail::cmdLast_Click() {
    try {
        auto &entry = m_.frmStockVerification();
        const int count = lvwRequest().ListItems().Count();
        entry.intSelectedItem = vb::CInt(vb::Variant(count));
        lvwRequest().ListItems()(entry.intSelectedItem).setSelected(true);
        cmdNext.setEnabled(false);
        cmdLast.setEnabled(false);
        if (count >= 2) {
            cmdFirst.setEnabled(true);
            cmdPrev.setEnabled(true);
        }
        ShowData();
        auditTrail().SaveInToTag(*this);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdLast_Click", e);
    }
}

void frmStockVerificationDetail::cmdNext_Click() {
    try {
        auto &entry = m_.frmStockVerification();
        const int count = lvwRequest().ListItems().Count();
        entry.intSelectedItem = vb::CInt(vb::Variant(entry.intSelectedItem + 1));
        if (entry.intSelectedItem > count) {
            entry.intSelectedItem = vb::CInt(vb::Variant(entry.intSelectedItem - 1));
            return;
        }
        if (entry.intSelectedItem == count) {
            cmdNext.setEnabled(false);
            cmdLast.setEnabled(false);
        }
        cmdPrev.setEnabled(true);
        cmdFirst.setEnabled(true);
        showSelectedRow();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdNext_Click", e);
    }
}

void frmStockVerificationDetail::cmdPrev_Click() {
    try {
        auto &entry = m_.frmStockVerification();
        entry.intSelectedItem = vb::CInt(vb::Variant(entry.intSelectedItem - 1));
        if (entry.intSelectedItem < 1) {
            entry.intSelectedItem = 1;
            return;
        }
        if (entry.intSelectedItem == 1) {
            cmdPrev.setEnabled(false);
            cmdFirst.setEnabled(false);
        }
        cmdNext.setEnabled(true);
        cmdLast.setEnabled(true);
        showSelectedRow();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdPrev_Click", e);
    }
}

} // namespace tqsv2731
