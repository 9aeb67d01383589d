// The data layer's costs: saving detail lines through a Recordset against SQLite's own
// prepared inserts, and opening a whole table only to AddNew, small and large.
#include "ScratchFolder.h"

#include "ado/Connection.h"
#include "ado/sqlite/NativeStatement.h"
#include "ado/sqlite/Script.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

// The detail table as the module writes it.
constexpr const char *detailSchema =
    "create table loiStockVerificationDetail (svdid int, svdGodownID int, svdLocationid int, "
    "svdShipmentID int, svdItemID int, svdAvailStock numeric(18,3), svdVerifiedStock "
    "numeric(18,3), svdavailbadstock numeric(18,3), svdverifiedbadstock numeric(18,3), "
    "svdcostprice money)";

constexpr int linesPerSave = 10000;

const fs::path &folder() {
    return bench::scratchFolder("adobench");
}

ado::Connection database(const std::string &name) {
    fs::path path = folder() / name;
    bool fresh = !fs::exists(path);
    ado::Connection c = ado::sqlite::createDatabase(path.string());
    if (fresh)
        ado::sqlite::executeScript(c, detailSchema);
    return c;
}

struct Line {
    int id, item, shipment;
    double avail, verified, bad, cost;
};

Line lineOf(int i) {
    return {1 + i / 100,  i, i % 50, 10.5 + i % 7, 10.0 + i % 5, static_cast<double>(i % 3),
            2.25 + i % 11};
}

// (a) The module's way: AddNew, ten fields by name, Update, in one transaction.
void saveThroughRecordset(const ado::Connection &c) {
    c.BeginTrans();
    ado::Recordset rs;
    rs.Open("select * from loiStockVerificationDetail", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    for (int i = 0; i < linesPerSave; ++i) {
        Line l = lineOf(i);
        rs.AddNew();
        rs.Fields("svdid") = l.id;
        rs.Fields("svdGodownID") = 1;
        rs.Fields("svdLocationid") = 1.0;
        rs.Fields("svdShipmentID") = static_cast<double>(l.shipment);
        rs.Fields("svdItemID") = static_cast<double>(l.item);
        rs.Fields("svdAvailStock") = l.avail;
        rs.Fields("svdVerifiedStock") = l.verified;
        rs.Fields("svdavailbadstock") = l.bad;
        rs.Fields("svdverifiedbadstock") = l.bad;
        rs.Fields("svdcostprice") = l.cost;
        rs.Update();
    }
    rs.Close();
    c.CommitTrans();
}

// (b) The floor: one prepared insert, bound and stepped per line, in one transaction,
// on a connection of SQLite's own API to the same file.
class PreparedInsert {
public:
    explicit PreparedInsert(const std::string &path) {
        check(sqlite3_open(path.c_str(), &db_));
        sqlite3_busy_timeout(db_, 5000);
    }
    ~PreparedInsert() { sqlite3_close(db_); }

    void emptyTable() {
        check(
            sqlite3_exec(db_, "delete from loiStockVerificationDetail", nullptr, nullptr, nullptr));
        check(sqlite3_exec(db_, "PRAGMA wal_checkpoint(TRUNCATE)", nullptr, nullptr, nullptr));
    }

    void save() {
        check(sqlite3_exec(db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr));
        sqlite3_stmt *insert = nullptr;
        check(sqlite3_prepare_v2(db_,
                                 "INSERT INTO loiStockVerificationDetail VALUES "
                                 "(?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)",
                                 -1, &insert, nullptr));
        for (int i = 0; i < linesPerSave; ++i) {
            Line l = lineOf(i);
            sqlite3_bind_int(insert, 1, l.id);
            sqlite3_bind_int(insert, 2, 1);
            sqlite3_bind_int(insert, 3, 1);
            sqlite3_bind_int(insert, 4, l.shipment);
            sqlite3_bind_int(insert, 5, l.item);
            sqlite3_bind_double(insert, 6, l.avail);
            sqlite3_bind_double(insert, 7, l.verified);
            sqlite3_bind_double(insert, 8, l.bad);
            sqlite3_bind_double(insert, 9, l.bad);
            sqlite3_bind_double(insert, 10, l.cost);
            check(sqlite3_step(insert));
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        check(sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr));
    }

private:
    void check(int rc) {
        if (rc != SQLITE_OK && rc != SQLITE_DONE)
            throw std::runtime_error(sqlite3_errmsg(db_));
    }
    sqlite3 *db_ = nullptr;
};

// Before each timed save: an empty table and an empty log. Each way has a
// file of its own and empties it itself, so that both start alike.
void emptyTable(const ado::Connection &c) {
    c.Execute("delete loiStockVerificationDetail");
    ado::sqlite::NativeStatement(c, "PRAGMA wal_checkpoint(TRUNCATE)").step();
}

// Wall time and the thread's processor time: the second leaves out the waits
// for the disk, which both ways share, and so shows the layer's own cost.
struct Clock {
    std::chrono::steady_clock::time_point wall;
    double cpu;
    static Clock now() {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return {std::chrono::steady_clock::now(), static_cast<double>(t.tv_sec) + t.tv_nsec * 1e-9};
    }
};

// Both ways in every iteration, so that the ratio compares them under the same
// load of the machine; the iteration's time is their sum.
void BM_SaveDetailLines_RecordsetVersusPrepared(benchmark::State &state) {
    ado::Connection c = database("recordset.db");
    database("prepared.db").Close();
    PreparedInsert prepared((folder() / "prepared.db").string());
    double wallA = 0, wallB = 0, cpuA = 0, cpuB = 0;
    for (auto _ : state) {
        state.PauseTiming();
        emptyTable(c);
        state.ResumeTiming();
        Clock t0 = Clock::now();
        saveThroughRecordset(c);
        Clock t1 = Clock::now();
        state.PauseTiming();
        prepared.emptyTable();
        state.ResumeTiming();
        Clock t2 = Clock::now();
        prepared.save();
        Clock t3 = Clock::now();
        wallA += std::chrono::duration<double>(t1.wall - t0.wall).count();
        wallB += std::chrono::duration<double>(t3.wall - t2.wall).count();
        cpuA += t1.cpu - t0.cpu;
        cpuB += t3.cpu - t2.cpu;
    }
    double n = static_cast<double>(state.iterations());
    state.counters["recordset_ms"] = 1000 * wallA / n;
    state.counters["prepared_ms"] = 1000 * wallB / n;
    state.counters["ratio_a_b"] = wallA / wallB;
    state.counters["ratio_cpu"] = cpuA / cpuB;
}
BENCHMARK(BM_SaveDetailLines_RecordsetVersusPrepared)->Unit(benchmark::kMillisecond);

// (c) Opening the whole table only to AddNew costs the same for 10 rows and a million.
ado::Connection tableOf(int rows) {
    static std::map<int, ado::Connection> made;
    if (auto it = made.find(rows); it != made.end())
        return it->second;
    ado::Connection c = database("rows" + std::to_string(rows) + ".db");
    c.BeginTrans();
    ado::sqlite::NativeStatement insert(
        c, "insert into loiStockVerificationDetail values (?1, 1, 1, ?2, ?3, ?4, ?5, 0, 0, ?6)");
    for (int i = 0; i < rows; ++i) {
        Line l = lineOf(i);
        insert.reset();
        insert.bindInteger(1, l.id);
        insert.bindInteger(2, l.shipment);
        insert.bindInteger(3, l.item);
        insert.bindReal(4, l.avail);
        insert.bindReal(5, l.verified);
        insert.bindReal(6, l.cost);
        insert.step();
    }
    c.CommitTrans();
    return made[rows] = c;
}

void BM_OpenWholeTableToAddNew(benchmark::State &state) {
    ado::Connection c = tableOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        ado::Recordset rs;
        rs.Open("select * from loiStockVerificationDetail", c, ado::adOpenKeyset,
                ado::adLockOptimistic);
        rs.AddNew();
        rs.CancelUpdate();
        rs.Close();
    }
}
BENCHMARK(BM_OpenWholeTableToAddNew)->Arg(10)->Arg(1000000)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
