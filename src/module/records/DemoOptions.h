// The choices that shape a demo database: its reference date and its number of items.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace records {

struct DemoOptions {
    /// The day the demo is seen from: entries, transfers, closings and expiry dates lie
    /// around it, and the current financial year is the one that holds it.
    std::chrono::sys_days date = std::chrono::year{2026} / 11 / 22;
    /// Number of items. The first twelve are the hand-made ones that docs/database.md
    /// describes; the rest are generated, each from its own id, so that an item is the
    /// same whatever the total.
    int items = 200;
    /// Unix logins mapped to the demo's store clerk (user 1) in svUserLogin,
    /// so that the terminal opens for them.
    std::vector<std::string> logins;
};

/// Fewest items a demo can have: the hand-made ones.
inline constexpr int demoFeaturedItems = 12;

/// Told how far loading has come: a stage name ("items", "stock", ...), and how many
/// of how many things of that stage are done.
using DemoProgress = std::function<void(std::string_view stage, long done, long total)>;

} // namespace records
