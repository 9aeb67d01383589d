// frmMaster: filling, colouring and naming the register's grid.
#include "module/register/frmMaster.h"

#include "ado/Recordset.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "services/CreateObject.h"
#include "services/clsGridColumnProfile.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Strings.h"

#include <cstdlib>

namespace tqsv2731 {

namespace {

/// The old arrays checked their bounds; so does this one.
double &at(std::vector<double> &lengths, int index) {
    if (index < 0 || index >= static_cast<int>(lengths.size())) {
        throw vb::Error::standard(vb::err::SubscriptOutOfRange);
    }
    return lengths[static_cast<std::size_t>(index)];
}

} // namespace

void frmMaster::GridPopulate(std::string_view strSql, std::string_view strTable,
                             std::string_view strSpare) {
    try {
        const std::string sql(strSql);
        const std::string table(strTable);
        const std::string spare(strSpare);

        flexMaster.Clear();
        flexMaster.setFixedRows(1);
        flexMaster.setFixedCols(0);
        flexMaster.setColWidth(0, 960);
        flexMaster.setCols(1);
        flexMaster.setRows(2);

        ado::Recordset rs;
        rs.Open(sql, m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        const int fieldCount = rs.Fields().Count();
        if (rs.RecordCount() > 0) {
            rs.MoveFirst();
        } else {
            flexMaster.setCols(fieldCount);
        }

        std::vector<double> lengths(static_cast<std::size_t>(fieldCount) + 1, 0.0);
        int row = 1;
        for (bool first = true; !rs.Eof(); first = false) {
            if (!first) {
                flexMaster.setRows(flexMaster.Rows() + 1);
                ++row;
            }
            for (int i = 0; i < fieldCount; ++i) {
                if (row == 1 && i > 0) {
                    flexMaster.setCols(flexMaster.Cols() + 1);
                }
                const std::string text = vb::TextOf(rs.Fields(i).Value());
                flexMaster.setTextMatrix(row, i, vb::Trim(text));
                flexMaster.setColAlignment(i, forms::flexAlignLeftTop);
                if (at(lengths, i) < vb::Len(text)) {
                    at(lengths, i) = static_cast<double>(vb::Len(text));
                }
            }
            rs.MoveNext();
        }

        GridColor();
        NameGrid(table, lengths);

        flexMaster.setColWidth(0, 0);
        rs.Close();
        flexMaster.setRow(flexMaster.Rows() - 1);
        flexMaster.setTopRow(flexMaster.Row());
        flexMaster.setCol(0);
        flexMaster.setColSel(flexMaster.Cols() - 1);
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "GridPopulate", e);
    }
}

void frmMaster::GridColor() {
    try {
        const int rows = flexMaster.Rows();
        for (int r = 1; r < rows; ++r) {
            if (flexMaster.TextMatrix(r, 4) != "Yes") {
                continue;
            }
            const int cols = flexMaster.Cols();
            for (int c = 0; c < cols; ++c) {
                flexMaster.setRow(r);
                flexMaster.setCol(c);
                flexMaster.setCellForeColor(255);
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "GridColor", e);
    }
}

void frmMaster::NameGrid(std::string_view strTable, std::vector<double> &lengths) {
    try {
        cboColNames.Clear();
        cboSearch.Clear();

        ado::Recordset rs;
        rs.Open("select tc.columnheader,tc.columnname from atables t,atablecolumns tc where "
                "t.tableid = tc.tableid and tablename ='" +
                    std::string(strTable) + "'",
                m_.adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        if (rs.RecordCount() > 0) {
            // The first row names the hidden id column.
            rs.MoveFirst();
            rs.MoveNext();
            for (int i = 1; !rs.Eof(); ++i) {
                const std::string header = vb::CStr(rs.Fields("columnheader").Value());
                flexMaster.setTextMatrix(0, i, header);
                cboColNames.AddItem(header);
                cboColNames.setItemData(cboColNames.NewIndex(), i);
                cboSearch.AddItem(header);
                cboSearch.setItemData(cboSearch.NewIndex(), i);
                if (at(lengths, i) < vb::Len(header)) {
                    at(lengths, i) = static_cast<double>(vb::Len(header));
                }
                rs.MoveNext();
            }
        }

        for (int i = 0; i < rs.RecordCount(); ++i) {
            const double width = at(lengths, i) * 130;
            if (width > flexMaster.ColWidth(i)) {
                flexMaster.setColWidth(i, vb::CLng(vb::Variant(width)));
            }
        }
        shareSpareWidth();
        rs.Close();

        // The user's saved arrangement has the last word over the computed widths.
        auto profile = services::CreateObject<GridColumnProfiles::clsGridColumnProfile>(
            "GridColumnProfiles.clsGridColumnProfile", m_.context());
        profile->fnGridSettings(vb::CInt(vb::Variant(m_.intUserID)),
                                vb::CInt(vb::Variant(m_.intCompanyID)), m_.frmMaster().flexMaster,
                                m_.adocon);

        flexMaster.setRow(flexMaster.Rows() - 1);
        flexMaster.setTopRow(flexMaster.Row());
        flexMaster.setCol(0);
        flexMaster.setColSel(flexMaster.Cols() - 1);
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "NameGrid", e);
    }
}

void frmMaster::shareSpareWidth() {
    const int cols = flexMaster.Cols();
    double total = 0;
    for (int c = 1; c < cols; ++c) {
        total += flexMaster.ColWidth(c);
    }
    if (flexMaster.Width() - 315 <= total) {
        return;
    }
    if (cols - 1 == 0) {
        throw vb::Error::standard(11); // Division by zero
    }
    const std::int16_t spare = vb::CInt(vb::Variant(flexMaster.Width() - total - 315));
    const std::int16_t share = vb::CInt(vb::Variant(static_cast<double>(spare) / (cols - 1)));
    for (int c = 1; c < cols; ++c) {
        flexMaster.setColWidth(c, flexMaster.ColWidth(c) + share);
    }
}

void frmMaster::flexMaster_SelChange() {
    const int selected = std::abs(flexMaster.RowSel() - flexMaster.Row());
    if (selected == 0 && flexMaster.CellForeColor() != forms::vbWindowText) {
        // A deleted row stays red while it is selected.
        flexMaster.setForeColorSel(flexMaster.CellForeColor());
    } else if (selected > 1) {
        flexMaster.setForeColorSel(0xFFFF00);
    } else {
        flexMaster.setForeColorSel(forms::vbHighlightText);
    }
}

} // namespace tqsv2731
