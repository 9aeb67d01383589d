#include "DemoSession.h"

#include <cstdlib>
#include <fstream>
#include <sstream>

namespace tui::test {
namespace {

/// The screens a clerk sees on the road of a new entry, at the smallest
/// terminal the forms are made for and at a roomy one, compared with the
/// files in golden/ (STOCKVERIFY_UPDATE_GOLDEN=1 rewrites them).
class GoldenScreens : public DemoSession,
                      public ::testing::WithParamInterface<std::pair<int, int>> {
protected:
    std::string sizeName() const {
        return std::to_string(GetParam().first) + "x" + std::to_string(GetParam().second);
    }

    void expectGolden(const std::string &screen, const std::string &frame) {
        std::string path = std::string(TUI_GOLDEN_DIR) + "/" + screen + "-" + sizeName() + ".txt";
        if (std::getenv("STOCKVERIFY_UPDATE_GOLDEN")) {
            std::ofstream(path, std::ios::binary) << frame;
            return;
        }
        std::ifstream in(path, std::ios::binary);
        ASSERT_TRUE(in) << "no golden screen " << path;
        std::stringstream golden;
        golden << in.rdbuf();
        EXPECT_EQ(frame, golden.str()) << screen << " at " << sizeName();
    }
};

TEST_P(GoldenScreens, RegisterEntryWithAWideListAndDetail) {
    terminal_.resize(GetParam().first, GetParam().second);
    terminal_.typeLater("\033n");              // 0 the register: Alt+N, New
    terminal_.typeLater("\x04\n");             // 1 the empty entry: Ctrl+D, Ctrl+Enter
    terminal_.typeLater("8900000000111\r");    // 2 the detail form: a packing barcode
    terminal_.typeLater("8900000001019\r");    // 3 and another
    terminal_.typeLater("\033c");              // 4 the detail form closes: Alt+C
    terminal_.typeLater("\x1b[C\x1b[C\x1b[C"); // 5 the list, three columns to the right
    terminal_.typeLater("\x1b[C\x1b[C\x1b[C"); // 6 three more
    terminal_.typeLater("\033c");              // 7 the entry closes
    terminal_.typeLater("n");                  // 8 "Save Changes?" No
    terminal_.typeLater("\033c");              // 9 the register closes
    showRegister();
    const auto &seen = terminal_.waitFrames();
    ASSERT_EQ(seen.size(), 10u);
    expectGolden("register", seen[0]);
    expectGolden("detail", seen[3]);
    expectGolden("entry-list", seen[5]);
    expectGolden("entry-list-scrolled", seen[7]);
}

INSTANTIATE_TEST_SUITE_P(Terminal, GoldenScreens,
                         ::testing::Values(std::pair{80, 24}, std::pair{120, 40}),
                         [](const auto &info) {
                             return std::to_string(info.param.first) + "x" +
                                    std::to_string(info.param.second);
                         });

} // namespace
} // namespace tui::test
