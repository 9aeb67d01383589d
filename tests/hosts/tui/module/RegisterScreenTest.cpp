#include "../ScriptedTerminal.h"

#include "hosts/tui/TuiHost.h"

#include "ado/Connection.h"
#include "forms/Utf8.h"
#include "hosts/tui/Palette.h"
#include "module/frame/clsStockVerification.h"
#include "module/records/DatabaseFile.h"
#include "services/Context.h"
#include "vb/Clock.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <unistd.h>

namespace tui::test {
namespace {

/// The demo company in a fresh file, and the module shown on a scripted terminal.
class DemoSession : public ::testing::Test {
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

    /// Shows the register of godown 1; the keys typed before are what the user
    /// does once it is drawn.
    void showRegister(int interfaceId) {
        services::Context context(host_.screen(), dir_ / "state");
        context.connection = connection_;
        context.companyId = 1;
        tqsv2731::clsStockVerification sv(context);
        sv.adocon = connection_;
        sv.strMsgboxCaption = "Stock Verification";
        sv.intCompanyID = 1;
        sv.intUserID = 1;
        sv.intGodownID = 1;
        sv.intInterfaceID = interfaceId;
        sv.dtProcessDate = vb::DateSerial(2026, 11, 22);
        sv.Show();
    }

    /// Shows the register, closes it with Alt+C, and returns the first frame
    /// drawn (the canvas keeps the last one, before the close).
    std::string firstRegisterFrame(int interfaceId) {
        terminal_.typeLater("\033c");
        showRegister(interfaceId);
        return terminal_.frames().at(0);
    }

    /// The style of the first cell of the canvas row that shows `text`.
    Style styleOf(const std::string &text) const {
        const Canvas &c = host_.canvas();
        for (int y = 0; y < c.height(); ++y) {
            auto at = c.row(y).find(text);
            if (at != std::string::npos) {
                int x = static_cast<int>(forms::utf8::length(c.row(y).substr(0, at)));
                return c.at(x, y).style;
            }
        }
        ADD_FAILURE() << text << " is not on the screen";
        return {};
    }

    std::filesystem::path dir_ =
        std::filesystem::temp_directory_path() / ("tui-register-" + std::to_string(::getpid()));
    ado::Connection connection_;
    ScriptedTerminal terminal_{100, 36};
    TuiHost host_{terminal_};
};

TEST_F(DemoSession, RegisterOfTheDemoGodown) {
    std::string frame = firstRegisterFrame(1005);
    EXPECT_EQ(frame, R"(

         ┌ Stock Verification ────────────────────────────────────────────────────────────┐
         │ ┌ Browse ────────────────────────────────────────────────────────────────────┐ │
         │ │(*) Ascending                       ▼ Search On:              ▼             │ │
         │ │( ) Descending                                                              │ │
         │ └────────────────────────────────────────────────────────────────────────────┘ │
         │ Verification No│Date      │Verified By│Deleted│Remarks                       │ │
         │ SVA2           │05/10/2026│SUNITA IYER│No     │Stationery and beverages recou│ │
         │ SVA3           │19/10/2026│RAHUL MEHTA│Yes    │Rice and paper spot check     │ │
         │ SVA4           │02/11/2026│SUNITA IYER│No     │Dairy and water monthly count │ │
         │ SVA5           │09/11/2026│RAHUL MEHTA│No     │Fast movers weekly count      │ │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │          [  New   ]  [  Edit  ]  [ Delete ]  [ Print  ]    [ Close  ]          │
         │                                                                                │
         │                                                                                │
         └────────────────────────────────────────────────────────────────────────────────┘




)");
    EXPECT_EQ(styleOf("SVA3").fg, Color::Red) << "a deleted entry";
    EXPECT_EQ(styleOf("SVA5"), styles::selection) << "the newest entry, selected";
    EXPECT_EQ(styleOf("SVA4"), styles::plain);
}

TEST_F(DemoSession, NewEntryFormOverTheRegister) {
    terminal_.typeLater("\033n"); // Alt+N: New
    terminal_.typeLater("\033c"); // Alt+C: the entry form's Close
    terminal_.typeLater("\033c"); // and the register's
    showRegister(1005);
    auto frames = terminal_.framesShowing("Godown Stock Verification");
    ASSERT_EQ(frames.size(), 1u);
    EXPECT_EQ(frames[0], R"(

         ┌ Godown Stock Verification ─────────────────────────────────────────────────────┐
         │ ┌────────────────────────────────────────────────────────────────────────────┐ │
         │ │No:                Date:  22/11/2026 Done by: RAHUL MEHTA                   │ │
         │ │Remarks:                                                                    │ │
         │ └────────────────────────────────────────────────────────────────────────────┘ │
         │                                                                                │
         │ SlNo │Item Code   │Item Description                       │Available GS│Verif│ │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │                                                                                │
         │ ┌ Browse ──────────────────────────────────────────────────────┐ [    OK    ]  │
         │ │(*) Ascending                  ▼ Search On:                  ▼│               │
         │ │( ) Descending                                                │ [  Close   ]  │
         │ └──────────────────────────────────────────────────────────────┘               │
         │                                                                                │
         │                                                                                │
         └────────────────────────────────────────────────────────────────────────────────┘




)");
}

} // namespace
} // namespace tui::test
