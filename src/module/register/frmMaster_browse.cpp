// frmMaster: sorting and searching the register's grid.
#include "module/register/frmMaster.h"

#include "forms/Screen.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

namespace tqsv2731 {

void frmMaster::cboColNames_Click() {
    try {
        screen().setMousePointer(forms::vbHourglass);
        if (cboColNames.ListIndex() != -1) {
            // Dates show as text that sorts badly; the entry id follows the date order.
            if (vb::InStr(1, cboColNames.Text(), "date", vb::Compare::Text) > 0) {
                flexMaster.setCol(0);
                flexMaster.setColSel(0);
            } else {
                const int col = cboColNames.ItemData(cboColNames.ListIndex());
                flexMaster.setCol(col);
                flexMaster.setColSel(col);
            }
        }

        // The one cell under the selection decides how the whole column sorts.
        const bool numeric =
            vb::IsNumeric(vb::Variant(flexMaster.TextMatrix(flexMaster.Row(), flexMaster.Col())));
        if (optAscend.Value()) {
            flexMaster.setSort(numeric ? forms::flexSortGenericAscending
                                       : forms::flexSortStringNoCaseAscending);
        } else {
            flexMaster.setSort(numeric ? forms::flexSortGenericDescending
                                       : forms::flexSortStringNoCaseDescending);
        }
        screen().setMousePointer(forms::vbDefault);
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "cboColNames_Click", e);
    }
}

void frmMaster::optAscend_Click() {
    try {
        // A new direction sorts nothing until a column is chosen again.
        cboColNames.setListIndex(-1);
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "optAscend_Click", e);
    }
}

void frmMaster::optDescend_Click() {
    try {
        cboColNames.setListIndex(-1);
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "optDescend_Click", e);
    }
}

void frmMaster::txtsearch_KeyUp(int & /*KeyCode*/, int /*Shift*/) {
    try {
        if (cboSearch.ListIndex() != -1 && !vb::Trim(txtsearch.Text()).empty()) {
            searchtheword();
        }
        flexMaster_RowColChange();
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "txtsearch_KeyUp", e);
    }
}

void frmMaster::searchtheword() {
    try {
        if (cboSearch.ListIndex() == -1) {
            return;
        }
        const int col = cboSearch.ItemData(cboSearch.ListIndex());
        flexMaster.setCol(col);
        flexMaster.setColSel(col);
        flexMaster.setSort(forms::flexSortStringAscending);

        // The rows are in text order now; the middle cell decides, once, whether
        // the cells are compared as numbers or as text.
        int low = 1;
        int high = flexMaster.Rows() - 1;
        const int probe = static_cast<int>(vb::Int((high + 1) / 2.0));
        const bool numeric = vb::IsNumeric(vb::Variant(flexMaster.TextMatrix(probe, col)));
        const std::string search = vb::Trim(txtsearch.Text());
        const long cut = vb::Len(txtsearch.Text());

        int hit = 0;
        while (low <= high) {
            const int mid = static_cast<int>(vb::Int((low + high) / 2.0));
            const std::string cell = vb::Left(vb::Trim(flexMaster.TextMatrix(mid, col)), cut);
            int order;
            if (numeric) {
                const double a = vb::Val(cell);
                const double b = vb::Val(search);
                order = a > b ? 1 : a < b ? -1 : 0;
            } else {
                order = vb::StrComp(vb::UCase(cell), vb::UCase(search), vb::Compare::Binary);
            }
            if (order > 0) {
                high = mid - 1;
            } else if (order < 0) {
                low = mid + 1;
            } else {
                // Go on looking above: the first of equal rows is the one wanted.
                hit = mid;
                high = mid - 1;
            }
        }

        if (hit != 0) {
            flexMaster.setRow(hit);
            flexMaster.setCol(0);
            flexMaster.setColSel(flexMaster.Cols() - 1);
            flexMaster.setTopRow(flexMaster.Row());
        }
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "searchtheword", e);
    }
}

} // namespace tqsv2731
