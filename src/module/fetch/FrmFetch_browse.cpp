// FrmFetch: sorting the fetched items and jumping to one of them.
#include "module/fetch/FrmFetch.h"

#include "forms/Screen.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

#include <cstdint>
#include <string>

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "FrmFetch";

} // namespace

void FrmFetch::cboColNames_Click() {
    try {
        screen().setMousePointer(forms::vbHourglass);
        if (cboColNames.ListIndex() >= 0) {
            // The item data names the key columns; the category sorts with its
            // id behind it, and the part code on whatever ColSel was left.
            const int d = cboColNames.ItemData(cboColNames.ListIndex());
            switch (d) {
            case 3:
                flexMaster.setCol(3);
                flexMaster.setColSel(4);
                break;
            case 4:
                flexMaster.setCol(1);
                flexMaster.setColSel(2);
                break;
            case 5:
                flexMaster.setCol(2);
                flexMaster.setColSel(3);
                break;
            case 6:
                flexMaster.setCol(1);
                flexMaster.setColSel(3);
                break;
            case 7:
                flexMaster.setCol(5);
                break;
            default:
                flexMaster.setCol(d);
                flexMaster.setColSel(d);
                break;
            }
        }
        flexMaster.setSort(optAscend.Value() ? forms::flexSortGenericAscending
                                             : forms::flexSortGenericDescending);
        screen().setMousePointer(forms::vbDefault);
        flexMaster.setRow(flexMaster.Rows() - 1);
        flexMaster.setTopRow(flexMaster.Row());
        flexMaster.setCol(0);
        flexMaster.setColSel(flexMaster.Cols() - 1);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "cboColNames_Click", e);
    }
}

void FrmFetch::optAscend_Click() {
    try {
        // A new direction sorts nothing until a column is chosen again.
        cboColNames.setListIndex(-1);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "optAscend_Click", e);
    }
}

void FrmFetch::optDescend_Click() {
    try {
        cboColNames.setListIndex(-1);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "optDescend_Click", e);
    }
}

void FrmFetch::txtsearch_KeyUp(int & /*KeyCode*/, int /*Shift*/) {
    try {
        if (cboSearch.ListIndex() >= 0 && !vb::Trim(txtsearch.Text()).empty()) {
            searchtheword();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "txtsearch_KeyUp", e);
    }
}

void FrmFetch::searchtheword() {
    try {
        if (cboSearch.ListIndex() < 0) {
            return;
        }
        // The binary search needs the rows in order: they are sorted on every key.
        const int k = cboSearch.ItemData(cboSearch.ListIndex());
        flexMaster.setCol(k);
        flexMaster.setColSel(k);
        flexMaster.setSort(forms::flexSortGenericAscending);

        std::int16_t low = 1;
        std::int16_t high = vb::CInt(vb::Variant(flexMaster.Rows() - 1));
        const auto probe = static_cast<std::int16_t>(vb::Int((high + 1) / 2.0));
        // The middle row decides, once, whether cells compare as numbers.
        const bool numeric = vb::IsNumeric(vb::Variant(flexMaster.TextMatrix(probe, k)));
        const std::string search = vb::Trim(txtsearch.Text());
        const long cut = vb::Len(txtsearch.Text());

        std::int16_t hit = 0;
        while (low <= high) {
            const auto mid = static_cast<std::int16_t>(vb::Int((low + high) / 2.0));
            const std::string cell = vb::Left(vb::Trim(flexMaster.TextMatrix(mid, k)), cut);
            int order;
            if (numeric) {
                const double a = vb::Val(cell);
                const double b = vb::Val(search);
                order = a > b ? 1 : a < b ? -1 : 0;
            } else {
                order = vb::StrComp(vb::UCase(cell), vb::UCase(search), vb::Compare::Binary);
            }
            if (order > 0) {
                high = static_cast<std::int16_t>(mid - 1);
            } else if (order < 0) {
                low = static_cast<std::int16_t>(mid + 1);
            } else {
                // Go on looking above: the first of equal rows is the one wanted.
                hit = mid;
                high = static_cast<std::int16_t>(mid - 1);
            }
        }

        if (hit != 0) {
            flexMaster.setRow(hit);
            flexMaster.setCol(0);
            flexMaster.setColSel(flexMaster.Cols() - 1);
            flexMaster.setTopRow(flexMaster.Row());
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "searchtheword", e);
    }
}

} // namespace tqsv2731
