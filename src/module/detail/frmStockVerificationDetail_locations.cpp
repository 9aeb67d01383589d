// frmStockVerificationDetail: the location grid's routines and events.
//
// The panel stays hidden in this configuration (nothing sets
// blnShowLocations), so nothing here runs on a live path; it is kept whole so
// that the panel works the day a site shows it.
#include "module/detail/frmStockVerificationDetail.h"

#include "ado/Recordset.h"
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "module/entry/frmStockVerification.h"
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

} // namespace

void frmStockVerificationDetail::FillLocationDetails(std::int32_t &lngItemId) {
    ado::Recordset rs;
    try {
        const std::string godown = std::to_string(m_.intGodownID);
        const std::string item = std::to_string(lngItemId);
        // A negative balance stays in the list (<> 0): the count may put
        // stock back where the books went below zero.
        rs.Open(
            "SELECT locationid, itemid, qty, LoiLocation.lLocationName  FROM(SELECT locationid, "
            "godownId, ItemId, SUM(qty) qty FROM (SELECT ladlocationid locationid, ladgodownid "
            "godownId, ladItemId ItemId ,SUM(ladItemQty) Qty   FROM loilocationArrivalDetails "
            "WHERE ladgodownId = " +
                godown + " AND ladItemId = " + item +
                " AND ladCancel = 0 and ladConfirmed=1   GROUP BY ladlocationid, "
                "ladgodownId,ladItemId  UNION ALL SELECT lidlocationid, lidgodownId, "
                "lidItemId, - SUM(lidItemQty) FROM loilocationIssueDetails WHERE lidgodownId = " +
                godown + " AND lidItemId =  " + item +
                " AND lidCancel = 0 and lidConfirmed=1 GROUP BY lidlocationid, "
                "lidgodownId,lidItemId) a GROUP BY locationid, godownId, ItemId HAVING "
                "Sum(qty) <> 0)B, LOiLocation WHERE B.LocationId = LOiLocation.lLocationId AND "
                "b.GodownId = loiLocation.lGodownId order by locationid asc",
            m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        ClearLocationFlex();
        InitializeFlex();
        int number = 0;
        while (!rs.Eof()) {
            ++number;
            if (number > 1) {
                flxLocations.AddItem("");
            }
            const int row = flxLocations.Rows() - 1;
            flxLocations.setTextMatrix(row, 0, std::to_string(number));
            flxLocations.setTextMatrix(row, 3, vb::CStr(rs.Fields("locationid").Value()));
            flxLocations.setTextMatrix(row, 1,
                                       vb::Trim(vb::CStr(rs.Fields("llocationName").Value())));
            flxLocations.setTextMatrix(row, 2, vb::CStr(rs.Fields("qty").Value()));
            flxLocations.setTextMatrix(row, 4, "");
            flxLocations.setTextMatrix(row, 5, vb::CStr(rs.Fields("qty").Value()));
            flxLocations.setTextMatrix(row, 6, std::to_string(lngItemId));
            flxLocations.setTextMatrix(row, 7, vb::Format(rs.Fields("qty").Value(), "#.000"));
            rs.MoveNext();
        }
        if (rs.State() == ado::adStateOpen) {
            rs.Close();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "FillLocationDetails", e);
    }
}

void frmStockVerificationDetail::DeleteSelectedRow(std::string &strFlex) {
    try {
        if (strFlex == "L") {
            flxLocations.setCol(0);
            flxLocations.setColSel(flxLocations.Cols() - 1);
            // The last row is emptied, never removed: the grid always offers one.
            if (flxLocations.Row() == 1 && flxLocations.Rows() == 2) {
                flxLocations.setTextMatrix(intLocationRow, 1, "");
                flxLocations.setTextMatrix(intLocationRow, 2, "");
            } else {
                flxLocations.RemoveItem(intLocationRow);
            }
            for (int i = 1; i <= flxLocations.Rows() - 1; ++i) {
                flxLocations.setTextMatrix(i, 0, std::to_string(i));
            }
            flxLocations.setCol(0);
            flxLocations.setColSel(0);
        } else if (strFlex == "E") {
            flxexpiry.setCol(0);
            flxexpiry.setColSel(flxexpiry.Cols() - 1);
            if (flxexpiry.Row() == 1 && flxexpiry.Rows() == 2) {
                flxexpiry.setTextMatrix(intExpiryRow, 1, "");
                flxexpiry.setTextMatrix(intExpiryRow, 2, "");
            } else {
                flxexpiry.RemoveItem(intExpiryRow);
            }
            for (int i = 1; i <= flxexpiry.Rows() - 1; ++i) {
                flxexpiry.setTextMatrix(i, 0, std::to_string(i));
            }
            flxexpiry.setCol(0);
            flxexpiry.setColSel(0);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "DeleteSelectedRow", e);
    }
}

void frmStockVerificationDetail::GetLocationAmount(double &dblTotal) {
    try {
        dblTotal = 0;
        for (int i = 1; i <= flxLocations.Rows() - 1; ++i) {
            dblTotal += vb::Val(flxLocations.TextMatrix(i, 2));
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "GetLocationAmount", e);
    }
}

void frmStockVerificationDetail::RetrieveLocationList() {
    try {
        ClearLocationFlex();
        forms::ListView &list = lvwRequest();
        // The row is found again by the number in its text, as the list was
        // numbered when it was built.
        const int index = static_cast<int>(vb::Val(list.SelectedItem().Text()));
        const double itemId = vb::Val(list.ListItems()(index).SubItems(8));
        const forms::FlexGrid &stored = m_.frmStockVerification().flxLocations;
        int number = 0;
        for (int i = 1; i <= stored.Rows() - 1; ++i) {
            if (vb::CDbl(vb::Variant(stored.TextMatrix(i, 6))) != itemId) {
                continue;
            }
            ++number;
            if (number > 1) {
                flxLocations.setRows(flxLocations.Rows() + 1);
            }
            const int row = flxLocations.Rows() - 1;
            flxLocations.setTextMatrix(row, 0, std::to_string(number));
            for (int col = 1; col <= 5; ++col) {
                flxLocations.setTextMatrix(row, col, stored.TextMatrix(i, col));
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "RetrieveLocationList", e);
    }
}

void frmStockVerificationDetail::UpdateLocationList(const std::string &strKey) {
    try {
        forms::FlexGrid &stored = m_.frmStockVerification().flxLocations;
        RemoveGridRows(stored, 6, strKey);
        for (int i = 1; i <= flxLocations.Rows() - 1; ++i) {
            stored.setRows(stored.Rows() + 1);
            const int row = stored.Rows() - 1;
            for (int col = 0; col <= 5; ++col) {
                stored.setTextMatrix(row, col, flxLocations.TextMatrix(i, col));
            }
            stored.setTextMatrix(row, 6, strKey);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "UpdateLocationList", e);
    }
}

// ---- events of the grid and its editor ---------------------------------------------

void frmStockVerificationDetail::bindLocationGrid() {
    flxLocations.onClick = [this] { flxLocations_Click(); };
    flxLocations.onDblClick = [this] { flxLocations_DblClick(); };
    flxLocations.onKeyDown = [this](int &KeyCode, int Shift) {
        flxLocations_KeyDown(KeyCode, Shift);
    };
    flxLocations.onScroll = [this] { flxLocations_Scroll(); };
    txtLocationQuantity.onGotFocus = [this] { txtLocationQuantity_GotFocus(); };
    txtLocationQuantity.onKeyPress = [this](int &KeyAscii) {
        txtLocationQuantity_KeyPress(KeyAscii);
    };
    txtLocationQuantity.onChange = [this] { txtLocationQuantity_Change(); };
    txtLocationQuantity.onKeyDown = [this](int &KeyCode, int Shift) {
        txtLocationQuantity_KeyDown(KeyCode, Shift);
    };
}

void frmStockVerificationDetail::flxLocations_Click() {
    try {
        intLocationRow = static_cast<std::int16_t>(flxLocations.Row());
        intLocationCol = static_cast<std::int16_t>(flxLocations.Col());
        std::string strFlex = "L";
        VisibleFun(strFlex);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "flxLocations_Click", e);
    }
}

void frmStockVerificationDetail::flxLocations_DblClick() {
    try {
        // A double click on the number marks the whole row, ready for Delete.
        if (flxLocations.Col() == 0) {
            flxLocations.setRow(flxLocations.Row());
            flxLocations.setCol(0);
            flxLocations.setColSel(flxLocations.Cols() - 1);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "flxLocations_DblClick", e);
    }
}

// No error trap of its own: a failure here goes to whoever raised the key.
void frmStockVerificationDetail::flxLocations_KeyDown(int &KeyCode, int) {
    if (KeyCode == forms::vbKeyDelete) {
        if (flxLocations.Row() != 0) {
            const int answer = forms::MsgBox(screen(), "Are you sure to delete the selected row.  ",
                                             forms::vbYesNo + forms::vbQuestion);
            if (answer != forms::vbNo) {
                std::string strFlex = "L";
                DeleteSelectedRow(strFlex);
            }
        }
    } else if (KeyCode == forms::vbKeyReturn) {
        if (intLocationCol == 0 || intLocationCol == 1) {
            flxLocations.setCol(2);
            intLocationCol = 2;
        }
        std::string strFlex = "L";
        VisibleFun(strFlex);
    }
}

void frmStockVerificationDetail::flxLocations_Scroll() {
    try {
        txtLocationQuantity.setVisible(false);
        txtexpiryqty.setVisible(false);
        dtpExpiry.setVisible(false);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "flxLocations_Scroll", e);
    }
}

void frmStockVerificationDetail::txtLocationQuantity_GotFocus() {
    try {
        txtLocationQuantity.setSelStart(0);
        txtLocationQuantity.setSelLength(100);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtLocationQuantity_GotFocus", e);
    }
}

void frmStockVerificationDetail::txtLocationQuantity_KeyPress(int &KeyAscii) {
    try {
        // A count by location is never negative.
        if (KeyAscii == 45) {
            KeyAscii = 0;
        }
        tools().TextValidateNum(txtLocationQuantity, KeyAscii, 10, 2);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtLocationQuantity_KeyPress", e);
    }
}

void frmStockVerificationDetail::txtLocationQuantity_Change() {
    try {
        const std::string value =
            vb::Format(vb::Variant(vb::Val(txtLocationQuantity.Text())), "0.000");
        flxLocations.setTextMatrix(intLocationRow, intLocationCol, value);
        flxLocations.setTextMatrix(intLocationRow, 5, value);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtLocationQuantity_Change", e);
    }
}

void frmStockVerificationDetail::txtLocationQuantity_KeyDown(int &KeyCode, int Shift) {
    try {
        if (KeyCode != forms::vbKeyReturn) {
            return;
        }
        if (Shift != forms::vbShiftMask) {
            flxLocations.setText(
                vb::Format(vb::Variant(vb::Val(txtLocationQuantity.Text())), "0.000"));
            if (flxLocations.Row() == flxLocations.Rows() - 1) {
                txtLocationQuantity.setVisible(false);
                if (!flxexpiry.Visible()) {
                    cmdOK.SetFocus();
                } else {
                    intExpiryRow = 1;
                    intExpiryCol = blnExpiryRowOpen ? 1 : 2;
                    std::string strFlex = "E";
                    VisibleFun(strFlex);
                }
            } else {
                intLocationRow = static_cast<std::int16_t>(intLocationRow + 1);
                intLocationCol = 2;
                std::string strFlex = "L";
                VisibleFun(strFlex);
            }
        } else {
            if (intLocationRow < 2) {
                txtLocationQuantity.setVisible(false);
                txtVerifiedBadStock.SetFocus();
            } else {
                intLocationRow = static_cast<std::int16_t>(intLocationRow - 1);
                intLocationCol = 2;
                std::string strFlex = "L";
                VisibleFun(strFlex);
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtLocationQuantity_KeyDown", e);
    }
}

} // namespace tqsv2731
