// frmStockVerification: the browse frame, which orders the item list by a column and finds a row.
#include "module/entry/frmStockVerification.h"

#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "services/clsBaseData.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

#include <string>
#include <vector>

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerification";

/// The order expression of a column caption. A new entry is ordered by the
/// godown's stock, where verified equals available; a saved one by its lines.
/// Captions the list does not know stay as they are.
std::string orderExpression(const std::string &caption, bool newEntry) {
    if (caption == "Location") {
        return "lLocationName";
    }
    if (caption == "Shipment") {
        return "sShipmentno";
    }
    if (caption == "Item Description") {
        return "vwItemdescription.itemdescription";
    }
    if (caption == "Available GS") {
        return newEntry ? "sum(gsStock)" : "sum(svdavailstock)";
    }
    if (caption == "Verified GS") {
        return newEntry ? "sum(gsStock)" : "sum(svdVerifiedStock)";
    }
    if (caption == "Available BS") {
        return newEntry ? "sum(gsBadStock)" : "sum(svdAvailBadStock)";
    }
    if (caption == "Verified BS") {
        return newEntry ? "sum(gsBadStock)" : "sum(svdVerifiedBadStock)";
    }
    return caption;
}

} // namespace

void frmStockVerification::bindBrowse() {
    cboColNames.onClick = [this] { cboColNames_Click(); };
    cboSearch.onClick = [this] { cboSearch_Click(); };
    optAscend.onClick = [this] { optAscend_Click(); };
    optDescend.onClick = [this] { optDescend_Click(); };
    txtsearch.onKeyPress = [this](int &KeyAscii) { txtsearch_KeyPress(KeyAscii); };
}

void frmStockVerification::cboColNames_Click() {
    try {
        if (cboColNames.ListIndex() >= 0) {
            std::string column = cboColNames.Text();
            Search(column);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cboColNames_Click", e);
    }
}

void frmStockVerification::cboSearch_Click() {
    try {
        txtsearch.setText("");
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cboSearch_Click", e);
    }
}

void frmStockVerification::optAscend_Click() {
    try {
        // The new direction takes effect at the next choice of a column.
        cboColNames.setText("");
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "optAscend_Click", e);
    }
}

void frmStockVerification::optDescend_Click() {
    try {
        cboColNames.setText("");
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "optDescend_Click", e);
    }
}

void frmStockVerification::txtsearch_KeyPress(int &KeyAscii) {
    try {
        if (KeyAscii == 13 && cboSearch.ListIndex() >= 0 && !vb::Trim(txtsearch.Text()).empty()) {
            // The binary search holds only on a list just ordered by the column searched.
            std::string column = cboSearch.Text();
            Search(column);
            searchtheword();
            lvwRequest.SelectedItem().EnsureVisible();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtsearch_KeyPress", e);
    }
}

void frmStockVerification::Search(std::string &strColumnName) {
    try {
        const bool newEntry = m_.strTransactionMode == "N";
        strColumnName = orderExpression(strColumnName, newEntry);
        std::string strOrder = " order by " + strColumnName;
        if (optDescend.Value()) {
            strOrder += " desc";
        }

        setEnabled(false);
        const std::string godown = std::to_string(m_.intGodownID);
        if (newEntry) {
            data().PopulateListView(
                lvwRequest, "vwinquirygodownstock, aitem, vwItemdescription, aUnit",
                "gsitemid = aitem.itemid " +
                    std::string(" and vwItemdescription.itemid = aitem.itemid ") +
                    " and gsGodownid = " + godown + " and lgodownid = gsGodownid " +
                    " and aItem.UnitsId = aUnit.UnitId " +
                    " group by gsitemid, vwItemdescription.itemdescription,itemcode " + strOrder,
                "SlNo", "slno", "itemcode", "vwItemdescription.itemdescription", "sum(gsStock)",
                "sum(gsstock)", "sum(gsBadStock)", "sum(gsBadStock)", "gsitemid", "SLNO",
                "gsLocationId", "gsShipmentId", "gsItemCost", "MIN(UnitCode)");
        } else {
            data().PopulateListView(
                lvwRequest,
                "loiStockVerificationDetail, aitem, aShipment, vwItemdescription, aUnit",
                "aitem.itemid = svditemid " +
                    std::string(" and vwItemdescription.itemid = aitem.itemid ") +
                    " and lgodownid = " + godown +
                    " and svdid = " + std::to_string(m_.lngVerificationId) +
                    " and svdgodownid = " + godown + " and aItem.UnitsId = aUnit.UnitId" +
                    " group by svditemid, vwItemdescription.itemdescription,itemcode " + strOrder,
                "SLNO", "SLNO", "itemcode", "vwItemdescription.itemdescription",
                "ISNULL(sum(svdavailstock),0)", "isnull(sum(svdVerifiedStock),0)",
                "isnull(sum(svdAvailBadStock),0)", "isnull(sum(svdVerifiedBadStock),0)",
                "svditemid", "SLNO", "svdLocationId", "svdShipmentId", "svdItemCost",
                "MIN(UnitCode)");
        }
        FormatListViewColumns(lvwRequest, {vb::Variant("3:3"), vb::Variant("4:3"),
                                           vb::Variant("5:3"), vb::Variant("6:3")});
        // A refused reload ends above, and the form stays disabled.
        setEnabled(true);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "Search", e);
    }
}

void frmStockVerification::searchtheword() {
    try {
        const int listIndex = cboSearch.ListIndex();
        if (listIndex < 0) {
            return;
        }
        lvwRequest.SelectedItem().setSelected(false);
        forms::ListItemCollection &rows = lvwRequest.ListItems();
        int lo = 1;
        int hi = rows.Count();
        int mid = static_cast<int>(vb::Int((hi + 1) / 2.0));

        const std::string search = vb::Trim(txtsearch.Text());
        const long cut = vb::Len(txtsearch.Text());
        // The probe reads the column right of the caption's; the numeric
        // search reads it too, but for the first caption, where it reads the
        // running number.
        const bool numeric =
            vb::IsNumeric(vb::Variant(rows(mid).ListSubItems(listIndex + 1).Text()));
        if (numeric) {
            bool found = false;
            while (lo <= hi) {
                mid = static_cast<int>(vb::Int((lo + hi) / 2.0));
                const std::string value =
                    listIndex == 0 ? rows(mid).Text()
                                   : rows(mid).ListSubItems(cboSearch.ItemData(listIndex)).Text();
                const double a = vb::Val(vb::Left(vb::Trim(value), cut));
                const double b = vb::Val(search);
                if (a > b) {
                    hi = mid - 1;
                } else if (a < b) {
                    lo = mid + 1;
                } else {
                    hi = mid - 1;
                    rows(mid).setSelected(true);
                    found = true;
                }
            }
            // The row selected is the one the loop ended on, not always the match.
            if (found) {
                rows(mid).setSelected(true);
                return;
            }
        }

        lo = 1;
        hi = rows.Count();
        while (lo <= hi) {
            mid = static_cast<int>(vb::Int((lo + hi) / 2.0));
            const std::string value = rows(mid).ListSubItems(listIndex + 1).Text();
            const std::string a = vb::UCase(vb::Left(vb::Trim(value), cut));
            const std::string b = vb::UCase(search);
            const int order = vb::StrComp(b, a, vb::Compare::Binary);
            if (order < 0) {
                hi = mid - 1;
            } else if (order > 0) {
                lo = mid + 1;
            } else {
                hi = mid - 1;
                rows(mid).setSelected(true);
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "searchtheword", e);
    }
}

} // namespace tqsv2731
