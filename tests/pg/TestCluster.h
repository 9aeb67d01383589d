// The connection string of the throwaway PostgreSQL cluster that ctest starts.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>

namespace pgtest {

/// The socket folder that a cluster URI names as its host
/// ("postgresql://postgres@%2Fa%2Fb/db" names "/a/b").
inline std::string socketFolder(std::string_view uri) {
    auto at = uri.find('@');
    auto start = at == std::string_view::npos ? uri.find("//") + 2 : at + 1;
    auto end = uri.find('/', start);
    std::string folder;
    for (auto i = start; i < end && i < uri.size(); ++i) {
        if (uri[i] == '%' && i + 2 < uri.size()) {
            folder += static_cast<char>(std::stoi(std::string(uri.substr(i + 1, 2)), nullptr, 16));
            i += 2;
        } else {
            folder += uri[i];
        }
    }
    return folder;
}

/// The cluster's connection string, or "" with `whyNot` saying why there is
/// none: the server binaries are not installed, or the test runs outside
/// ctest, which starts the cluster. A test without it calls GTEST_SKIP with
/// that reason, so that a run never passes over PostgreSQL silently.
inline std::string clusterUri(std::string &whyNot) {
    const char *uri = std::getenv("STOCKVERIFY_TEST_PG");
    if (!uri || !*uri) {
        whyNot = "STOCKVERIFY_TEST_PG is not set: PostgreSQL tests run through ctest, "
                 "which starts the cluster";
        return "";
    }
    std::ifstream skipped(std::filesystem::path(socketFolder(uri)) / "skipped");
    if (skipped) {
        std::ostringstream line;
        line << skipped.rdbuf();
        whyNot = line.str();
        while (!whyNot.empty() && whyNot.back() == '\n')
            whyNot.pop_back();
        return "";
    }
    return uri;
}

} // namespace pgtest
