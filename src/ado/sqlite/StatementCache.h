// Prepared statements kept between calls, so that a text run again is not parsed again.
#pragma once

#include "ado/sqlite/NativeStatement.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace ado::sqlite {

/// Idle prepared statements keyed by the text they were prepared from. A
/// statement is taken out while it runs and given back when its reader is
/// done with it, so that two recordsets open on the same text at once each
/// hold a statement of their own. At most `capacity` statements wait; past
/// that the one unused longest is finalized. `clear` forgets them all and
/// starts a new generation: a statement taken before it and given back after
/// is finalized, so that no statement prepared against a schema that has
/// changed is ever handed out again.
class StatementCache {
public:
    explicit StatementCache(std::size_t capacity) : capacity_(capacity) {}
    StatementCache(const StatementCache &) = delete;
    StatementCache &operator=(const StatementCache &) = delete;

    /// An idle statement prepared from `sql`, ready to run, or nothing.
    std::optional<NativeStatement> take(const std::string &sql);
    /// Keeps `statement`, prepared from `sql` in `generation`, for the next
    /// `take`: reset, so that it holds no read open while it waits.
    void give(const std::string &sql, NativeStatement statement, std::uint64_t generation);
    void clear();

    std::uint64_t generation() const { return generation_; }
    std::size_t size() const { return idle_.size(); }

private:
    struct Idle {
        std::string sql;
        NativeStatement statement;
    };
    using Entries = std::list<Idle>; // the most recently given first

    std::size_t capacity_;
    std::uint64_t generation_ = 0;
    Entries idle_;
    std::unordered_multimap<std::string_view, Entries::iterator> index_; // views into idle_
};

} // namespace ado::sqlite
