#include "frame/ModuleSession.h"
#include "module/register/frmMaster.h"
#include <gtest/gtest.h>
#include <iostream>
using namespace tqsv2731;
TEST(Explore, Load) {
    test::ModuleSession s;
    s.ui.queueAnswer(1);
    s.ui.queueAnswer(1);
    auto &f = s.m.frmMaster();
    for (auto &b : s.ui.boxes()) std::cout << "BOX " << b.prompt << "\n";
    auto &g = f.flexMaster;
    for (int r = 0; r < g.Rows(); ++r) { for (int c = 0; c < g.Cols(); ++c) std::cout << g.TextMatrix(r,c) << "|"; std::cout << "\n"; }
    for (int c = 0; c < g.Cols(); ++c) std::cout << g.ColWidth(c) << " "; std::cout << "\n";
    for (auto &x : s.sentHow()) std::cout << x << "\n";
    for (auto &x : s.sent()) std::cout << x << "\n";
    std::cout << f.cmdnew.Enabled() << f.CmdEdit.Enabled() << f.CmdDelete.Enabled() << f.cmdPreview.Enabled() << "\n";
    for (auto &x : s.faultLog()) std::cout << x << "\n";
}
