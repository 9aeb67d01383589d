// The grid and list routines of basStockVerification: the register's row refresh, list layouts.
#include "module/frame/basStockVerification.h"

#include "ado/Recordset.h"
#include "forms/ColumnHeader.h"
#include "forms/FlexGrid.h"
#include "forms/ListView.h"
#include "module/frame/Module.h"
#include "module/register/frmMaster.h"
#include "vb/Conversion.h"
#include "vb/Format.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

/// The register's statement without its order clause, narrowed by the criterion.
std::string registerRowStatement(const std::string &registerSql, std::string_view criterion) {
    std::string sql = registerSql;
    const long orderBy = vb::InStr(1, sql, "order by", vb::Compare::Text);
    if (orderBy > 0) {
        sql = vb::Left(sql, orderBy - 1);
    }
    sql += vb::InStr(1, sql, "where", vb::Compare::Text) > 0 ? " and " : " where ";
    return sql + std::string(criterion);
}

std::string fieldText(const ado::Recordset &rs, int index) {
    return vb::TextOf(rs.Fields(index).Value());
}

} // namespace

void UpdateEditedRow(Module &m, std::string_view criterion, std::int32_t id) {
    forms::FlexGrid &grid = m.frmMaster().flexMaster;
    const int cols = grid.Cols();

    ado::Recordset rs;
    rs.Open(registerRowStatement(m.strRegisterSql, criterion), m.adocon, ado::adOpenKeyset,
            ado::adLockReadOnly);
    if (rs.Eof()) {
        rs.Close();
        return;
    }

    if (m.strTransactionMode == "E") {
        for (int c = 1; c < cols; ++c) {
            grid.setTextMatrix(grid.Row(), c, fieldText(rs, c));
        }
    } else if (grid.TextMatrix(1, 0).empty() && grid.Rows() == 2) {
        // The grid still stands in its empty state: its blank row takes the entry.
        for (int c = 0; c < cols; ++c) {
            grid.setTextMatrix(1, c, fieldText(rs, c));
        }
    } else {
        std::string item = std::to_string(id);
        for (int c = 1; c < cols; ++c) {
            item += "\t" + fieldText(rs, c);
        }
        grid.AddItem(item);
        grid.setRow(grid.Rows() - 1);
        grid.setTopRow(grid.Row());
        grid.setCol(0);
        grid.setColSel(grid.Cols() - 1);
    }
    rs.Close();
}

void ApplyListViewLayout(Module &m, std::string_view strTransName, forms::ListView &lvw,
                         std::string_view strModuleName) {
    const std::string sql =
        "select * from alistviewdetails where lvwdid=(select lvwid from alistviewheader where   "
        "ltrim(rtrim(upper(lvwtransname)))='" +
        vb::Trim(strTransName) + "' and ltrim(rtrim(upper(lvwname)))='" +
        vb::UCase(vb::Trim(lvw.Name())) + "' and ltrim(rtrim(upper(lvwmodulename)))='" +
        vb::UCase(vb::Trim(strModuleName)) + "')";
    ado::Recordset rs;
    rs.Open(sql, m.adocon);
    while (!rs.Eof()) {
        const int column = vb::CLng(vb::Variant(vb::Val(rs.Fields("lvwcolid").Value())));
        forms::ColumnHeader &header = lvw.ColumnHeaders()(column);
        header.setWidth(vb::CLng(rs.Fields("lvwdcolwidth").Value()));
        header.setAlignment(vb::CLng(rs.Fields("lvwdcolalign").Value()));
        rs.MoveNext();
    }
    rs.Close();
}

void FormatListViewColumns(forms::ListView &lvw, const std::vector<vb::Variant> &map) {
    auto &items = lvw.ListItems();
    if (items.Count() == 0) {
        return;
    }
    for (const vb::Variant &entry : map) {
        const std::string text = vb::CStr(entry);
        const int column = static_cast<int>(vb::Val(vb::Left(text, 1)));
        const double decimals = vb::Val(vb::Right(text, 1));
        std::string pattern;
        if (decimals == 2) {
            pattern = "##0.00";
        } else if (decimals == 3) {
            pattern = "##0.000";
        } else {
            continue;
        }
        for (int i = 1; i <= items.Count(); ++i) {
            forms::ListItem &item = items(i);
            if (column == 0) {
                item.setText(vb::Format(vb::Variant(item.Text()), pattern));
            } else {
                item.setSubItems(column, vb::Format(vb::Variant(item.SubItems(column)), pattern));
            }
        }
    }
}

void RemoveGridRows(forms::FlexGrid &grid, std::int16_t col, std::string_view key) {
    for (int r = grid.Rows() - 1; r >= 1; --r) {
        if (grid.TextMatrix(r, col) == key) {
            grid.RemoveItem(r);
        }
    }
}

} // namespace tqsv2731
