// How long the terminal host takes to redraw a frame of a large grid and a large list.
#include "hosts/tui/Canvas.h"
#include "hosts/tui/Terminal.h"
#include "hosts/tui/TuiHost.h"

#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/ListView.h"

#include <benchmark/benchmark.h>

#include <string>

namespace {

/// A terminal that takes frames and gives no input: the cost measured is the host's own.
class NullTerminal : public tui::Terminal {
public:
    tui::TerminalSize size() const override { return {120, 40}; }
    void present(const tui::Canvas &canvas) override { benchmark::DoNotOptimize(&canvas); }
    std::string read(std::optional<std::chrono::milliseconds>) override { return {}; }
};

/// The register's shape: a grid of seven columns over most of the form.
class RegisterForm : public forms::Form {
public:
    RegisterForm(forms::Screen &screen, int rows) : Form(screen, "frmRegister") {
        setCaption("Stock Verification");
        Move(0, 0, 9600, 6600);
        grid.Move(120, 940, 9360, 4860);
        grid.setFixedCols(0);
        grid.setCols(7);
        grid.setRows(rows + 1);
        const int widths[] = {0, 1300, 1200, 2000, 900, 2600, 900};
        for (int c = 0; c < 7; ++c) {
            grid.setColWidth(c, widths[c]);
        }
        for (int r = 1; r <= rows; ++r) {
            grid.setTextMatrix(r, 0, std::to_string(r));
            grid.setTextMatrix(r, 1, "SV/" + std::to_string(r));
            grid.setTextMatrix(r, 2, "2026/11/22");
            grid.setTextMatrix(r, 3, "Store keeper");
            grid.setTextMatrix(r, 4, r % 7 == 0 ? "Yes" : "No");
            grid.setTextMatrix(r, 5, "counted aisle " + std::to_string(r % 40));
            grid.setTextMatrix(r, 6, "Yes");
        }
        for (int r = 7; r <= rows; r += 7) {
            grid.setRow(r);
            for (int c = 0; c < 7; ++c) {
                grid.setCol(c);
                grid.setCellForeColor(forms::vbRed);
            }
        }
    }
    forms::FlexGrid grid{*this, "flexMaster"};
};

/// The entry form's list: fourteen columns, some hidden.
class EntryForm : public forms::Form {
public:
    EntryForm(forms::Screen &screen, int rows) : Form(screen, "frmEntry") {
        setCaption("Godown Stock Verification");
        Move(0, 0, 11400, 7200);
        list.Move(120, 1500, 11160, 4800);
        list.setFullRowSelect(true);
        const int widths[] = {926, 0, 0, 4760, 1228, 1164, 1140, 1140, 0, 0, 0, 0, 1540, 1064};
        for (int w : widths) {
            list.ColumnHeaders().Add(0, "", "Column", w, forms::lvwColumnLeft);
        }
        for (int r = 1; r <= rows; ++r) {
            auto &item = list.ListItems().Add(0, "", std::to_string(r));
            for (int s = 1; s < 14; ++s) {
                item.setSubItems(s, s == 3 ? "Item description " + std::to_string(r) : "12.000");
            }
        }
    }
    forms::ListView list{*this, "lvwRequest"};
};

void BM_RedrawGrid10000Rows(benchmark::State &state) {
    NullTerminal terminal;
    tui::TuiHost host(terminal);
    RegisterForm form(host.screen(), 10000);
    form.Show();
    int row = 1;
    for (auto _ : state) {
        form.grid.setRow(row); // a new selection and scroll position each frame
        row = (row + 137) % 10000 + 1;
        host.redraw();
    }
}
BENCHMARK(BM_RedrawGrid10000Rows)->Unit(benchmark::kMicrosecond);

void BM_RedrawList5000Rows(benchmark::State &state) {
    NullTerminal terminal;
    tui::TuiHost host(terminal);
    EntryForm form(host.screen(), 5000);
    form.Show();
    form.list.SetFocus();
    int index = 1;
    for (auto _ : state) {
        form.list.setSelectedItem(&form.list.ListItems()(index));
        index = (index + 89) % 5000 + 1;
        host.redraw();
    }
}
BENCHMARK(BM_RedrawList5000Rows)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
