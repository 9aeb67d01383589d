#include "SlipFixture.h"

#include "forms/MsgBox.h"
#include "vb/Clock.h"
#include "vb/Strings.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::SlipFixture;

std::string golden(const std::string &name) {
    std::ifstream in(std::string(TEST_DATA_DIR) + "/" + name, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class PrintBillTest : public ::testing::Test {
protected:
    PrintBillTest() { vb::setClock(vb::DateSerial(2026, 11, 22) + vb::TimeSerial(9, 5, 7).serial); }
    ~PrintBillTest() override { vb::setClock(std::nullopt); }

    SlipFixture f;
};

TEST_F(PrintBillTest, TheWorkedExampleBodyComesOutByteForByte) {
    f.settings(test::exampleSettings());
    f.printToScreen(f.sampleEntry());

    const std::string slip = f.slip();
    const std::size_t body = slip.find("-----");
    ASSERT_NE(body, std::string::npos) << slip;
    const std::string expected = golden("worked_example_body.txt");
    EXPECT_EQ(slip.substr(body, expected.size()), expected);
    // After the totals: their empty line, then the footer's empty line and the
    // user's line, centred over the page.
    EXPECT_EQ(slip.substr(body + expected.size()),
              "\r\n\r\n                       RAHUL MEHTA - 22/11/2026 - 09:05:07\r\n");
    EXPECT_TRUE(f.s.ui.boxes().empty());
}

TEST_F(PrintBillTest, TheHeaderPutsNumberAndDateAtTheRightEdge) {
    auto settings = test::exampleSettings();
    settings["printtransnameabove"] = "1";
    settings["headerleftmargin"] = "2";
    settings["linetoskipfirst"] = "1";
    f.settings(settings);
    f.s.execute("update aGodown set Address = 'Plot 1\r\nPune' where GodownID = 1");
    f.printToScreen(f.sampleEntry());

    const auto lines = f.slipLines();
    ASSERT_GE(lines.size(), 12u);
    EXPECT_EQ(lines[0], "");
    EXPECT_EQ(lines[1], std::string(49, ' ') + "Stock Verification For Godown")
        << "the top title has no margin in front";
    EXPECT_EQ(lines[2], "  MAIN GODOWN");
    EXPECT_EQ(lines[3].size(), 80u) << lines[3];
    EXPECT_EQ(lines[3].substr(0, 13), "  Plot 1 Pune") << "the address is one line";
    EXPECT_EQ(lines[3].substr(43), "Verification No     : " + std::string(10, ' ') + "SVT90");
    EXPECT_EQ(lines[4].size(), 80u) << lines[4];
    EXPECT_EQ(lines[4].substr(43), "Verification Date   : " + std::string(5, ' ') + "21/11/2026");
    EXPECT_EQ(lines[5], "");
    EXPECT_EQ(lines[6], "  Remarks     :Test count");
    EXPECT_EQ(lines[7], "  Verified By :A CLERK");
    EXPECT_EQ(lines[8], "");
    EXPECT_EQ(lines[9], "");
    EXPECT_EQ(lines[10], std::string(80, '-'));
}

TEST_F(PrintBillTest, TheHeadLimitCutsTheHeaderAtExactlyItsCount) {
    auto settings = test::exampleSettings();
    settings["printtransnameabove"] = "1";
    settings["linetoskipfirst"] = "1";
    settings["totalheadcount"] = "2";
    f.settings(settings);
    f.printToScreen(f.sampleEntry());
    auto lines = f.slipLines();
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[0], "");
    EXPECT_EQ(lines[1].substr(51), "Stock Verification For Godown");
    EXPECT_EQ(lines[2], std::string(80, '-')) << "the header ends at its second line";

    // Two blank lines reach the limit and the title, written without a head
    // check, passes it: no later check finds the count equal to the limit.
    settings["linetoskipfirst"] = "2";
    f.settings(settings);
    f.printToScreen(90);
    lines = f.slipLines();
    ASSERT_GE(lines.size(), 4u);
    EXPECT_EQ(lines[2].substr(51), "Stock Verification For Godown");
    EXPECT_EQ(lines[3], "MAIN GODOWN") << "so the whole header follows";
}

TEST_F(PrintBillTest, PaddingFillsTheHeaderUpToItsLimit) {
    auto settings = test::exampleSettings();
    settings["linesafterheader"] = "1";
    settings["totalheadcount"] = "12";
    f.settings(settings);
    f.printToScreen(f.sampleEntry());
    const auto lines = f.slipLines();
    ASSERT_GE(lines.size(), 13u);
    EXPECT_EQ(lines[11], "");
    EXPECT_EQ(lines[12], std::string(80, '-'));
}

TEST_F(PrintBillTest, TotalInterfaceCentresItsTitleAndDropsTheBadStock) {
    SlipFixture total({.interfaceId = 1013});
    auto settings = test::exampleSettings();
    settings["printtransnameabove"] = "1";
    total.settings(settings);
    total.printToScreen(total.sampleEntry());
    const auto lines = total.slipLines();
    ASSERT_GE(lines.size(), 13u);
    // (80 - 25) / 2 is 27.5, which rounds to the even 28: 27 blanks in front.
    EXPECT_EQ(lines[0], std::string(27, ' ') + "Godown Stock Verification" + std::string(28, ' '));
    EXPECT_EQ(lines[10], "Sl.No Item Description" + std::string(35, ' ') +
                             "Avl Good  Vr Good  Unit");
    EXPECT_EQ(lines[12], "    1 Sample item" + std::string(43, ' ') + "5.000    4.000   Nos");
}

TEST_F(PrintBillTest, CostsAddTwoColumnsAndTheirTotal) {
    auto settings = test::exampleSettings();
    settings["showcostintrans"] = "1";
    settings["showitemcodeinprint"] = "1";
    f.settings(settings);
    f.s.ui.queueAnswer(forms::vbOK);
    f.printToScreen(f.sampleEntry());
    // The failure leaves the slip's channel open: the next print fails on the open.
    EXPECT_THROW(vb::FileOpen(1, f.slipFile().string(), vb::FileMode::Output), vb::Error);
    vb::FileClose(1);
    const auto lines = f.slipLines();
    ASSERT_EQ(lines.size(), 11u) << "the header, the headings between rules, and no row";
    // 80 - 5 - 6 - 36 - 15 - 9 - 11 leaves the description -2: its heading
    // loses its padding, and the left-cut of the row fails.
    EXPECT_EQ(lines[9], "Sl.No Item Code      Item Description Avl Good  Vr Good  Avl Bad   Vr Bad  "
                        "Unit  Cost Pr Total Cost");
    ASSERT_EQ(f.s.faultLog().size(), 1u);
    EXPECT_NE(f.s.faultLog()[0].find("PrintBill"), std::string::npos);
}

TEST_F(PrintBillTest, CostTotalsStandAtTheirFixedOffsets) {
    auto settings = test::exampleSettings();
    settings["showcostintrans"] = "1";
    settings["pagewidth"] = "100";
    f.settings(settings);
    f.printToScreen(f.sampleEntry());
    const auto lines = f.slipLines();
    ASSERT_GE(lines.size(), 15u);
    // Description 100 - 5 - 6 - 36 - 9 - 11 = 33.
    EXPECT_EQ(lines[11], "    1 Sample item" + std::string(21, ' ') +
                             "    5.000    4.000    0.000    1.000   Nos     2.50      10.00");
    EXPECT_EQ(lines[13], std::string(24, ' ') + "Grand Total:      5.000          4.000" +
                             std::string(33, ' ') + "10.00");

    settings["showtotalqty"] = "0";
    f.settings(settings);
    f.printToScreen(90);
    const auto cost = f.slipLines();
    EXPECT_EQ(cost[13], std::string(83, ' ') + "Grand Total:10.00");
}

TEST_F(PrintBillTest, RuleLinesFollowSpaceInLineCode) {
    auto settings = test::exampleSettings();
    settings["spaceinlinecode"] = "1";
    f.settings(settings);
    f.printToScreen(f.sampleEntry());
    std::string rule = "-";
    for (int i = 1; i < 40; ++i) {
        rule += " -";
    }
    EXPECT_EQ(f.slipLines()[8], rule) << "80 / 2 dashes with a blank between";

    settings["spaceinlinecode"] = "200";
    f.settings(settings);
    f.printToScreen(90);
    EXPECT_EQ(f.slipLines()[8], "") << "a rule of one dash is dropped";
}

TEST_F(PrintBillTest, RowOrderFollowsPrintInSavedOrder) {
    // Saved as items 10, 1, 9; their ids run 1, 9, 10.
    f.entryWith({{10, "1", "1", "0", "0"}, {1, "2", "2", "0", "0"}, {9, "3", "3", "0", "0"}});
    auto settings = test::exampleSettings();
    auto itemsOf = [&] {
        std::vector<std::string> items;
        for (const std::string &line : f.slipLines()) {
            if (line.rfind("    ", 0) == 0 && line.size() > 6 && line[4] != ' ') {
                items.push_back(vb::Trim(line.substr(6, 33)));
            }
        }
        return items;
    };
    auto sentEndsWith = [&](const std::string &tail) {
        for (const std::string &sql : f.s.sent()) {
            if (sql.ends_with(tail)) {
                return true;
            }
        }
        return false;
    };

    settings["printinsavedorder"] = "1";
    f.settings(settings);
    f.s.forget();
    f.printToScreen(90);
    EXPECT_EQ(itemsOf(), (std::vector<std::string>{"BASMATI RICE 5KG",
                                                    "Ball Point Pen Blue box of 10", "COLA CAN"}));
    EXPECT_TRUE(sentEndsWith("svhverificationby,svhremarks  order by svdid, svdItemId"));

    for (const char *none : {"0", "7"}) {
        settings["printinsavedorder"] = none;
        f.settings(settings);
        f.s.forget();
        f.printToScreen(90);
        EXPECT_TRUE(sentEndsWith("svhverificationby,svhremarks ")) << none << " adds no order";
    }

    // The description order names the item table's own description column.
    settings["printinsavedorder"] = "2";
    f.settings(settings);
    f.s.forget();
    f.s.ui.queueAnswer(forms::vbOK);
    f.printToScreen(90);
    EXPECT_TRUE(sentEndsWith("svhverificationby,svhremarks  order by a.itemdescription"));
}

TEST_F(PrintBillTest, OneRowTooManyForThePageKeepsItsLastRowBack) {
    // The entry of five items; a header of 8 lines and three rules leave
    // 20 - 12 = 8 rows, less the footer and totals: 4, one short of 5.
    auto settings = test::exampleSettings();
    settings["internalprintnoofrecords"] = "21";
    f.settings(settings);
    f.printToScreen(5);
    auto lines = f.slipLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "\f"), 0) << "21 lines hold it all";
    EXPECT_EQ(lines.size(), 8u + 3 + 5 + 1 + 2 + 2);

    settings["internalprintnoofrecords"] = "20";
    f.settings(settings);
    f.printToScreen(5);
    lines = f.slipLines();
    ASSERT_EQ(lines.size(), 8u + 3 + 4 + 1 + 1 + 3 + 1 + 1 + 2 + 2);
    EXPECT_EQ(lines[14].substr(0, 5), "    4");
    EXPECT_EQ(lines[15], std::string(80, '-'));
    EXPECT_EQ(lines[16], "\f");
    EXPECT_EQ(lines[18].substr(0, 5), "Sl.No") << "the next page opens with the headings";
    EXPECT_EQ(lines[20].substr(0, 5), "    5");
    EXPECT_EQ(lines[22].find("Grand Total:"), 24u);

    settings["printfooterineachpage"] = "1";
    f.settings(settings);
    f.printToScreen(5);
    lines = f.slipLines();
    ASSERT_EQ(lines.size(), 8u + 3 + 4 + 1 + 2 + 1 + 3 + 1 + 1 + 2 + 2);
    EXPECT_EQ(lines[16], "");
    EXPECT_EQ(vb::Trim(lines[17]).rfind("RAHUL MEHTA - ", 0), 0u) << "a footer closes the page";
    EXPECT_EQ(lines[18], "\f");
    EXPECT_EQ(vb::Trim(lines.back()).rfind("RAHUL MEHTA - ", 0), 0u) << "and the last its own";
}

} // namespace
} // namespace tqsv2731
