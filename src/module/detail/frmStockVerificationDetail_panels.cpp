// frmStockVerificationDetail: the location and expiry panels, as far as the live paths reach them.
#include "module/detail/frmStockVerificationDetail.h"

#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/frame/basStockVerification.h"
#include "vb/Conversion.h"
#include "vb/Format.h"
#include "vb/Strings.h"

#include <string>

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerificationDetail";

} // namespace

void frmStockVerificationDetail::InitializeFlex() {
    try {
        if (!blnShowLocations) {
            flxLocations.setVisible(false);
            lblQtyLocationWise.setVisible(false);
            return;
        }
        const double width = flxLocations.Width();
        flxLocations.setColWidth(0, static_cast<int>(width * 0.1));
        flxLocations.setColWidth(1, static_cast<int>(width * 0.5));
        flxLocations.setColWidth(2, static_cast<int>(width * 0.3));
        for (int col = 3; col <= 7; ++col) {
            flxLocations.setColWidth(col, 0);
        }
        flxLocations.setTextMatrix(0, 0, "Sl No");
        flxLocations.setTextMatrix(0, 1, "Location Name");
        flxLocations.setTextMatrix(0, 2, "Quantity");
        flxLocations.setTextMatrix(1, 0, "1");
        flxLocations.setVisible(true);
        // Rows are never lower than the editor that floats over them, those
        // the load adds later included.
        flxLocations.setRowHeightMin(315);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "InitializeFlex", e);
    }
}

void frmStockVerificationDetail::ClearLocationFlex() {
    try {
        flxLocations.setRows(2);
        flxLocations.setTextMatrix(1, 0, "1");
        for (int col : {1, 2, 3, 5, 4}) {
            flxLocations.setTextMatrix(1, col, "");
        }
        txtLocationQuantity.setVisible(false);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ClearLocationFlex", e);
    }
}

void frmStockVerificationDetail::ClearExpiryFlex() {
    try {
        flxexpiry.setRows(2);
        flxexpiry.setTextMatrix(1, 0, "1");
        flxexpiry.setTextMatrix(1, 1, "");
        flxexpiry.setTextMatrix(1, 2, "");
        dtpExpiry.setVisible(false);
        txtexpiryqty.setVisible(false);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ClearExpiryFlex", e);
    }
}

void frmStockVerificationDetail::RetrieveExpiryList() {
    try {
        ClearExpiryFlex();
        flxexpiry.setVisible(false);
        dtpExpiry.setVisible(false);
        txtexpiryqty.setVisible(false);

        forms::ListView &list = lvwRequest();
        double itemId = 0;
        if (list.ListItems().Count() > 0) {
            // The row is found again by the running number it shows.
            const int index = vb::CInt(vb::Variant(list.SelectedItem().Text()));
            itemId = vb::Val(list.ListItems()(index).SubItems(8));
        }
        if (itemId > 0) {
            blnShowExpiry = ItemHasExpiryDays(m_, vb::CLng(vb::Variant(itemId)));
        }
        ArrangeWindow(blnShowLocations, blnShowExpiry);

        const forms::FlexGrid &stored = m_.frmStockVerification().flxexpiry;
        int number = 1;
        for (int i = 1; i < stored.Rows(); ++i) {
            if (vb::CDbl(vb::Variant(stored.TextMatrix(i, 5))) != itemId) {
                continue;
            }
            if (number > 1) {
                flxexpiry.setRows(flxexpiry.Rows() + 1);
            }
            const int row = flxexpiry.Rows() - 1;
            flxexpiry.setTextMatrix(row, 0, std::to_string(number));
            if (stored.TextMatrix(i, 1).empty()) {
                flxexpiry.setVisible(false);
                dtpExpiry.setVisible(false);
                txtexpiryqty.setVisible(false);
                ClearExpiryFlex();
                return;
            }
            flxexpiry.setTextMatrix(row, 1, stored.TextMatrix(i, 1));
            flxexpiry.setTextMatrix(row, 2, stored.TextMatrix(i, 2));
            flxexpiry.setVisible(true);
            dtpExpiry.setVisible(false);
            txtexpiryqty.setVisible(false);
            ++number;
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "RetrieveExpiryList", e);
    }
}

void frmStockVerificationDetail::VisibleFun(std::string &strFlex) {
    try {
        txtLocationQuantity.setVisible(false);
        txtexpiryqty.setVisible(false);
        dtpExpiry.setVisible(false);
        if (strFlex == "L") {
            flxLocations.setRow(intLocationRow);
            flxLocations.setCol(intLocationCol);
            if (intLocationCol == 2 && flxLocations.Row() > 0) {
                txtLocationQuantity.Move(flxLocations.Left() + flxLocations.CellLeft(),
                                         flxLocations.Top() + flxLocations.CellTop(),
                                         flxLocations.CellWidth() + 5,
                                         flxLocations.CellHeight() + 5);
                txtLocationQuantity.setText(vb::Format(
                    vb::Variant(vb::Val(flxLocations.TextMatrix(intLocationRow, 2))), "0.000"));
                txtLocationQuantity.setVisible(true);
                txtLocationQuantity.SetFocus();
            }
        } else if (strFlex == "E") {
            flxexpiry.setRow(intExpiryRow);
            flxexpiry.setCol(intExpiryCol);
            if (intExpiryCol == 1 && flxexpiry.Row() > 0) {
                // Only a free row takes a date; loaded dates stand.
                if (!blnExpiryRowOpen) {
                    return;
                }
                dtpExpiry.Move(flxexpiry.Left() + flxexpiry.CellLeft(),
                               flxexpiry.Top() + flxexpiry.CellTop(), flxexpiry.CellWidth() + 10,
                               flxexpiry.CellHeight() - 10);
                dtpExpiry.setHeight(flxexpiry.CellHeight() - 10);
                const std::string text = vb::Format(
                    vb::Variant(flxexpiry.TextMatrix(intExpiryRow, intExpiryCol)), "DD/MM/YYYY");
                if (vb::IsDate(vb::Variant(text))) {
                    dtpExpiry.setValue(vb::CDate(vb::Variant(text)));
                }
                dtpExpiry.setVisible(true);
                dtpExpiry.SetFocus();
            } else if (intExpiryCol == 2 && intExpiryRow >= 1) {
                txtexpiryqty.Move(flxexpiry.Left() + flxexpiry.CellLeft(),
                                  flxexpiry.Top() + flxexpiry.CellTop(), flxexpiry.CellWidth() + 5,
                                  flxexpiry.CellHeight() + 5);
                txtexpiryqty.setText(vb::Format(
                    vb::Variant(flxexpiry.TextMatrix(intExpiryRow, intExpiryCol)), "0.000"));
                txtexpiryqty.setVisible(true);
                txtexpiryqty.SetFocus();
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "VisibleFun", e);
    }
}

void frmStockVerificationDetail::ErrorInFlex(bool &blnError) {
    try {
        std::string strFault;
        int faultRow = 0;
        for (int i = 1; i < flxLocations.Rows() && strFault.empty(); ++i) {
            // The count is read as a number, so an empty box fails here.
            if (vb::Trim(flxLocations.TextMatrix(i, 1)).empty() &&
                vb::CDbl(vb::Variant(txtVerifiedStock.Text())) != 0) {
                strFault = "Location Name cannot be blank";
                flxLocations.setCol(1);
                faultRow = i;
            } else if (vb::Val(flxLocations.TextMatrix(i, 2)) == 0 &&
                       vb::CDbl(vb::Variant(txtVerifiedStock.Text())) != 0) {
                strFault = "Invalid Quantity";
                flxLocations.setCol(2);
                faultRow = i;
            }
        }
        if (!strFault.empty()) {
            inform(strFault);
            flxLocations.setRow(faultRow);
            flxLocations.SetFocus();
            blnError = true;
            return;
        }
        std::int16_t intRow = 0;
        bool blnFound = false;
        IsDuplicateExist(flxLocations, 1, intRow, blnFound);
        if (blnFound) {
            flxLocations.setRow(intRow);
            flxLocations.setCol(1);
            inform("This location is already entered");
            blnError = true;
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ErrorInFlex", e);
    }
}

void frmStockVerificationDetail::IsDuplicateExist(forms::FlexGrid &grid, std::int16_t intCol,
                                                  std::int16_t &intRow, bool &blnFound) {
    try {
        for (int i = grid.FixedRows(); i <= grid.Rows() - 2; ++i) {
            for (int j = i + 1; j <= grid.Rows() - 1; ++j) {
                if (vb::UCase(vb::Trim(grid.TextMatrix(i, intCol))) ==
                    vb::UCase(vb::Trim(grid.TextMatrix(j, intCol)))) {
                    intRow = static_cast<std::int16_t>(j);
                    blnFound = true;
                    return;
                }
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "IsDuplicateExist", e);
    }
}

} // namespace tqsv2731
