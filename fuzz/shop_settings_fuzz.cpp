// The reader of ShopSetting.txt (FileCode) on any file. The input is a key, a newline,
// then the file's text.
#include "forms/MsgBox.h"
#include "forms/Screen.h"
#include "forms/Ui.h"
#include "module/frame/Module.h"
#include "module/frame/basStockVerification.h"
#include "module/records/DatabaseFile.h"
#include "services/Context.h"
#include "services/FaultReport.h"
#include "vb/FileChannels.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

/// A user who answers every message box with OK; nothing else may happen while a
/// setting is read.
class OkUi : public forms::Ui {
public:
    void runModal(forms::Form &) override { fail("a modal form"); }
    int msgBox(std::string_view, int, std::string_view) override { return forms::vbOK; }
    forms::Menu *popupMenu(forms::Form &, forms::Menu &) override {
        fail("a popup menu");
        return nullptr;
    }
    void doEvents() override {}
    void showTextFile(const std::string &) override { fail("a text file shown"); }
    std::unique_ptr<std::ostream> openPrinter(const std::string &) override {
        fail("a printer opened");
        return nullptr;
    }
    void previewReport(const forms::ReportPreview &) override { fail("a report"); }
    void mousePointerChanged(forms::Screen &) override {}

private:
    [[noreturn]] static void fail(const char *what) {
        throw std::logic_error(std::string("reading a setting showed ") + what);
    }
};

struct Session {
    Session()
        : folder(std::filesystem::temp_directory_path() /
                 ("stockverify-fuzz-" + std::to_string(getpid()))),
          context(screen, folder / "state"), m(context) {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directories(folder);
        // The failure path looks the user up in the database before it reports.
        records::createDatabaseFile(folder / "empty.db", {});
        connection.Open("sqlite:" + (folder / "empty.db").string());
        m.adocon = connection;
        m.intUserID = 1;
        m.intGodownID = 1;
        m.strMsgboxCaption = "Stock Verification";
    }
    ~Session() {
        std::error_code ignored; // a leftover temporary folder harms nothing
        std::filesystem::remove_all(folder, ignored);
    }
    std::filesystem::path folder;
    OkUi ui;
    forms::Screen screen{ui};
    services::Context context;
    ado::Connection connection;
    tqsv2731::Module m;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    static Session s;
    const std::string_view input(reinterpret_cast<const char *>(data), size);
    const std::size_t eol = input.find('\n');
    const std::string key(input.substr(0, eol));
    const std::string_view text = eol == std::string_view::npos ? "" : input.substr(eol + 1);
    const std::string file = (s.folder / "ShopSetting.txt").string();
    std::ofstream(file, std::ios::binary | std::ios::trunc).write(text.data(), text.size());
    // Every failure is reported through the fault desk and ends in Empty; none escapes.
    tqsv2731::FileCode(s.m, key, file);
    std::filesystem::remove(s.folder / "state" / std::string(services::faultLogFileName));
    // A line without ":=" leaves the channel open, as it always did; the next run must
    // start with it closed.
    vb::FileCloseAll();
    return 0;
}
