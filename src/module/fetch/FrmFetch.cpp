#include "module/fetch/FrmFetch.h"

#include "ado/Constants.h"
#include "ado/Recordset.h"
#include "forms/EventLoop.h"
#include "forms/Keys.h"
#include "forms/Screen.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "services/CreateObject.h"
#include "services/clsBaseData.h"
#include "services/clsBaseTools.h"
#include "services/clsScreenPalette.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

#include <array>
#include <string>

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "FrmFetch";

/// The grid shows at most this many items; a wider fetch is cut without a word.
constexpr int MaxRows = 500;

/// An object variable that was never set fails as the old one did.
template <class Service> Service &made(const std::shared_ptr<Service> &service) {
    if (!service) {
        throw vb::Error::standard(vb::err::ObjectNotSet);
    }
    return *service;
}

struct GridColumn {
    const char *loadHeading;
    const char *fillHeading;
    int loadWidth;
    int fillWidth;
};

// The category column narrows while a fill runs; the category id, hidden at
// load, is set to 0 and then to 1200 by the closing width list of every
// fill, so it shows from the first fetch on.
constexpr std::array<GridColumn, 6> gridColumns{{
    {"ItemID", "ItemID", 0, 0},
    {"ItemCode", "ItemCode", 3000, 3000},
    {"ItemDescription", "ItemDescription", 6200, 6200},
    {"Item Category", "Item Category", 1200, 500},
    {"Itemcategoryid", "itemcategoryid", 0, 0},
    {"Part_code", "Part_Code", 1200, 1200},
}};

/// The column the fetch filters on, from the combo's text. The combo says
/// "Part_Code" with a capital C, which matches nothing here and so goes into
/// the statement as it stands.
std::string fetchColumn(const std::string &strFetchOn) {
    if (strFetchOn == "ItemDescription") {
        return "v.itemdescription";
    }
    if (strFetchOn == "ItemCode") {
        return "a.itemcode";
    }
    if (strFetchOn == "Item Category") {
        return "categorynamedescription";
    }
    if (strFetchOn == "Part_code") {
        return "a.part_code";
    }
    if (strFetchOn.empty()) {
        return "a.itemdescription";
    }
    return strFetchOn;
}

} // namespace

// The module's touch of this form: loads it when it is not loaded.
tqsv2731::FrmFetch &Module::FrmFetch() {
    return slotOf<tqsv2731::FrmFetch>(FrmFetch_).get();
}

FrmFetch::FrmFetch(Module &m) : Form(m.screen(), FormName), m_(m) {
    setCaption("Fetch Item");
    // Ctrl+D reaches the grid wherever the focus stands.
    setKeyPreview(true);
    fraFetch.setCaption("Fetch");
    lblFetch.setCaption("&Fetch On:");
    cboFetch.setStyle(forms::vbComboDropdownList);
    txtFetch.setMaxLength(70);
    fraBrowse.setCaption("Browse");
    optAscend.setCaption("&Ascending");
    optAscend.setToolTipText("Shortcut: Alt+A");
    optAscend.setValue(true);
    optDescend.setCaption("&Descending");
    optDescend.setToolTipText("Shortcut: Alt+D");
    cboColNames.setStyle(forms::vbComboDropdownList);
    lblsearch.setCaption("&Search On:");
    cboSearch.setStyle(forms::vbComboDropdownList);
    txtsearch.setMaxLength(50);
    cmdOK.setCaption("&OK");
    CmdClose.setCaption("&Close");
    CmdClose.setCancel(true);
    layOut();
    bindEvents();
}

void FrmFetch::layOut() {
    // The terminal draws 120 twips a column and 240 a row: 80 by 27 cells.
    Move(0, 0, 9600, 6600);
    fraFetch.Move(120, 0, 9360, 720);
    lblFetch.Move(120, 240, 1200, 240);
    cboFetch.Move(1320, 240, 2400, 240);
    txtFetch.Move(3840, 240, 5400, 240);
    flexMaster.Move(120, 840, 9360, 3600);
    fraBrowse.Move(120, 4560, 7680, 960);
    Picture1.Move(120, 240, 1680, 480);
    optAscend.Move(0, 0, 1680, 240);
    optDescend.Move(0, 240, 1680, 240);
    cboColNames.Move(1920, 240, 2040, 240);
    lblsearch.Move(4080, 240, 1320, 240);
    cboSearch.Move(5400, 240, 2160, 240);
    txtsearch.Move(5400, 480, 2160, 240);
    cmdOK.Move(7920, 4560, 1440, 360);
    CmdClose.Move(7920, 5040, 1440, 360);
}

void FrmFetch::bindEvents() {
    onLoad = [this] { Form_Load(); };
    onActivate = [this] { Form_Activate(); };
    onKeyPress = [this](int &KeyAscii) { Form_KeyPress(KeyAscii); };
    cboFetch.onClick = [this] { cboFetch_Click(); };
    txtFetch.onKeyPress = [this](int &KeyAscii) { txtFetch_KeyPress(KeyAscii); };
    txtFetch.onKeyDown = [this](int &KeyCode, int Shift) { txtFetch_KeyDown(KeyCode, Shift); };
    txtFetch.onKeyUp = [this](int &KeyCode, int Shift) { txtFetch_KeyUp(KeyCode, Shift); };
    cboColNames.onClick = [this] { cboColNames_Click(); };
    optAscend.onClick = [this] { optAscend_Click(); };
    optDescend.onClick = [this] { optDescend_Click(); };
    txtsearch.onKeyUp = [this](int &KeyCode, int Shift) { txtsearch_KeyUp(KeyCode, Shift); };
    flexMaster.onKeyPress = [this](int &KeyAscii) { flexMaster_KeyPress(KeyAscii); };
    flexMaster.onDblClick = [this] { flexMaster_DblClick(); };
    cmdOK.onClick = [this] { cmdOK_Click(); };
    CmdClose.onClick = [this] { CmdClose_Click(); };
    cboColNames.onKeyPress = [this](int &KeyAscii) { cboColNames_KeyPress(KeyAscii); };
    cboFetch.onKeyPress = [this](int &KeyAscii) { cboFetch_KeyPress(KeyAscii); };
    cboSearch.onKeyPress = [this](int &KeyAscii) { cboSearch_KeyPress(KeyAscii); };
    optAscend.onKeyPress = [this](int &KeyAscii) { optAscend_KeyPress(KeyAscii); };
    optDescend.onKeyPress = [this](int &KeyAscii) { optDescend_KeyPress(KeyAscii); };
    txtsearch.onKeyPress = [this](int &KeyAscii) { txtsearch_KeyPress(KeyAscii); };
}

BaseServices::clsBaseTools &FrmFetch::tools() const {
    return made(objBaseTools);
}

BaseServices::clsBaseData &FrmFetch::data() const {
    return made(objBaseData);
}

void FrmFetch::setUpGrid(bool filling) {
    for (int c = 0; c < static_cast<int>(gridColumns.size()); ++c) {
        const GridColumn &column = gridColumns[c];
        flexMaster.setColWidth(c, filling ? column.fillWidth : column.loadWidth);
        flexMaster.setTextMatrix(0, c, filling ? column.fillHeading : column.loadHeading);
    }
}

void FrmFetch::selectLastRow() {
    flexMaster.setRow(flexMaster.Rows() - 1);
    flexMaster.setTopRow(flexMaster.Row());
    flexMaster.setCol(0);
    flexMaster.setColSel(flexMaster.Cols() - 1);
}

void FrmFetch::Form_Load() {
    try {
        objBaseTools = services::CreateObject<BaseServices::clsBaseTools>(
            "BaseServices.clsBaseTools", m_.context());
        objBaseData = services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseData",
                                                                        m_.context());
        data().adocon = m_.adocon;
        made(m_.objScreenPalette).ApplyScreenPalette(*this);

        for (const char *column : {"ItemCode", "ItemDescription", "Item Category", "Part_Code"}) {
            cboFetch.AddItem(column);
        }

        // The detail form's option decides, once for the dialog's life,
        // whether the items in stock or all the items the godown carries are
        // fetched.
        const std::string godown = std::to_string(m_.intGodownID);
        if (m_.frmStockVerificationDetail().optGodownItems.Value()) {
            strFetchSql = "select a.itemid, a.itemcode, "
                          "v.itemdescription,ai.categorynamedescription,ai.itemcategoryid,isnull(a."
                          "part_code,'')part_code from aitem a, vwinquirygodownstock ss, "
                          "aitemcategory ai, vwitemdescription v Where a.itemID = v.itemID And "
                          "a.ItemCategoryID = ai.ItemCategoryID and a.itemid=ss.gsitemid and "
                          "ss.gsgodownid=" +
                          godown + " And a.Active = 1";
        } else {
            strFetchSql = "select a.itemid, a.itemcode, "
                          "v.itemdescription,ai.categorynamedescription,ai.itemcategoryid,isnull(a."
                          "part_code,'')part_code from aitem a, agodowndetail ss, aitemcategory "
                          "ai, vwitemdescription v Where a.itemID = v.itemID And a.ItemCategoryID "
                          "= ai.ItemCategoryID and a.itemid=ss.itemid and ss.godownid=" +
                          godown + " And a.Active = 1";
        }

        flexMaster.setFixedRows(1);
        flexMaster.setFixedCols(0);
        flexMaster.setCols(6);
        flexMaster.setRows(2);
        setUpGrid(false);

        // The item data is the grid column each choice sorts or searches on.
        static constexpr std::pair<const char *, int> sortColumns[] = {
            {"ItemCode", 1}, {"ItemDescription", 2}, {"Category", 3}, {"Part_Code", 7}};
        for (const auto &[text, col] : sortColumns) {
            cboColNames.AddItem(text);
            cboColNames.setItemData(cboColNames.NewIndex(), col);
        }
        static constexpr std::pair<const char *, int> searchColumns[] = {
            {"ItemCode", 1}, {"ItemDescription", 2}, {"Item Category", 3}, {"Part_code", 4}};
        for (const auto &[text, col] : searchColumns) {
            cboSearch.AddItem(text);
            cboSearch.setItemData(cboSearch.NewIndex(), col);
        }

        selectLastRow();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Load ", e);
    }
}

void FrmFetch::Form_Activate() {
    try {
        data().strTableName = "loisettings";
        const std::string condition = "godownID=" + std::to_string(m_.intGodownID);
        if (!vb::IsNull(data().fnReturnField("defaultfetch", condition))) {
            tools().SelectComboItemByname(cboFetch,
                                          data().fnReturnField("defaultfetch", condition));
        } else {
            cboFetch.setListIndex(1);
        }
        txtFetch.SetFocus();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_Activate", e);
    }
}

void FrmFetch::Form_KeyPress(int &KeyAscii) {
    try {
        if (KeyAscii == 4) {
            flexMaster.SetFocus();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Form_KeyPress", e);
    }
}

void FrmFetch::cboFetch_Click() {
    try {
        if (cboFetch.ListIndex() >= 0) {
            strFetchOn = cboFetch.Text();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cboFetch_Click", e);
    }
}

void FrmFetch::txtFetch_KeyPress(int &KeyAscii) {
    try {
        flexMaster.setMousePointer(forms::vbHourglass);
        setMousePointer(forms::vbHourglass);
        // The fragment is spliced into the statement as it stands.
        if (KeyAscii == 39) {
            KeyAscii = 0;
        }
        if (KeyAscii == 13) {
            std::string head = strFetchSql;
            std::string tail;
            const long order = vb::InStr(1, strFetchSql, "order", vb::Compare::Text);
            if (order > 0) {
                head = vb::Left(strFetchSql, order - 1);
                tail = vb::Mid(strFetchSql, order);
            }

            // The mapped column stays, so a second Enter reuses it.
            strFetchOn = fetchColumn(strFetchOn);

            // A pasted apostrophe gets past the key filter; doubled, it is a
            // letter of the text and not the end of it.
            if (vb::InStr(vb::Trim(txtFetch.Text()), "'") > 0) {
                txtFetch.setText(vb::Replace(vb::Trim(txtFetch.Text()), "'", "''"));
            }

            std::string statement;
            if (strFetchOn == "ItemCategoryID") {
                statement = head + " and categorynamedescription" + " like '%" +
                            vb::Trim(txtFetch.Text()) + "%' " + tail;
            } else {
                if (strFetchOn == "Active") {
                    const std::string flag = vb::UCase(vb::Trim(txtFetch.Text()));
                    if (vb::InStr(flag, "Y") > 0) {
                        txtFetch.setText("1");
                    } else if (vb::InStr(flag, "N") > 0) {
                        txtFetch.setText("0");
                    }
                }
                const std::string joiner =
                    vb::InStr(vb::UCase(vb::Trim(head)), "WHERE") > 0 ? " and " : " where ";
                statement = head + joiner + strFetchOn + " like '%" + vb::Trim(txtFetch.Text()) +
                            "%' " + tail;
            }

            // Each fetch filters the base statement afresh: fetches do not narrow one another.
            GridPopulate(statement, "", "vwinquirygodownstock");
            txtFetch.setText("");
        }
        flexMaster.setMousePointer(forms::vbDefault);
        setMousePointer(forms::vbDefault);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtFetch_KeyPress", e);
    }
}

void FrmFetch::txtFetch_KeyDown(int &KeyCode, int /*Shift*/) {
    try {
        if (KeyCode == forms::vbKeyDown) {
            flexMaster.SetFocus();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtFetch_KeyDown", e);
    }
}

void FrmFetch::txtFetch_KeyUp(int &KeyCode, int /*Shift*/) {
    try {
        if (KeyCode == forms::vbKeyUp) {
            flexMaster.setRowSel(flexMaster.Rows() - 1);
            flexMaster.setCol(0);
            flexMaster.setColSel(flexMaster.Cols() - 1);
            flexMaster.SetFocus();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtFetch_KeyUp", e);
    }
}

void FrmFetch::GridPopulate(std::string_view strSql, std::string_view /*strTable*/,
                            std::string_view /*strSpare*/) {
    try {
        // Hidden while it fills, so that a failed statement leaves it hidden.
        flexMaster.setVisible(false);
        flexMaster.Clear();
        flexMaster.setFixedRows(1);
        flexMaster.setCols(6);
        flexMaster.setRows(2);
        setUpGrid(true);

        ado::Recordset rs;
        rs.Open(strSql, m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic, -1);
        const int fields = rs.Fields().Count();
        if (rs.Eof()) {
            flexMaster.setCols(fields);
        } else {
            rs.MoveFirst();
        }

        int r = 1;
        bool first = true;
        while (!rs.Eof() && r < MaxRows) {
            if (!first) {
                ++r;
                flexMaster.setRows(flexMaster.Rows() + 1);
            }
            for (int c = 0; c < fields; ++c) {
                if (r == 1 && c > 0) {
                    flexMaster.setCols(flexMaster.Cols() + 1);
                }
                flexMaster.setTextMatrix(r, c, vb::Trim(vb::TextOf(rs.Fields(c).Value())));
                flexMaster.setColAlignment(c, forms::flexAlignLeftTop);
            }
            first = false;
            rs.MoveNext();
            if (r % MaxRows == 0) {
                forms::DoEvents(m_.screen());
            }
        }

        cboColNames.setListIndex(-1);
        cboSearch.setListIndex(-1);
        flexMaster.setCols(6);
        // Column 4 is set twice, so the category id shows after every fill.
        flexMaster.setColWidth(0, 0);
        flexMaster.setColWidth(1, 3000);
        flexMaster.setColWidth(2, 6200);
        flexMaster.setColWidth(3, 1200);
        flexMaster.setColWidth(4, 0);
        flexMaster.setColWidth(4, 1200);

        selectLastRow();
        rs.Close();
        flexMaster.setVisible(true);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "GridPopulate", e);
    }
}

void FrmFetch::enterMovesOn(int &KeyAscii, std::string_view routine) {
    try {
        EnterAsTab(m_, KeyAscii);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, routine, e);
    }
}

void FrmFetch::cboColNames_KeyPress(int &KeyAscii) {
    enterMovesOn(KeyAscii, "cboColNames_KeyPress");
}

void FrmFetch::cboFetch_KeyPress(int &KeyAscii) {
    enterMovesOn(KeyAscii, "cboFetch_KeyPress");
}

void FrmFetch::cboSearch_KeyPress(int &KeyAscii) {
    enterMovesOn(KeyAscii, "cboSearch_KeyPress");
}

void FrmFetch::optAscend_KeyPress(int &KeyAscii) {
    enterMovesOn(KeyAscii, "optAscend_KeyPress");
}

void FrmFetch::optDescend_KeyPress(int &KeyAscii) {
    enterMovesOn(KeyAscii, "optDescend_KeyPress");
}

void FrmFetch::txtsearch_KeyPress(int &KeyAscii) {
    enterMovesOn(KeyAscii, "txtsearch_KeyPress");
}

void FrmFetch::CmdClose_Click() {
    try {
        Unload();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "CmdClose_Click", e);
    }
}

} // namespace tqsv2731
