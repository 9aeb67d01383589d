// durability_clerk: one clerk saving new entries into a godown through the entry form's OK,
// or correcting and cancelling entries through the register's Edit and Delete, as a person at
// a terminal would, so that several of them can run against one database.
//
//     durability_clerk DB STATE_DIR ENTRIES ROWS SEED [BATON_DIR CLERK CLERKS]
//     durability_clerk change DB STATE_DIR TRACE GO_FILE SEED ROWS EDIT_ID EDITS [DELETE_ID...]
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
//
// With "change", the clerk opens the register, prints "ready" and waits for GO_FILE to appear
// (so that clerks who took different times to start begin together); then, in an order drawn
// from SEED, it edits entry EDIT_ID EDITS times (each time counting ROWS lines afresh in place of the stored ones) and
// deletes each DELETE_ID with a reason, tracing its statements to TRACE. It prints
// "edited ID ROWS" and "deleted ID" as each save or delete ends, and "conflict ID" for an edit
// refused because another clerk changed the entry's header between its reading and writing
// it (the edit then writes nothing). An edit that opens locked, a delete the register
// refuses, or any other fault or message but the delete's question ends it with exit status 3.
#include "forms/Input.h"
#include "forms/ListView.h"
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/register/frmMaster.h"
#include "module/register/frmcancelreason.h"
#include "services/Context.h"
#include "services/FaultReport.h"
#include "vb/Conversion.h"
#include "vb/Date.h"
#include "vb/Format.h"
#include "vb/Strings.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <sstream>
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
/// The one question the clerk expects, Delete's, is answered Yes and is no fault.
class ClerkUi : public forms::TestUi {
public:
    ClerkUi() : forms::TestUi(100000) {}
    int msgBox(std::string_view prompt, int, std::string_view) override {
        if (prompt.starts_with(deleteQuestion)) {
            return forms::vbYes;
        }
        shown.emplace_back(prompt);
        return forms::vbOK;
    }
    std::vector<std::string> shown;

private:
    static constexpr std::string_view deleteQuestion =
        "Are you sure you want to Delete the entry of - ";
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

/// What the fault desk (`reported`, the part of its log written since the clerk last looked)
/// and the message boxes told the clerk, on standard error; true if anything.
bool told(const std::string &reported, const ClerkUi &ui, const std::string &what) {
    if (reported.empty() && ui.shown.empty()) {
        return false;
    }
    std::cerr << what << ": the fault desk recorded\n" << reported;
    for (const std::string &prompt : ui.shown) {
        std::cerr << "message: " << prompt << '\n';
    }
    return true;
}

bool told(const fs::path &stateDir, const ClerkUi &ui, const std::string &what) {
    return told(faults(stateDir), ui, what);
}

/// True when all that went wrong is the header of the entry having been changed by another
/// clerk between the edit's reading it and writing it: the save then writes nothing and
/// commits that, and the clerk counts again later, as a person told so would.
bool lostToAnotherEdit(const std::string &reported, const ClerkUi &ui) {
    static constexpr std::string_view changed = "Row cannot be located for updating";
    std::istringstream lines(reported);
    int faultLines = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty()) {
            continue;
        }
        ++faultLines;
        if (line.find("\tUpdateRequest\t") == std::string::npos ||
            line.find(changed) == std::string::npos) {
            return false;
        }
    }
    return faultLines == 1 && ui.shown.size() == 1 && ui.shown[0].find(changed) != std::string::npos;
}

/// The module as the host hands it over: company 1, user 1, godown 1, the plain count.
void openSession(tqsv2731::Module &m, ado::Connection &connection) {
    m.adocon = connection;
    m.intCompanyID = 1;
    m.intUserID = 1;
    m.intGodownID = 1;
    m.intInterfaceID = 1005;
    m.strMsgboxCaption = "Stock Verification";
    m.dtProcessDate = vb::DateSerial(2026, 11, 22);
}

ado::Connection connect(const std::string &db) {
    ado::Connection connection;
    const bool named = db.starts_with("sqlite:") || db.starts_with("postgresql://");
    connection.Open(named ? db : "sqlite:" + db);
    return connection;
}

/// Selects the register's row of entry `id`, as a click on it would; false if not listed.
bool selectEntry(tqsv2731::frmMaster &master, std::int32_t id) {
    for (int row = 1; row < master.flexMaster.Rows(); ++row) {
        if (master.flexMaster.TextMatrix(row, 0) == std::to_string(id)) {
            master.flexMaster.setRow(row);
            return true;
        }
    }
    return false;
}

/// Edit on entry `id`: the stored lines give way to a fresh count of `rows` lines, and OK.
/// False, with the reason on standard error, where a person could not have saved it.
bool editEntry(tqsv2731::Module &m, ClerkUi &ui, std::int32_t id, int rows, std::mt19937 &random) {
    tqsv2731::frmMaster &master = m.frmMaster();
    if (!selectEntry(master, id) || !master.CmdEdit.Enabled()) {
        std::cerr << "entry " << id << " cannot be edited from the register\n";
        return false;
    }
    bool saved = false;
    ui.queueAction([&](forms::Input &input) {
        tqsv2731::frmStockVerification &entry = m.frmStockVerification();
        entry.lvwRequest.ListItems().Clear();
        fillList(entry, rows, random);
        entry.txtRemarks.setText("Recount of " + std::to_string(id));
        saved = input.click(entry.cmdOK);
        if (!saved) {
            std::cerr << "entry " << id << " opened with OK switched off\n";
            input.closeForm(entry);
        }
    });
    master.CmdEdit_Click();
    if (saved && m.slotOf<tqsv2731::frmStockVerification>(m.frmStockVerification_).loaded()) {
        std::cerr << "entry " << id << ": the save did not end, the entry form is open\n";
        return false;
    }
    return saved;
}

/// Delete on entry `id`, answered Yes, with a reason typed into the dialog.
bool deleteEntry(tqsv2731::Module &m, ClerkUi &ui, std::int32_t id) {
    tqsv2731::frmMaster &master = m.frmMaster();
    if (!selectEntry(master, id) || !master.CmdDelete.Enabled()) {
        std::cerr << "entry " << id << " cannot be deleted from the register\n";
        return false;
    }
    bool reasoned = false;
    ui.queueAction([&](forms::Input &input) {
        tqsv2731::frmcancelreason &dialog = m.frmcancelreason();
        dialog.txtcanreason.setText("Counted twice");
        reasoned = input.click(dialog.cmdOK);
    });
    master.CmdDelete_Click();
    if (!reasoned) {
        std::cerr << "entry " << id << ": the reason dialog did not take the reason\n";
    }
    return reasoned;
}

int changeEntries(int argc, char **argv) {
    if (argc < 10) {
        std::cerr << "usage: durability_clerk change DB STATE_DIR TRACE GO_FILE SEED ROWS EDIT_ID "
                     "EDITS [DELETE_ID...]\n";
        return 2;
    }
    const fs::path stateDir = argv[3];
    const fs::path go = argv[5];
    std::mt19937 random(static_cast<std::mt19937::result_type>(std::stoul(argv[6])));
    const int rows = std::stoi(argv[7]);
    const std::int32_t edited = std::stoi(argv[8]);
    // A positive id is edited, a negative one deleted, in an order of the seed's drawing.
    std::vector<std::int32_t> plan(static_cast<std::size_t>(std::stoi(argv[9])), edited);
    for (int i = 10; i < argc; ++i) {
        plan.push_back(-std::stoi(argv[i]));
    }
    std::shuffle(plan.begin(), plan.end(), random);

    ClerkUi ui;
    forms::Screen screen{ui};
    services::Context context(screen, stateDir);
    ado::Connection connection = connect(argv[2]);
    connection.traceSql(argv[4]);
    tqsv2731::Module m(context);
    openSession(m, connection);
    m.frmMaster();
    if (told(stateDir, ui, "the register")) {
        return 3;
    }
    std::cout << "ready" << std::endl;
    const auto until = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!fs::exists(go)) {
        if (std::chrono::steady_clock::now() > until) {
            std::cerr << "no word to begin came within a minute\n";
            return 4;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
    for (const std::int32_t action : plan) {
        const std::size_t logged = faults(stateDir).size();
        ui.shown.clear();
        const bool done =
            action > 0 ? editEntry(m, ui, action, rows, random) : deleteEntry(m, ui, -action);
        const std::string reported = faults(stateDir).substr(logged);
        if (done && action > 0 && lostToAnotherEdit(reported, ui)) {
            std::cout << "conflict " << action << std::endl;
            continue;
        }
        if (!done || told(reported, ui, "entry " + std::to_string(std::abs(action)))) {
            return 3;
        }
        if (action > 0) {
            std::cout << "edited " << action << ' ' << rows << std::endl;
        } else {
            std::cout << "deleted " << -action << std::endl;
        }
    }
    return 0;
}

int saveEntries(int argc, char **argv) {
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
    ado::Connection connection = connect(db);
    if (takesTurns) {
        connection.traceSql(traceOf(clerk).string());
    }
    tqsv2731::Module m(context);
    openSession(m, connection);
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
        if (told(stateDir, ui, "entry " + std::to_string(k))) {
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

} // namespace

int main(int argc, char **argv) {
    if (argc > 1 && std::string_view(argv[1]) == "change") {
        return changeEntries(argc, argv);
    }
    return saveEntries(argc, argv);
}
