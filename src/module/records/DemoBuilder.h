// Fills an empty database with the demo company, one piece after the other.
#pragma once

#include "module/records/DemoOptions.h"

#include <chrono>
#include <string>
#include <string_view>

namespace records {

class DemoDb;
struct DemoEntry;

/// The demo company of docs/database.md. Each part is a routine of its own, split over
/// files by what it builds; `build` runs them in the order their rows depend on.
class DemoBuilder {
public:
    DemoBuilder(DemoDb &db, const DemoOptions &options,
                const DemoProgress &progress);

    void build();

private:
    // DemoBuilder_company.cpp
    void addCompany();
    void addGodowns();
    void addUsers();
    void addLayouts();
    // DemoBuilder_items.cpp
    void addItems();
    // DemoBuilder_entries.cpp
    void addTransfers();
    void addEntries();
    void addEntry(const DemoEntry &entry);
    void addTotalCount();
    void addEntryTrail(const DemoEntry &entry);

    /// The demo date moved by a number of days, as stored: "YYYY-MM-DD hh:mm:ss".
    std::string day(int offset, std::string_view time = "00:00:00") const;
    /// The first day of the financial year (April to March) that holds the demo date.
    std::chrono::sys_days financialYearStart() const;
    void report(std::string_view stage, long done, long total) const;

    DemoDb &db_;
    DemoOptions options_;
    const DemoProgress &progress_;
};

} // namespace records
