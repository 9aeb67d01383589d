// frmStockVerificationDetail: the item on the screen, its book stock and the keys of the boxes.
#include "module/detail/frmStockVerificationDetail.h"

#include "ado/Constants.h"
#include "ado/Recordset.h"
#include "forms/MsgBox.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "services/clsBaseTools.h"
#include "vb/Conversion.h"
#include "vb/Format.h"
#include "vb/Strings.h"

#include <string>

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerificationDetail";
constexpr std::string_view QuantityTip = "###,###,##0.000#####";

std::string quantityTip(const forms::TextBox &box) {
    return vb::Format(vb::Variant(box.Text()), QuantityTip);
}

} // namespace

void frmStockVerificationDetail::cboItem_Click() {
    try {
        if (cboItem.ListIndex() == -1) {
            return;
        }
        std::int32_t lngItemId = cboItem.ItemData(cboItem.ListIndex());
        ado::Recordset rs;
        rs.Open("Select gsitemid,isnull(sum(gsstock),0),isnull(sum(gsbadstock),0)  from "
                "vwinquirygodownstock where gsgodownid=" +
                    std::to_string(m_.intGodownID) + "  and gsitemid=" + std::to_string(lngItemId) +
                    " group by gsitemid",
                m_.adocon, ado::adOpenKeyset, ado::adLockPessimistic);
        // An item without a stock row keeps whatever the boxes hold.
        if (!rs.Eof()) {
            txtAvailStock.setText(vb::TextOf(rs.Fields(1).Value()));
            txtVerifiedStock.setText(vb::TextOf(rs.Fields(1).Value()));
            txtBadStock.setText(vb::TextOf(rs.Fields(2).Value()));
            txtVerifiedBadStock.setText(vb::TextOf(rs.Fields(2).Value()));
        }
        if (cboItem.ListIndex() != -1) {
            // The entry added last, which on every path that gets here is the
            // item in hand as well.
            std::int32_t lngNewItemId = cboItem.ItemData(cboItem.NewIndex());
            hasLocationforitem(lngNewItemId);
        }
        if (!m_.blnItemHasLocation) {
            ArrangeWindow(blnShowLocations, blnShowExpiry);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cboItem_Click ", e);
    }
}

void frmStockVerificationDetail::hasLocationforitem(std::int32_t &lngItemId) {
    try {
        const std::string godown = std::to_string(m_.intGodownID);
        const std::string item = std::to_string(lngItemId);
        ado::Recordset rs;
        rs.Open(
            "SELECT locationid, itemid, qty, LoiLocation.lLocationName  FROM(SELECT locationid, "
            "godownId, ItemId, SUM(qty) qty FROM (SELECT ladlocationid locationid, ladgodownid "
            "godownId, ladItemId ItemId ,SUM(ladItemQty) Qty   FROM loilocationArrivalDetails "
            "WHERE ladgodownId = " +
                godown + " AND ladItemId = " + item +
                " AND ladCancel = 0 and ladconfirmed=1 GROUP BY ladlocationid, "
                "ladgodownId,ladItemId  UNION ALL SELECT lidlocationid, lidgodownId, "
                "lidItemId, - SUM(lidItemQty) FROM loilocationIssueDetails WHERE lidgodownId = " +
                godown + " AND lidItemId =  " + item +
                " AND lidCancel = 0 and lidConfirmed=1 GROUP BY lidlocationid, "
                "lidgodownId,lidItemId) a GROUP BY locationid, godownId, ItemId HAVING "
                "Sum(qty) > 0)B, LOiLocation WHERE B.LocationId = LOiLocation.lLocationId AND "
                "b.GodownId = loiLocation.lGodownId order by locationid asc",
            m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        if (rs.Eof()) {
            m_.blnItemHasLocation = false;
        } else {
            m_.blnItemHasLocation = true;
            m_.blnItemHasLocationSeen = true;
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "hasLocationforitem", e);
    }
}

void frmStockVerificationDetail::cboItem_KeyPress(int &KeyAscii) {
    EnterAsTab(m_, KeyAscii);
}

void frmStockVerificationDetail::optAllItems_Click() {
    try {
        txtBarcode.setText("");
        cboItem.Clear();
        txtAvailStock.setText("");
        txtVerifiedStock.setText("");
        txtBadStock.setText("");
        txtVerifiedBadStock.setText("");
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "optAllItems_Click", e);
    }
}

void frmStockVerificationDetail::optGodownItems_Click() {
    try {
        cboItem.Clear();
        txtBarcode.setText("");
        cboItem.setListIndex(-1);
        txtAvailStock.setText("");
        txtVerifiedStock.setText("");
        txtBadStock.setText("");
        txtVerifiedBadStock.setText("");
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "optGodownItems_Click", e);
    }
}

void frmStockVerificationDetail::optAllItems_KeyPress(int &KeyAscii) {
    EnterAsTab(m_, KeyAscii);
}

void frmStockVerificationDetail::optGodownItems_KeyPress(int &KeyAscii) {
    EnterAsTab(m_, KeyAscii);
}

void frmStockVerificationDetail::txtVerifiedStock_KeyPress(int &KeyAscii) {
    try {
        // A count is never negative.
        if (KeyAscii == '-') {
            KeyAscii = 0;
        }
        if (KeyAscii == 13) {
            EnterAsTab(m_, KeyAscii);
        } else {
            tools().TextValidateNum(txtVerifiedStock, KeyAscii, 18, 3);
        }
        if (KeyAscii == '.' && m_.blnIntegerQuantity) {
            KeyAscii = 0;
            inform("Only Integer Quantity is allowed");
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtVerifiedStock_KeyPress", e);
    }
}

void frmStockVerificationDetail::txtVerifiedStock_GotFocus() {
    txtVerifiedStock.setSelStart(0);
    txtVerifiedStock.setSelLength(static_cast<int>(vb::Len(txtVerifiedStock.Text())));
}

void frmStockVerificationDetail::txtVerifiedStock_Change() {
    try {
        txtVerifiedStock.setToolTipText(quantityTip(txtVerifiedStock));
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtVerifiedStock_Change", e);
    }
}

void frmStockVerificationDetail::txtVerifiedBadStock_KeyPress(int &KeyAscii) {
    try {
        if (KeyAscii == 13) {
            // Enter would open the first cell of a split panel; both are off.
            if (blnShowLocations) {
                intLocationRow = 1;
                intLocationCol = 2;
                std::string strFlex = "L";
                VisibleFun(strFlex);
            } else if (flxexpiry.Visible()) {
                intExpiryRow = 1;
                intExpiryCol = blnExpiryRowOpen ? 1 : 2;
                std::string strFlex = "E";
                VisibleFun(strFlex);
            }
        } else {
            tools().TextValidateNum(txtVerifiedBadStock, KeyAscii, 18, 3);
        }
        // With location stock the focus stays here, where the location grid
        // was meant to take over.
        if (KeyAscii == 13 && !m_.blnItemHasLocation) {
            EnterAsTab(m_, KeyAscii);
        }
        if (KeyAscii == '.' && m_.blnIntegerQuantity) {
            KeyAscii = 0;
            inform("Only Integer Quantity is allowed");
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtVerifiedBadStock_KeyPress", e);
    }
}

void frmStockVerificationDetail::txtVerifiedBadStock_GotFocus() {
    txtVerifiedBadStock.setSelStart(0);
    txtVerifiedBadStock.setSelLength(static_cast<int>(vb::Len(txtVerifiedBadStock.Text())));
}

void frmStockVerificationDetail::txtVerifiedBadStock_MouseMove(int /*Button*/, int /*Shift*/,
                                                               double /*X*/, double /*Y*/) {
    try {
        txtVerifiedBadStock.setToolTipText(quantityTip(txtVerifiedBadStock));
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtVerifiedBadStock_MouseMove", e);
    }
}

void frmStockVerificationDetail::txtAvailStock_KeyPress(int &KeyAscii) {
    try {
        if (KeyAscii == 13) {
            EnterAsTab(m_, KeyAscii);
        } else {
            tools().TextValidateNum(txtAvailStock, KeyAscii, 18, 3);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtAvailStock_KeyPress", e);
    }
}

void frmStockVerificationDetail::txtAvailStock_MouseMove(int /*Button*/, int /*Shift*/,
                                                         double /*X*/, double /*Y*/) {
    try {
        txtAvailStock.setToolTipText(quantityTip(txtAvailStock));
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtAvailStock_MouseMove", e);
    }
}

void frmStockVerificationDetail::txtBadStock_MouseMove(int /*Button*/, int /*Shift*/, double /*X*/,
                                                       double /*Y*/) {
    try {
        txtBadStock.setToolTipText(quantityTip(txtBadStock));
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtBadStock_MouseMove", e);
    }
}

} // namespace tqsv2731
