#include "EntrySession.h"

#include "ado/Recordset.h"
#include "forms/ListView.h"
#include "vb/Conversion.h"

namespace tqsv2731::test {

EntrySession::EntrySession(const SessionValues &values, const std::string &setupSql) : s(values) {
    if (!setupSql.empty()) {
        s.execute(setupSql);
    }
    s.m.frmMaster();
    s.m.strTransactionMode = "N";
    entry().txtdate.setText(vb::CStr(vb::Variant(s.m.dtProcessDate)));
    entry().txtRemarks.setText("");
}

void EntrySession::addRow(const std::vector<std::string> &cells) {
    forms::ListView &list = entry().lvwRequest;
    const std::string n = std::to_string(list.ListItems().Count() + 1);
    forms::ListItem &row = list.ListItems().Add(0, "", n);
    row.setSubItems(1, " ");
    row.setSubItems(2, "");
    for (std::size_t i = 0; i < cells.size(); ++i) {
        row.setSubItems(static_cast<int>(i) + 3, cells[i]);
    }
    row.setSubItems(9, n);
    row.setSubItems(10, "1");
    row.setSubItems(11, "1");
    row.setSubItems(12, "14.5");
    row.setSubItems(13, "PCS");
}

std::vector<std::vector<std::string>> EntrySession::rows(const std::string &sql) {
    std::vector<std::vector<std::string>> out;
    ado::Recordset rs;
    rs.Open(sql, s.connection);
    while (!rs.Eof()) {
        std::vector<std::string> row;
        for (int i = 0; i < rs.Fields().Count(); ++i) {
            const vb::Variant v = rs.Fields(i).Value();
            row.push_back(vb::IsNull(v) ? "NULL" : vb::CStr(v));
        }
        out.push_back(row);
        rs.MoveNext();
    }
    return out;
}

std::string EntrySession::value(const std::string &sql) {
    const auto r = rows(sql);
    return r.empty() || r[0].empty() ? "" : r[0][0];
}

} // namespace tqsv2731::test
