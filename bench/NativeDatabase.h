// A database file opened through SQLite's own API: the floor of the benchmarks that save,
// and the quick setup of their data.
#pragma once

#include "CitextCollation.h"

#include "module/records/EmbeddedSql.h"
#include "module/records/ProcedureSource.h"

#include <sqlite3.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace bench {

class NativeDatabase {
public:
    explicit NativeDatabase(const std::filesystem::path &path) {
        check(sqlite3_open(path.c_str(), &db_));
        // Text columns compare as the data layer's collation does.
        check(sqlite3_create_collation(db_, "CITEXT", SQLITE_UTF8, nullptr, &compareCitext));
    }
    ~NativeDatabase() { sqlite3_close(db_); }
    NativeDatabase(const NativeDatabase &) = delete;
    NativeDatabase &operator=(const NativeDatabase &) = delete;

    void exec(const std::string &sql) {
        char *message = nullptr;
        if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
            const std::string text = message ? message : "sqlite3_exec failed";
            sqlite3_free(message);
            throw std::runtime_error(text + ": " + sql.substr(0, 200));
        }
    }
    /// A prepared statement, finalized by the caller.
    sqlite3_stmt *prepare(const char *sql) {
        sqlite3_stmt *st = nullptr;
        check(sqlite3_prepare_v2(db_, sql, -1, &st, nullptr));
        return st;
    }
    void check(int rc) {
        if (rc != SQLITE_OK && rc != SQLITE_DONE && rc != SQLITE_ROW) {
            throw std::runtime_error(sqlite3_errmsg(db_));
        }
    }
    /// The first column of the first row of a query, as a number.
    double number(const std::string &sql) {
        sqlite3_stmt *st = prepare(sql.c_str());
        check(sqlite3_step(st));
        const double value = sqlite3_column_double(st, 0);
        sqlite3_finalize(st);
        return value;
    }

    /// Runs the statements of one of the module's stored procedures with its
    /// arguments written in: what the procedure costs when no data layer stands
    /// between it and SQLite.
    void runProcedure(const std::string &name,
                      const std::vector<std::pair<std::string, std::string>> &arguments) {
        const std::string file = "procedures/" + name + ".sql";
        std::string body = records::procedureSource(file, records::embeddedSql(file)).body;
        for (const auto &[parameter, value] : arguments) {
            for (std::size_t at = body.find(parameter); at != std::string::npos;
                 at = body.find(parameter, at + value.size())) {
                body.replace(at, parameter.size(), value);
            }
        }
        exec(body);
    }

private:
    sqlite3 *db_ = nullptr;
};

} // namespace bench
