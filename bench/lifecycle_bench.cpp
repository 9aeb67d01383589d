// The entry lifecycle on a godown of 100,000 stock rows: saving an edited total count of
// 5,000 lines, and deleting a confirmed total count of all 100,000 (its stock reversed),
// each against SQLite's own statements doing the same writes in the same run.
#include "NativeDatabase.h"
#include "ScratchFolder.h"
#include "Sides.h"

#include "ado/Command.h"
#include "forms/Input.h"
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/records/DatabaseFile.h"
#include "module/register/frmMaster.h"
#include "module/register/frmcancelreason.h"
#include "services/Context.h"
#include "vb/Date.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int demoItems = 5000;
constexpr int entryLines = 5000;
constexpr int godownRows = 100000;

const fs::path &folder() {
    return bench::scratchFolder("lifecyclebench");
}

// SQLite's own API on a database file: the baseline, and the setup of the data.
class Native : public bench::NativeDatabase {
public:
    using NativeDatabase::NativeDatabase;

    // An entry of godown 1 with `lines` lines, each marked 1 in its bad stock as an
    // edited total count's lines are: with 5,000 one per item of shipment 1000, with
    // 100,000 one per stock row of the godown.
    void addTotalEntry(int id, bool confirmed, int lines) {
        exec("BEGIN");
        exec("INSERT INTO loiStockVerificationHeader (svhid, svhno, svhdate, svhremarks, "
             "svhverificationby, svhGodownid, svhdepartmentid, svhconexrate, svhdepexrate, "
             "svhexchangerates, svhFutureVc, svhcreatedtime) VALUES (" +
             std::to_string(id) + ", 'B" + std::to_string(id) +
             "', '2026-11-21 00:00:00', 'Bench count', 'RAHUL MEHTA', 1, 1, 1, 1, '1:-1:', '" +
             (confirmed ? "tc" : "tn") + "05000', '10:00:00')");
        exec("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
             std::to_string(lines - 1) +
             ") INSERT INTO loiStockVerificationDetail (svdid, svdGodownID, svdLocationid, "
             "svdShipmentID, svdItemID, svdAvailStock, svdVerifiedStock, svdavailbadstock, "
             "svdcostprice) SELECT " +
             std::to_string(id) + ", 1, 1, 1000 + i / 5000, 1 + i % 5000, 10, 9 + i % 3, 1, "
             "2.5 FROM n");
        exec("COMMIT");
    }

    // The edited save's writes: the header's three columns, the lines replaced.
    void saveEdited(int id) {
        exec("BEGIN IMMEDIATE");
        sqlite3_stmt *header = prepare("UPDATE loiStockVerificationHeader SET svhverificationby "
                                       "= 'RAHUL MEHTA', svhremarks = 'Recount', svhFutureVc = "
                                       "'tn05000' WHERE svhid = ?1 AND svhGodownid = 1");
        sqlite3_bind_int(header, 1, id);
        check(sqlite3_step(header));
        sqlite3_finalize(header);
        sqlite3_stmt *clear =
            prepare("DELETE FROM loiStockVerificationDetail WHERE svdid = ?1 AND svdGodownID = 1");
        sqlite3_bind_int(clear, 1, id);
        check(sqlite3_step(clear));
        sqlite3_finalize(clear);
        sqlite3_stmt *line =
            prepare("INSERT INTO loiStockVerificationDetail (svdid, svdGodownID, svdLocationid, "
                    "svdShipmentID, svdItemID, svdAvailStock, svdVerifiedStock, svdavailbadstock, "
                    "svdcostprice) VALUES (?1, 1, 1, 1000, ?2, 10, ?3, 1, 2.5)");
        for (int i = 1; i <= entryLines; ++i) {
            sqlite3_bind_int(line, 1, id);
            sqlite3_bind_int(line, 2, i);
            sqlite3_bind_double(line, 3, 9 + i % 3);
            check(sqlite3_step(line));
            sqlite3_reset(line);
        }
        sqlite3_finalize(line);
        exec("COMMIT");
    }

    // The delete's writes: the header flagged, the total count's stock reversed
    // by the reversal procedure's own statements.
    void reverse(int id) {
        exec("BEGIN IMMEDIATE");
        exec("UPDATE loiStockVerificationHeader SET svhcancelled = 1, svhcancelledRemarks = "
             "'RAHUL MEHTA:Bench' WHERE svhid = " +
             std::to_string(id) + " AND svhGodownid = 1");
        runProcedure("spReverseGodownTotalStockVerification",
                     {{"@svhid", std::to_string(id)}, {"@godownid", "1"}});
        exec("COMMIT");
    }
};

// A demo company whose godown 1 holds 100,000 stock rows, item 1 + i % 5000 of
// shipment 1000 + i / 5000 for row i, made once; each side of a benchmark works
// on a copy of its own.
fs::path demoCopy(const std::string &name) {
    static const fs::path demo = [] {
        fs::path path = folder() / "demo.db";
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        options.demo->items = demoItems;
        records::createDatabaseFile(path, options);
        Native db(path);
        db.exec("DELETE FROM moigodownstock WHERE gsGodownId = 1");
        db.exec("WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                std::to_string(godownRows - 1) + ") INSERT INTO "
                "moigodownstock (gsGodownId, gsItemId, gsShipmentId, gsLocationId, gsStock, "
                "gsBadStock, gsItemCost) SELECT 1, 1 + i % 5000, 1000 + i / 5000, 1, 10, 0, 2.5 "
                "FROM n");
        return path;
    }();
    fs::path copy = folder() / name;
    fs::copy_file(demo, copy, fs::copy_options::overwrite_existing);
    return copy;
}

// The module on its own database, as a host runs it, in interface 1013.
class Session {
public:
    explicit Session(const fs::path &db)
        : ui(1000000), context(screen, folder() / (db.stem().string() + "-state")), m(context) {
        connection.Open("sqlite:" + db.string());
        m.adocon = connection;
        m.intCompanyID = 1;
        m.intUserID = 1;
        m.intGodownID = 1;
        m.intInterfaceID = 1013;
        m.strMsgboxCaption = "Total Stock Verification";
        m.dtProcessDate = vb::DateSerial(2026, 11, 22);
    }

    // The register loaded afresh, so that it lists the entries made since,
    // the newest selected.
    tqsv2731::frmMaster &register_() {
        if (m.frmMasterSlot().loaded()) {
            m.frmMaster().Unload();
        }
        return m.frmMaster();
    }

    forms::TestUi ui;
    forms::Screen screen{ui};
    services::Context context;
    ado::Connection connection;
    tqsv2731::Module m;
};

// Both ways in every iteration, so that the ratio compares them under the same
// load of the machine. Opening the entry and its lines is not timed.
void BM_SaveEditedTotalEntry5000Lines(benchmark::State &state) {
    const fs::path moduleDb = demoCopy("edit-module.db");
    const fs::path rawDb = demoCopy("edit-raw.db");
    Native(moduleDb).addTotalEntry(100, false, entryLines);
    Native raw(rawDb);
    raw.addTotalEntry(100, false, entryLines);
    Session session(moduleDb);
    bench::Sides sides;
    for (auto _ : state) {
        state.PauseTiming();
        tqsv2731::frmMaster &master = session.register_();
        session.m.strTransactionMode = "E";
        session.m.lngVerificationId = 100;
        tqsv2731::frmStockVerification &entry = session.m.frmStockVerification();
        entry.txtVby.setText("RAHUL MEHTA");
        entry.txtRemarks.setText("Recount");
        master.PopulateExistingData();
        if (entry.lvwRequest.ListItems().Count() != entryLines) {
            state.SkipWithError("the entry's lines did not come back");
            break;
        }
        state.ResumeTiming();
        sides.timeModule([&] { entry.cmdOK_Click(); });
        sides.timeFloor([&] { raw.saveEdited(100); });
        if (session.m.slotOf<tqsv2731::frmStockVerification>(session.m.frmStockVerification_)
                .loaded()) {
            state.SkipWithError("the save did not end: the entry form is still open");
            break;
        }
    }
    sides.report(state, {0, 3});
}
BENCHMARK(BM_SaveEditedTotalEntry5000Lines)->Unit(benchmark::kMillisecond)->Iterations(5);

// The count is confirmed first (not timed): the total procedure sets all
// 100,000 rows and records each change, which the delete then takes back.
void confirm(const ado::Connection &connection, int id) {
    connection.BeginTrans();
    ado::Command cmd;
    cmd.ActiveConnection(connection);
    cmd.CommandType(ado::adCmdStoredProc);
    cmd.CommandTimeout(0);
    cmd.CommandText("spGodownTotalStockVerification");
    cmd.Parameters(1) = vb::Variant(id);
    cmd.Parameters(2) = vb::Variant(1);
    cmd.Execute();
    connection.CommitTrans();
}

void BM_DeleteConfirmedTotalEntry100000Lines(benchmark::State &state) {
    const fs::path moduleDb = demoCopy("delete-module.db");
    const fs::path rawDb = demoCopy("delete-raw.db");
    Session session(moduleDb);
    Native raw(rawDb);
    ado::Connection rawSetup;
    rawSetup.Open("sqlite:" + rawDb.string());
    bench::Sides sides;
    int id = 200;
    for (auto _ : state) {
        state.PauseTiming();
        ++id;
        Native(moduleDb).addTotalEntry(id, true, godownRows);
        raw.addTotalEntry(id, true, godownRows);
        confirm(session.connection, id);
        confirm(rawSetup, id);
        tqsv2731::frmMaster &master = session.register_();
        session.ui.queueAnswer(forms::vbYes);
        session.ui.queueAction([&session](forms::Input &input) {
            tqsv2731::frmcancelreason &reason = session.m.frmcancelreason();
            reason.txtcanreason.setText("Bench");
            input.click(reason.cmdOK);
        });
        state.ResumeTiming();
        sides.timeModule([&] { master.CmdDelete_Click(); });
        sides.timeFloor([&] { raw.reverse(id); });
        if (master.flexMaster.TextMatrix(master.flexMaster.Row(), 4) != "Yes") {
            state.SkipWithError("the entry was not deleted");
            break;
        }
    }
    sides.report(state, {500, 0});
}
BENCHMARK(BM_DeleteConfirmedTotalEntry100000Lines)->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace

BENCHMARK_MAIN();
