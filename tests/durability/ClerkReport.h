// What a clerk process printed and traced, read back by the test that ran it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace durability {

/// The ids that follow each `word` in a clerk's output ("saved 12", "deleted 7").
std::vector<std::int64_t> reportedIds(const std::string &output, const std::string &word);

/// The row count of each "edited ID ROWS" line, by id, in the order printed.
std::map<std::int64_t, std::vector<int>> reportedEdits(const std::string &output);

/// When each transaction of a clerk's trace began and ended ("2026-11-23 16:18:16.434"),
/// in the order of its saves.
struct Transactions {
    std::vector<std::string> begun;
    std::vector<std::string> ended;
};

Transactions transactionsOf(const std::filesystem::path &trace);

/// How many transactions of `traces` were open at the same time as a transaction of another
/// trace: the one that began later had its reads wait for the other's writes.
int overlapping(const std::vector<Transactions> &traces);

} // namespace durability
