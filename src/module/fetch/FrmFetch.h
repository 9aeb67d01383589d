// FrmFetch: the dialog in which a clerk finds an item of the godown by a fragment of its text.
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

#include <memory>
#include <string>
#include <string_view>

namespace BaseServices {
class clsBaseData;
class clsBaseTools;
} // namespace BaseServices

namespace tqsv2731 {

class Module;

/// The fetch dialog. The detail form opens it modally (the " ..." button or
/// F3). Enter in `txtFetch` fills `flexMaster` with at most 500 items of the
/// godown whose chosen column holds the fragment; the grid can then be
/// sorted (`cboColNames` with the two option buttons) and searched
/// (`cboSearch`, `txtsearch`). OK takes the current row into the detail
/// form, with a count of 1.000 proposed; the row of the entry's list is made
/// only when the detail form accepts it.
///
/// Columns of `flexMaster` by position: 0 item id (hidden), 1 item code,
/// 2 description, 3 category, 4 category id, 5 part code.
class FrmFetch : public forms::Form {
public:
    explicit FrmFetch(Module &m);

    // ---- controls ---------------------------------------------------------------

    forms::Frame fraFetch{*this, "fraFetch"};
    forms::Label lblFetch{fraFetch, "lblFetch"};
    forms::ComboBox cboFetch{fraFetch, "cboFetch"};
    forms::TextBox txtFetch{fraFetch, "txtFetch"};
    forms::FlexGrid flexMaster{*this, "flexMaster"};
    forms::Frame fraBrowse{*this, "fraBrowse"};
    forms::PictureBox Picture1{fraBrowse, "Picture1"};
    forms::OptionButton optAscend{Picture1, "optAscend"};
    forms::OptionButton optDescend{Picture1, "optDescend"};
    forms::ComboBox cboColNames{fraBrowse, "cboColNames"};
    forms::Label lblsearch{fraBrowse, "lblsearch"};
    forms::ComboBox cboSearch{fraBrowse, "cboSearch"};
    forms::TextBox txtsearch{fraBrowse, "txtsearch"};
    forms::CommandButton cmdOK{*this, "cmdOK"};
    forms::CommandButton CmdClose{*this, "CmdClose"};

    // ---- members ----------------------------------------------------------------

    std::shared_ptr<BaseServices::clsBaseTools> objBaseTools;
    std::shared_ptr<BaseServices::clsBaseData> objBaseData;
    /// The statement of every fetch, built at load: the godown's stock items
    /// or all the items it carries, as the detail form's option stood.
    std::string strFetchSql;
    /// The combo's text at its last click, then the column it was mapped to.
    std::string strFetchOn;

    // ---- loading and fetching (FrmFetch.cpp) --------------------------------------

    void Form_Load();
    /// Picks the godown's default fetch column (or "ItemDescription") and
    /// puts the focus in the fragment box.
    void Form_Activate();
    void Form_KeyPress(int &KeyAscii);
    void cboFetch_Click();
    /// Apostrophes never reach the box; Enter fetches and empties it.
    void txtFetch_KeyPress(int &KeyAscii);
    void txtFetch_KeyDown(int &KeyCode, int Shift);
    void txtFetch_KeyUp(int &KeyCode, int Shift);
    /// Fills the grid from the statement: at most 500 rows, dropped silently
    /// past that, the last row current. `strTable` and `strSpare` are not read.
    void GridPopulate(std::string_view strSql, std::string_view strTable,
                      std::string_view strSpare);
    void CmdClose_Click();
    /// Enter moves on, in the combos, the option buttons and the search box.
    void cboColNames_KeyPress(int &KeyAscii);
    void cboFetch_KeyPress(int &KeyAscii);
    void cboSearch_KeyPress(int &KeyAscii);
    void optAscend_KeyPress(int &KeyAscii);
    void optDescend_KeyPress(int &KeyAscii);
    void txtsearch_KeyPress(int &KeyAscii);

    // ---- sorting and searching (FrmFetch_browse.cpp) ------------------------------

    void cboColNames_Click();
    void optAscend_Click();
    void optDescend_Click();
    void txtsearch_KeyUp(int &KeyCode, int Shift);
    /// Sorts the grid on the search column, then finds the first row whose
    /// cell starts with the search text (as numbers when the middle row's
    /// cell is one).
    void searchtheword();

    // ---- taking an item (FrmFetch_take.cpp) ---------------------------------------

    /// Puts the current row's item on the detail form with 1.000 proposed
    /// and closes; refuses an item the entry's list holds already.
    void cmdOK_Click();
    void flexMaster_KeyPress(int &KeyAscii);
    void flexMaster_DblClick();
    /// Adds the detail form's item straight to the entry's list (or counts
    /// up its row by one). Nothing calls it.
    void addtolist();
    /// Fills the detail form's location grid with the item's balance per
    /// location. Nothing calls it.
    void PopulateLocationStock();
    /// The detail form's location grid back to one empty numbered row.
    void ClearLocationFlex();

private:
    void layOut();
    void bindEvents();
    /// Grid widths and headings: at load, and again at the start of each fill.
    void setUpGrid(bool filling);
    /// Last row current, whole row selected: after load, a fill and a sort.
    void selectLastRow();
    /// The body of the KeyPress routines that only move on with Enter.
    void enterMovesOn(int &KeyAscii, std::string_view routine);
    BaseServices::clsBaseTools &tools() const;
    BaseServices::clsBaseData &data() const;

    Module &m_;
};

} // namespace tqsv2731
