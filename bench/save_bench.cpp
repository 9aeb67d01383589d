// Saving a new entry through the entry form's OK against SQLite's own prepared statements
// doing the same writes: drafts and plain counts on the demo's godown, and total counts
// confirmed on a godown of 20,000 and of 100,000 stock rows, each line counting one row.
#include "NativeDatabase.h"
#include "ScratchFolder.h"
#include "Sides.h"

#include "ado/Errors.h"
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/records/DatabaseFile.h"
#include "services/Context.h"
#include "vb/Conversion.h"
#include "vb/Date.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int demoItems = 5000;

const fs::path &folder() {
    return bench::scratchFolder("savebench");
}

// A copy of the demo company, made once, whose godown 1 holds `stockRows` stock rows
// (0: the demo's own stock): item 1 + i % 5000 of shipment 1000 + i / 5000 for row i.
fs::path demoCopy(const std::string &name, int stockRows = 0) {
    static const fs::path demo = [] {
        fs::path path = folder() / "demo.db";
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        options.demo->items = demoItems;
        records::createDatabaseFile(path, options);
        return path;
    }();
    static std::map<int, fs::path> godowns;
    fs::path &source = godowns[stockRows];
    if (source.empty()) {
        source = demo;
        if (stockRows > 0) {
            source = folder() / ("godown" + std::to_string(stockRows) + ".db");
            fs::copy_file(demo, source, fs::copy_options::overwrite_existing);
            bench::NativeDatabase db(source);
            db.exec("DELETE FROM moigodownstock WHERE gsGodownId = 1");
            db.exec("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                    std::to_string(stockRows - 1) +
                    ") INSERT INTO moigodownstock (gsGodownId, gsItemId, gsShipmentId, "
                    "gsLocationId, gsStock, gsBadStock, gsItemCost) SELECT 1, 1 + i % 5000, "
                    "1000 + i / 5000, 1, 10, 0, 2.5 FROM n");
        }
    }
    fs::path copy = folder() / name;
    fs::copy_file(source, copy, fs::copy_options::overwrite_existing);
    return copy;
}

// A row of the list as the detail form leaves it: text, then sub-items 1 to 13. With
// `counted` set, line i counts stock row i - 1 of the godown that demoCopy makes, and
// `round` shifts the counts, so that each save of a series changes every row again.
struct Row {
    std::string cells[14];
};

Row rowOf(int i, bool counted, int round) {
    const std::string n = std::to_string(i);
    const int k = i - 1;
    const std::string item = std::to_string(counted ? 1 + k % demoItems : 1 + i % demoItems);
    const std::string shipment = counted ? std::to_string(1000 + k / demoItems) : "1";
    return {{n, " ", "", "Item " + item, "10.000", std::to_string(9 + (i + round) % 3) + ".000",
             "0.000", "0.000", item, n, "1", shipment, "2.5", "PCS"}};
}

// The module on its own copy of the demo, its register loaded, as a host runs it.
class Session {
public:
    Session(const fs::path &db, std::int32_t interfaceId)
        : context(screen, folder() / (db.stem().string() + "-state")), m(context) {
        connection.Open("sqlite:" + db.string());
        m.adocon = connection;
        m.intCompanyID = 1;
        m.intUserID = 1;
        m.intGodownID = 1;
        m.intInterfaceID = interfaceId;
        m.strMsgboxCaption = "Stock Verification";
        m.dtProcessDate = vb::DateSerial(2026, 11, 22);
        m.frmMaster();
    }

    // A fresh entry form with a full list, as New and the detail form leave it.
    tqsv2731::frmStockVerification &openEntry(int rows, bool counted, bool confirmed, int round) {
        m.strTransactionMode = "N";
        tqsv2731::frmStockVerification &entry = m.frmStockVerification();
        entry.txtdate.setText(vb::CStr(vb::Variant(m.dtProcessDate)));
        entry.txtRemarks.setText("Bench count");
        entry.chkConfirm.setValue(confirmed ? forms::vbChecked : forms::vbUnchecked);
        forms::ListItemCollection &items = entry.lvwRequest.ListItems();
        for (int i = 1; i <= rows; ++i) {
            const Row r = rowOf(i, counted, round);
            forms::ListItem &item = items.Add(0, "", r.cells[0]);
            for (int n = 1; n < 14; ++n) {
                item.setSubItems(n, r.cells[n]);
            }
        }
        return entry;
    }

    bool entryOpen() {
        return m.slotOf<tqsv2731::frmStockVerification>(m.frmStockVerification_).loaded();
    }

    forms::TestUi ui{1000000};
    forms::Screen screen{ui};
    services::Context context;
    ado::Connection connection;
    tqsv2731::Module m;
};

// The floor: the same header and lines by prepared inserts of SQLite's own API, and the
// entry's stock procedure run as its own statements.
class PreparedSave {
public:
    explicit PreparedSave(const fs::path &path) : db_(path) {}

    void save(int id, int rows, bool counted, int round, const char *procedure,
              bool commit = true) {
        db_.exec("BEGIN IMMEDIATE");
        sqlite3_stmt *header = db_.prepare(
            "INSERT INTO loiStockVerificationHeader (svhid, svhno, svhdate, svhremarks, "
            "svhverificationby, svhGodownid, svhdepartmentid, svhconexrate, svhdepexrate, "
            "svhexchangerates, svhFutureVc, svhcreatedtime) VALUES (?1, 'B1', "
            "'2026-11-22 00:00:00', 'Bench count', 'RAHUL MEHTA', 1, 1, 1, 1, '1:-1:', "
            "'tn05000', '10:00:00')");
        sqlite3_bind_int(header, 1, id);
        db_.check(sqlite3_step(header));
        sqlite3_finalize(header);
        sqlite3_stmt *line = db_.prepare(
            "INSERT INTO loiStockVerificationDetail (svdid, svdGodownID, svdLocationid, "
            "svdShipmentID, svdItemID, svdAvailStock, svdVerifiedStock, svdavailbadstock, "
            "svdverifiedbadstock, svdcostprice) VALUES (?1, 1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9)");
        for (int i = 1; i <= rows; ++i) {
            const Row r = rowOf(i, counted, round);
            sqlite3_bind_int(line, 1, id);
            sqlite3_bind_int(line, 2, std::stoi(r.cells[10]));
            sqlite3_bind_int(line, 3, std::stoi(r.cells[11]));
            sqlite3_bind_int(line, 4, std::stoi(r.cells[8]));
            for (int n = 4; n <= 7; ++n) {
                sqlite3_bind_double(line, n + 1, std::stod(r.cells[n]));
            }
            sqlite3_bind_double(line, 9, std::stod(r.cells[12]));
            db_.check(sqlite3_step(line));
            sqlite3_reset(line);
        }
        sqlite3_finalize(line);
        if (procedure != nullptr) {
            std::vector<std::pair<std::string, std::string>> arguments{
                {"@svhid", std::to_string(id)}, {"@godownid", "1"}};
            if (std::string(procedure) == "spupdateGodownVerification") {
                arguments.emplace_back("@mode", "'F'");
            }
            db_.runProcedure(procedure, arguments);
        }
        db_.exec(commit ? "COMMIT" : "ROLLBACK");
    }

private:
    bench::NativeDatabase db_;
};

// The process's peak resident memory since the last reset, in bytes; the reset lets a
// benchmark see the peak of the work it measures rather than that of its setup.
void resetPeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

// A figure of /proc/self/status in bytes: "VmHWM:" the peak since the last reset,
// "VmRSS:" what the process holds now.
double memoryFigure(const std::string &name) {
    std::ifstream status("/proc/self/status");
    std::string key;
    while (status >> key) {
        if (key == name) {
            double kib = 0;
            status >> kib;
            return kib * 1024;
        }
        status.ignore(1 << 10, '\n');
    }
    throw std::runtime_error("no " + name + " in /proc/self/status");
}

struct SaveCase {
    std::int32_t interfaceId;
    int rows;
    bool confirmed;       // a total count posted by its procedure
    int stockRows;        // the godown made for it, 0 for the demo's own
    bench::Target target;
};

// Both ways in every iteration, so that the ratio compares them under the same load of
// the machine. Filling the list is not timed: it is the user's work.
void saveVersusPrepared(benchmark::State &state, const SaveCase &c) {
    const std::string name =
        std::to_string(c.interfaceId) + "-" + std::to_string(c.rows) + (c.confirmed ? "c" : "");
    const bool counted = c.stockRows > 0;
    Session session(demoCopy("module" + name + ".db", c.stockRows), c.interfaceId);
    PreparedSave prepared(demoCopy("prepared" + name + ".db", c.stockRows));
    const char *procedure = c.interfaceId == 1005 ? "spupdateGodownVerification"
                            : c.confirmed         ? "spGodownTotalStockVerification"
                                                  : nullptr;
    bench::Sides sides;
    double peak = 0;
    double before = 0;
    int id = 100;
    for (auto _ : state) {
        ++id;
        tqsv2731::frmStockVerification &entry =
            session.openEntry(c.rows, counted, c.confirmed, id);
        before = std::max(before, memoryFigure("VmRSS:"));
        resetPeakMemory();
        sides.timeModule([&] { entry.cmdOK_Click(); });
        peak = std::max(peak, memoryFigure("VmHWM:"));
        sides.timeFloor([&] { prepared.save(id, c.rows, counted, id, procedure); });
        if (session.entryOpen()) {
            state.SkipWithError("the save did not end: the entry form is still open");
            break;
        }
    }
    sides.report(state, c.target);
    // What the process held as the save began (the list among it), and its peak during the save.
    state.counters["before_MiB"] = before / (1 << 20);
    state.counters["peak_MiB"] = peak / (1 << 20);
}

// A draft total count of the demo's godown: the lines go in as the list's text, no stock moves.
void BM_SaveTotalEntry5000Rows(benchmark::State &state) {
    saveVersusPrepared(state, {1013, 5000, false, 0, {}});
}
BENCHMARK(BM_SaveTotalEntry5000Rows)->Unit(benchmark::kMillisecond);

// A plain count: the lines go in as numbers and the "F" procedure moves the stock by them.
void BM_SavePlainEntry1000Rows(benchmark::State &state) {
    saveVersusPrepared(state, {1005, 1000, false, 0, {}});
}
BENCHMARK(BM_SavePlainEntry1000Rows)->Unit(benchmark::kMillisecond);

void BM_SavePlainEntry20000Rows(benchmark::State &state) {
    saveVersusPrepared(state, {1005, 20000, false, 20000, {0, 2}});
}
BENCHMARK(BM_SavePlainEntry20000Rows)->Unit(benchmark::kMillisecond)->Iterations(5);

// A confirmed total count of a whole godown, one line per stock row: saved, and posted by
// the total procedure that sets every row of the godown, in the save's transaction.
void BM_SaveConfirmedTotalEntry20000Rows(benchmark::State &state) {
    saveVersusPrepared(state, {1013, 20000, true, 20000, {100, 0}});
}
BENCHMARK(BM_SaveConfirmedTotalEntry20000Rows)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_SaveConfirmedTotalEntry100000Rows(benchmark::State &state) {
    saveVersusPrepared(state, {1013, 100000, true, 100000, {1000, 0}});
}
BENCHMARK(BM_SaveConfirmedTotalEntry100000Rows)->Unit(benchmark::kMillisecond)->Iterations(2);

// The same save failing at its commit, after its last line and the posting: everything
// is rolled back, and the form stays open with its list for another try.
void BM_SaveConfirmedTotalEntry100000RowsFailingAtCommit(benchmark::State &state) {
    constexpr int rows = 100000;
    Session session(demoCopy("module-failing.db", rows), 1013);
    PreparedSave prepared(demoCopy("prepared-failing.db", rows));
    tqsv2731::frmStockVerification &entry = session.openEntry(rows, true, true, 1);
    bench::Sides sides;
    for (auto _ : state) {
        // The fault desk tells the clerk of the failure.
        session.ui.queueAnswer(forms::vbOK);
        session.connection.failNthCall(1, vb::Error(ado::errnum::Unspecified, "bench", "commit lost"),
                                   ado::Operation::CommitTrans);
        sides.timeModule([&] { entry.cmdOK_Click(); });
        sides.timeFloor(
            [&] { prepared.save(101, rows, true, 1, "spGodownTotalStockVerification", false); });
        if (!session.entryOpen() || entry.lvwRequest.ListItems().Count() != rows) {
            state.SkipWithError("the failed save closed the form or lost lines");
            break;
        }
    }
    sides.report(state, {1000, 0});
}
BENCHMARK(BM_SaveConfirmedTotalEntry100000RowsFailingAtCommit)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(2);

} // namespace

BENCHMARK_MAIN();
