// Runs the statements the module sends against the demo database, from the case files in
// corpus/, and compares what comes back with what the files expect.
//
// A case file holds cases separated by blank lines; '#' starts a comment line:
//
//   case: register list, plain interface, godown 1
//   pending: why it cannot pass yet (optional: the case runs, and is skipped if it fails)
//   server-pending: the same, on the PostgreSQL server only (what the server does otherwise)
//   sql: select ...            a statement opened as a forward-only, read-only recordset
//   columns: a|b|c             (optional) the field names
//   rows: ordered              or "any" (order not given by the statement) or "none"
//   2|SVA2|05/10/2026          one line per row; fields as the module reads them as text,
//                              NULL for null; \| \\ \r \n escape those characters
//   exec: update ...           a statement run by Execute
//   affected: 1                the rows it changed
//   error: -2147217900         the statement fails with this number
//
// A case may hold several steps; all run in one transaction that is rolled back.
#include "TestCluster.h"
#include "TestDatabase.h"

#include "ado/Recordset.h"
#include "module/records/PostgresDatabase.h"
#include "module/records/ScratchServerDatabase.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

namespace records::testing {
namespace {

struct Step {
    bool query = true; // sql: (true) or exec: (false)
    std::string statement;
    std::optional<std::string> columns;
    std::string order = "ordered";
    std::vector<std::string> rows;
    std::optional<long> affected;
    std::optional<std::int32_t> error;
};

struct StatementCase {
    std::string file;
    int line = 0;
    std::string name;
    std::string pending;
    std::string serverPending;
    std::vector<Step> steps;
};

std::string trimmed(std::string_view s) {
    while (!s.empty() && (s.front() == ' ' || s.front() == '\t'))
        s.remove_prefix(1);
    while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r'))
        s.remove_suffix(1);
    return std::string(s);
}

bool keyed(const std::string &line, std::string_view key, std::string &value) {
    if (!line.starts_with(key))
        return false;
    value = trimmed(std::string_view(line).substr(key.size()));
    return true;
}

class CaseReader {
public:
    explicit CaseReader(const std::filesystem::path &file) : name_(file.filename().string()) {
        std::ifstream in(file);
        std::string line;
        while (std::getline(in, line)) {
            ++number_;
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            read(line);
        }
        finish();
    }
    std::vector<StatementCase> cases;

private:
    void read(const std::string &line) {
        std::string value;
        if (line.starts_with("#"))
            return;
        if (trimmed(line).empty()) {
            finish();
            return;
        }
        if (keyed(line, "case:", value)) {
            finish();
            current_ = StatementCase{name_, number_, value, "", "", {}};
        } else if (!current_) {
            fail("a line outside a case: " + line);
        } else if (keyed(line, "pending:", value)) {
            current_->pending = value;
        } else if (keyed(line, "server-pending:", value)) {
            current_->serverPending = value;
        } else if (keyed(line, "sql:", value) || keyed(line, "exec:", value)) {
            Step step;
            step.query = line.starts_with("sql:");
            step.statement = value;
            current_->steps.push_back(step);
            inRows_ = false;
        } else if (current_->steps.empty()) {
            fail("expectation before a statement: " + line);
        } else if (keyed(line, "columns:", value)) {
            current_->steps.back().columns = value;
        } else if (keyed(line, "rows:", value)) {
            if (value != "ordered" && value != "any" && value != "none")
                fail("rows: wants ordered, any or none");
            current_->steps.back().order = value;
            inRows_ = value != "none";
        } else if (keyed(line, "affected:", value)) {
            current_->steps.back().affected = std::stol(value);
        } else if (keyed(line, "error:", value)) {
            current_->steps.back().error = std::stoi(value);
        } else if (inRows_) {
            current_->steps.back().rows.push_back(line);
        } else {
            fail("unknown line: " + line);
        }
    }
    void finish() {
        if (current_)
            cases.push_back(*current_);
        current_.reset();
        inRows_ = false;
    }
    [[noreturn]] void fail(const std::string &what) const {
        throw std::runtime_error(name_ + ":" + std::to_string(number_) + ": " + what);
    }

    std::string name_;
    int number_ = 0;
    std::optional<StatementCase> current_;
    bool inRows_ = false;
};

void PrintTo(const StatementCase &c, std::ostream *os) {
    *os << c.file << ":" << c.line << " " << c.name;
}

std::vector<StatementCase> allCases() {
    std::vector<std::filesystem::path> files;
    for (const auto &entry : std::filesystem::directory_iterator(TEST_DATA_DIR))
        if (entry.path().extension() == ".cases")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::vector<StatementCase> all;
    for (const auto &file : files)
        for (auto &c : CaseReader(file).cases)
            all.push_back(std::move(c));
    return all;
}

std::string escaped(const std::string &text) {
    std::string out;
    for (char c : text) {
        switch (c) {
        case '\\':
            out += "\\\\";
            break;
        case '|':
            out += "\\|";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\n':
            out += "\\n";
            break;
        default:
            out += c;
        }
    }
    return out;
}

std::string cellText(const vb::Variant &value) {
    return value.isNull() ? "NULL" : escaped(vb::TextOf(value));
}

struct Result {
    std::string columns;
    std::vector<std::string> rows;
};

Result query(const ado::Connection &connection, const std::string &sql) {
    ado::Recordset rs;
    rs.Open(sql, connection);
    Result result;
    const int count = rs.Fields().Count();
    for (int i = 0; i < count; ++i)
        result.columns += (i ? "|" : "") + rs.Fields(i).Name();
    for (; !rs.Eof(); rs.MoveNext()) {
        std::string row;
        for (int i = 0; i < count; ++i)
            row += (i ? "|" : "") + cellText(rs.Fields(i).Value());
        result.rows.push_back(row);
    }
    rs.Close();
    return result;
}

std::string joined(const std::vector<std::string> &rows) {
    std::string out;
    for (const auto &row : rows)
        out += row + "\n";
    return out;
}

// Runs one step and says what differed; "" when it went as expected.
std::string run(const ado::Connection &connection, const Step &step) {
    std::ostringstream problems;
    try {
        if (step.query) {
            Result result = query(connection, step.statement);
            std::vector<std::string> expected = step.rows;
            if (step.order == "any") {
                std::sort(result.rows.begin(), result.rows.end());
                std::sort(expected.begin(), expected.end());
            }
            if (step.columns && *step.columns != result.columns)
                problems << "columns\n  expected: " << *step.columns
                         << "\n  found:    " << result.columns << "\n";
            if (result.rows != expected)
                problems << "rows\n--- expected\n"
                         << joined(expected) << "--- found\n"
                         << joined(result.rows);
        } else {
            long affected = -1;
            connection.Execute(step.statement, &affected);
            if (step.affected && *step.affected != affected)
                problems << "affected: expected " << *step.affected << ", found " << affected
                         << "\n";
        }
        if (step.error)
            problems << "expected error " << *step.error << ", the statement ran\n";
    } catch (const vb::Error &e) {
        if (!step.error || *step.error != e.number())
            problems << "error " << e.number() << ": " << e.description() << "\n";
    }
    const std::string text = problems.str();
    return text.empty() ? "" : step.statement + "\n" + text;
}

class StatementCorpusTest : public ::testing::TestWithParam<StatementCase> {};

TEST_P(StatementCorpusTest, GivesTheExpectedRows) {
    const StatementCase &c = GetParam();
    SCOPED_TRACE(c.file + ":" + std::to_string(c.line) + ": " + c.name);
    vb::setClock(vb::DateSerial(2026, 11, 22) + 10.5 / 24);
    ado::Connection connection = connect(demoDatabase());
    connection.BeginTrans();
    std::string problems;
    for (const auto &step : c.steps)
        problems += run(connection, step);
    connection.RollbackTrans();
    vb::setClock(std::nullopt);
    if (!c.pending.empty()) {
        if (problems.empty())
            std::cout << "[ NOTE     ] passes now, drop its pending line: " << c.file << ":"
                      << c.line << "\n";
        else
            GTEST_SKIP() << "pending: " << c.pending << "\n" << problems;
    }
    EXPECT_EQ(problems, "");
}

std::string caseName(const ::testing::TestParamInfo<StatementCase> &info) {
    std::string name = std::filesystem::path(info.param.file).stem().string() + "_" +
                       std::to_string(info.param.line);
    for (char &ch : name)
        if (!std::isalnum(static_cast<unsigned char>(ch)))
            ch = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Corpus, StatementCorpusTest, ::testing::ValuesIn(allCases()), caseName);

// The same cases on a PostgreSQL server's copy of the same demo, through the server's provider.
class StatementCorpusPostgreSQL : public ::testing::TestWithParam<StatementCase> {};

TEST_P(StatementCorpusPostgreSQL, GivesTheExpectedRows) {
    const StatementCase &c = GetParam();
    SCOPED_TRACE(c.file + ":" + std::to_string(c.line) + ": " + c.name);
    std::string whyNot;
    const std::string cluster = pgtest::clusterUri(whyNot);
    if (cluster.empty())
        GTEST_SKIP() << whyNot;
    DemoOptions demo;
    demo.items = demoFeaturedItems;
    ado::Connection connection;
    connection.Open(PostgresDatabase::uriWithDatabase(
        cluster, keptServerDatabase(cluster, demo, "sv_corpus_test")));
    vb::setClock(vb::DateSerial(2026, 11, 22) + 10.5 / 24);
    connection.BeginTrans();
    std::string problems;
    for (const auto &step : c.steps)
        problems += run(connection, step);
    connection.RollbackTrans();
    vb::setClock(std::nullopt);
    const std::string pending = c.serverPending.empty() ? c.pending : c.serverPending;
    if (!pending.empty()) {
        if (problems.empty())
            std::cout << "[ NOTE     ] passes on the server now, drop its pending line: "
                      << c.file << ":" << c.line << "\n";
        else
            GTEST_SKIP() << "pending on the server: " << pending << "\n" << problems;
    }
    EXPECT_EQ(problems, "");
}

INSTANTIATE_TEST_SUITE_P(Corpus, StatementCorpusPostgreSQL, ::testing::ValuesIn(allCases()),
                         caseName);

TEST(StatementCorpusTest, FindsItsCaseFiles) {
    EXPECT_GT(allCases().size(), 40u);
}

} // namespace
} // namespace records::testing
