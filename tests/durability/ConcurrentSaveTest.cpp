// Several clerks saving into one godown at the same moment, each in a process of its own on
// one database, as terminals sharing the embedded database file or a server's database do.
#include "ClerkProcess.h"
#include "ClerkReport.h"
#include "DurabilityFolder.h"
#include "GodownBook.h"
#include "SharedDatabase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

namespace durability {
namespace {

constexpr int clerks = 4;
constexpr int entriesEach = 10;
/// Enough lines that a save's transaction stays open long after its header is written.
constexpr int rowsEach = 150;

class ConcurrentSaveTest : public ::testing::TestWithParam<Engine> {};

TEST_P(ConcurrentSaveTest, ClerksSavingIntoOneGodownAtOnceLoseNothingAndCountNothingTwice) {
    DurabilityFolder folder;
    const SharedDatabase shared(GetParam(), folder);
    if (!shared.available()) {
        GTEST_SKIP() << shared.whyNot();
    }
    const std::string &db = shared.db();
    std::int64_t before = 0;
    StockByItem stockBefore;
    {
        GodownBook book(db, 1);
        before = book.lastEntryId();
        stockBefore = book.stock();
    }

    // Each save starts while the one before it, another clerk's, holds its transaction
    // open after writing its header: the moment a reader must wait for the writer.
    std::vector<ClerkProcess> running;
    for (int c = 0; c < clerks; ++c) {
        const std::string name = "clerk" + std::to_string(c);
        running.emplace_back(
            folder.path(), name,
            std::vector<std::string>{db, (folder.path() / name).string(),
                                     std::to_string(entriesEach), std::to_string(rowsEach),
                                     std::to_string(c + 1), folder.path().string(),
                                     std::to_string(c), std::to_string(clerks)});
    }
    std::set<std::int64_t> reported;
    for (ClerkProcess &clerk : running) {
        EXPECT_EQ(clerk.wait(), 0) << clerk.errors();
        for (std::int64_t id : reportedIds(clerk.output(), "saved")) {
            EXPECT_TRUE(reported.insert(id).second) << "two clerks were told they saved " << id;
        }
    }
    EXPECT_EQ(reported.size(), static_cast<std::size_t>(clerks * entriesEach));

    // The saves did overlap: most began before the save ahead of them had committed. A
    // busy machine may let a few start late; none at all would prove nothing.
    std::vector<Transactions> traces;
    for (int c = 0; c < clerks; ++c) {
        traces.push_back(transactionsOf(folder.path() / ("clerk" + std::to_string(c) + ".trace")));
        ASSERT_EQ(traces.back().begun.size(), static_cast<std::size_t>(entriesEach));
        ASSERT_EQ(traces.back().ended.size(), static_cast<std::size_t>(entriesEach));
    }
    int overlapped = 0;
    for (int save = 1; save < clerks * entriesEach; ++save) {
        const int before = save - 1;
        overlapped += traces[save % clerks].begun[save / clerks] <
                      traces[before % clerks].ended[before / clerks];
    }
    EXPECT_GE(overlapped, clerks * entriesEach / 2);
    RecordProperty("overlapped", overlapped);

    GodownBook book(db, 1);
    EXPECT_EQ(book.integrity(), "ok");
    // Every entry whole: a header, its marker's row count, and exactly that many lines.
    const auto entries = book.entriesAfter(before);
    const auto lines = book.linesAfter(before);
    const auto trail = book.trailAfter(before);
    std::set<std::int64_t> stored;
    for (const auto &e : entries) {
        const std::int64_t id = std::stoll(e[0]);
        stored.insert(id);
        EXPECT_EQ(e[2], "on00150") << "entry " << id;
        EXPECT_EQ(lines.count(id) ? lines.at(id) : 0, rowsEach) << "entry " << id;
        EXPECT_EQ(trail.count(id) ? trail.at(id) : 0, 1) << "entry " << id;
    }
    EXPECT_EQ(stored, reported);
    EXPECT_EQ(lines.size(), entries.size()) << "lines stored under an entry that has no header";
    EXPECT_EQ(trail.size(), entries.size()) << "the trail records an entry that is not there";
    EXPECT_EQ(book.repeatedNumbers(), std::vector<std::string>{});
    // Each entry's count moved the stock once, to the thousandth.
    EXPECT_EQ(book.stock(), posted(stockBefore, book.countedChanges(before)));
}

INSTANTIATE_TEST_SUITE_P(Engines, ConcurrentSaveTest,
                         ::testing::Values(Engine::SQLite, Engine::PostgreSQL),
                         [](const auto &info) { return engineName(info.param); });

} // namespace
} // namespace durability
