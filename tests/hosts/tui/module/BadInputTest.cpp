#include "DemoSession.h"

#include "hosts/tui/SessionEnded.h"

#include "module/detail/frmStockVerificationDetail.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/records/DemoItem.h"

#include <algorithm>

namespace tui::test {
namespace {

constexpr const char *OpenNewLine = "\x04\n"; // Ctrl+D, Ctrl+Enter: the detail form for a new row

/// The first `n` demo items that a packing barcode brings into godown 1 at
/// once: the item is active, carried by the godown, its barcode active.
std::vector<std::string> scannableBarcodes(int n) {
    std::vector<std::string> out;
    for (int id = 1; static_cast<int>(out.size()) < n; ++id) {
        records::DemoItem item = records::demoItem(id);
        bool inGodown =
            std::find(item.godowns.begin(), item.godowns.end(), 1) != item.godowns.end();
        if (item.active && inGodown && !item.barcodes.empty() && item.barcodes[0].active) {
            out.push_back(item.barcodes[0].code);
        }
    }
    return out;
}

class BadInput : public DemoSession {
protected:
    /// Runs the register until the script runs out; the forms stay as they were.
    void runUntilTheScriptEnds() { EXPECT_THROW(showRegister(), SessionEnded); }

    forms::ListView &entryList() { return module().frmStockVerification().lvwRequest; }
};

TEST_F(BadInput, AScannerBurstOfAHundredScansMakesAHundredRowsInOrder) {
    makeDemo(170);
    auto codes = scannableBarcodes(100);
    // 100 scans in one read, as fast as a scanner sends them, then the first
    // once more: refused with a message box, which the Enter after it answers.
    std::string burst;
    for (const std::string &code : codes) {
        burst += code + "\r";
    }
    burst += codes.front() + "\r\r";
    terminal_.typeLater("\033n");
    terminal_.typeLater(OpenNewLine);
    terminal_.typeLater(burst);
    runUntilTheScriptEnds();

    forms::ListView &list = entryList();
    ASSERT_EQ(list.ListItems().Count(), 100);
    for (int i = 1; i <= 100; ++i) {
        // In the order scanned: the barcode's item id is in sub-item 8.
        std::string id = codes[static_cast<std::size_t>(i - 1)].substr(3, 9);
        id = std::to_string(std::stoi(id) / 10);
        EXPECT_EQ(list.ListItems()(i).SubItems(8), id) << "row " << i;
        EXPECT_EQ(list.ListItems()(i).Text(), std::to_string(i));
    }
    EXPECT_EQ(host_.prompts, (std::vector<std::string>{"Item already added"}));
    // One frame once the whole burst was handled, none while it was.
    EXPECT_EQ(terminal_.frames().size() - terminal_.framesAtWait().back(), 1u);
}

TEST_F(BadInput, APasteOfTenThousandCharactersReachesTheBarcodeBoxWhole) {
    std::string paste(10000, '7');
    paste[0] = '1';
    paste.back() = '9';
    terminal_.typeLater("\033n");
    terminal_.typeLater(OpenNewLine);
    terminal_.typeLater(paste);
    runUntilTheScriptEnds();
    EXPECT_EQ(module().frmStockVerificationDetail().txtBarcode.Text(), paste);
    // The box shows the end of it, where the caret is.
    EXPECT_NE(terminal_.lastFrame().find("777779"), std::string::npos) << terminal_.lastFrame();
}

TEST_F(BadInput, AResizeBelowTheSmallestSizeAndBackInTheMiddleOfAMessageBox) {
    terminal_.typeLater("\033n");
    terminal_.typeLater("\033o"); // OK on an empty entry: "Atleast one detail needed"
    terminal_.resizeLater(20, 5);
    terminal_.resizeLater(100, 36);
    terminal_.typeLater("\r");    // the box is answered after all
    terminal_.typeLater("\033c"); // the entry closes (nothing was added: no question)
    terminal_.typeLater("\033c"); // and the register
    showRegister();
    const auto &seen = terminal_.waitFrames();
    ASSERT_EQ(seen.size(), 7u);
    EXPECT_NE(seen[2].find("Atleast one detail needed"), std::string::npos);
    EXPECT_EQ(seen[3], "\nterminal too small:\n    need 74 x 15\n\n\n");
    EXPECT_EQ(seen[4], seen[2]) << "the same screen once the terminal has grown back";
    EXPECT_EQ(seen[5].find("Atleast one detail needed"), std::string::npos);
    EXPECT_NE(seen[5].find("Godown Stock Verification"), std::string::npos);
    EXPECT_EQ(host_.prompts, (std::vector<std::string>{"Atleast one detail needed"}));
}

} // namespace
} // namespace tui::test
