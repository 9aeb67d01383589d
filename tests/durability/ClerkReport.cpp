#include "ClerkReport.h"

#include <fstream>
#include <sstream>

namespace durability {

std::vector<std::int64_t> reportedIds(const std::string &output, const std::string &word) {
    std::vector<std::int64_t> ids;
    std::istringstream in(output);
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string first;
        std::int64_t id = 0;
        if (words >> first && first == word && words >> id) {
            ids.push_back(id);
        }
    }
    return ids;
}

std::map<std::int64_t, std::vector<int>> reportedEdits(const std::string &output) {
    std::map<std::int64_t, std::vector<int>> edits;
    std::istringstream in(output);
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        std::string first;
        std::int64_t id = 0;
        int rows = 0;
        if (words >> first && first == "edited" && words >> id >> rows) {
            edits[id].push_back(rows);
        }
    }
    return edits;
}

Transactions transactionsOf(const std::filesystem::path &trace) {
    Transactions t;
    std::ifstream in(trace);
    for (std::string line; std::getline(in, line);) {
        if (line.rfind('#', 0) != 0) {
            continue;
        }
        const std::size_t at = line.find(' ');
        const std::string when = line.substr(at + 1, 23);
        if (line.ends_with(" begin transaction")) {
            t.begun.push_back(when);
        } else if (line.ends_with(" commit transaction") ||
                   line.ends_with(" rollback transaction")) {
            t.ended.push_back(when);
        }
    }
    return t;
}

namespace {

/// The end of transaction `i`: one still open at the end of the trace never ended.
std::string endOf(const Transactions &t, std::size_t i) {
    return i < t.ended.size() ? t.ended[i] : std::string("9999");
}

} // namespace

int overlapping(const std::vector<Transactions> &traces) {
    int count = 0;
    for (std::size_t c = 0; c < traces.size(); ++c) {
        for (std::size_t k = 0; k < traces[c].begun.size(); ++k) {
            const std::string &begun = traces[c].begun[k];
            const std::string ended = endOf(traces[c], k);
            bool during = false;
            for (std::size_t o = 0; o < traces.size() && !during; ++o) {
                const Transactions &other = traces[o];
                for (std::size_t i = 0; o != c && i < other.begun.size() && !during; ++i) {
                    during = other.begun[i] < ended && begun < endOf(other, i);
                }
            }
            count += during;
        }
    }
    return count;
}

} // namespace durability
