// frmStockVerificationDetail: finding the item of a scanned packing barcode or a typed item code.
#include "module/detail/frmStockVerificationDetail.h"

#include "ado/Constants.h"
#include "ado/Recordset.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "services/clsBaseData.h"
#include "vb/Conversion.h"
#include "vb/Format.h"
#include "vb/Strings.h"

#include <string>

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerificationDetail";

/// How the old code's `value <> False` came out: a value that is missing
/// (no row, or null) never counts as true.
bool differsFromFalse(const vb::Variant &value) {
    if (vb::IsNull(value) || vb::IsEmpty(value)) {
        return false;
    }
    return vb::CBool(value);
}

} // namespace

void frmStockVerificationDetail::txtBarcode_KeyPress(int &KeyAscii) {
    try {
        // The text goes into SQL between apostrophes.
        if (KeyAscii == '\'') {
            KeyAscii = 0;
        }
        if (KeyAscii != 13) {
            return;
        }
        const std::string strBarcode = vb::Trim(txtBarcode.Text());
        if (strBarcode.empty()) {
            return;
        }
        ado::Recordset rs;
        rs.Open("select itemid from aitempackingdetail where packingbarcode='" + strBarcode +
                    "' and Active = 1",
                m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        if (rs.Eof()) {
            if (rs.State() == ado::adStateOpen) {
                rs.Close();
            }
            acceptItemCode(strBarcode);
            return;
        }

        // A packing barcode counts one piece and is accepted at once, so
        // scanning is all a clerk has to do.
        std::int32_t lngItemId = 0;
        if (!DisplayBarcodeItemDetails(strBarcode, lngItemId)) {
            txtBarcode.SetFocus();
            return;
        }
        if (cboItem.ListIndex() > -1 || cboAllItems.ListIndex() > -1) {
            txtVerifiedStock.setText(vb::Format(vb::Variant(1), "##0.000"));
        }
        if (!flxexpiry.Visible() && !flxLocations.Visible()) {
            cmdOK_Click();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtBarcode_KeyPress", e);
    }
}

void frmStockVerificationDetail::acceptItemCode(const std::string &strBarcode) {
    // An item code can stand for a barcode only where item codes are unique.
    data().strTableName = "apackagesettings";
    if (differsFromFalse(data().fnReturnField("AllowItemCodeDuplication"))) {
        inform("Scan valid barcode");
        txtBarcode.SetFocus();
        return;
    }
    ado::Recordset rs;
    rs.Open("select itemid from aitem where itemcode='" + strBarcode + "' And active = 1",
            m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
    if (rs.Eof()) {
        inform("Scan a valid barcode.   ");
        txtBarcode.setSelStart(0);
        txtBarcode.setSelLength(static_cast<int>(vb::Len(txtBarcode.Text())));
        txtBarcode.SetFocus();
        return;
    }
    // The item waits on the screen for its count: only a packing barcode
    // stands for one piece.
    std::int32_t lngItemId = vb::CLng(rs.Fields("itemid").Value());
    if (!DisplayBarcodeItemDetails(" ", lngItemId)) {
        txtBarcode.SetFocus();
    } else {
        rs.Close();
        txtVerifiedStock.SetFocus();
    }
}

void frmStockVerificationDetail::txtBarcode_Change() {
    try {
        bool blnAll = true;
        ClearAll(blnAll);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtBarcode_Change", e);
    }
}

bool frmStockVerificationDetail::DisplayBarcodeItemDetails(std::string_view strBarcode,
                                                           std::int32_t &lngItemId) {
    try {
        if (lngItemId == 0) {
            data().strTableName = "aitempackingdetail";
            lngItemId = vb::CLng(data().fnReturnField(
                "itemid", " packingbarcode = '" + vb::Trim(strBarcode) + "' and Active = 1"));
        }
        if (fnItemAlreadyAdded(lngItemId)) {
            return false;
        }
        txtAvailStock.setText("");
        txtBadStock.setText("");
        txtVerifiedBadStock.setText("");
        txtVerifiedStock.setText("");

        // The item must be active and set up for this godown; it need not have stock.
        ado::Recordset rs;
        rs.Open("select a.itemid, v.itemdescription from aitem a, agodowndetail ag left outer join "
                "vwinquirygodownstock ss on  ag.itemid=ss.gsitemid and ag.godownid = "
                "ss.gsgodownid, aitemcategory ai, vwitemdescription v Where a.itemID = v.itemID "
                "And a.ItemCategoryID = ai.ItemCategoryID and a.itemid=ag.itemid and a.itemid=" +
                    std::to_string(lngItemId) +
                    " and ag.godownid=" + std::to_string(m_.intGodownID) + " and a.Active = 1",
                m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        if (rs.Eof()) {
            inform("Scan a valid barcode.   ");
            txtBarcode.setTag("skip");
            txtBarcode.setText("");
            txtBarcode.SetFocus();
            txtBarcode.setTag("");
            return false;
        }
        cboItem.AddItem(vb::TextOf(rs.Fields(1).Value()));
        cboItem.setItemData(cboItem.NewIndex(), lngItemId);
        cboItem.setListIndex(cboItem.NewIndex());
        return true;
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "DisplayBarcodeItemDetails", e);
        return false;
    }
}

} // namespace tqsv2731
