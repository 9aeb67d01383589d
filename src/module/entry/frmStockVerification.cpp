#include "module/entry/frmStockVerification.h"

#include "ado/Recordset.h"
#include "forms/MsgBox.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "services/CreateObject.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "services/clsScreenPalette.h"
#include "vb/Conversion.h"

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerification";

/// An object variable that was never set fails as the old one did.
template <class Service> Service &made(const std::shared_ptr<Service> &service) {
    if (!service) {
        throw vb::Error::standard(vb::err::ObjectNotSet);
    }
    return *service;
}

struct ColumnDesign {
    const char *header;
    int width;
    int alignment;
};

/// The list's design columns; alistviewdetails may overwrite widths and
/// alignments at load.
constexpr ColumnDesign listColumns[] = {
    {"SlNo", 926, forms::lvwColumnLeft},
    {"Location", 0, forms::lvwColumnLeft},
    {"Item Code", 0, forms::lvwColumnLeft},
    {"Item Description", 10760, forms::lvwColumnLeft},
    {"Available GS", 2028, forms::lvwColumnRight},
    {"Verified GS", 1764, forms::lvwColumnRight},
    {"Available BS", 1940, forms::lvwColumnRight},
    {"Verified BS", 1940, forms::lvwColumnRight},
    {"Itemid", 0, forms::lvwColumnLeft},
    {"dummy", 0, forms::lvwColumnLeft},
    {"locationid", 0, forms::lvwColumnLeft},
    {"shipmentid", 0, forms::lvwColumnLeft},
    {"ItemCostprice", 2540, forms::lvwColumnLeft},
    {"Unit", 1764, forms::lvwColumnLeft},
};

} // namespace

frmStockVerification &Module::frmStockVerification() {
    return slotOf<tqsv2731::frmStockVerification>(frmStockVerification_).get();
}

frmStockVerification::frmStockVerification(Module &m) : Form(m.screen(), FormName), m_(m) {
    setCaption("Godown Stock Verification");
    // Ctrl+D reaches the list wherever the focus stands.
    setKeyPreview(true);
    lblUser.setCaption("No:");
    lblPassword.setCaption("Date:");
    lblconfirmPwd.setCaption("&Done by:");
    Label1.setCaption("&Remarks:");
    // The number comes from the save and the date from the register.
    txtno.setEnabled(false);
    txtdate.setEnabled(false);
    txtdate.setAlignment(1);
    // The user's own name stands; the save enables the box only when it is empty.
    txtVby.setEnabled(false);
    txtVby.setMaxLength(250);
    txtRemarks.setMaxLength(250);
    chkConfirm.setCaption("Confirm Finished");
    fraBrowse.setCaption("Browse");
    optAscend.setCaption("&Ascending");
    optAscend.setValue(true);
    optDescend.setCaption("&Descending");
    // Not list-only: the direction buttons empty its text, which a list-only
    // combo would refuse.
    cboColNames.setStyle(forms::vbComboDropdown);
    lblsearch.setCaption("&Search On:");
    cboSearch.setStyle(forms::vbComboDropdownList);
    txtsearch.setMaxLength(50);
    cmdOK.setCaption("&OK");
    cmdCancel.setCaption("&Close");
    mnuPopup.setCaption("Popup");
    mnuPopup.setVisible(false);
    mnuadd.setCaption("&Add");
    mnuEdit.setCaption("&Edit");
    mnuDelete.setCaption("&Delete");
    for (forms::FlexGrid *grid : {&flxLocations, &flxexpiry}) {
        grid->setCols(7);
        grid->setRows(1);
        grid->setFixedRows(0);
        grid->setFixedCols(0);
    }
    flxexpiry.setVisible(false);
    layOut();
    layOutList();
    bindEvents();
    bindBrowse();
}

void frmStockVerification::layOut() {
    // The terminal draws 120 twips a column and 240 a row: 80 by 27 cells.
    Move(0, 0, 9600, 6600);
    fraUser.Move(120, 0, 9360, 960);
    lblUser.Move(120, 240, 480, 240);
    txtno.Move(600, 240, 1680, 240);
    lblPassword.Move(2400, 240, 600, 240);
    txtdate.Move(3000, 240, 1440, 240);
    lblconfirmPwd.Move(4560, 240, 1080, 240);
    txtVby.Move(5640, 240, 3600, 240);
    Label1.Move(120, 480, 1080, 240);
    txtRemarks.Move(1200, 480, 5520, 240);
    chkConfirm.Move(6840, 480, 2400, 240);
    lvwRequest.Move(120, 1200, 9360, 3840);
    fraBrowse.Move(120, 5280, 7680, 960);
    optAscend.Move(120, 240, 1680, 240);
    optDescend.Move(120, 480, 1680, 240);
    cboColNames.Move(1920, 240, 2040, 240);
    lblsearch.Move(4080, 240, 1320, 240);
    cboSearch.Move(5400, 240, 2160, 240);
    txtsearch.Move(5400, 480, 2160, 240);
    cmdOK.Move(7920, 5280, 1440, 360);
    cmdCancel.Move(7920, 5760, 1440, 360);
    flxLocations.Move(120, 1200, 4560, 1200);
    flxexpiry.Move(4800, 1200, 4560, 1200);
}

void frmStockVerification::layOutList() {
    lvwRequest.setView(forms::lvwReport);
    lvwRequest.setFullRowSelect(true);
    lvwRequest.setGridLines(true);
    lvwRequest.setHideSelection(false);
    lvwRequest.setLabelEdit(forms::lvwManual);
    for (const ColumnDesign &c : listColumns) {
        lvwRequest.ColumnHeaders().Add(0, "", c.header, c.width, c.alignment);
    }
}

void frmStockVerification::bindEvents() {
    onLoad = [this] { Form_Load(); };
    onActivate = [this] { Form_Activate(); };
    onKeyPress = [this](int &KeyAscii) { Form_KeyPress(KeyAscii); };
    onQueryUnload = [this](int &Cancel, int UnloadMode) { Form_QueryUnload(Cancel, UnloadMode); };
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
    txtRemarks.onKeyPress = [this](int &KeyAscii) { txtRemarks_KeyPress(KeyAscii); };
    txtVby.onKeyPress = [this](int &KeyAscii) { txtVby_KeyPress(KeyAscii); };
    mnuadd.onClick = [this] { mnuadd_Click(); };
    mnuEdit.onClick = [this] { mnuEdit_Click(); };
    mnuDelete.onClick = [this] { mnuDelete_Click(); };
    lvwRequest.onItemClick = [this](forms::ListItem &Item) { lvwRequest_ItemClick(Item); };
    lvwRequest.onDblClick = [this] { lvwRequest_DblClick(); };
    lvwRequest.onKeyPress = [this](int &KeyAscii) { lvwRequest_KeyPress(KeyAscii); };
    lvwRequest.onKeyDown = [this](int &KeyCode, int Shift) { lvwRequest_KeyDown(KeyCode, Shift); };
    lvwRequest.onMouseDown = [this](int Button, int Shift, double X, double Y) {
        lvwRequest_MouseDown(Button, Shift, X, Y);
    };
}

BaseServices::clsBaseData &frmStockVerification::data() const {
    return made(objBaseData);
}

StockActivityTrail::clsActivityTrail &frmStockVerification::auditTrail() const {
    return made(m_.objActivityTrail);
}

int frmStockVerification::message(const std::string &text, int style) {
    return forms::MsgBox(m_.screen(), text, style, m_.strMsgboxCaption);
}

void frmStockVerification::Form_Load() {
    try {
        chkConfirm.setVisible(m_.intInterfaceID == 1013);
        made(m_.objScreenPalette).ApplyScreenPalette(*this);
        if (m_.intInterfaceID == 1013) {
            // A total count takes good stock only.
            lvwRequest.ColumnHeaders()(7).setWidth(0);
            lvwRequest.ColumnHeaders()(8).setWidth(0);
        }
        if (m_.blnAliasEnabled) {
            setCaption(m_.strAliasTwo + " Stock Verification");
        }
        m_.blnEntryChanged = false;
        blnFirstActivate = true;
        blnNewEntry = true;
        objBaseData = services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseData",
                                                                        m_.context());
        objBaseData->adocon = m_.adocon;

        static constexpr const char *columnNames[] = {"Location",     "Item Description",
                                                      "Available GS", "Verified GS",
                                                      "Available BS", "Verified BS"};
        for (const char *name : columnNames) {
            cboColNames.AddItem(name);
        }
        for (int i = 0; i < 6; ++i) {
            cboSearch.AddItem(columnNames[i]);
            cboSearch.setItemData(cboSearch.NewIndex(), i + 1);
        }
        ApplyListViewLayout(m_, "GodownStockVerification", lvwRequest, Name());
        flxLocations.setVisible(false);

        // The rate list of the session: every currency the save may convert between.
        m_.strExchangeRates = vb::CStr(AddExchangeRate(m_, "", "B", m_.intCompanyID));
        m_.strExchangeRates =
            vb::CStr(AddExchangeRate(m_, m_.strExchangeRates, "Z", m_.intCompanyID));
        readAccounts();

        if (m_.strTransactionMode == "N") {
            txtVby.setText(GetUserName(m_, vb::CInt(vb::Variant(m_.intUserID))));
        }
        // "Unit" reads better next to the quantities than the cost does.
        lvwRequest.ColumnHeaders()(14).setPosition(13);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Load", e);
    }
}

void frmStockVerification::readAccounts() {
    ado::Recordset rs;
    rs.Open("select InventoryID,stocktransfercontrolacc from apackagesettings where companyid=" +
                std::to_string(m_.intCompanyID),
            m_.adocon, ado::adOpenForwardOnly, ado::adLockReadOnly);
    if (!rs.Eof()) {
        m_.lngInventoryAccountId = vb::CLng(rs.Fields("InventoryID").Value());
        m_.strExchangeRates =
            vb::CStr(AddExchangeRate(m_, m_.strExchangeRates, "A", m_.lngInventoryAccountId));
        m_.lngStockTransferAccountId = vb::CLng(rs.Fields("stocktransfercontrolacc").Value());
        m_.strExchangeRates =
            vb::CStr(AddExchangeRate(m_, m_.strExchangeRates, "A", m_.lngStockTransferAccountId));
    }
    rs.Close();

    data().strTableName = "agodown";
    m_.lngDepartmentId = vb::CLng(
        data().fnReturnField("DepartmentId", "GodownID = " + std::to_string(m_.intGodownID)));
    m_.strExchangeRates =
        vb::CStr(AddExchangeRate(m_, m_.strExchangeRates, "D", m_.lngDepartmentId));
}

void frmStockVerification::Form_Activate() {
    try {
        // The register fills the header and the list before Show, so the
        // snapshot taken now is what the entry looked like when it opened.
        if (blnFirstActivate) {
            blnFirstActivate = false;
            setTag("loaded");
            auditTrail().SaveInToTag(*this);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Activate", e);
    }
}

void frmStockVerification::Form_KeyPress(int &KeyAscii) {
    try {
        if (KeyAscii == 4) {
            lvwRequest.SetFocus();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_KeyPress", e);
    }
}

void frmStockVerification::Form_QueryUnload(int &Cancel, int /*UnloadMode*/) {
    try {
        // An empty Tag means the save has just closed the form.
        if (Tag().empty()) {
            return;
        }
        // Both are asked, as the old Or asked both.
        const bool blnDataChanged = auditTrail().DataChanged(*this);
        if (m_.blnEntryChanged || blnDataChanged) {
            const int answer =
                message("Save Changes?", forms::vbYesNoCancel + forms::vbInformation);
            if (answer == forms::vbCancel) {
                Cancel = 1;
            } else if (answer == forms::vbYes) {
                cmdOK_Click();
                if (!Tag().empty()) {
                    Cancel = 1;
                }
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_QueryUnload", e);
    }
}

void frmStockVerification::cmdCancel_Click() {
    try {
        Unload();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdCancel_Click", e);
    }
}

void frmStockVerification::txtRemarks_KeyPress(int &KeyAscii) {
    try {
        EnterAsTab(m_, KeyAscii);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtRemarks_KeyPress", e);
    }
}

void frmStockVerification::txtVby_KeyPress(int &KeyAscii) {
    try {
        EnterAsTab(m_, KeyAscii);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtVby_KeyPress", e);
    }
}

} // namespace tqsv2731
