// What the database file says about a godown's entries and stock, read in thousandths so
// that sums compare exactly.
#pragma once

#include "ado/Connection.h"
#include "module/records/PostgresDatabase.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace durability {

/// Good and bad stock, or a change of them, in thousandths.
struct Quantity {
    std::int64_t good = 0;
    std::int64_t bad = 0;
    bool operator==(const Quantity &) const = default;
};

/// As gtest shows a quantity that differs: "good 12.345 bad 0.200".
void PrintTo(const Quantity &q, std::ostream *out);

/// By item and shipment.
using StockByItem = std::map<std::pair<std::int64_t, std::int64_t>, Quantity>;

/// A decimal text ("127.1", "-0.25", "3") in thousandths; a value with more than three
/// decimals, or in exponent form (binary floating point residue such as 5.55E-17), is
/// no exact quantity and raises std::invalid_argument naming it.
std::int64_t thousandths(const std::string &text);

/// A read-only look at one database, in the engine's own SQL past the module's data layer:
/// a file (a path, or "sqlite:PATH") or a server's database ("postgresql://...").
class GodownBook {
public:
    GodownBook(const std::string &database, std::int32_t godown);

    /// "ok" for a sound database: what `pragma integrity_check` says of a file; on a server,
    /// the check of every index of the module's tables (amcheck), which raises on a fault.
    std::string integrity();
    /// The highest svhid of the godown, 0 with no entry.
    std::int64_t lastEntryId();
    /// The highest svhid of the godown's entries that are not cancelled, 0 with none.
    std::int64_t lastLiveEntryId();
    /// svhid, svhno, svhFutureVc, svhcancelled of the entries above `afterId`, by svhid.
    std::vector<std::vector<std::string>> entriesAfter(std::int64_t afterId);
    /// The number of detail lines of each entry above `afterId` (entries with lines only).
    std::map<std::int64_t, std::int64_t> linesAfter(std::int64_t afterId);
    /// The activity trail's rows of one action ("N" new, "E" edited, "D" deleted) on the
    /// godown's entries above `afterId`, by svhid.
    std::map<std::int64_t, std::int64_t> trailAfter(std::int64_t afterId,
                                                    const std::string &action = "N");
    /// Numbers that more than one entry of the godown carries.
    std::vector<std::string> repeatedNumbers();
    /// moigodownstock of the godown.
    StockByItem stock();
    /// Counted minus book, summed over the lines of the entries above `afterId` that are not
    /// cancelled: a cancelled entry keeps its lines, and its stock was taken back.
    StockByItem countedChanges(std::int64_t afterId);

private:
    std::vector<std::vector<std::string>> rows(const std::string &sql);

    ado::Connection connection_;
    std::unique_ptr<records::PostgresDatabase> server_;
    std::string godown_;
};

/// `before` moved by `changes`: what the stock must be once every change is posted.
StockByItem posted(StockByItem before, const StockByItem &changes);

} // namespace durability
