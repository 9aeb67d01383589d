// durability_clerk: one clerk saving new entries into a godown through the entry form's OK,
// as a person at a terminal would, so that several of them can run against one database file.
//
//     durability_clerk DB STATE_DIR ENTRIES ROWS SEED [BATON_DIR CLERK CLERKS]
//
// DB is a database file, or a connection string ("sqlite:PATH", "postgresql://...").
// With a baton folder, CLERKS clerks (numbered from 0) take turns: their saves are numbered
// across all of them, clerk C making saves C, C + CLERKS, ..., and each save starts once the
// save before it has written its header and while that save is still writing its lines.
// Each clerk traces its statements to BATON_DIR/clerkC.trace, which is how the next one
// sees the header go in. So every save overlaps another one's open transaction, while the
// few statements between reading the next svhid and writing it never overlap (a race that
// the module has on any database, and no fault of the data layer's).
//
// For each entry it prints "saving K" before pressing OK and "saved SVHID" once the
// save has ended and the form closed, flushing each line, so that a parent can kill it
// between the two and know what the module had or had not committed. A fault reported
// through the fault desk, or a save that leaves the form open, ends the clerk with exit
// status 3 and the fault on standard error.
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "services/Context.h"
#include "services/FaultReport.h"
#include "vb/Conversion.h"
#include "vb/Date.h"
#include "vb/Format.h"
#include "vb/Strings.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// The items the clerks count: the demo's hand-made ones, all in godown 1, so that
/// every clerk moves the same stock rows.
constexpr int countedItems = 12;

/// A quantity in thousandths as the list shows it ("12.345").
std::string quantity(long thousandths) {
    return vb::Format(vb::Variant(static_cast<double>(thousandths) / 1000.0), "0.000");
}

/// Fills the list as the detail form would: book stock, then a count that differs from
/// it by steps of 0.1 and 0.2 (fractions that binary floating point cannot hold).
void fillList(tqsv2731::frmStockVerification &entry, int rows, std::mt19937 &random) {
    std::uniform_int_distribution<int> item(1, countedItems);
    std::uniform_int_distribution<int> step(-5, 5);
    forms::ListItemCollection &items = entry.lvwRequest.ListItems();
    for (int i = 1; i <= rows; ++i) {
        const std::string n = std::to_string(i);
        const long book = 10000 + 100 * step(random);
        const long counted = book + 100 * step(random);
        const long badBook = 200 * (step(random) + 5);
        const long badCounted = std::max(0L, badBook + 200 * step(random));
        forms::ListItem &row = items.Add(0, "", n);
        const std::string id = std::to_string(item(random));
        const std::string cells[] = {" ",
                                     "",
                                     "Item " + id,
                                     quantity(book),
                                     quantity(counted),
                                     quantity(badBook),
                                     quantity(badCounted),
                                     id,
                                     n,
                                     "1",
                                     "1",
                                     "2.5",
                                     "PCS"};
        for (int c = 1; c <= 13; ++c) {
            row.setSubItems(c, cells[c - 1]);
        }
    }
}

/// The clerk reads every message box, answers OK and carries on, as people do; the fault
/// desk shows each failure in one, so the boxes are how the clerk learns of them.
class ClerkUi : public forms::TestUi {
public:
    int msgBox(std::string_view prompt, int, std::string_view) override {
        shown.emplace_back(prompt);
        return forms::vbOK;
    }
    std::vector<std::string> shown;
};

/// Headers the clerk's trace shows written, failed or not.
int headersWritten(const fs::path &trace) {
    std::ifstream in(trace);
    int count = 0;
    for (std::string line; std::getline(in, line);) {
        if (line.rfind('#', 0) == 0 && vb::InStr(1, line, "insert into loiStockVerificationHeader",
                                                   vb::Compare::Text) > 0) {
            ++count;
        }
    }
    return count;
}

/// Waits until `trace` shows `count` headers written; false after a minute.
bool awaitHeaders(const fs::path &trace, int count) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (headersWritten(trace) < count) {
        if (std::chrono::steady_clock::now() > until) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    return true;
}

std::string faults(const fs::path &stateDir) {
    std::ifstream in(stateDir / std::string(services::faultLogFileName));
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

} // namespace

int main(int argc, char **argv) {
    if (argc != 6 && argc != 9) {
        std::cerr << "usage: durability_clerk DB STATE_DIR ENTRIES ROWS SEED [BATON_DIR CLERK "
                     "CLERKS]\n";
        return 2;
    }
    const bool takesTurns = argc == 9;
    const fs::path batonDir = takesTurns ? fs::path(argv[6]) : fs::path();
    const int clerk = takesTurns ? std::stoi(argv[7]) : 0;
    const int clerks = takesTurns ? std::stoi(argv[8]) : 1;
    const auto traceOf = [&](int c) { return batonDir / ("clerk" + std::to_string(c) + ".trace"); };
    const std::string db = argv[1];
    const fs::path stateDir = argv[2];
    const int entries = std::stoi(argv[3]);
    const int rows = std::stoi(argv[4]);
    std::mt19937 random(static_cast<std::mt19937::result_type>(std::stoul(argv[5])));

    ClerkUi ui;
    forms::Screen screen{ui};
    services::Context context(screen, stateDir);
    ado::Connection connection;
    const bool named = db.starts_with("sqlite:") || db.starts_with("postgresql://");
    connection.Open(named ? db : "sqlite:" + db);
    if (takesTurns) {
        connection.traceSql(traceOf(clerk).string());
    }
    tqsv2731::Module m(context);
    m.adocon = connection;
    m.intCompanyID = 1;
    m.intUserID = 1;
    m.intGodownID = 1;
    m.intInterfaceID = 1005;
    m.strMsgboxCaption = "Stock Verification";
    m.dtProcessDate = vb::DateSerial(2026, 11, 22);
    m.frmMaster();

    for (int k = 1; k <= entries; ++k) {
        m.strTransactionMode = "N";
        tqsv2731::frmStockVerification &entry = m.frmStockVerification();
        entry.txtdate.setText(vb::CStr(vb::Variant(m.dtProcessDate)));
        entry.txtRemarks.setText("Count " + std::to_string(k));
        fillList(entry, rows, random);
        const int save = (k - 1) * clerks + clerk;
        if (takesTurns && save > 0 &&
            !awaitHeaders(traceOf((save - 1) % clerks), (save - 1) / clerks + 1)) {
            std::cerr << "entry " << k << ": the save before it never wrote its header\n";
            return 4;
        }
        std::cout << "saving " << k << std::endl;
        entry.cmdOK_Click();
        const std::string reported = faults(stateDir);
        if (!reported.empty() || !ui.shown.empty()) {
            std::cerr << "entry " << k << ": the fault desk recorded\n" << reported;
            for (const std::string &prompt : ui.shown) {
                std::cerr << "message: " << prompt << '\n';
            }
            return 3;
        }
        if (m.slotOf<tqsv2731::frmStockVerification>(m.frmStockVerification_).loaded()) {
            std::cerr << "entry " << k << ": the save did not end, the entry form is open\n";
            return 3;
        }
        std::cout << "saved " << m.lngVerificationId << std::endl;
    }
    return 0;
}
