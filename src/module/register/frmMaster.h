// frmMaster: the register, the list of a godown's verification entries and its buttons.
#pragma once

#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/Frame.h"
#include "forms/Label.h"
#include "forms/OptionButton.h"
#include "forms/PictureBox.h"
#include "forms/TextBox.h"
#include "vb/Date.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace BaseServices {
class clsBaseData;
class clsBaseTools;
} // namespace BaseServices

namespace tqsv2731 {

class Module;

/// The register: the entries of the current godown dated after the floor
/// date, in `flexMaster`, newest at the bottom and selected; sorting and a
/// first-match search over its columns; the buttons New, Edit, Delete, Print
/// and Close, switched by the user's function rights and again, on every
/// move of the selection, by the state of the selected row.
///
/// Columns of `flexMaster` by position, which other forms read: 0 id
/// (hidden), 1 number, 2 date, 3 verified by, 4 deleted ("Yes"/"No"),
/// 5 remarks, 6 posted ("Yes"/"No").
class frmMaster : public forms::Form {
public:
    explicit frmMaster(Module &m);

    forms::FlexGrid flexMaster{*this, "flexMaster"};
    forms::Frame fraBrowse{*this, "fraBrowse"};
    forms::PictureBox Picture1{fraBrowse, "Picture1"};
    forms::OptionButton optAscend{Picture1, "optAscend"};
    forms::OptionButton optDescend{Picture1, "optDescend"};
    forms::ComboBox cboColNames{fraBrowse, "cboColNames"};
    forms::Label lblsearch{fraBrowse, "lblsearch"};
    forms::ComboBox cboSearch{fraBrowse, "cboSearch"};
    forms::TextBox txtsearch{fraBrowse, "txtsearch"};
    forms::CommandButton cmdnew{*this, "cmdnew"};
    forms::CommandButton CmdEdit{*this, "CmdEdit"};
    forms::CommandButton CmdDelete{*this, "CmdDelete"};
    forms::CommandButton cmdPreview{*this, "cmdPreview"};
    forms::CommandButton CmdClose{*this, "CmdClose"};

    /// The form's own data and tool services, made at each Form_Load.
    std::shared_ptr<BaseServices::clsBaseData> objBaseData;
    std::shared_ptr<BaseServices::clsBaseTools> objBaseTools;
    /// The list's statement and table, as Form_Load built them.
    std::string strListSql;
    std::string strListTable;
    /// True between BeginTrans and the end of a delete.
    bool blnInTransaction = false;

    // ---- loading and listing --------------------------------------------------

    void Form_Load();
    /// The closing date gate: the process date less the godown's back days,
    /// or the godown's close date when that is later. A failure gives the
    /// zero date, which lists every entry.
    vb::Date fnPopulateDate();
    /// Fills the grid from a statement, one cell at a time, then colours the
    /// deleted rows, names the columns and selects the whole last row.
    /// `strSpare` is kept and never read, as it was.
    void GridPopulate(std::string_view strSql, std::string_view strTable,
                      std::string_view strSpare);
    /// Deleted rows ("Yes" in column 4) in red; the caller restores the selection.
    void GridColor();
    /// Headers and the two column lists from `atablecolumns`, widths from the
    /// longest texts (`lengths` by column, raised for the headers), the spare
    /// width shared out, then the user's saved profile over all of it.
    void NameGrid(std::string_view strTable, std::vector<double> &lengths);

    // ---- rights and the button gate --------------------------------------------

    /// Reads the user's rights for this interface and company and switches
    /// New, Edit and Delete; with no rights row the buttons stay as they are.
    void USerRights();
    /// True when the rights text holds the letter, but never for the rights
    /// text "ADMIN". Trims and upper-cases both its argument (which the
    /// caller sees) and the session's rights text. A failure gives false.
    bool fnUSerRights(std::string &strFunction);
    void Form_Activate();
    void flexMaster_RowColChange();
    void flexMaster_SelChange();

    // ---- sorting and searching --------------------------------------------------

    void cboColNames_Click();
    void optAscend_Click();
    void optDescend_Click();
    void txtsearch_KeyUp(int &KeyCode, int Shift);
    /// First-match search on the chosen column, which it sorts first.
    void searchtheword();

    // ---- keys and mouse ---------------------------------------------------------

    void Form_KeyPress(int &KeyAscii);
    void flexMaster_DblClick();
    void flexMaster_KeyPress(int &KeyAscii);
    void flexMaster_KeyDown(int &KeyCode, int Shift);
    void flexMaster_MouseMove(int Button, int Shift, double X, double Y);
    void CmdClose_Click();

    // ---- commands on the entries ---------------------------------------------

    /// New: opens the entry form for a new entry of the process date and
    /// refreshes the buttons when it closes. A total count (1013) is refused
    /// while transfers of the godown are unfinished.
    void cmdnew_Click();
    /// Edit: opens the selected entry on the entry form with its stored
    /// lines. An entry that may not change still opens, with OK off: deleted
    /// (silently), verified again later, posted, or confirmed (1013).
    void CmdEdit_Click();
    /// Delete: flags the selected entry as cancelled with the user's reason
    /// and takes its stock back, in one transaction opened before the
    /// question; the row stays in the list, in red.
    void CmdDelete_Click();
    /// Print: the print destinations of the selected entry.
    void cmdPreview_Click();
    /// True when a later live entry of the godown exists, of either
    /// interface: it has counted over this one. A failure gives false.
    bool VerifiedAgain();
    /// True when the total count's marker says it was confirmed (second
    /// letter "C" in any case). A failure gives false.
    bool Confirmed(std::int32_t lngId, std::int16_t intGodown);
    /// Shows the unfinished transfers of the godown, if any, and says
    /// whether there were any. A failure gives false.
    bool UnProcessedQuantitiesExist();

    // ---- fills of the entry form's hidden ledger grids (nothing calls them) ----

    /// Appends the entry's expiry arrivals to the entry form's `flxexpiry`,
    /// one row each, laid out as the expiry posting reads them: date,
    /// quantity, packing type, packing quantity, item. Cancelled and
    /// adjusting rows are left out except in a total count (1013).
    void FillEntryExpiryGrid();
    /// Appends the entry's confirmed location arrivals to `flxLocations`:
    /// location name, quantity, location id, packing type, packing
    /// quantity, item.
    void FillEntryLocationGrid();
    /// Brings the stored lines of `lngVerificationId` into the entry form's
    /// list, one row per item (1005) or per item and location of the lines
    /// marked 1 in their bad stock (1013).
    void PopulateExistingData();

    // ---- the text slip (printing/frmMaster_printing.cpp) ---------------------

    /// Writes the slip of entry `id` to the slip file or the printer port, as
    /// ShopSetting.txt shapes it; frmPrint must be loaded, since its
    /// optScreen chooses the output.
    void PrintBill(std::int32_t id);
    /// The earlier form of PrintBill; nothing calls it.
    void PrintBillOld(std::int32_t id);
    /// The slip's header: title, company, godown and entry lines.
    void HeaderPrint(std::int32_t id);
    /// An empty line and the user's name with the date and time, centred.
    void FooterPrint();
    /// `n` blanks; none for 0 or less.
    std::string AddSpace(std::int16_t n);
    /// `str` with blanks in front that centre its trimmed text over `width`.
    std::string CenterMe(std::string str, std::int16_t width);

    std::string strSettingsFile;
    std::string strSettingKey;
    std::string strPrintPort;
    std::string strDashLine;
    std::int16_t intPageWidth = 0;
    std::int16_t intPrintRows = 0;
    std::int16_t intColSlNo = 0;
    std::int16_t intColQty = 0;
    std::int16_t intColUnit = 0;
    std::int16_t intColRate = 0;
    std::int16_t intColAmount = 0;
    std::int16_t intColDescription = 0;
    std::int16_t intHeadLines = 0;

private:
    /// Form_Load's services: data, tools, and the audit trail opened.
    void createServices();
    /// Form_Load's reads of the package switches and the alias texts.
    void readPackageSettings();
    /// The list statement of the interface, from the floor date and the table.
    std::string listStatement() const;
    /// Opens the print destinations (frmPrint) modally over the register.
    void openPrintDialog();
    /// The delete's reversal of the entry's stock: spupdateGodownVerification
    /// "R" in 1005, spReverseGodownTotalStockVerification in 1013, none in
    /// any other interface, where the entry is only flagged.
    void reverseDeletedStock();
    /// The gate that Form_Activate and flexMaster_RowColChange share: Edit,
    /// Delete and Print by the selected row and the rights.
    void applyButtonGate();
    bool hasRight(std::string letter) { return fnUSerRights(letter); }
    /// NameGrid's last widening: the grid's unused width shared out over the shown columns.
    void shareSpareWidth();
    void layOut();
    void bindEvents();

    Module &m_;
};

} // namespace tqsv2731
