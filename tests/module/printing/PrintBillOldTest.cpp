#include "SlipFixture.h"

#include "vb/Clock.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::SlipFixture;

class PrintBillOldTest : public ::testing::Test {
protected:
    PrintBillOldTest() { vb::setClock(vb::DateSerial(2026, 11, 22) + 0.5); }
    ~PrintBillOldTest() override { vb::setClock(std::nullopt); }

    void printOld(SlipFixture &fixture, std::int32_t id) {
        fixture.select(id);
        fixture.s.m.frmPrint().optScreen.setValue(true);
        fixture.s.forget();
        fixture.s.m.frmMaster().PrintBillOld(id);
    }

    SlipFixture f;
};

TEST_F(PrintBillOldTest, HasNoUnitColumnAndItsOwnStatement) {
    auto settings = test::exampleSettings();
    settings["printinsavedorder"] = "1";
    f.settings(settings);
    printOld(f, f.sampleEntry());
    const auto lines = f.slipLines();
    ASSERT_GE(lines.size(), 14u);
    // The unit's width is still taken from the description: 80 - 5 - 36 - 6.
    EXPECT_EQ(lines[9], "Sl.No Item Description" + std::string(17, ' ') +
                            "Avl Good  Vr Good  Avl Bad   Vr Bad");
    EXPECT_EQ(lines[11], "    1 Sample item" + std::string(21, ' ') +
                             "    5.000    4.000    0.000    1.000");
    bool sent = false;
    for (const std::string &sql : f.s.sent()) {
        sent |= sql.starts_with("select svhid,svhno,svhdate,svhverificationby,svhremarks, "
                                "vw.ItemDescription") &&
                sql.find(" loistockverificationdetail, aitem a, vwitemdescription vw where svhid "
                         "= svdid  and svhgodownid = svdgodownid and svditemid = a.itemid and "
                         "svhid=90 and a.itemid = vw.itemid and svhgodownid=1 group by "
                         "svhid,svhno,svhdate, svdid, svditemid, ") != std::string::npos &&
                sql.ends_with(" order by svdid, svditemid") && sql.find("aUnit") == std::string::npos;
    }
    EXPECT_TRUE(sent);
}

TEST_F(PrintBillOldTest, TheTotalCountTakesFourQuantitiesButNotTheUnitFromTheDescription) {
    SlipFixture total({.interfaceId = 1013});
    total.settings(test::exampleSettings());
    printOld(total, total.sampleEntry());
    const auto lines = total.slipLines();
    ASSERT_GE(lines.size(), 12u);
    // 80 - 5 - 36 leaves 39, with two quantity columns printed.
    EXPECT_EQ(lines[9], "Sl.No Item Description" + std::string(23, ' ') + "Avl Good  Vr Good");
}

TEST_F(PrintBillOldTest, ThePageBudgetLeavesTheHeaderOut) {
    // 20 lines less three rules and one: 16 rows, more than the five items
    // with footer and totals, though the header's eight lines took room.
    auto settings = test::exampleSettings();
    settings["internalprintnoofrecords"] = "20";
    f.settings(settings);
    printOld(f, 5);
    const auto lines = f.slipLines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "\f"), 0);

    // 12 lines leave 8: four rows with room for the totals is too few, and
    // without the footer on each page the page takes R - 1 = 4 rows.
    settings["internalprintnoofrecords"] = "12";
    f.settings(settings);
    printOld(f, 5);
    const auto paged = f.slipLines();
    const auto feed = std::find(paged.begin(), paged.end(), "\f");
    ASSERT_NE(feed, paged.end());
    EXPECT_EQ((feed - 2)->substr(0, 5), "    4");
}

} // namespace
} // namespace tqsv2731
