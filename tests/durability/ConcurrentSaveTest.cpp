// Several clerks saving into one godown at the same moment, each in a process of its own on
// one database file, as terminals sharing the embedded database do.
#include "ClerkProcess.h"
#include "GodownBook.h"
#include "DurabilityFolder.h"

#include <gtest/gtest.h>

#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace durability {
namespace {

constexpr int clerks = 4;
constexpr int entriesEach = 10;
constexpr int rowsEach = 6;

/// The svhid of every "saved" line a clerk printed.
std::vector<std::int64_t> savedIds(const std::string &output) {
    std::vector<std::int64_t> ids;
    std::istringstream in(output);
    for (std::string word; in >> word;) {
        if (word == "saved") {
            std::int64_t id = 0;
            in >> id;
            ids.push_back(id);
        }
    }
    return ids;
}

TEST(ConcurrentSaveTest, ClerksSavingIntoOneGodownAtOnceLoseNothingAndCountNothingTwice) {
    DurabilityFolder folder;
    const auto db = folder.demoDatabase("shared.db");
    std::int64_t before = 0;
    StockByItem stockBefore;
    {
        GodownBook book(db, 1);
        before = book.lastEntryId();
        stockBefore = book.stock();
    }

    std::vector<ClerkProcess> running;
    for (int c = 1; c <= clerks; ++c) {
        const std::string name = "clerk" + std::to_string(c);
        running.emplace_back(folder.path(), name,
                             std::vector<std::string>{db.string(), (folder.path() / name).string(),
                                                      std::to_string(entriesEach),
                                                      std::to_string(rowsEach),
                                                      std::to_string(c)});
    }
    std::set<std::int64_t> reported;
    for (ClerkProcess &clerk : running) {
        EXPECT_EQ(clerk.wait(), 0) << clerk.errors();
        for (std::int64_t id : savedIds(clerk.output())) {
            EXPECT_TRUE(reported.insert(id).second) << "two clerks were told they saved " << id;
        }
    }
    EXPECT_EQ(reported.size(), static_cast<std::size_t>(clerks * entriesEach));

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
        EXPECT_EQ(e[2], "on00006") << "entry " << id;
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

} // namespace
} // namespace durability
