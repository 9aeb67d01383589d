// A fixture whose tests run once on the embedded database and once on the server.
#pragma once

#include "PgTempDatabase.h"
#include "TempDatabase.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <ostream>

namespace adotest {

enum class Engine { SQLite, PostgreSQL };

inline void PrintTo(Engine engine, std::ostream *out) {
    *out << (engine == Engine::PostgreSQL ? "PostgreSQL" : "SQLite");
}

/// Opens `c` on the shared test tables of the engine the test runs for. On
/// the server the tests are named PostgreSQL/..., so that ctest starts the
/// cluster for them; where there is none they are skipped, saying why.
class EngineTest : public ::testing::TestWithParam<Engine> {
protected:
    void SetUp() override {
        if (GetParam() == Engine::PostgreSQL) {
            server.emplace();
            if (!server->available())
                GTEST_SKIP() << server->whyNot();
            c = server->connect();
        } else {
            c = files.connect();
        }
    }
    bool onServer() const { return GetParam() == Engine::PostgreSQL; }
    /// A folder of the test's own for files (a trace), on either engine.
    std::filesystem::path folder() const { return files.folder(); }

    TempDatabase files;
    std::optional<PgTempDatabase> server;
    ado::Connection c;
};

} // namespace adotest

/// Runs the TEST_P tests of `suite` on both engines.
#define RUN_ON_BOTH_ENGINES(suite)                                                                 \
    INSTANTIATE_TEST_SUITE_P(SQLite, suite, ::testing::Values(adotest::Engine::SQLite),            \
                             [](const auto &) { return std::string("db"); });                      \
    INSTANTIATE_TEST_SUITE_P(PostgreSQL, suite, ::testing::Values(adotest::Engine::PostgreSQL),    \
                             [](const auto &) { return std::string("db"); })
