// frmStockVerificationDetail: the expiry grid's routines and events.
//
// Like the location panel, this one stays hidden in this configuration
// (ArrangeWindow clears the wish to show it); only RetrieveExpiryList runs on
// a live path. The rest stands ready for a site that counts by expiry date.
#include "module/detail/frmStockVerificationDetail.h"

#include "ado/Recordset.h"
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

void frmStockVerificationDetail::FillExpirydates(std::int32_t &lngItemId) {
    ado::Recordset rs;
    try {
        blnExpiryRowOpen = false;
        const std::string godown = std::to_string(m_.intGodownID);
        const std::string item = std::to_string(lngItemId);
        rs.Open("SELECT ExpiryDate, godownId, ItemId, SUM(qty) qty FROM (SELECT eadExpiryDate "
                "ExpiryDate, eadgodownId godownId,  eadItemId ItemId , SUM(eadItemQty) Qty FROM "
                "loiExpiryArrivalDetails WHERE eadgodownId = " +
                    godown + " AND eadItemId = " + item +
                    " AND eadCancel = 0 GROUP BY eadExpiryDate, eadgodownId, eadItemId UNION ALL "
                    "SELECT eidExpiryDate, eidgodownid, eidItemId, - SUM(eidItemQty) FROM "
                    "loiExpiryIssueDetails WHERE eidgodownId = " +
                    godown + " AND eidItemId =  " + item +
                    " AND eidCancel = 0 GROUP BY eidExpiryDate, eidgodownId, eidItemId) a GROUP "
                    "BY ExpiryDate, godownId, ItemId HAVING Sum(qty) <> 0 order by expirydate "
                    "asc",
                m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        if (rs.Eof()) {
            // An item with no dated stock offers one row, dated today, whose
            // date may be changed.
            const int row = flxexpiry.Rows() - 1;
            flxexpiry.setTextMatrix(row, 0, "1");
            flxexpiry.setTextMatrix(row, 1,
                                    vb::Format(vb::Variant(m_.dtProcessDate), "dd/mm/yyyy"));
            blnExpiryRowOpen = true;
        }
        int number = 0;
        while (!rs.Eof()) {
            ++number;
            if (number > 1) {
                flxexpiry.AddItem("");
            }
            const int row = flxexpiry.Rows() - 1;
            flxexpiry.setTextMatrix(row, 0, std::to_string(number));
            flxexpiry.setTextMatrix(row, 1, vb::Format(rs.Fields("expirydate").Value(), "dd/mm/yyyy"));
            flxexpiry.setTextMatrix(row, 2, vb::Format(rs.Fields("qty").Value(), "#.000"));
            flxexpiry.setTextMatrix(row, 3, "");
            flxexpiry.setTextMatrix(row, 4, "");
            flxexpiry.setTextMatrix(row, 5, std::to_string(lngItemId));
            flxexpiry.setTextMatrix(row, 6, vb::Format(rs.Fields("qty").Value(), "#.000"));
            rs.MoveNext();
        }
        if (rs.State() == ado::adStateOpen) {
            rs.Close();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "FillExpirydates", e);
    }
}

void frmStockVerificationDetail::ChkExpiryDate(bool &blnValid) {
    try {
        if (!flxexpiry.Visible() || flxexpiry.Rows() < 2) {
            blnValid = true;
            return;
        }
        for (int i = 1; i <= flxexpiry.Rows() - 1; ++i) {
            if (!vb::IsDate(vb::Variant(flxexpiry.TextMatrix(i, 1)))) {
                // The one message of the form that gives no title of its own.
                forms::MsgBox(screen(), "Enter Valid Date For Expiry", forms::vbInformation);
                blnValid = false;
                return;
            }
        }
        blnValid = true;
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ChkExpiryDate", e);
    }
}

void frmStockVerificationDetail::ErrorInExpiryFlex(bool &blnError) {
    try {
        std::string strFault;
        int faultRow = 0;
        for (int i = 1; i < flxexpiry.Rows() && strFault.empty(); ++i) {
            // "Below the empty text" is never true: blank dates pass, as they
            // always did; the date check is ChkExpiryDate's.
            if (vb::Trim(flxexpiry.TextMatrix(i, 1)) < std::string()) {
                strFault = "Expiry Date cannot be blank";
                flxexpiry.setCol(1);
                faultRow = i;
            } else if (vb::Val(flxexpiry.TextMatrix(i, 2)) == 0) {
                strFault = "Invalid Quantity";
                flxexpiry.setCol(2);
                faultRow = i;
            }
        }
        if (!strFault.empty()) {
            inform(strFault);
            flxexpiry.setRow(faultRow);
            if (flxexpiry.Visible()) {
                flxexpiry.SetFocus();
            }
            blnError = true;
            return;
        }
        std::int16_t intRow = 0;
        bool blnFound = false;
        IsDuplicateExist(flxexpiry, 1, intRow, blnFound);
        if (blnFound) {
            flxexpiry.setRow(intRow);
            flxexpiry.setCol(1);
            inform("This Expiry Date is already entered");
            blnError = true;
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ErrorInExpiryFlex", e);
    }
}

void frmStockVerificationDetail::GetExpiryQty(double &dblTotal) {
    try {
        dblTotal = 0;
        for (int i = 1; i <= flxexpiry.Rows() - 1; ++i) {
            dblTotal += vb::Val(flxexpiry.TextMatrix(i, 2));
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "GetExpiryQty", e);
    }
}

void frmStockVerificationDetail::UpdateexpiryList(std::int32_t lngItemId) {
    try {
        if (!flxexpiry.Visible()) {
            blnExpiryListSaved = false;
            return;
        }
        forms::FlexGrid &stored = m_.frmStockVerification().flxexpiry;
        const std::string key = std::to_string(lngItemId);
        RemoveGridRows(stored, 5, key);
        for (int i = 1; i <= flxexpiry.Rows() - 1; ++i) {
            stored.setRows(stored.Rows() + 1);
            const int row = stored.Rows() - 1;
            for (int col = 0; col <= 2; ++col) {
                stored.setTextMatrix(row, col, flxexpiry.TextMatrix(i, col));
            }
            stored.setTextMatrix(row, 3, "");
            stored.setTextMatrix(row, 4, flxexpiry.TextMatrix(i, 2));
            stored.setTextMatrix(row, 5, key);
        }
        blnExpiryListSaved = true;
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "UpdateexpiryList", e);
    }
}

// ---- events of the grid and its two editors ----------------------------------------

void frmStockVerificationDetail::bindExpiryGrid() {
    flxexpiry.onClick = [this] { flxexpiry_Click(); };
    flxexpiry.onDblClick = [this] { flxexpiry_DblClick(); };
    flxexpiry.onKeyDown = [this](int &KeyCode, int Shift) { flxexpiry_KeyDown(KeyCode, Shift); };
    flxexpiry.onScroll = [this] { flxLocations_Scroll(); };
    flxexpiry.onValidate = [this](bool &) { txtexpiryqty.setVisible(false); };
    txtexpiryqty.onGotFocus = [this] {
        txtexpiryqty.setSelStart(0);
        txtexpiryqty.setSelLength(100);
    };
    txtexpiryqty.onKeyPress = [this](int &KeyAscii) { txtexpiryqty_KeyPress(KeyAscii); };
    txtexpiryqty.onChange = [this] { txtexpiryqty_Change(); };
    txtexpiryqty.onKeyDown = [this](int &KeyCode, int Shift) {
        txtexpiryqty_KeyDown(KeyCode, Shift);
    };
    dtpExpiry.onChange = [this] {
        flxexpiry.setTextMatrix(intExpiryRow, intExpiryCol,
                                vb::CStr(vb::Variant(dtpExpiry.Value())));
    };
    dtpExpiry.onLostFocus = [this] { dtpExpiry.setVisible(false); };
    dtpExpiry.onKeyDown = [this](int &KeyCode, int Shift) { dtpExpiry_KeyDown(KeyCode, Shift); };
}

void frmStockVerificationDetail::flxexpiry_Click() {
    try {
        intExpiryRow = static_cast<std::int16_t>(flxexpiry.Row());
        intExpiryCol = static_cast<std::int16_t>(flxexpiry.Col());
        std::string strFlex = "E";
        VisibleFun(strFlex);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "flxexpiry_Click", e);
    }
}

void frmStockVerificationDetail::flxexpiry_DblClick() {
    try {
        // Moves to the last column rather than marking the row, unlike the
        // location grid's double click.
        if (flxexpiry.Col() == 0) {
            flxexpiry.setCol(0);
            flxexpiry.setCol(flxexpiry.Cols() - 1);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "flxexpiry_DblClick", e);
    }
}

void frmStockVerificationDetail::flxexpiry_KeyDown(int &KeyCode, int) {
    if (KeyCode == forms::vbKeyDelete) {
        if (flxexpiry.Row() != 0) {
            const int answer = forms::MsgBox(screen(), "Are you sure to delete the selected row.  ",
                                             forms::vbYesNo + forms::vbQuestion);
            if (answer != forms::vbNo) {
                std::string strFlex = "E";
                DeleteSelectedRow(strFlex);
            }
        }
    } else if (KeyCode == forms::vbKeyReturn) {
        if (flxexpiry.Col() < 2) {
            flxexpiry.setCol(flxexpiry.Col() + 1);
        }
        intExpiryCol = static_cast<std::int16_t>(flxexpiry.Col());
        std::string strFlex = "E";
        VisibleFun(strFlex);
    }
}

void frmStockVerificationDetail::txtexpiryqty_KeyPress(int &KeyAscii) {
    try {
        tools().TextValidateNum(txtexpiryqty, KeyAscii, 10, 2);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtexpiryqty_KeyPress", e);
    }
}

void frmStockVerificationDetail::txtexpiryqty_Change() {
    try {
        // A cleared box leaves the old quantity until Enter writes the zero.
        if (vb::Val(txtexpiryqty.Text()) != 0) {
            flxexpiry.setText(vb::Format(vb::Variant(vb::Val(txtexpiryqty.Text())), "0.000"));
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtexpiryqty_Change", e);
    }
}

// Back from the first row of the expiry grid: to the location grid when it
// shows, else to the verified bad stock.
void frmStockVerificationDetail::leaveExpiryBackwards() {
    txtexpiryqty.setVisible(false);
    if (flxLocations.Visible()) {
        intLocationRow = 1;
        intLocationCol = 2;
        std::string strFlex = "L";
        VisibleFun(strFlex);
    } else {
        txtVerifiedBadStock.SetFocus();
    }
}

void frmStockVerificationDetail::dtpExpiry_KeyDown(int &KeyCode, int Shift) {
    try {
        if (KeyCode != forms::vbKeyReturn) {
            return;
        }
        if (Shift != forms::vbShiftMask) {
            KeyCode = 0;
            flxexpiry.setText(vb::CStr(vb::Variant(dtpExpiry.Value())));
            intExpiryCol = 2;
            flxexpiry.setTag("");
            std::string strFlex = "E";
            VisibleFun(strFlex);
        } else if (intExpiryCol == 1) {
            if (intExpiryRow > 1) {
                intExpiryRow = static_cast<std::int16_t>(intExpiryRow - 1);
                intExpiryCol = 2;
            } else {
                leaveExpiryBackwards();
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "dtpExpiry_KeyDown", e);
    }
}

void frmStockVerificationDetail::txtexpiryqty_KeyDown(int &KeyCode, int Shift) {
    try {
        if (KeyCode != forms::vbKeyReturn) {
            return;
        }
        std::string strFlex = "E";
        if (Shift != forms::vbShiftMask) {
            KeyCode = 0;
            flxexpiry.setText(vb::Format(vb::Variant(vb::Val(txtexpiryqty.Text())), "0.000"));
            if (flxexpiry.Row() == flxexpiry.Rows() - 1) {
                txtexpiryqty.setVisible(false);
                cmdOK.SetFocus();
            } else {
                intExpiryRow = static_cast<std::int16_t>(intExpiryRow + 1);
                intExpiryCol = 2;
                VisibleFun(strFlex);
            }
        } else if (intExpiryCol == 2) {
            if (blnExpiryRowOpen) {
                intExpiryCol = 1;
                VisibleFun(strFlex);
            } else if (intExpiryRow < 2) {
                leaveExpiryBackwards();
            } else {
                intExpiryRow = static_cast<std::int16_t>(intExpiryRow - 1);
                intExpiryCol = 2;
                VisibleFun(strFlex);
            }
        } else {
            VisibleFun(strFlex);
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtexpiryqty_KeyDown", e);
    }
}

} // namespace tqsv2731
