// Finding items: a fetch on a godown of 100,000 items, from Enter to the filled grid, and the
// entry form's list search (reload in order, then the binary search) over 20,000 lines.
#include "ScratchFolder.h"

#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/entry/frmStockVerification.h"
#include "module/fetch/FrmFetch.h"
#include "module/frame/Module.h"
#include "module/records/DatabaseFile.h"
#include "services/Context.h"
#include "vb/Date.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

namespace fs = std::filesystem;

const fs::path &folder() {
    return bench::scratchFolder("fetchbench");
}

// A demo database of `items` items, made once for the run.
const fs::path &demo(int items) {
    static std::map<int, fs::path> made;
    auto found = made.find(items);
    if (found == made.end()) {
        fs::path path = folder() / ("demo-" + std::to_string(items) + ".db");
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        options.demo->items = items;
        records::createDatabaseFile(path, options);
        found = made.emplace(items, path).first;
    }
    return found->second;
}

// The module on a demo database, its register loaded, the entry form of a
// new entry and its detail form shown, as a clerk reaches the dialog.
class Session {
public:
    explicit Session(int items) : context(screen, folder() / "state"), m(context) {
        connection.Open("sqlite:" + demo(items).string());
        m.adocon = connection;
        m.intCompanyID = 1;
        m.intUserID = 1;
        m.intGodownID = 1;
        m.intInterfaceID = 1005;
        m.strMsgboxCaption = "Stock Verification";
        m.dtProcessDate = vb::DateSerial(2026, 11, 22);
        m.frmMaster();
        m.strTransactionMode = "N";
        m.strDetailMode = "N";
        m.frmStockVerificationDetail().Show();
    }

    forms::TestUi ui;
    forms::Screen screen{ui};
    services::Context context;
    ado::Connection connection;
    tqsv2731::Module m;
};

// A failure reported by the module would make the figures meaningless.
void checkNoFault(const forms::TestUi &ui, benchmark::State &state) {
    if (!ui.boxes().empty()) {
        state.SkipWithError(("the module reported: " + ui.boxes().front().prompt).c_str());
    }
}

// Enter in the fetch box: the statement over all the items the godown
// carries, the first 500 rows into the grid. The first argument is the
// number of demo items (about seven in eight are carried by godown 1), the
// second 0 for an empty fragment (every item matches) or 1 for "basmati".
// The grid takes 500 rows in every case; what grows with the godown is the
// statement's result, which the keyset cursor reads whole at its first row.
void BM_FetchEnterToFilledGrid(benchmark::State &state) {
    Session s(static_cast<int>(state.range(0)));
    tqsv2731::FrmFetch &fetch = s.m.FrmFetch();
    fetch.Show();
    const std::string fragment = state.range(1) == 0 ? "" : "basmati";
    for (auto _ : state) {
        fetch.txtFetch.setText(fragment);
        int enter = 13;
        fetch.txtFetch_KeyPress(enter);
        benchmark::DoNotOptimize(fetch.flexMaster.Rows());
    }
    state.counters["rows"] = fetch.flexMaster.Rows() - 1;
    checkNoFault(s.ui, state);
}
BENCHMARK(BM_FetchEnterToFilledGrid)
    ->Args({2000, 0})
    ->Args({100000, 0})
    ->Args({100000, 1})
    ->Unit(benchmark::kMillisecond);

// 20,000 lines in the entry's list, as the detail form leaves them: item
// codes in order, so that a search by code holds.
void fillList(tqsv2731::frmStockVerification &entry) {
    forms::ListItemCollection &rows = entry.lvwRequest.ListItems();
    rows.Clear();
    for (int i = 1; i <= 20000; ++i) {
        char code[16];
        std::snprintf(code, sizeof code, "GRO%06d", i);
        forms::ListItem &row = rows.Add(0, "", std::to_string(i));
        for (int n = 1; n <= 13; ++n) {
            row.setSubItems(n, n == 2 ? code : std::to_string(i));
        }
    }
}

// The search box's Enter on an entry of 20,000 lines: Search reloads the
// list ordered by the search column (a new entry: the godown's stock, one
// line per item, about 20,000 on this demo), then searchtheword finds a row.
// The database refuses the reload, whose select names columns outside its
// GROUP BY: what is measured then is that refusal and the reports that
// follow it, as a clerk meets it. The counter "refused" tells which ran.
void BM_ListSearchAndFind(benchmark::State &state) {
    // About three in four demo items stand in godown 1's stock.
    Session s(26150);
    tqsv2731::frmStockVerification &entry = s.m.frmStockVerification();
    entry.cboSearch.setListIndex(1);
    auto search = [&entry] {
        entry.setEnabled(true);
        entry.txtsearch.setText("GRO0100");
        std::string column = entry.cboSearch.Text();
        entry.Search(column);
        entry.searchtheword();
    };
    // A first run shows how many failure reports each run answers; answers
    // that no report takes are never asked for.
    fillList(entry);
    for (int box = 0; box < 2; ++box) {
        s.ui.queueAnswer(forms::vbOK);
    }
    search();
    const std::size_t reports = s.ui.boxes().size();
    const int reloaded = entry.lvwRequest.ListItems().Count();
    for (auto _ : state) {
        state.PauseTiming();
        fillList(entry);
        for (std::size_t box = 0; box < reports; ++box) {
            s.ui.queueAnswer(forms::vbOK);
        }
        state.ResumeTiming();
        search();
        benchmark::DoNotOptimize(entry.lvwRequest.selectedItemOrNull());
    }
    state.counters["reloaded"] = reloaded;
    state.counters["refused"] = reports > 0 ? 1 : 0;
}
BENCHMARK(BM_ListSearchAndFind)->Unit(benchmark::kMillisecond);

// The binary search alone, over 20,000 lines.
void BM_ListFindOnly(benchmark::State &state) {
    Session s(100);
    tqsv2731::frmStockVerification &entry = s.m.frmStockVerification();
    fillList(entry);
    entry.cboSearch.setListIndex(1);
    entry.txtsearch.setText("GRO0100");
    forms::ListItemCollection &rows = entry.lvwRequest.ListItems();
    for (auto _ : state) {
        rows(1).setSelected(true);
        entry.searchtheword();
        benchmark::DoNotOptimize(entry.lvwRequest.selectedItemOrNull());
    }
    state.counters["lines"] = rows.Count();
    checkNoFault(s.ui, state);
}
BENCHMARK(BM_ListFindOnly)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
