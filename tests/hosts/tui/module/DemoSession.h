// The demo company in a fresh file and the module shown on a scripted terminal, for the
// screen tests of the real forms.
#pragma once

#include "../ScriptedTerminal.h"

#include "hosts/tui/TuiHost.h"

#include "ado/Connection.h"
#include "module/frame/clsStockVerification.h"
#include "module/records/DatabaseFile.h"
#include "services/Context.h"
#include "vb/Clock.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

namespace tui::test {

/// The terminal host, with the prompts of the message boxes it showed kept.
class RecordingHost : public TuiHost {
public:
    using TuiHost::TuiHost;
    int msgBox(std::string_view prompt, int buttons, std::string_view title) override {
        prompts.emplace_back(prompt);
        return TuiHost::msgBox(prompt, buttons, title);
    }
    std::vector<std::string> prompts;
};

/// A demo database of `items` items dated 2026-11-22, the clock on that day,
/// and the register of godown 1 shown on a 100 x 36 terminal (resize it first
/// for another size). The keys typed before `showRegister` are what the user
/// does once it is drawn.
class DemoSession : public ::testing::Test {
protected:
    void SetUp() override { makeDemo(20); }
    void TearDown() override {
        sv_.reset();
        vb::setClock(std::nullopt);
        connection_.Close();
        std::filesystem::remove_all(dir_);
    }

    void makeDemo(int items) {
        if (connection_.State() != 0) {
            connection_.Close();
        }
        std::filesystem::remove_all(dir_);
        std::filesystem::create_directories(dir_);
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        options.demo->items = items;
        records::createDatabaseFile(dir_ / "demo.db", options);
        connection_.Open("sqlite:" + (dir_ / "demo.db").string());
        vb::setClock(vb::DateSerial(2026, 11, 22) + 10.0 / 24);
        vb::setShortDateFormat("dd/mm/yyyy");
    }

    void showRegister(int interfaceId = 1005) {
        sv_.reset();
        services::Context context(host_.screen(), dir_ / "state");
        context.connection = connection_;
        context.companyId = 1;
        sv_.emplace(context);
        tqsv2731::clsStockVerification &sv = *sv_;
        sv.adocon = connection_;
        sv.strMsgboxCaption = "Stock Verification";
        sv.intCompanyID = 1;
        sv.intUserID = 1;
        sv.intGodownID = 1;
        sv.intInterfaceID = interfaceId;
        sv.dtProcessDate = vb::DateSerial(2026, 11, 22);
        sv.Show();
    }

    /// The module of the last showRegister; its forms stay as the session
    /// left them when the script ran out (SessionEnded) before they closed.
    tqsv2731::Module &module() { return sv_->module(); }

    std::filesystem::path dir_ =
        std::filesystem::temp_directory_path() / ("tui-demo-" + std::to_string(::getpid()));
    ado::Connection connection_;
    ScriptedTerminal terminal_{100, 36};
    RecordingHost host_{terminal_};
    // After the host: its forms stand on the host's screen.
    std::optional<tqsv2731::clsStockVerification> sv_;
};

} // namespace tui::test
