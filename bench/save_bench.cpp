// Saving a new entry through the entry form's OK (a total count of 5,000 rows, a plain
// one of 1,000) against SQLite's own prepared inserts of the same header and lines; and the
// same saves on a PostgreSQL server against the same saves on the embedded database, when
// STOCKVERIFY_TEST_PG names a server (a postgresql:// URI of a database from which the user
// may create databases).
#include "CitextCollation.h"
#include "ScratchFolder.h"

#include "forms/ListView.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/records/DatabaseFile.h"
#include "module/records/ScratchServerDatabase.h"
#include "services/Context.h"
#include "vb/Conversion.h"
#include "vb/Date.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

constexpr int demoItems = 5000;

const fs::path &folder() {
    return bench::scratchFolder("savebench");
}

// A copy of the demo company with enough items for one row each, made once.
fs::path demoCopy(const std::string &name) {
    static const fs::path demo = [] {
        fs::path path = folder() / "demo.db";
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        options.demo->items = demoItems;
        records::createDatabaseFile(path, options);
        return path;
    }();
    fs::path copy = folder() / name;
    fs::copy_file(demo, copy, fs::copy_options::overwrite_existing);
    return copy;
}

// A row of the list as the detail form leaves it: text, then sub-items 1 to 13.
struct Row {
    std::string cells[14];
};

Row rowOf(int i) {
    const std::string n = std::to_string(i);
    const std::string item = std::to_string(1 + i % demoItems);
    return {{n, " ", "", "Item " + item, "10.000", std::to_string(9 + i % 3) + ".000", "0.000",
             "0.000", item, n, "1", "1", "2.5", "PCS"}};
}

// The module on its own copy of the demo, its register loaded, as a host runs it.
class Session {
public:
    Session(const std::string &name, std::int32_t interfaceId)
        : Session(name, interfaceId, "sqlite:" + demoCopy(name + ".db").string()) {}
    Session(const std::string &name, std::int32_t interfaceId, const std::string &connectionString)
        : context(screen, folder() / (name + "-state")), m(context) {
        connection.Open(connectionString);
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
    tqsv2731::frmStockVerification &openEntry(int rows) {
        m.strTransactionMode = "N";
        tqsv2731::frmStockVerification &entry = m.frmStockVerification();
        entry.txtdate.setText(vb::CStr(vb::Variant(m.dtProcessDate)));
        entry.txtRemarks.setText("Bench count");
        forms::ListItemCollection &items = entry.lvwRequest.ListItems();
        for (int i = 1; i <= rows; ++i) {
            const Row r = rowOf(i);
            forms::ListItem &item = items.Add(0, "", r.cells[0]);
            for (int n = 1; n < 14; ++n) {
                item.setSubItems(n, r.cells[n]);
            }
        }
        return entry;
    }

    forms::TestUi ui;
    forms::Screen screen{ui};
    services::Context context;
    ado::Connection connection;
    tqsv2731::Module m;
};

// The floor: the same header and lines by prepared inserts of SQLite's own API.
class PreparedSave {
public:
    explicit PreparedSave(const fs::path &path) {
        check(sqlite3_open(path.c_str(), &db_));
        // Text columns compare as the data layer's collation does.
        check(sqlite3_create_collation(db_, "CITEXT", SQLITE_UTF8, nullptr, &bench::compareCitext));
    }
    ~PreparedSave() { sqlite3_close(db_); }

    void save(int id, int rows) {
        check(sqlite3_exec(db_, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr));
        sqlite3_stmt *header =
            prepare("INSERT INTO loiStockVerificationHeader (svhid, svhno, svhdate, svhremarks, "
                    "svhverificationby, svhGodownid, svhdepartmentid, svhconexrate, svhdepexrate, "
                    "svhexchangerates, svhFutureVc, svhcreatedtime) VALUES (?1, 'B1', "
                    "'2026-11-22 00:00:00', 'Bench count', 'RAHUL MEHTA', 1, 1, 1, 1, '1:-1:', "
                    "'tn05000', '10:00:00')");
        sqlite3_bind_int(header, 1, id);
        step(header);
        sqlite3_finalize(header);
        sqlite3_stmt *line = prepare(
            "INSERT INTO loiStockVerificationDetail (svdid, svdGodownID, svdLocationid, "
            "svdShipmentID, svdItemID, svdAvailStock, svdVerifiedStock, svdavailbadstock, "
            "svdverifiedbadstock, svdcostprice) VALUES (?1, 1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9)");
        for (int i = 1; i <= rows; ++i) {
            const Row r = rowOf(i);
            sqlite3_bind_int(line, 1, id);
            sqlite3_bind_int(line, 2, std::stoi(r.cells[10]));
            sqlite3_bind_int(line, 3, std::stoi(r.cells[11]));
            sqlite3_bind_int(line, 4, std::stoi(r.cells[8]));
            for (int n = 4; n <= 7; ++n) {
                sqlite3_bind_double(line, n + 1, std::stod(r.cells[n]));
            }
            sqlite3_bind_double(line, 9, std::stod(r.cells[12]));
            step(line);
            sqlite3_reset(line);
        }
        sqlite3_finalize(line);
        check(sqlite3_exec(db_, "COMMIT", nullptr, nullptr, nullptr));
    }

private:
    sqlite3_stmt *prepare(const char *sql) {
        sqlite3_stmt *st = nullptr;
        check(sqlite3_prepare_v2(db_, sql, -1, &st, nullptr));
        return st;
    }
    void step(sqlite3_stmt *st) { check(sqlite3_step(st)); }
    void check(int rc) {
        if (rc != SQLITE_OK && rc != SQLITE_DONE) {
            throw std::runtime_error(sqlite3_errmsg(db_));
        }
    }
    sqlite3 *db_ = nullptr;
};

double seconds(std::chrono::steady_clock::time_point from) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count();
}

// Both ways in every iteration, so that the ratio compares them under the same
// load of the machine. Filling the list is not timed: it is the user's work.
void saveVersusPrepared(benchmark::State &state, std::int32_t interfaceId, int rows) {
    const std::string name = std::to_string(interfaceId);
    Session session("module" + name, interfaceId);
    PreparedSave prepared(demoCopy("prepared" + name + ".db"));
    double module = 0;
    double raw = 0;
    int id = 100;
    for (auto _ : state) {
        state.PauseTiming();
        tqsv2731::frmStockVerification &entry = session.openEntry(rows);
        state.ResumeTiming();
        auto t0 = std::chrono::steady_clock::now();
        entry.cmdOK_Click();
        module += seconds(t0);
        auto t1 = std::chrono::steady_clock::now();
        prepared.save(++id, rows);
        raw += seconds(t1);
        if (session.m.slotOf<tqsv2731::frmStockVerification>(session.m.frmStockVerification_)
                .loaded()) {
            state.SkipWithError("the save did not end: the entry form is still open");
            break;
        }
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["module_ms"] = 1000 * module / n;
    state.counters["prepared_ms"] = 1000 * raw / n;
    state.counters["ratio"] = module / raw;
}

// A total count of a whole godown: the lines go in as the list's text, no stock moves.
void BM_SaveTotalEntry5000Rows(benchmark::State &state) {
    saveVersusPrepared(state, 1013, 5000);
}
BENCHMARK(BM_SaveTotalEntry5000Rows)->Unit(benchmark::kMillisecond);

// A plain count: the lines go in as numbers and the stock procedure runs over them.
void BM_SavePlainEntry1000Rows(benchmark::State &state) {
    saveVersusPrepared(state, 1005, 1000);
}
BENCHMARK(BM_SavePlainEntry1000Rows)->Unit(benchmark::kMillisecond);

// The same demo on the server, in a database of the benchmark's own.
std::unique_ptr<records::ScratchServerDatabase> serverDemo(const std::string &server) {
    records::DemoOptions demo;
    demo.items = demoItems;
    return std::make_unique<records::ScratchServerDatabase>(server, demo);
}

// The module's save on the server and on the embedded database, in every iteration.
void serverVersusEmbedded(benchmark::State &state, const std::string &server,
                          std::int32_t interfaceId, int rows) {
    const std::string name = std::to_string(interfaceId);
    const auto database = serverDemo(server);
    Session onServer("server" + name, interfaceId, database->uri());
    Session embedded("embedded" + name, interfaceId);
    double serverTime = 0;
    double embeddedTime = 0;
    for (auto _ : state) {
        state.PauseTiming();
        tqsv2731::frmStockVerification &first = onServer.openEntry(rows);
        state.ResumeTiming();
        auto t0 = std::chrono::steady_clock::now();
        first.cmdOK_Click();
        serverTime += seconds(t0);
        state.PauseTiming();
        tqsv2731::frmStockVerification &second = embedded.openEntry(rows);
        state.ResumeTiming();
        auto t1 = std::chrono::steady_clock::now();
        second.cmdOK_Click();
        embeddedTime += seconds(t1);
        for (Session *s : {&onServer, &embedded})
            if (s->m.slotOf<tqsv2731::frmStockVerification>(s->m.frmStockVerification_)
                    .loaded()) {
                state.SkipWithError("the save did not end: the entry form is still open");
                return;
            }
    }
    const double n = static_cast<double>(state.iterations());
    state.counters["postgresql_ms"] = 1000 * serverTime / n;
    state.counters["sqlite_ms"] = 1000 * embeddedTime / n;
    state.counters["ratio"] = serverTime / embeddedTime;
}

} // namespace

int main(int argc, char **argv) {
    benchmark::Initialize(&argc, argv);
    const char *server = std::getenv("STOCKVERIFY_TEST_PG");
    if (server && *server) {
        const std::string uri = server;
        benchmark::RegisterBenchmark("BM_SaveTotalEntry5000Rows_PostgreSQL",
                                     [uri](benchmark::State &state) {
                                         serverVersusEmbedded(state, uri, 1013, 5000);
                                     })
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark("BM_SavePlainEntry1000Rows_PostgreSQL",
                                     [uri](benchmark::State &state) {
                                         serverVersusEmbedded(state, uri, 1005, 1000);
                                     })
            ->Unit(benchmark::kMillisecond);
    } else {
        std::cerr << "save_bench: STOCKVERIFY_TEST_PG is not set, so the saves on a PostgreSQL "
                     "server are skipped (give it a postgresql:// URI of a database from which "
                     "the user may create databases)\n";
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
