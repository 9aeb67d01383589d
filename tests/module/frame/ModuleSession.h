// A module on the demo database with a scripted Ui, for the tests of the module's forms.
#pragma once

#include "ado/Connection.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "module/frame/Module.h"
#include "services/Context.h"
#include "vb/Date.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tqsv2731::test {

/// A folder of its own below the system's temporary folder, removed with all in it.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder &) = delete;
    TempFolder &operator=(const TempFolder &) = delete;

    const std::filesystem::path &path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// The session values a host hands the module.
struct SessionValues {
    std::int32_t company = 1;
    std::int32_t user = 1;
    std::int32_t godown = 1;
    std::int32_t interfaceId = 1005;
    /// The demo's own day, 22 November 2026.
    vb::Date processDate = vb::DateSerial(2026, 11, 22);
    std::string caption = "Stock Verification";
};

/// One module on a private copy of the demo database (docs/database.md, the
/// twelve hand-made items), with its session values set as Show sets them,
/// a TestUi to script the user, and every statement traced.
class ModuleSession {
public:
    explicit ModuleSession(const SessionValues &values = {});
    ~ModuleSession();

    TempFolder folder;
    forms::TestUi ui;
    forms::Screen screen{ui};
    services::Context context;
    ado::Connection connection;
    Module m;

    /// Runs a statement on the session's database (to shape the demo data).
    void execute(const std::string &sql);
    /// The statements sent since the session began, or since `forget`.
    std::vector<std::string> sent() const;
    /// The trace's heading of each call ("open keyset optimistic", ...), in
    /// the order of `sent`, for the calls that sent a statement.
    std::vector<std::string> sentHow() const;
    void forget();
    /// Faults the fault desk recorded in its log, one line each.
    std::vector<std::string> faultLog() const;

private:
    std::filesystem::path trace_;
    std::size_t forgotten_ = 0;
};

/// The demo database file, made once for the test program.
const std::filesystem::path &demoDatabase();

} // namespace tqsv2731::test
