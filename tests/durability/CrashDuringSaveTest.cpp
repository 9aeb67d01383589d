// A clerk's process killed at random moments of a large save: on reopening, the file is
// sound and holds the whole entry or nothing of it.
#include "ClerkProcess.h"
#include "DurabilityFolder.h"
#include "GodownBook.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <thread>

namespace durability {
namespace {

constexpr int rows = 1500;
constexpr int kills = 8;

std::vector<std::string> clerkArgs(const std::filesystem::path &db,
                                   const std::filesystem::path &state, int seed) {
    return {db.string(), state.string(), "1", std::to_string(rows), std::to_string(seed)};
}

TEST(CrashDuringSaveTest, AKilledSaveLeavesASoundFileWithTheWholeEntryOrNoneOfIt) {
    DurabilityFolder folder;
    std::int64_t before = 0;
    StockByItem stockBefore;
    {
        GodownBook book(folder.demoDatabase("probe.db"), 1);
        before = book.lastEntryId();
        stockBefore = book.stock();
    }

    // How long one whole save takes on this machine, from OK to the end of the process,
    // so that the kills fall across all of it (sanitizer builds run many times slower).
    const auto probeDb = folder.demoDatabase("probe.db");
    ClerkProcess probe(folder.path(), "probe", clerkArgs(probeDb, folder.path() / "probe", 0));
    ASSERT_TRUE(probe.waitForLine("saving 1")) << probe.errors();
    const auto started = std::chrono::steady_clock::now();
    ASSERT_EQ(probe.wait(), 0) << probe.errors();
    const auto saveTime = std::chrono::steady_clock::now() - started;

    std::mt19937 random(std::random_device{}());
    // The probe's time is only a guess of the next saves' (the machine may have been busy
    // then and idle now): each kill that came after the commit halves the window, so that
    // later kills fall ever earlier in the save.
    long long window = std::chrono::duration_cast<std::chrono::microseconds>(saveTime).count();
    int killedBeforeCommit = 0;
    for (int k = 1; k <= kills; ++k) {
        SCOPED_TRACE("kill " + std::to_string(k));
        const auto db = folder.demoDatabase("crash.db");
        const std::string name = "crash" + std::to_string(k);
        ClerkProcess clerk(folder.path(), name, clerkArgs(db, folder.path() / name, k));
        ASSERT_TRUE(clerk.waitForLine("saving 1")) << clerk.errors();
        const long long at = std::uniform_int_distribution<long long>(0, window)(random);
        std::this_thread::sleep_for(std::chrono::microseconds(at));
        clerk.killNow();
        const bool toldSaved = clerk.output().find("saved ") != std::string::npos;

        GodownBook book(db, 1);
        ASSERT_EQ(book.integrity(), "ok");
        const auto entries = book.entriesAfter(before);
        const auto lines = book.linesAfter(before);
        const auto trail = book.trailAfter(before);
        ASSERT_LE(entries.size(), 1u);
        if (entries.empty()) {
            EXPECT_FALSE(toldSaved) << "the clerk was told the entry was saved";
            EXPECT_TRUE(lines.empty()) << "lines of an entry whose header is gone";
            EXPECT_TRUE(trail.empty()) << "the trail records an entry that is not there";
            EXPECT_EQ(book.stock(), stockBefore);
            ++killedBeforeCommit;
        } else {
            const std::int64_t id = std::stoll(entries[0][0]);
            EXPECT_EQ(entries[0][2], "on01500");
            ASSERT_EQ(lines.size(), 1u);
            EXPECT_EQ(lines.begin()->first, id);
            EXPECT_EQ(lines.begin()->second, rows);
            EXPECT_EQ(trail, (std::map<std::int64_t, std::int64_t>{{id, 1}}));
            EXPECT_EQ(book.stock(), posted(stockBefore, book.countedChanges(before)));
            window = std::max(window / 2, 1LL);
        }
        RecordProperty("kill" + std::to_string(k),
                       std::to_string(at) + " us, " + (entries.empty() ? "nothing" : "whole"));
    }
    // With the window halving after every late kill, at least one kill lands before the
    // commit; none at all would mean the test never caught a save in the middle.
    EXPECT_GT(killedBeforeCommit, 0);
}

} // namespace
} // namespace durability
