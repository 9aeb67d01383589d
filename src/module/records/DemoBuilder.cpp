#include "module/records/DemoBuilder.h"

#include "vb/Error.h"

#include <cstdio>

namespace records {

DemoBuilder::DemoBuilder(DemoDb &db, const DemoOptions &options, const DemoProgress &progress)
    : db_(db), options_(options), progress_(progress) {
    if (options_.items < demoFeaturedItems)
        throw vb::Error(vb::err::InvalidProcedureCall, "records",
                        "A demo needs at least " + std::to_string(demoFeaturedItems) + " items");
}

void DemoBuilder::build() {
    addCompany();
    addGodowns();
    addUsers();
    addLayouts();
    addItems();
    addTransfers();
    addEntries();
}

std::string DemoBuilder::day(int offset, std::string_view time) const {
    const std::chrono::year_month_day ymd{options_.date + std::chrono::days{offset}};
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u %.*s", static_cast<int>(ymd.year()),
                  static_cast<unsigned>(ymd.month()), static_cast<unsigned>(ymd.day()),
                  static_cast<int>(time.size()), time.data());
    return text;
}

std::chrono::sys_days DemoBuilder::financialYearStart() const {
    using namespace std::chrono;
    const year_month_day ymd{options_.date};
    const year start = ymd.month() >= April ? ymd.year() : ymd.year() - years{1};
    return sys_days{start / April / 1};
}

void DemoBuilder::report(std::string_view stage, long done, long total) const {
    if (progress_)
        progress_(stage, done, total);
}

} // namespace records
