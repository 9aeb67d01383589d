// script::Session: the session values a scenario sets and hands to what it shows.
#pragma once

#include "vb/Date.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace script {

/// The values a host gives the module before Show: the connection string, the
/// ids of company, user, godown and interface, the working date, the title of
/// message boxes, the fixed clock and the program folder. A scenario sets them
/// with `set` (and `db`); `show` hands a copy to the show target.
struct Session {
    std::string connectionString;
    std::int32_t companyId = 0;
    std::int32_t userId = 0;
    std::int32_t godownId = 0;
    std::int32_t interfaceId = 0;
    /// The working date; the clock's date at `show` when the scenario sets none.
    vb::Date processDate;
    std::string messageTitle;
    /// The fixed clock (vb::setClock); none: the system clock.
    std::optional<vb::Date> clock;
    /// The program folder, where ShopSetting.txt and reports/ are looked for.
    std::filesystem::path homeDir;
};

} // namespace script
