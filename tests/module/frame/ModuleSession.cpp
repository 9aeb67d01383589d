#include "ModuleSession.h"

#include "module/records/DatabaseFile.h"
#include "services/FaultReport.h"

#include <fstream>
#include <random>

namespace tqsv2731::test {

namespace {

std::vector<std::string> lines(const std::filesystem::path &file) {
    std::vector<std::string> out;
    std::ifstream in(file);
    for (std::string line; std::getline(in, line);) {
        out.push_back(line);
    }
    return out;
}

struct TraceCall {
    std::string how;
    std::string sent;
};

/// The calls of a trace file that sent a statement: the heading "#12 date
/// time what" and the "sent:" line under it.
std::vector<TraceCall> tracedCalls(const std::filesystem::path &file) {
    std::vector<TraceCall> calls;
    std::string how;
    for (const std::string &line : lines(file)) {
        if (line.rfind('#', 0) == 0) {
            // "#12 2026-11-22 10:15:02.123 open keyset optimistic"
            std::size_t at = line.find(' ');
            for (int skip = 0; skip < 2 && at != std::string::npos; ++skip) {
                at = line.find(' ', at + 1);
            }
            how = at == std::string::npos ? "" : line.substr(at + 1);
        } else if (line.rfind("sent:", 0) == 0) {
            calls.push_back({how, line.substr(9)});
        }
    }
    return calls;
}

} // namespace

TempFolder::TempFolder() {
    std::random_device random;
    path_ = std::filesystem::temp_directory_path() /
            ("stockverify-module-" + std::to_string(random()) + std::to_string(random()));
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

const std::filesystem::path &demoDatabase() {
    static TempFolder folder;
    static const std::filesystem::path file = [] {
        std::filesystem::path path = folder.path() / "demo.db";
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        options.demo->items = records::demoFeaturedItems;
        records::createDatabaseFile(path, options);
        return path;
    }();
    return file;
}

ModuleSession::ModuleSession(const SessionValues &values)
    : context(screen, folder.path() / "state"), m(context) {
    const std::filesystem::path db = folder.path() / "demo.db";
    std::filesystem::copy_file(demoDatabase(), db);
    connection.Open("sqlite:" + db.string());
    trace_ = folder.path() / "trace.txt";
    connection.traceSql(trace_.string());

    m.adocon = connection;
    m.intCompanyID = values.company;
    m.intUserID = values.user;
    m.intGodownID = values.godown;
    m.intInterfaceID = values.interfaceId;
    m.strMsgboxCaption = values.caption;
    m.dtProcessDate = values.processDate;
}

ModuleSession::~ModuleSession() {
    connection.traceSql("");
}

void ModuleSession::execute(const std::string &sql) {
    connection.Execute(sql);
    forget();
}

std::vector<std::string> ModuleSession::sent() const {
    std::vector<std::string> out;
    auto calls = tracedCalls(trace_);
    for (std::size_t i = forgotten_; i < calls.size(); ++i) {
        out.push_back(calls[i].sent);
    }
    return out;
}

std::vector<std::string> ModuleSession::sentHow() const {
    std::vector<std::string> out;
    auto calls = tracedCalls(trace_);
    for (std::size_t i = forgotten_; i < calls.size(); ++i) {
        out.push_back(calls[i].how);
    }
    return out;
}

void ModuleSession::forget() {
    forgotten_ = tracedCalls(trace_).size();
}

std::vector<std::string> ModuleSession::faultLog() const {
    return lines(folder.path() / "state" / std::string(services::faultLogFileName));
}

} // namespace tqsv2731::test
