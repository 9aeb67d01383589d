// The register of a godown with 100,000 entries: opening it (the listing's statement into
// the grid) and sorting it by a column, each against the same work done directly with
// SQLite's own API and a vector of rows in the same run.
#include "CitextCollation.h"
#include "ScratchFolder.h"
#include "Sides.h"

#include "forms/FlexGrid.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "module/frame/Module.h"
#include "module/records/DatabaseFile.h"
#include "module/register/frmMaster.h"
#include "services/Context.h"
#include "vb/Date.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr int entries = 100000;
constexpr double openTargetMs = 300;
// Choosing a column sorts the open register: the clerk waits no longer for it than for the open.
constexpr double sortTargetMs = 300;

const fs::path &folder() {
    return bench::scratchFolder("registerbench");
}

// SQLite's own API on the database file: the setup of the entries, and the floor.
class Native {
public:
    explicit Native(const fs::path &path) {
        check(sqlite3_open(path.c_str(), &db_));
        check(sqlite3_create_collation(db_, "CITEXT", SQLITE_UTF8, nullptr, &bench::compareCitext));
    }
    ~Native() { sqlite3_close(db_); }
    Native(const Native &) = delete;
    Native &operator=(const Native &) = delete;

    void exec(const std::string &sql) {
        char *message = nullptr;
        if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
            const std::string text = message ? message : "sqlite3_exec failed";
            sqlite3_free(message);
            throw std::runtime_error(text + ": " + sql);
        }
    }

    // The listing's rows as text, seven columns, in the register's order.
    std::vector<std::array<std::string, 7>> list() {
        sqlite3_stmt *st = nullptr;
        check(sqlite3_prepare_v2(
            db_,
            "SELECT svhid, svhno, svhdate, svhVerificationby, CASE svhCancelled WHEN 1 THEN "
            "'Yes' WHEN 0 THEN 'No' END, svhRemarks, CASE svhposted WHEN 1 THEN 'Yes' WHEN 0 "
            "THEN 'No' END FROM loiStockVerificationHeader WHERE svhgodownid = 1 AND "
            "substr(svhFutureVc, 1, 1) = 't' ORDER BY svhid",
            -1, &st, nullptr));
        std::vector<std::array<std::string, 7>> rows;
        while (sqlite3_step(st) == SQLITE_ROW) {
            std::array<std::string, 7> &row = rows.emplace_back();
            for (int c = 0; c < 7; ++c) {
                const unsigned char *text = sqlite3_column_text(st, c);
                row[static_cast<std::size_t>(c)] = text ? reinterpret_cast<const char *>(text) : "";
            }
        }
        sqlite3_finalize(st);
        return rows;
    }

private:
    void check(int rc) {
        if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW) {
            throw std::runtime_error(sqlite3_errmsg(db_));
        }
    }
    sqlite3 *db_ = nullptr;
};

// The demo company with 100,000 total counts of godown 1, made once: one in
// seven cancelled, the remarks of forty kinds, so that a sort has ties.
const fs::path &demo() {
    static const fs::path path = [] {
        fs::path p = folder() / "demo.db";
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        records::createDatabaseFile(p, options);
        Native db(p);
        db.exec("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
                std::to_string(entries) +
                ") INSERT INTO loiStockVerificationHeader (svhid, svhno, svhdate, svhremarks, "
                "svhverificationby, svhGodownid, svhdepartmentid, svhconexrate, svhdepexrate, "
                "svhexchangerates, svhFutureVc, svhcreatedtime, svhcancelled, svhposted) SELECT "
                "100000 + i, 'TSV/' || i, '2026-11-22 00:00:00', 'counted aisle ' || (i % 40), "
                "CASE i % 3 WHEN 0 THEN 'Rahul Mehta' WHEN 1 THEN 'anita rao' ELSE 'Store "
                "keeper' END, 1, 1, 1, 1, '1:-1:', 'tc00001', '10:00:00', CASE WHEN i % 7 = 0 "
                "THEN 1 ELSE 0 END, 1 FROM n");
        return p;
    }();
    return path;
}

// The module on the demo in interface 1013, as a host runs it.
class Session {
public:
    Session() : context(screen, folder() / "state"), m(context) {
        connection.Open("sqlite:" + demo().string());
        m.adocon = connection;
        m.intCompanyID = 1;
        m.intUserID = 1;
        m.intGodownID = 1;
        m.intInterfaceID = 1013;
        m.strMsgboxCaption = "Total Stock Verification";
        m.dtProcessDate = vb::DateSerial(2026, 11, 22);
    }

    // The register loaded afresh: its Form_Load runs the listing.
    tqsv2731::frmMaster &open() {
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

void checkListed(benchmark::State &state, const Session &s, tqsv2731::frmMaster &f) {
    if (!s.ui.boxes().empty()) {
        state.SkipWithError(("the module said: " + s.ui.boxes().front().prompt).c_str());
    } else if (f.flexMaster.Rows() < entries + 1) {
        state.SkipWithError("the register lists fewer entries than were made");
    }
}

// Opening the register: Form_Load whole (services, settings, the listing
// into the grid with its colours and column names, the rights).
void BM_RegisterOpen100000Entries(benchmark::State &state) {
    Session s;
    Native native(demo());
    bench::Sides sides;
    for (auto _ : state) {
        tqsv2731::frmMaster *f = nullptr;
        sides.timeModule([&] { f = &s.open(); });
        sides.timeFloor([&] { benchmark::DoNotOptimize(native.list().size()); });
        checkListed(state, s, *f);
    }
    sides.report(state, {openTargetMs, 0});
}
BENCHMARK(BM_RegisterOpen100000Entries)->Unit(benchmark::kMillisecond);

int compareNoCase(const std::string &a, const std::string &b) {
    const std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        const int x = std::tolower(static_cast<unsigned char>(a[i]));
        const int y = std::tolower(static_cast<unsigned char>(b[i]));
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

// Sorting the open register by a column of text ("Verified By", letter case
// ignored), as choosing it in the column box does; the floor sorts the same
// rows held in a vector. Each iteration starts from the listing's order.
void BM_RegisterSortByColumn100000Entries(benchmark::State &state) {
    Session s;
    Native native(demo());
    tqsv2731::frmMaster &f = s.open();
    checkListed(state, s, f);
    const auto listed = native.list();
    int verifiedBy = -1;
    for (int i = 0; i < f.cboColNames.ListCount(); ++i) {
        if (f.cboColNames.List(i) == "Verified By") {
            verifiedBy = i;
        }
    }
    if (verifiedBy < 0) {
        state.SkipWithError("the column box has no \"Verified By\"");
        return;
    }
    bench::Sides sides;
    for (auto _ : state) {
        state.PauseTiming();
        f.optAscend.setValue(true);
        f.cboColNames.setListIndex(-1);
        f.flexMaster.setCol(0);
        f.flexMaster.setColSel(0);
        f.flexMaster.setSort(forms::flexSortGenericAscending);
        auto rows = listed;
        state.ResumeTiming();
        sides.timeModule([&] { f.cboColNames.setListIndex(verifiedBy); });
        sides.timeFloor([&] {
            std::stable_sort(rows.begin(), rows.end(), [](const auto &a, const auto &b) {
                return compareNoCase(a[3], b[3]) < 0;
            });
        });
        benchmark::DoNotOptimize(rows.data());
    }
    if (f.flexMaster.TextMatrix(1, 3) != "anita rao") {
        state.SkipWithError("the grid is not sorted by the verifier");
    }
    sides.report(state, {sortTargetMs, 0});
}
BENCHMARK(BM_RegisterSortByColumn100000Entries)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
