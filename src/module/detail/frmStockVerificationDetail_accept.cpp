// frmStockVerificationDetail: accepting the item on the screen into the entry's list.
#include "module/detail/frmStockVerificationDetail.h"

#include "forms/ListView.h"
#include "forms/Screen.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "module/register/frmMaster.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "vb/Conversion.h"
#include "vb/Format.h"
#include "vb/Strings.h"

#include <string>

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerificationDetail";

bool holdsPoint(const forms::TextBox &box) {
    return vb::InStr(box.Text(), ".") > 0;
}

std::string quantity(const forms::TextBox &box, std::string_view pattern) {
    return vb::Format(vb::Variant(vb::Val(box.Text())), pattern);
}

} // namespace

void frmStockVerificationDetail::cmdOK_Click() {
    try {
        if (cboItem.ListIndex() == -1 && cboItem.Visible()) {
            inform("Select an Item.   ");
            cboItem.SetFocus();
            return;
        }
        if (cboAllItems.Visible() && cboAllItems.ListIndex() == -1) {
            inform("Select an Item.   ");
            cboAllItems.SetFocus();
            return;
        }
        // The rule looks for the character, not the value: "12.000" is refused.
        if (m_.blnIntegerQuantity && holdsPoint(txtVerifiedStock)) {
            inform("Only Integer Quantity is allowed");
            if (txtVerifiedStock.Enabled() && txtVerifiedStock.Visible()) {
                txtVerifiedStock.SetFocus();
            }
            return;
        }
        // The register's caption tells the plain interface, where bad stock is counted.
        if (m_.frmMaster().Caption() == "Stock Verification" && m_.blnIntegerQuantity &&
            holdsPoint(txtVerifiedBadStock)) {
            inform("Only Integer Quantity is allowed");
            if (txtVerifiedBadStock.Enabled() && txtVerifiedBadStock.Visible()) {
                txtVerifiedBadStock.SetFocus();
            }
            return;
        }
        if (blnShowLocations && m_.blnItemHasLocation) {
            bool blnError = false;
            ErrorInFlex(blnError);
            if (blnError) {
                return;
            }
        }

        setMousePointer(forms::vbHourglass);
        if (m_.strDetailMode == "E") {
            if (!changeRow()) {
                return;
            }
        } else {
            addRow();
        }

        if (!Tag().empty()) {
            if (auditTrail().DataChanged(*this)) {
                m_.blnEntryChanged = true;
            }
        }
        flxexpiry.setVisible(false);
        bool blnNone = false;
        ArrangeWindow(false, blnNone);
        if (txtBarcode.Visible() && txtBarcode.Enabled()) {
            txtBarcode.SetFocus();
        }
        lblQtyExpiryWise.setVisible(false);
        setMousePointer(forms::vbDefault);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdOK_Click", e);
        setMousePointer(forms::vbDefault);
    }
}

void frmStockVerificationDetail::addRow() {
    std::int32_t lngItemId = cboItem.ItemData(cboItem.ListIndex());
    const std::string strDescription = cboItem.Text();

    // Shipment and location are the godown's first ones, whatever the item:
    // a row added here carries no location of its own.
    const std::string godown = std::to_string(m_.intGodownID);
    data().strTableName = "vwinquirygodownstock";
    const std::int32_t lngShipmentId =
        vb::CLng(data().fnReturnField("min(gsshipmentid)", " gsGodownid = " + godown));
    data().strTableName = "aItem";
    const double dblCostPrice =
        vb::CDbl(data().fnReturnField("itemrate ", " itemid=" + std::to_string(lngItemId)));
    data().strTableName = "loilocation";
    const std::int16_t intLocationId =
        vb::CInt(data().fnReturnField("lLocationID", " lGodownID=" + godown));

    const std::string strAvailStock = quantity(txtAvailStock, "#0.000");
    const std::string strVerifiedStock = quantity(txtVerifiedStock, "#0.000");
    const std::string strBadStock = quantity(txtBadStock, "#0.000");
    const std::string strVerifiedBadStock = quantity(txtVerifiedBadStock, "#0.000");

    forms::ListView &list = lvwRequest();
    const std::int32_t next = list.ListItems().Count() + 1;
    data().fnInsertListView(list, 0, next, " ", m_.strFetchedItemCode, strDescription,
                            strAvailStock, strVerifiedStock, strBadStock, strVerifiedBadStock,
                            lngItemId, next, intLocationId, lngShipmentId, dblCostPrice,
                            GetItemUnitCode(m_, lngItemId));
    list.ListItems()(list.ListItems().Count()).setSelected(true);
    list.SelectedItem().EnsureVisible();

    // Ready for the next item. Emptying a barcode that was typed clears the
    // rest of the screen as well.
    cboItem.setListIndex(-1);
    txtAvailStock.setText("");
    txtVerifiedStock.setText("");
    txtBadStock.setText("");
    txtVerifiedBadStock.setText("");
    txtBarcode.setText("");
    if (cboItem.Visible()) {
        cboItem.SetFocus();
    }
    if (cboAllItems.Visible()) {
        cboAllItems.SetFocus();
    }
    // Stepping is offered from the third row on (at load already from the second).
    if (list.ListItems().Count() > 2) {
        cmdFirst.setEnabled(true);
        cmdNext.setEnabled(true);
        cmdLast.setEnabled(true);
        cmdPrev.setEnabled(true);
    }
}

bool frmStockVerificationDetail::changeRow() {
    forms::ListView &list = lvwRequest();
    forms::ListItem &row = list.SelectedItem();
    row.setSubItems(5, quantity(txtVerifiedStock, "##0.000"));
    row.setSubItems(7, quantity(txtVerifiedBadStock, "##0.000"));
    // The mark by which the entry's save knows the row was changed.
    row.setSubItems(9, "-1");
    if (row.Index() == list.ListItems().Count()) {
        Unload();
        return false;
    }
    cmdNext_Click();
    txtVerifiedStock.SetFocus();
    return true;
}

bool frmStockVerificationDetail::fnItemAlreadyAdded(std::int32_t &lngItemId) {
    try {
        forms::ListView &list = lvwRequest();
        for (int i = 1; i <= list.ListItems().Count(); ++i) {
            if (vb::CDbl(vb::Variant(list.ListItems()(i).SubItems(8))) == lngItemId) {
                inform("Item already added");
                cboItem.setListIndex(-1);
                txtAvailStock.setText("");
                txtVerifiedStock.setText("");
                txtBadStock.setText("");
                txtVerifiedBadStock.setText("");
                return true;
            }
        }
        return false;
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "fnItemAlreadyAdded", e);
        return false;
    }
}

} // namespace tqsv2731
