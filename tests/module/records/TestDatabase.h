// Database files for the tests of the records library, made in a private temporary folder.
#pragma once

#include "ado/Connection.h"

#include <filesystem>
#include <string>

namespace records::testing {

/// A folder of its own below the system's temporary folder, removed with everything in it.
class TempFolder {
public:
    TempFolder();
    ~TempFolder();
    TempFolder(const TempFolder &) = delete;
    TempFolder &operator=(const TempFolder &) = delete;

    const std::filesystem::path &path() const { return path_; }
    std::filesystem::path file(const std::string &name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

/// The demo database with the twelve hand-made items and the default date, made once
/// for the test program. Tests that change it do so inside a transaction they roll back.
const std::filesystem::path &demoDatabase();

/// A new connection to a database file.
ado::Connection connect(const std::filesystem::path &file);

} // namespace records::testing
