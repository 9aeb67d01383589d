#include "DurabilityFolder.h"

#include "module/records/DatabaseFile.h"

#include <random>

namespace durability {

namespace fs = std::filesystem;

namespace {

fs::path freshFolder() {
    std::random_device random;
    fs::path path = fs::temp_directory_path() /
                    ("stockverify-durability-" + std::to_string(random()) +
                     std::to_string(random()));
    fs::create_directories(path);
    return path;
}

const fs::path &pristineDemo() {
    static const DurabilityFolder folder;
    static const fs::path file = [] {
        fs::path path = folder.path() / "demo.db";
        records::DatabaseFileOptions options;
        options.demo = records::DemoOptions{};
        options.demo->items = records::demoFeaturedItems;
        records::createDatabaseFile(path, options);
        return path;
    }();
    return file;
}

} // namespace

DurabilityFolder::DurabilityFolder() : path_(freshFolder()) {}

DurabilityFolder::~DurabilityFolder() {
    std::error_code ignored; // a leftover temporary folder harms nothing
    fs::remove_all(path_, ignored);
}

fs::path DurabilityFolder::demoDatabase(const std::string &name) const {
    const fs::path copy = path_ / name;
    for (const char *suffix : {"-wal", "-shm", "-journal"}) {
        fs::remove(copy.string() + suffix);
    }
    fs::copy_file(pristineDemo(), copy, fs::copy_options::overwrite_existing);
    return copy;
}

} // namespace durability
