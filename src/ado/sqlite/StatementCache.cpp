#include "ado/sqlite/StatementCache.h"

#include <utility>

namespace ado::sqlite {

std::optional<NativeStatement> StatementCache::take(const std::string &sql) {
    auto found = index_.find(sql);
    if (found == index_.end())
        return std::nullopt;
    Entries::iterator entry = found->second;
    index_.erase(found);
    std::optional<NativeStatement> statement(std::move(entry->statement));
    idle_.erase(entry);
    return statement;
}

void StatementCache::give(const std::string &sql, NativeStatement statement,
                          std::uint64_t generation) {
    if (generation != generation_ || capacity_ == 0)
        return; // finalized here, prepared against a schema that is gone
    statement.reset();
    idle_.push_front(Idle{sql, std::move(statement)});
    index_.emplace(idle_.front().sql, idle_.begin());
    if (idle_.size() <= capacity_)
        return;
    Entries::iterator oldest = std::prev(idle_.end());
    auto [first, last] = index_.equal_range(oldest->sql);
    for (auto it = first; it != last; ++it)
        if (it->second == oldest) {
            index_.erase(it);
            break;
        }
    idle_.erase(oldest);
}

void StatementCache::clear() {
    index_.clear();
    idle_.clear();
    ++generation_;
}

} // namespace ado::sqlite
