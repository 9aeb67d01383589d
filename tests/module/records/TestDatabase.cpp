#include "TestDatabase.h"

#include "module/records/DatabaseFile.h"

#include <atomic>
#include <memory>
#include <unistd.h>

namespace records::testing {

TempFolder::TempFolder() {
    static std::atomic<int> counter{0};
    path_ = std::filesystem::temp_directory_path() /
            ("test_records-" + std::to_string(getpid()) + "-" + std::to_string(++counter));
    std::filesystem::create_directories(path_);
}

TempFolder::~TempFolder() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
}

const std::filesystem::path &demoDatabase() {
    static const auto folder = std::make_unique<TempFolder>();
    static const std::filesystem::path file = [] {
        auto path = folder->file("demo.db");
        DatabaseFileOptions options;
        options.demo = DemoOptions{};
        options.demo->items = demoFeaturedItems;
        createDatabaseFile(path, options);
        return path;
    }();
    return file;
}

ado::Connection connect(const std::filesystem::path &file) {
    ado::Connection connection;
    connection.Open("sqlite:" + file.string());
    return connection;
}

} // namespace records::testing
