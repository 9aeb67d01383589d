// Helpers for the register's tests: the module session, the loaded register, the grid as text.
#pragma once

#include "frame/ModuleSession.h"

#include "forms/Input.h"
#include "module/register/frmMaster.h"

#include <functional>
#include <string>
#include <vector>

namespace tqsv2731::test {

/// The grid's rows as texts, cells joined by "|", the header row first.
inline std::vector<std::string> gridRows(const forms::FlexGrid &g) {
    std::vector<std::string> rows;
    for (int r = 0; r < g.Rows(); ++r) {
        std::string row;
        for (int c = 0; c < g.Cols(); ++c) {
            row += (c ? "|" : "") + g.TextMatrix(r, c);
        }
        rows.push_back(row);
    }
    return rows;
}

/// The statements that the module itself sent, without those of the services
/// it called (palette and grid profile reads).
inline std::vector<std::string> moduleStatements(const ModuleSession &s) {
    std::vector<std::string> out;
    for (const std::string &sql : s.sent()) {
        if (sql.find("aScreenPalette") == std::string::npos &&
            sql.find("aGridColumnProfile") == std::string::npos) {
            out.push_back(sql);
        }
    }
    return out;
}

/// Shows the register modally, runs `whileShown` as the user's first action
/// (the form is loaded and activated by then), and closes it with its close box.
inline void showRegister(ModuleSession &s,
                         const std::function<void(frmMaster &, forms::Input &)> &whileShown) {
    frmMaster &f = s.m.frmMaster();
    s.ui.queueAction([&](forms::Input &input) {
        whileShown(f, input);
        if (f.Visible()) {
            input.closeForm(f);
        }
    });
    f.Show(forms::vbModal);
}

} // namespace tqsv2731::test
