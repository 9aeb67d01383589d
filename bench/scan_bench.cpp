// One scan more on an entry that already holds 20,000 or 100,000 lines: from the barcode's
// Enter to the new row in the entry's list, headless and with the terminal host's redraw;
// and what a line of that list costs in memory. Each against the same work done directly
// on plain vectors of strings in the same run.
#include "ScratchFolder.h"
#include "Sides.h"

#include "hosts/tui/Canvas.h"
#include "hosts/tui/Terminal.h"
#include "hosts/tui/TuiHost.h"

#include "ado/Recordset.h"
#include "forms/ListView.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "module/detail/frmStockVerificationDetail.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/records/DatabaseFile.h"
#include "module/register/frmMaster.h"
#include "services/Context.h"
#include "vb/Conversion.h"
#include "vb/Date.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <array>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr double scanTargetMs = 5;       // a scan at 100,000 lines, redraw included
constexpr double lineTargetBytes = 1024; // one line of the entry's list

const fs::path &folder() {
    return bench::scratchFolder("scanbench");
}

// The demo company, made once: its items are the ones scanned; the lines
// already in the list name items that are not in it.
const fs::path &demo() {
    static const fs::path path = [] {
        fs::path p = folder() / "demo.db";
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        records::createDatabaseFile(p, options);
        return p;
    }();
    return path;
}

// A line as the detail form leaves it: the serial number, then sub-items 1 to 13.
using Line = std::array<std::string, 14>;

Line lineOf(int i) {
    const std::string n = std::to_string(i);
    return {n,       " ",       "",      "Item description of line " + n,
            "10.000", "9.000",  "0.000", "0.000",
            std::to_string(1000000 + i), n, "1", "1", "2.5", "PCS"};
}

void fill(forms::ListView &list, int lines) {
    forms::ListItemCollection &items = list.ListItems();
    items.Clear();
    for (int i = 1; i <= lines; ++i) {
        const Line l = lineOf(i);
        forms::ListItem &item = items.Add(0, "", l[0]);
        for (int n = 1; n < 14; ++n) {
            item.setSubItems(n, l[n]);
        }
    }
}

/// A terminal that takes frames and has no key waiting. The host looks for
/// keys without waiting (around the hourglass); a scan that waited for one (a
/// message box) would make the figures meaningless, so that stops the run.
class NullTerminal : public tui::Terminal {
public:
    tui::TerminalSize size() const override { return {120, 40}; }
    void present(const tui::Canvas &canvas) override {
        benchmark::DoNotOptimize(&canvas);
        ++frames;
    }
    std::string read(std::optional<std::chrono::milliseconds> timeout) override {
        if (!timeout || timeout->count() > 0) {
            throw std::runtime_error("the scan waited for a key");
        }
        return {};
    }
    int frames = 0;
};

// The module on the demo with the register, the entry form of a new total
// count and its detail form shown, as a clerk stands while scanning.
class Session {
public:
    explicit Session(forms::Screen &screen) : context(screen, folder() / "state"), m(context) {
        connection.Open("sqlite:" + demo().string());
        m.adocon = connection;
        m.intCompanyID = 1;
        m.intUserID = 1;
        m.intGodownID = 1;
        m.intInterfaceID = 1013;
        m.strMsgboxCaption = "Stock Verification";
        m.dtProcessDate = vb::DateSerial(2026, 11, 22);
        m.frmMaster().Show();
        m.strTransactionMode = "N";
        m.frmStockVerification().Show();
        m.strDetailMode = "N";
        m.frmStockVerificationDetail().Show();
        barcode = firstPackingBarcode();
    }

    // A packing barcode of an active item that godown 1 carries.
    std::string firstPackingBarcode() {
        ado::Recordset rs;
        rs.Open("select p.packingbarcode from aitempackingdetail p, agodowndetail g, aitem a "
                "where p.itemid = g.itemid and g.godownid = 1 and a.itemid = p.itemid and "
                "a.active = 1 and p.Active = 1 order by p.itemid",
                m.adocon, ado::adOpenForwardOnly, ado::adLockReadOnly);
        if (rs.Eof()) {
            throw std::runtime_error("the demo has no packing barcode in godown 1");
        }
        return vb::CStr(rs.Fields(0).Value());
    }

    forms::ListView &list() { return m.frmStockVerification().lvwRequest; }

    // The scan: the barcode's text, then its Enter.
    void scan() {
        tqsv2731::frmStockVerificationDetail &detail = m.frmStockVerificationDetail();
        detail.txtBarcode.setText(barcode);
        int enter = 13;
        detail.txtBarcode_KeyPress(enter);
    }

    services::Context context;
    ado::Connection connection;
    tqsv2731::Module m;
    std::string barcode;
};

// The floor: the same walk and append on a vector of plain lines. The walk
// reads sub-item 8 of each line as a number, as the duplicate check does.
class PlainList {
public:
    explicit PlainList(int lines) {
        for (int i = 1; i <= lines; ++i) {
            lines_.push_back(lineOf(i));
        }
    }
    void scan(double itemId) {
        for (const Line &l : lines_) {
            double value = 0;
            std::from_chars(l[8].data(), l[8].data() + l[8].size(), value);
            if (value == itemId) {
                return;
            }
        }
        const std::string n = std::to_string(lines_.size() + 1);
        lines_.push_back({n, " ", "", "Item", "0.000", "1.000", "0.000", "0.000", "1", n, "1",
                          "1", "2.5", "PCS"});
        benchmark::DoNotOptimize(lines_.back().data());
        lines_.pop_back();
    }

private:
    std::vector<Line> lines_;
};

// Each iteration scans once, timed with its floor; the row it added is
// removed untimed, so that every scan meets the same number of lines.
void scanOnce(benchmark::State &state, Session &s, const std::function<void()> &redraw) {
    const int lines = static_cast<int>(state.range(0));
    fill(s.list(), lines);
    PlainList plain(lines);
    bench::Sides sides;
    for (auto _ : state) {
        sides.timeModule([&] {
            s.scan();
            redraw();
        });
        sides.timeFloor([&] { plain.scan(1); });
        forms::ListItemCollection &items = s.list().ListItems();
        if (items.Count() != lines + 1) {
            state.SkipWithError("the scan added no row");
            break;
        }
        items.Remove(items.Count());
    }
    sides.report(state, {scanTargetMs, 0});
}

void BM_ScanHeadless(benchmark::State &state) {
    forms::TestUi ui;
    forms::Screen screen{ui};
    Session s(screen);
    scanOnce(state, s, [] {});
    if (!ui.boxes().empty()) {
        state.SkipWithError(("the module said: " + ui.boxes().front().prompt).c_str());
    }
}
BENCHMARK(BM_ScanHeadless)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The same scan followed by the terminal host's frame: the register, the
// entry's list and the detail form drawn on the canvas that the terminal copies.
void BM_ScanWithRedraw(benchmark::State &state) {
    NullTerminal terminal;
    tui::TuiHost host(terminal);
    Session s(host.screen());
    host.redraw();
    terminal.frames = 0;
    scanOnce(state, s, [&host] { host.redraw(); });
    // The hourglass and its end draw frames of their own before the last one.
    state.counters["frames_per_scan"] =
        static_cast<double>(terminal.frames) / static_cast<double>(state.iterations());
}
BENCHMARK(BM_ScanWithRedraw)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Heap in use, large blocks (which the allocator maps apart) included.
std::size_t heapInUse() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// Bytes of heap that one line of the entry's list holds at 100,000 lines,
// against the same texts in a vector of plain lines.
void BM_ListMemoryPerLine(benchmark::State &state) {
    constexpr int lines = 100000;
    forms::TestUi ui;
    forms::Screen screen{ui};
    Session s(screen);
    double perLine = 0;
    double floorPerLine = 0;
    for (auto _ : state) {
        s.list().ListItems().Clear();
        const std::size_t before = heapInUse();
        fill(s.list(), lines);
        perLine = static_cast<double>(heapInUse() - before) / lines;
        const std::size_t plainBefore = heapInUse();
        {
            PlainList plain(lines);
            floorPerLine = static_cast<double>(heapInUse() - plainBefore) / lines;
        }
    }
    state.counters["bytes_per_line"] = perLine;
    state.counters["floor_bytes"] = floorPerLine;
    state.counters["target_bytes"] = lineTargetBytes;
}
BENCHMARK(BM_ListMemoryPerLine)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
