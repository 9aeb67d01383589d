// frmStockVerificationDetail: the screen on which one item of an entry gets its counted stock.
#pragma once

#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/DatePicker.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/Frame.h"
#include "forms/Label.h"
#include "forms/Line.h"
#include "forms/OptionButton.h"
#include "forms/PictureBox.h"
#include "forms/TextBox.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace BaseServices {
class clsBaseData;
class clsBaseTools;
} // namespace BaseServices

namespace forms {
class ListView;
}

namespace StockActivityTrail {
class clsActivityTrail;
}

namespace tqsv2731 {

class Module;

/// The item detail form. The entry form opens it modally: in mode "N"
/// (`strDetailMode`) it takes one item after the other, by barcode or by the
/// fetch dialog, and each OK appends a row to the entry's `lvwRequest`; in
/// mode "E" it shows the row `intSelectedItem` of that list, steps through
/// the list with the four navigation buttons, and each OK writes the counted
/// quantities back into the row and moves on. Nothing here touches the
/// database but to read.
///
/// Rows it appends to `lvwRequest`, by position (own text, then sub-items):
/// running number; " "; the fetched item code; description; available good,
/// verified good, available bad, verified bad ("#0.000"); item id; running
/// number; location id; shipment id; cost price; unit code. A changed row
/// gets "##0.000" in sub-items 5 and 7 and "-1" in sub-item 9.
///
/// The location and expiry panels below the quantities stand on the form
/// and stay hidden: `ArrangeWindow` clears both of its wishes before it
/// applies them, and nothing ever sets `blnShowLocations`.
class frmStockVerificationDetail : public forms::Form {
public:
    explicit frmStockVerificationDetail(Module &m);

    // ---- controls ---------------------------------------------------------------
    // In Tab order: the barcode box first, so that a scanner counts from the
    // first moment, and OK right after the counts, so that Enter reaches it.

    forms::Label lblscanbc{*this, "lblscanbc"};
    forms::TextBox txtBarcode{*this, "txtBarcode"};
    forms::CommandButton cmdfetch{*this, "cmdfetch"};
    forms::Label Label5{*this, "Label5"};
    forms::ComboBox cboItem{*this, "cboItem"};
    /// Hidden at load and never filled; the accept and ClearAll still handle it.
    forms::ComboBox cboAllItems{*this, "cboAllItems"};
    forms::Label Label1{*this, "Label1"};
    forms::TextBox txtAvailStock{*this, "txtAvailStock"};
    forms::Label Label2{*this, "Label2"};
    forms::TextBox txtVerifiedStock{*this, "txtVerifiedStock"};
    /// The bad stock pair; shown in interface 1005 only.
    forms::Frame fraBadStock{*this, "fraBadStock"};
    forms::Label Label4{fraBadStock, "Label4"};
    forms::TextBox txtBadStock{fraBadStock, "txtBadStock"};
    forms::Label Label3{fraBadStock, "Label3"};
    forms::TextBox txtVerifiedBadStock{fraBadStock, "txtVerifiedBadStock"};
    forms::Frame fraButtons{*this, "fraButtons"};
    forms::CommandButton cmdOK{fraButtons, "cmdOK"};
    forms::CommandButton cmdCancel{fraButtons, "cmdCancel"};
    forms::CommandButton cmdFirst{fraButtons, "cmdFirst"};
    forms::CommandButton cmdPrev{fraButtons, "cmdPrev"};
    forms::CommandButton cmdNext{fraButtons, "cmdNext"};
    forms::CommandButton cmdLast{fraButtons, "cmdLast"};
    forms::Frame Frame1{*this, "Frame1"};
    forms::PictureBox Picture1{Frame1, "Picture1"};
    forms::OptionButton optAllItems{Picture1, "optAllItems"};
    forms::OptionButton optGodownItems{Picture1, "optGodownItems"};
    forms::Line Line1{*this, "Line1"};
    forms::Line Line2{*this, "Line2"};
    // The location panel.
    forms::Label lblQtyLocationWise{*this, "lblQtyLocationWise"};
    forms::FlexGrid flxLocations{*this, "flxLocations"};
    forms::TextBox txtLocationQuantity{*this, "txtLocationQuantity"};
    // The expiry panel.
    forms::Label lblQtyExpiryWise{*this, "lblQtyExpiryWise"};
    forms::FlexGrid flxexpiry{*this, "flxexpiry"};
    forms::TextBox txtexpiryqty{*this, "txtexpiryqty"};
    forms::DatePicker dtpExpiry{*this, "dtpExpiry"};

    // ---- members ----------------------------------------------------------------

    std::shared_ptr<BaseServices::clsBaseTools> objBaseTools;
    std::shared_ptr<BaseServices::clsBaseData> objBaseData;
    /// The cell in hand of each panel.
    std::int16_t intExpiryRow = 0;
    std::int16_t intExpiryCol = 0;
    std::int16_t intLocationRow = 0;
    std::int16_t intLocationCol = 0;
    /// Whether the expiry panel's rows were stored; nothing reads it.
    bool blnExpiryListSaved = false;
    /// Wish to show the expiry panel; ArrangeWindow clears it.
    bool blnShowExpiry = false;
    /// Wish to show the location panel. Nothing writes it, so it stays false
    /// for the life of the form and the panel with it.
    bool blnShowLocations = false;
    /// The expiry panel offers one free row to be dated.
    bool blnExpiryRowOpen = false;

    // ---- the form and stepping (frmStockVerificationDetail.cpp) --------------------

    void Form_Load();
    void Form_Activate();
    /// F3 opens the fetch dialog while the fetch button is enabled.
    void Form_KeyDown(int &KeyCode, int Shift);
    /// Opens the fetch dialog; afterwards the count box has the focus, so a
    /// taken item's proposal of 1.000 is ready to be typed over.
    void cmdfetch_Click();
    void cmdCancel_Click();
    /// Puts the row selected in `lvwRequest` on the screen, and turns the
    /// form into mode "E" for the rest of its life. The item's stock is read
    /// (through cboItem_Click) and then overwritten by the row's own values.
    void ShowData();
    /// The one place that shows or hides the panels: it clears both wishes
    /// first (the caller's `blnExpiry` with them), so the form always stands
    /// in its compact size.
    void ArrangeWindow(bool blnLocations, bool &blnExpiry);
    /// The older sizing routine; nothing calls it.
    void SetWindowSize();
    /// Empties both combos (their lists), the four quantity boxes and both
    /// panels. `blnAll` is not read.
    void ClearAll(bool &blnAll);
    void cmdFirst_Click();
    void cmdPrev_Click();
    void cmdNext_Click();
    void cmdLast_Click();

    // ---- the item and its stock (frmStockVerificationDetail_items.cpp) -----------

    /// Reads the item's book stock in the godown into the available boxes
    /// and, as the proposal, into the verified ones; an item without a stock
    /// row leaves the boxes as they were.
    void cboItem_Click();
    void cboItem_KeyPress(int &KeyAscii);
    void optAllItems_Click();
    void optGodownItems_Click();
    void optAllItems_KeyPress(int &KeyAscii);
    void optGodownItems_KeyPress(int &KeyAscii);
    void txtVerifiedStock_KeyPress(int &KeyAscii);
    void txtVerifiedStock_GotFocus();
    void txtVerifiedStock_Change();
    void txtVerifiedBadStock_KeyPress(int &KeyAscii);
    void txtVerifiedBadStock_GotFocus();
    void txtVerifiedBadStock_MouseMove(int Button, int Shift, double X, double Y);
    void txtAvailStock_KeyPress(int &KeyAscii);
    void txtAvailStock_MouseMove(int Button, int Shift, double X, double Y);
    void txtBadStock_MouseMove(int Button, int Shift, double X, double Y);
    /// Sets `blnItemHasLocation` when the item has a positive balance in at
    /// least one location of the godown.
    void hasLocationforitem(std::int32_t &lngItemId);

    // ---- barcodes (frmStockVerificationDetail_barcode.cpp) ------------------------

    /// Enter looks the text up: a packing barcode puts its item on the screen
    /// and accepts it at once with a count of 1.000; an item code (where item
    /// codes are unique) puts the item on the screen for the user to count.
    void txtBarcode_KeyPress(int &KeyAscii);
    /// Any change of the barcode text clears the item from the screen.
    void txtBarcode_Change();
    /// Puts the item of a packing barcode (`lngItemId` 0: looked up from
    /// `strBarcode`, and written back) or of an id on the screen. False when
    /// the list holds it already or it is not an active item of the godown;
    /// each case has shown its message.
    bool DisplayBarcodeItemDetails(std::string_view strBarcode, std::int32_t &lngItemId);

    // ---- accepting (frmStockVerificationDetail_accept.cpp) ------------------------

    /// Takes the screen into `lvwRequest`: adds a row in mode "N", changes
    /// the selected row and steps on in mode "E" (closing the form after the
    /// last row).
    void cmdOK_Click();
    /// True, after its message, when a row of `lvwRequest` holds the item.
    bool fnItemAlreadyAdded(std::int32_t &lngItemId);

    // ---- the two panels (frmStockVerificationDetail_panels.cpp) --------------------

    /// Lays out the location grid when it is wished for, else hides it.
    void InitializeFlex();
    /// The location grid back to one empty row.
    void ClearLocationFlex();
    /// The expiry grid back to one empty row.
    void ClearExpiryFlex();
    /// Copies the selected row's expiry split from the entry form's hidden
    /// grid; on the way it asks whether the item keeps expiry dates and
    /// hands that wish to ArrangeWindow, which clears it.
    void RetrieveExpiryList();
    /// Floats the editor of the current cell of a panel ("L" locations, "E"
    /// expiry) over it.
    void VisibleFun(std::string &strFlex);
    /// Checks the location split: names and quantities where stock was
    /// counted, and no location twice.
    void ErrorInFlex(bool &blnError);
    /// Looks for two equal cells (trimmed, letter case ignored) in a column;
    /// `intRow` gets the later row of the first pair.
    void IsDuplicateExist(forms::FlexGrid &grid, std::int16_t intCol, std::int16_t &intRow,
                          bool &blnFound);

private:
    void layOut();
    void layOutPanels();
    void bindEvents();
    void bindKeys();
    /// The entry form's list, which this form reads and writes.
    forms::ListView &lvwRequest();
    /// The last three acts of every step: select the row, show it, snapshot it.
    void showSelectedRow();
    /// The add and the change of cmdOK_Click.
    void addRow();
    /// False when the change closed the form (it was on the last row).
    bool changeRow();
    /// The item-code path of txtBarcode_KeyPress.
    void acceptItemCode(const std::string &strBarcode);
    /// The services, or error 91 when the one asked for was never made (a
    /// failed load, or a form reached before the register made the module's).
    BaseServices::clsBaseTools &tools() const;
    BaseServices::clsBaseData &data() const;
    StockActivityTrail::clsActivityTrail &auditTrail() const;
    /// Message box of style 64 with the session's title.
    void inform(std::string_view text);

    Module &m_;
};

} // namespace tqsv2731
