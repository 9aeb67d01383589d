// frmStockVerification: the entry form, one verification's header and item list, and its save.
#pragma once

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/Frame.h"
#include "forms/Label.h"
#include "forms/ListItem.h"
#include "forms/ListView.h"
#include "forms/Menu.h"
#include "forms/OptionButton.h"
#include "forms/TextBox.h"

#include <cstdint>
#include <memory>
#include <string>

namespace BaseServices {
class clsBaseData;
} // namespace BaseServices
namespace StockActivityTrail {
class clsActivityTrail;
} // namespace StockActivityTrail

namespace tqsv2731 {

class Module;

/// The entry form. The register opens it modally for a new entry (mode "N")
/// or an existing one (mode "E"), after it has filled the header boxes and,
/// for an existing entry, the list. Rows reach `lvwRequest` through the
/// detail form, which this form opens from the list's popup menu and keys.
/// Nothing reaches the database before "&OK": the save writes the header and
/// its lines in one transaction and hands the stock to the stored procedures.
///
/// `lvwRequest` columns by index (own text, then sub-items 1 to 13): SlNo;
/// Location; Item Code; Item Description; Available GS; Verified GS;
/// Available BS; Verified BS; Itemid; dummy (the running number, "-1" once
/// the detail form changed the row); locationid; shipmentid; ItemCostprice;
/// Unit. "Unit" shows before "ItemCostprice" on the screen.
///
/// A locked entry is one whose `cmdOK` is disabled: the list then takes no
/// double click, Enter or popup, but the Delete key still removes rows.
class frmStockVerification : public forms::Form {
public:
    explicit frmStockVerification(Module &m);

    // ---- controls ---------------------------------------------------------------

    forms::Frame fraUser{*this, "fraUser"};
    forms::Label lblUser{fraUser, "lblUser"};
    forms::TextBox txtno{fraUser, "txtno"};
    forms::Label lblPassword{fraUser, "lblPassword"};
    forms::TextBox txtdate{fraUser, "txtdate"};
    forms::Label lblconfirmPwd{fraUser, "lblconfirmPwd"};
    forms::TextBox txtVby{fraUser, "txtVby"};
    forms::Label Label1{fraUser, "Label1"};
    forms::TextBox txtRemarks{fraUser, "txtRemarks"};
    /// "Confirm Finished": shown in interface 1013 only.
    forms::CheckBox chkConfirm{fraUser, "chkConfirm"};
    forms::ListView lvwRequest{*this, "lvwRequest"};
    forms::Frame fraBrowse{*this, "fraBrowse"};
    forms::OptionButton optAscend{fraBrowse, "optAscend"};
    forms::OptionButton optDescend{fraBrowse, "optDescend"};
    forms::ComboBox cboColNames{fraBrowse, "cboColNames"};
    forms::Label lblsearch{fraBrowse, "lblsearch"};
    forms::ComboBox cboSearch{fraBrowse, "cboSearch"};
    forms::TextBox txtsearch{fraBrowse, "txtsearch"};
    forms::CommandButton cmdOK{*this, "cmdOK"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};
    /// Hidden working grids of 7 columns, one block of rows per item. Only
    /// routines that nothing calls write or read them, so they stay empty.
    forms::FlexGrid flxLocations{*this, "flxLocations"};
    forms::FlexGrid flxexpiry{*this, "flxexpiry"};
    /// The list's popup menu; not on the menu bar.
    forms::Menu mnuPopup{*this, "mnuPopup"};
    forms::Menu mnuadd{mnuPopup, "mnuadd"};
    forms::Menu mnuEdit{mnuPopup, "mnuEdit"};
    forms::Menu mnuDelete{mnuPopup, "mnuDelete"};

    // ---- members ----------------------------------------------------------------

    std::shared_ptr<BaseServices::clsBaseData> objBaseData;
    /// The row of `lvwRequest` that the detail form shows, from 1.
    std::int16_t intSelectedItem = 0;
    /// True until the first Form_Activate.
    bool blnFirstActivate = false;
    /// True from load to the end of a save; nothing reads it.
    bool blnNewEntry = false;
    /// True from BeginTrans to CommitTrans of a save: what the save's
    /// failure handler has to roll back.
    bool blnInTransaction = false;
    /// The id given to a new header.
    std::int32_t lngNewId = 0;

    // ---- the form (frmStockVerification.cpp) --------------------------------------

    /// Builds the rate list, reads the accounts and the department, puts the
    /// user's name in a new entry's "Done by" and moves "Unit" before
    /// "ItemCostprice".
    void Form_Load();
    /// First time only: marks the form "loaded" and snapshots it for the
    /// audit trail, after the register has filled the header and the list.
    void Form_Activate();
    /// Ctrl+D moves the focus to the list.
    void Form_KeyPress(int &KeyAscii);
    /// Asks "Save Changes?" when a row was accepted or the audit trail sees a
    /// change; Yes saves and keeps the form open if the save did not end.
    void Form_QueryUnload(int &Cancel, int UnloadMode);
    void cmdCancel_Click();
    void txtRemarks_KeyPress(int &KeyAscii);
    void txtVby_KeyPress(int &KeyAscii);

    // ---- the list (frmStockVerification_list.cpp) ---------------------------------

    void mnuadd_Click();
    void mnuEdit_Click();
    /// Asks, then removes the selected row and renumbers the rows.
    void mnuDelete_Click();
    /// Tool tips of the clicked row: the description and the four quantities.
    void lvwRequest_ItemClick(forms::ListItem &Item);
    void lvwRequest_DblClick();
    void lvwRequest_KeyPress(int &KeyAscii);
    void lvwRequest_KeyDown(int &KeyCode, int Shift);
    /// The right button opens the popup menu on an unlocked entry.
    void lvwRequest_MouseDown(int Button, int Shift, double X, double Y);
    /// `blnNoItem` becomes true when the list has no rows; `blnFlag` is not read.
    void NoItemInList(bool blnFlag, bool &blnNoItem);

    // ---- ordering and searching the list (frmStockVerification_browse.cpp) ---------

    void cboColNames_Click();
    void cboSearch_Click();
    void optAscend_Click();
    void optDescend_Click();
    /// Enter reloads the list ordered by the search column, then finds the row.
    void txtsearch_KeyPress(int &KeyAscii);
    /// Reloads `lvwRequest` from the database ordered by the column named by
    /// its caption, which it rewrites into the order expression. A new entry
    /// gets the godown's whole stock, an existing one its saved lines: what
    /// was changed in the list is lost either way.
    void Search(std::string &strColumnName);
    /// Binary search for `txtsearch` over the list as Search ordered it.
    void searchtheword();

    // ---- saving (frmStockVerification_save.cpp) -----------------------------------

    /// The save: checks the list and the header, then in one transaction
    /// writes a new entry (InsertRequest, and UpdateStock in 1005), runs the
    /// total procedure for a confirmed 1013 entry, commits, refreshes the
    /// register's row and closes the form. Only its own lines roll back on a
    /// failure: the routines it calls report theirs and return, and what they
    /// wrote is committed.
    void cmdOK_Click();
    /// Writes the header of a new entry and its lines; sets `lngNewId`,
    /// `lngVerificationId` and `txtno`. Lines go as numbers (`Val`) in 1005;
    /// in 1013 the verified good stock, the item's figures and the cost go
    /// as the list's text, for the database to take or refuse.
    void InsertRequest();
    /// Moves the stock of the new entry: spupdateGodownVerification with "F".
    void UpdateStock();

    // ---- saving an edit (frmStockVerification_update.cpp) -------------------------

    /// Saves an existing entry: verified by, remarks and the marker on its
    /// header, its lines replaced by the list. In 1005 the old lines' stock
    /// is taken back ("R") before they go and the new lines applied ("F")
    /// after; a total count (1013) moves nothing here. Reports its own
    /// failure and returns, so that the save commits what was written.
    void UpdateRequest();
    /// Sets the godown's stock of each line of the entry to its book figures
    /// (`blnRestore`) or to its counted ones. Called by nothing.
    void reSetgodownStock(bool blnRestore);

    // ---- numbering and rates (frmStockVerification_numbering.cpp) -----------------

    /// Puts the next number of the godown under its prefix in `txtno`: the
    /// prefix of the interface, current financial year and godown (none when
    /// there is no `aPrefix` row), followed by the highest numeric tail of
    /// the godown's numbers with that prefix plus one, unpadded.
    void GenerateVerificationNo();
    /// (1 / rate) * the selling rate of the currency; a rate of 0 becomes 1,
    /// also for the caller, and a missing selling rate counts 1. Nothing but
    /// GetExchangeRate calls it, and nothing calls that.
    double convertExchangeRate(double &dblRate, std::int32_t &lngCurrencyId);
    /// The rate of the inventory currency into the company's currency (flag
    /// not 0) or the godown department's (flag 0), by way of the cash
    /// currency when neither side is the inventory currency. The result is
    /// also left in `dblExchangeRate`. Called by nothing.
    double GetExchangeRate(std::int16_t &intFlag, double &dblExchangeRate);

private:
    void layOut();
    void layOutList();
    void bindEvents();
    void bindBrowse();
    /// Form_Load's reads of the accounts and the department, with their rates.
    void readAccounts();
    /// InsertRequest's lines, one per row of the list, by interface.
    void insertLines();
    /// UpdateRequest's lines, one per row of the list, by interface.
    void updateLines();
    /// The header's two rates: inventory currency to department currency and
    /// to company currency.
    void headerRates(double &dblDepRate, double &dblConRate);
    /// Message box with the session's title.
    int message(const std::string &text, int style);
    /// The form's data service and the module's audit trail; an object that
    /// was never made fails as an unset object variable did (91).
    BaseServices::clsBaseData &data() const;
    StockActivityTrail::clsActivityTrail &auditTrail() const;

    Module &m_;
};

} // namespace tqsv2731
