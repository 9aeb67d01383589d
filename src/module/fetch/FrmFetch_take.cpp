// FrmFetch: taking a fetched item into the detail form, and the direct route that nothing uses.
#include "module/fetch/FrmFetch.h"

#include "ado/Constants.h"
#include "ado/Recordset.h"
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "services/clsActivityTrail.h"
#include "services/clsBaseData.h"
#include "vb/Conversion.h"
#include "vb/Format.h"

#include <cstdint>
#include <string>

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "FrmFetch";

} // namespace

void FrmFetch::cmdOK_Click() {
    try {
        frmStockVerificationDetail &detail = m_.frmStockVerificationDetail();
        const int row = flexMaster.Row();
        // An untouched grid and the empty row of a fetch that found nothing
        // have no id: the dialog closes and nothing is taken.
        if (vb::Val(flexMaster.TextMatrix(row, 0)) > 0) {
            // One row per item: a second row of the same item, under any
            // location, would be counted twice.
            forms::ListView &list = m_.frmStockVerification().lvwRequest;
            const std::int16_t count = vb::CInt(vb::Variant(list.ListItems().Count()));
            for (std::int16_t i = 1; i <= count; ++i) {
                if (vb::Val(flexMaster.TextMatrix(row, 0)) ==
                    vb::Val(list.ListItems()(i).ListSubItems(8).Text())) {
                    forms::MsgBox(m_.screen(), "Item already entered", forms::vbInformation,
                                  m_.strMsgboxCaption);
                    flexMaster.SetFocus();
                    return;
                }
            }

            detail.cboItem.Clear();
            bool blnAll = true;
            detail.ClearAll(blnAll);
            detail.txtBarcode.setText("");

            // Choosing the one entry reads the item's stock on the detail form.
            detail.cboItem.AddItem(flexMaster.TextMatrix(row, 2));
            detail.cboItem.setItemData(detail.cboItem.NewIndex(),
                                       vb::CLng(vb::Variant(flexMaster.TextMatrix(row, 0))));
            detail.cboItem.setListIndex(detail.cboItem.NewIndex());
            m_.strFetchedItemCode = flexMaster.TextMatrix(row, 1);
            // One piece proposed, ready to be typed over.
            detail.txtVerifiedStock.setText(vb::Format(vb::Variant(1), "#0.000"));
        }
        Unload();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cmdOK_Click ", e);
    }
}

void FrmFetch::flexMaster_KeyPress(int &KeyAscii) {
    try {
        if (KeyAscii == 13) {
            cmdOK_Click();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "flexMaster_KeyPress", e);
    }
}

void FrmFetch::flexMaster_DblClick() {
    try {
        cmdOK_Click();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "flexMaster_DblClick", e);
    }
}

void FrmFetch::addtolist() {
    try {
        frmStockVerificationDetail &detail = m_.frmStockVerificationDetail();
        forms::ListView &list = m_.frmStockVerification().lvwRequest;
        auto inform = [this](std::string_view text) {
            forms::MsgBox(m_.screen(), text, forms::vbInformation, m_.strMsgboxCaption);
        };

        // Only the first entry of a combo passes: any other index is refused.
        if (detail.cboItem.Visible() && detail.cboItem.ListIndex() != 0) {
            inform("Select Item");
            detail.cboItem.SetFocus();
            return;
        }
        if (detail.cboAllItems.Visible() && detail.cboAllItems.ListIndex() != 0) {
            inform("Select Item");
            detail.cboAllItems.SetFocus();
            return;
        }
        if (vb::Val(detail.txtVerifiedStock.Text()) == 0 &&
            vb::Val(detail.txtVerifiedBadStock.Text()) == 0 &&
            vb::Val(detail.txtAvailStock.Text()) == 0 && vb::Val(detail.txtBadStock.Text()) == 0) {
            inform("Enter verified Good stock or verified bad stock");
            detail.txtVerifiedStock.SetFocus();
            return;
        }

        forms::ComboBox &combo = detail.cboItem.Visible() ? detail.cboItem : detail.cboAllItems;
        const std::int32_t id = combo.ItemData(combo.ListIndex());
        const std::string description = combo.Text();

        // A second scan of an item counts its row up by one.
        const int count = list.ListItems().Count();
        for (int i = 1; i <= count; ++i) {
            forms::ListItem &item = list.ListItems()(i);
            if (vb::Val(item.ListSubItems(8).Text()) == id) {
                item.setSubItems(5,
                                 vb::Format(vb::Variant(vb::Val(item.SubItems(5)) + 1), "0.000"));
                detail.cboItem.setListIndex(-1);
                detail.cboAllItems.setListIndex(-1);
                detail.txtAvailStock.setText("");
                detail.txtVerifiedStock.setText("");
                detail.txtBadStock.setText("");
                detail.txtVerifiedBadStock.setText("");
                detail.txtBarcode.setText("");
                return;
            }
        }

        data().strTableName = "aItem";
        const double rate = vb::CDbl(data().fnReturnField(
            "itemrate ",
            " itemid=" + std::to_string(detail.cboItem.ItemData(detail.cboItem.ListIndex()))));
        data().strTableName = "aShipment";
        const std::int16_t shipment = vb::CInt(data().fnReturnField("sShipmentId"));

        const double avail = vb::Val(detail.txtAvailStock.Text());
        const double verified = vb::Val(detail.txtVerifiedStock.Text());
        const double bad = vb::Val(detail.txtBadStock.Text());
        const double verifiedBad = vb::Val(detail.txtVerifiedBadStock.Text());
        data().fnInsertListView(
            list, 0, vb::Variant(count + 1), vb::Variant(" "), vb::Variant(m_.strFetchedItemCode),
            vb::Variant(description), vb::Variant(vb::Format(vb::Variant(avail), "#0.000")),
            vb::Variant(vb::Format(vb::Variant(verified), "#0.000")),
            vb::Variant(vb::Format(vb::Variant(bad), "#0.000")),
            vb::Variant(vb::Format(vb::Variant(verifiedBad), "#0.000")), vb::Variant(id),
            vb::Variant(count), vb::Variant("1"), vb::Variant(shipment), vb::Variant(rate));

        const int added = list.ListItems().Count();
        list.ListItems()(added).setSelected(true);
        list.ListItems()(added).EnsureVisible();

        detail.cboItem.setListIndex(-1);
        detail.txtAvailStock.setText("");
        detail.txtVerifiedStock.setText("");
        detail.txtBadStock.setText("");
        detail.txtVerifiedBadStock.setText("");

        if (added > 2) {
            detail.cmdFirst.setEnabled(true);
            detail.cmdPrev.setEnabled(true);
            detail.cmdNext.setEnabled(true);
            detail.cmdLast.setEnabled(true);
        }
        if (!Tag().empty()) {
            if (!m_.objActivityTrail) {
                throw vb::Error::standard(vb::err::ObjectNotSet);
            }
            if (m_.objActivityTrail->fnDataChanged(*this)) {
                m_.blnEntryChanged = true;
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, "frmfetch", "addtolist", e);
    }
}

void FrmFetch::PopulateLocationStock() {
    try {
        frmStockVerificationDetail &detail = m_.frmStockVerificationDetail();
        const std::string id = std::to_string(detail.cboItem.ItemData(detail.cboItem.ListIndex()));
        const std::string godown = std::to_string(m_.intGodownID);
        ado::Recordset rs;
        rs.Open("SELECT locationid, itemid, qty, LOiLocation.lLocationName  FROM (SELECT "
                "LocationId, GodownId,  ItemId, SUM(qty) qty FROM (SELECT ladLocationId "
                "LocationId,  ladGodownId GodownId, ladItemId ItemId , SUM(ladItemQty) qty FROM "
                "loiLocationArrivalDetails WHERE ladGodownId = " +
                    godown + " AND ladItemId = " + id +
                    " AND ladCancel = 0 and ladconfirmed=1 GROUP BY ladLocationId, ladGodownId, "
                    "ladItemId UNION ALL SELECT lidLocationId, lidGodownId, lidItemId, - "
                    "SUM(lidItemQty) FROM loiLocationIssueDetails WHERE lidGodownId = " +
                    godown + " AND lidItemId = " + id +
                    " AND lidCancel = 0 and lidconfirmed=1 GROUP BY lidLocationId, lidGodownId, "
                    "lidItemId) a GROUP BY LocationId, GodownId, ItemId HAVING SUM(qty) <> 0 ) b "
                    ", LOiLocation WHERE b.LocationId = LOiLocation.lLocationId AND b.GodownId = "
                    "loiLocation.lGodownId",
                m_.adocon, ado::adOpenForwardOnly, ado::adLockReadOnly);
        ClearLocationFlex();

        forms::FlexGrid &grid = detail.flxLocations;
        for (int r = 1; !rs.Eof(); ++r) {
            if (r > 1) {
                grid.setRows(grid.Rows() + 1);
            }
            grid.setTextMatrix(r, 0, std::to_string(r));
            grid.setTextMatrix(r, 1, vb::TextOf(rs.Fields("lLocationName").Value()));
            grid.setTextMatrix(r, 2, vb::TextOf(rs.Fields("Qty").Value()));
            grid.setTextMatrix(r, 3, vb::TextOf(rs.Fields("LocationId").Value()));
            grid.setTextMatrix(r, 4, "");
            grid.setTextMatrix(r, 5, vb::TextOf(rs.Fields("Qty").Value()));
            rs.MoveNext();
        }
        rs.Close();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "PopulateLocationStock", e);
    }
}

void FrmFetch::ClearLocationFlex() {
    try {
        forms::FlexGrid &grid = m_.frmStockVerificationDetail().flxLocations;
        grid.setRows(2);
        grid.setTextMatrix(1, 0, vb::CStr(vb::Variant(1)));
        for (int c = 1; c <= 5; ++c) {
            grid.setTextMatrix(1, c, "");
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ClearLocationFlex", e);
    }
}

} // namespace tqsv2731
