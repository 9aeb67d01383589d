#include "../ScriptedTerminal.h"

#include "hosts/tui/TuiHost.h"

#include "ado/Connection.h"
#include "module/frame/clsStockVerification.h"
#include "module/records/DatabaseFile.h"
#include "services/Context.h"
#include "vb/Clock.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace tui::test {
namespace {

class ScreenSizes : public ::testing::TestWithParam<std::pair<int, int>> {
protected:
    void SetUp() override {
        std::filesystem::create_directories(dir_);
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        options.demo->items = 20;
        records::createDatabaseFile(dir_ / "demo.db", options);
        connection_.Open("sqlite:" + (dir_ / "demo.db").string());
        vb::setClock(vb::DateSerial(2026, 11, 22) + 10.0 / 24);
        vb::setShortDateFormat("dd/mm/yyyy");
    }
    void TearDown() override {
        vb::setClock(std::nullopt);
        connection_.Close();
        std::filesystem::remove_all(dir_);
    }
    void showRegister() {
        services::Context context(host_.screen(), dir_ / "state");
        context.connection = connection_;
        context.companyId = 1;
        tqsv2731::clsStockVerification sv(context);
        sv.adocon = connection_;
        sv.strMsgboxCaption = "Stock Verification";
        sv.intCompanyID = 1;
        sv.intUserID = 1;
        sv.intGodownID = 1;
        sv.intInterfaceID = 1005;
        sv.dtProcessDate = vb::DateSerial(2026, 11, 22);
        sv.Show();
    }
    std::filesystem::path dir_ =
        std::filesystem::temp_directory_path() / ("tui-sizes-" + std::to_string(::getpid()));
    ado::Connection connection_;
    ScriptedTerminal terminal_{GetParam().first, GetParam().second};
    TuiHost host_{terminal_};
};

TEST_P(ScreenSizes, Dump) {
    terminal_.typeLater("\033n");
    terminal_.typeLater("\x04\n");
    terminal_.typeLater("8900000000111\r");
    terminal_.typeLater("8900000001019\r");
    terminal_.typeLater("\033c");
    terminal_.typeLater("\033c");
    terminal_.typeLater("\033c");
    terminal_.typeLater("\033y");
    terminal_.typeLater("\033c");
    try { showRegister(); } catch (...) {}
    std::ofstream out("/tmp/tv/" + std::to_string(GetParam().first) + ".txt");
    for (auto &f : terminal_.frames()) out << f << "\n=========\n";
}

INSTANTIATE_TEST_SUITE_P(Sizes, ScreenSizes,
                         ::testing::Values(std::pair{80, 24}, std::pair{120, 40}));

} // namespace
} // namespace tui::test
