// The database that the clerks of a test share, on the engine the test is run for.
#pragma once

#include "DurabilityFolder.h"

#include "module/records/ScratchServerDatabase.h"

#include <memory>
#include <string>

namespace durability {

enum class Engine { SQLite, PostgreSQL };

/// A fresh copy of the demo (its hand-made items only): a file in `folder`, or a scratch
/// database on the test cluster, dropped with the object.
class SharedDatabase {
public:
    SharedDatabase(Engine engine, const DurabilityFolder &folder);

    /// False, with `whyNot()` saying why, where the test cluster is not there to run on.
    bool available() const { return !db_.empty(); }
    const std::string &whyNot() const { return whyNot_; }
    /// What a clerk and GodownBook open: a file's path or the server's connection string.
    const std::string &db() const { return db_; }

private:
    std::unique_ptr<records::ScratchServerDatabase> server_;
    std::string db_;
    std::string whyNot_;
};

/// "SQLite" or "PostgreSQL", to name a test of either.
std::string engineName(Engine engine);

} // namespace durability
