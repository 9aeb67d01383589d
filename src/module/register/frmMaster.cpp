#include "module/register/frmMaster.h"

#include "ado/Recordset.h"
#include "forms/Keys.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "services/CreateObject.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "services/clsBaseTools.h"
#include "services/clsScreenPalette.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"
#include "vb/Format.h"
#include "vb/Strings.h"

namespace tqsv2731 {

frmMaster::frmMaster(Module &m) : Form(m.screen(), "frmMaster"), m_(m) {
    setCaption("Stock Verification ");
    // Ctrl+D and Ctrl+Enter work wherever the focus stands.
    setKeyPreview(true);
    fraBrowse.setCaption("Browse");
    optAscend.setCaption("&Ascending");
    optAscend.setToolTipText("Shortcut: Alt+A");
    optAscend.setValue(true);
    optDescend.setCaption("Descending");
    cboColNames.setStyle(forms::vbComboDropdownList);
    lblsearch.setCaption("&Search On:");
    cboSearch.setStyle(forms::vbComboDropdownList);
    txtsearch.setMaxLength(50);
    cmdnew.setCaption("&New");
    CmdEdit.setCaption("&Edit");
    CmdDelete.setCaption("&Delete");
    cmdPreview.setCaption("&Print");
    CmdClose.setCaption("&Close");
    // The grid is reached by Ctrl+D, which makes it a tab stop.
    flexMaster.setTabStop(false);
    flexMaster.setSelectionMode(forms::flexSelectionByRow);
    layOut();
    bindEvents();
}

void frmMaster::layOut() {
    // Twips for a screen of about 100 by 30 character cells: 96 across and
    // 220 down make one cell.
    Move(0, 0, 9600, 6600);
    fraBrowse.Move(120, 0, 9360, 840);
    Picture1.Move(120, 200, 1920, 560);
    optAscend.Move(0, 0, 1920, 240);
    optDescend.Move(0, 300, 1920, 240);
    cboColNames.Move(2160, 300, 2400, 300);
    lblsearch.Move(4700, 330, 1150, 240);
    cboSearch.Move(5860, 300, 1800, 300);
    txtsearch.Move(7760, 300, 1480, 300);
    flexMaster.Move(120, 940, 9360, 4860);
    cmdnew.Move(1200, 5940, 1200, 360);
    CmdEdit.Move(2640, 5940, 1200, 360);
    CmdDelete.Move(4080, 5940, 1200, 360);
    cmdPreview.Move(5520, 5940, 1200, 360);
    CmdClose.Move(7200, 5940, 1200, 360);
    // The buttons come first in Tab order, the browse frame after them.
    cmdnew.setTabIndex(0);
    CmdEdit.setTabIndex(1);
    CmdDelete.setTabIndex(2);
    cmdPreview.setTabIndex(3);
    CmdClose.setTabIndex(4);
}

void frmMaster::bindEvents() {
    onLoad = [this] { Form_Load(); };
    onActivate = [this] { Form_Activate(); };
    onKeyPress = [this](int &KeyAscii) { Form_KeyPress(KeyAscii); };
    flexMaster.onRowColChange = [this] { flexMaster_RowColChange(); };
    flexMaster.onSelChange = [this] { flexMaster_SelChange(); };
    flexMaster.onDblClick = [this] { flexMaster_DblClick(); };
    flexMaster.onKeyPress = [this](int &KeyAscii) { flexMaster_KeyPress(KeyAscii); };
    flexMaster.onKeyDown = [this](int &KeyCode, int Shift) { flexMaster_KeyDown(KeyCode, Shift); };
    flexMaster.onMouseMove = [this](int Button, int Shift, double X, double Y) {
        flexMaster_MouseMove(Button, Shift, X, Y);
    };
    cboColNames.onClick = [this] { cboColNames_Click(); };
    optAscend.onClick = [this] { optAscend_Click(); };
    optDescend.onClick = [this] { optDescend_Click(); };
    txtsearch.onKeyUp = [this](int &KeyCode, int Shift) { txtsearch_KeyUp(KeyCode, Shift); };
    for (forms::Control *c : std::initializer_list<forms::Control *>{
             &cboColNames, &cboSearch, &optAscend, &optDescend, &txtsearch}) {
        c->onKeyPress = [this](int &KeyAscii) { EnterAsTab(m_, KeyAscii); };
    }
    cmdnew.onClick = [this] { cmdnew_Click(); };
    CmdEdit.onClick = [this] { CmdEdit_Click(); };
    CmdDelete.onClick = [this] { CmdDelete_Click(); };
    cmdPreview.onClick = [this] { cmdPreview_Click(); };
    CmdClose.onClick = [this] { CmdClose_Click(); };
}

void frmMaster::Form_Load() {
    try {
        setCaption(m_.intInterfaceID == 1005 ? "Stock Verification" : "Total Stock Verification");
        createServices();

        objBaseData->strTableName = "lousers where userid=" + std::to_string(m_.intUserID) +
                                    " and GodownID=" + std::to_string(m_.intGodownID);
        m_.strUserName = vb::CStr(objBaseData->fnReturnField("username"));
        m_.dtListFloorDate = fnPopulateDate();

        m_.objScreenPalette = services::CreateObject<ScreenPalette::clsScreenPalette>(
            "ScreenPalette.clsScreenPalette", m_.context());
        m_.objScreenPalette->ApplyScreenPalette(*this);

        readPackageSettings();

        strListTable = "loiStockVerificationHeader";
        strListSql = listStatement();
        m_.strRegisterSql = strListSql;

        GridPopulate(strListSql, strListTable, "");
        USerRights();
        flexMaster_SelChange();
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "Form_Load", e);
    }
}

void frmMaster::createServices() {
    objBaseData =
        services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseData", m_.context());
    objBaseData->adocon = m_.adocon;
    objBaseTools = services::CreateObject<BaseServices::clsBaseTools>("BaseServices.clsBaseTools",
                                                                      m_.context());
    // The audit service is told interface 1005 whatever the interface is.
    m_.objActivityTrail = services::CreateObject<StockActivityTrail::clsActivityTrail>(
        "StockActivityTrail.clsActivityTrail", m_.context());
    m_.objActivityTrail->OpenObject(m_.adocon, m_.intCompanyID, m_.intGodownID, m_.intUserID,
                                    std::int16_t{1005}, vb::Now());
}

void frmMaster::readPackageSettings() {
    objBaseData->strTableName = "aPAckageSettings";
    m_.blnIntegerQuantity = vb::CBool(objBaseData->fnReturnField("IntegerQuantity"));
    objBaseData->strTableName = "aPAckageSettings";
    m_.blnAliasEnabled = vb::CBool(objBaseData->fnReturnField("Alias"));
    if (m_.blnAliasEnabled) {
        const std::string company = std::to_string(m_.intCompanyID);
        objBaseData->strTableName = "aAlias";
        m_.strAliasOne =
            vb::CStr(objBaseData->fnReturnField("Alias", "AliasId = 1 AND CompanyId =" + company));
        m_.strAliasTwo =
            vb::CStr(objBaseData->fnReturnField("Alias", "AliasId = 2 AND CompanyId =" + company));
    }
}

std::string frmMaster::listStatement() const {
    const std::string godown = std::to_string(m_.intGodownID);
    if (m_.intInterfaceID == 1005) {
        return "select svhid,svhno,svhdate,svhVerificationby,  case svhcancelled when 1 then 'Yes' "
               "when 0 then 'No' end, svhremarks,case svhposted when 1 then 'Yes' when 0 then 'No' "
               "end  from " +
               strListTable + " where svhDate>'" +
               vb::Format(vb::Variant(m_.dtListFloorDate), "yyyymmdd") +
               "' and svhgodownid=" + godown + " and left(svhFutureVc, 1) <> 't' order by svhid";
    }
    return "select svhid, svhno, svhdate, svhVerificationby,  case svhCancelled when 1 then 'Yes'  "
           "when 0 then 'No' end, svhRemarks,  case svhposted when 1 then 'Yes' when 0 then 'No' "
           "end  from " +
           strListTable + " where svhDate > '" +
           vb::Format(vb::Variant(m_.dtListFloorDate), "yyyy/mmm/dd") +
           "' and svhgodownid = " + godown + " and left(svhFutureVc, 1) = 't' order by svhid";
}

vb::Date frmMaster::fnPopulateDate() {
    try {
        const std::string criterion = "Godownid=" + std::to_string(m_.intGodownID);
        objBaseData->strTableName = "LOiSettings";
        const std::int16_t backDays =
            vb::CInt(objBaseData->fnReturnField("sNoBackDays", criterion));
        const vb::Date first = m_.dtProcessDate - backDays;

        objBaseData->strTableName = "vwGodownCloseDate";
        const vb::Variant closeDate = objBaseData->fnReturnField("closedate", criterion);
        if (!vb::IsEmpty(closeDate) && !vb::IsNull(closeDate)) {
            const vb::Date closed = vb::CDate(closeDate);
            return first > closed ? first : closed;
        }
        return first;
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "fnPopulateDate", e);
        return vb::Date{};
    }
}

void frmMaster::USerRights() {
    try {
        ado::Recordset rs;
        rs.Open("select functionrights from louserrights where userid = " +
                    std::to_string(m_.intUserID) +
                    " and interfaceid = " + std::to_string(m_.intInterfaceID) +
                    " and companyid = " + std::to_string(m_.intCompanyID),
                m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        if (rs.RecordCount() > 0) {
            m_.strFunctionRights = vb::CStr(rs.Fields("FunctionRights").Value());
            rs.Close();
            cmdnew.setEnabled(hasRight("N"));
            CmdEdit.setEnabled(hasRight("E"));
            CmdDelete.setEnabled(hasRight("D"));
        } else {
            rs.Close();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "USerRights", e);
    }
}

bool frmMaster::fnUSerRights(std::string &strFunction) {
    try {
        strFunction = vb::UCase(vb::Trim(strFunction));
        m_.strFunctionRights = vb::UCase(vb::Trim(m_.strFunctionRights));
        // "ADMIN" holds D and N but grants nothing: that is the rule as it stands.
        return m_.strFunctionRights != "ADMIN" &&
               vb::InStr(1, m_.strFunctionRights, strFunction, vb::Compare::Binary) > 0;
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "fnUSerRights", e);
        return false;
    }
}

void frmMaster::applyButtonGate() {
    const int row = flexMaster.Row();
    if (flexMaster.TextMatrix(row, 0).empty()) {
        CmdEdit.setEnabled(false);
        CmdDelete.setEnabled(false);
        cmdPreview.setEnabled(false);
        return;
    }
    CmdEdit.setEnabled(hasRight("E"));
    cmdPreview.setEnabled(hasRight("P"));
    // Only a deleted row is kept from Delete here; a posted one is refused by Delete itself.
    if (flexMaster.TextMatrix(row, 4) == "No") {
        CmdDelete.setEnabled(hasRight("D"));
    } else {
        CmdDelete.setEnabled(false);
    }
}

void frmMaster::Form_Activate() {
    try {
        applyButtonGate();
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "Form_Activate", e);
    }
}

void frmMaster::flexMaster_RowColChange() {
    applyButtonGate();
}

void frmMaster::Form_KeyPress(int &KeyAscii) {
    if (KeyAscii == 4) {
        flexMaster.setTabStop(true);
        flexMaster.SetFocus();
    }
    // Ctrl+Enter gives character 10: a new entry from anywhere on the form.
    if (KeyAscii == 10 && cmdnew.Enabled()) {
        cmdnew.setValue(true);
    }
}

void frmMaster::flexMaster_DblClick() {
    if (CmdEdit.Enabled()) {
        CmdEdit.setValue(true);
    }
}

void frmMaster::flexMaster_KeyPress(int &KeyAscii) {
    if (KeyAscii == 13 && CmdEdit.Enabled()) {
        CmdEdit.setValue(true);
    }
}

void frmMaster::flexMaster_KeyDown(int &KeyCode, int /*Shift*/) {
    if (KeyCode == forms::vbKeyDelete && CmdDelete.Enabled()) {
        CmdDelete.setValue(true);
    }
}

void frmMaster::flexMaster_MouseMove(int /*Button*/, int /*Shift*/, double /*X*/, double /*Y*/) {
    try {
        flexMaster.setToolTipText(
            flexMaster.TextMatrix(flexMaster.MouseRow(), flexMaster.MouseCol()));
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "flexMaster_MouseMove", e);
    }
}

void frmMaster::CmdClose_Click() {
    Unload();
}

} // namespace tqsv2731
