#include "hosts/tui/SessionConfig.h"

#include "vb/Error.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace tui {
namespace {

SessionConfig parse(std::vector<std::string> args) {
    return parseRunOptions(args);
}

/// The message of the vb::Error that parsing raises, or "" when it does not.
std::string refusal(std::vector<std::string> args) {
    try {
        parse(std::move(args));
    } catch (const vb::Error &e) {
        return std::to_string(e.number()) + ": " + e.description();
    }
    return "";
}

TEST(SessionConfigTest, OptionsOfTheDevRunCommand) {
    auto c = parse({"--db",        "demo/stockverify.db",
                    "--company",   "1",
                    "--user",      "2",
                    "--godown",    "3",
                    "--interface", "1013",
                    "--title",     "Stock Verification",
                    "--date",      "2026-11-22",
                    "--trace-sql", "trace.txt",
                    "--home",      "/opt/sv",
                    "--printer",   "LPT1=/dev/usb/lp0"});
    EXPECT_EQ(c.connection, "sqlite:demo/stockverify.db");
    EXPECT_EQ(c.sqlitePath(), "demo/stockverify.db");
    EXPECT_EQ(c.companyId, 1);
    EXPECT_EQ(c.userId, 2);
    EXPECT_EQ(c.godownId, 3);
    EXPECT_EQ(c.interfaceId, 1013);
    EXPECT_EQ(c.title, "Stock Verification");
    ASSERT_TRUE(c.processDate);
    EXPECT_EQ(*c.processDate, vb::DateSerial(2026, 11, 22));
    EXPECT_EQ(c.traceSql, "trace.txt");
    EXPECT_EQ(c.home, "/opt/sv");
    EXPECT_EQ(c.printers.at("LPT1"), "/dev/usb/lp0");
}

TEST(SessionConfigTest, DefaultsForWhatIsNotGiven) {
    auto c =
        parse({"--connection", "odbc:DSN=shop", "--company", "1", "--user", "1", "--godown", "1"});
    EXPECT_EQ(c.interfaceId, 1005);
    EXPECT_FALSE(c.processDate) << "today, when the session starts";
    EXPECT_EQ(c.title, "Stock Verification");
    EXPECT_EQ(c.shortDate, "dd/mm/yyyy");
    EXPECT_TRUE(c.keyStrip);
    EXPECT_EQ(c.sqlitePath(), "") << "not a SQLite connection";
}

TEST(SessionConfigTest, RefusesWhatItCannotUse) {
    const std::vector<std::string> base{"--db", "x.db", "--company", "1", "--user", "1"};
    auto with = [&](std::vector<std::string> more) {
        auto args = base;
        args.insert(args.end(), more.begin(), more.end());
        return refusal(args);
    };
    EXPECT_EQ(with({"--godown", "1"}), "");
    EXPECT_EQ(with({}), "5: --godown is missing");
    EXPECT_EQ(refusal({"--company", "1", "--user", "1", "--godown", "1"}),
              "5: the database is missing: give --db PATH (or --connection)");
    EXPECT_EQ(with({"--godown", "one"}), "5: godown wants a whole number, not 'one'");
    EXPECT_EQ(with({"--godown", "99999999999"}),
              "5: godown wants a whole number, not '99999999999'");
    EXPECT_EQ(with({"--godown", "1", "--date", "2026-02-30"}),
              "5: date wants a day as YYYY-MM-DD, not '2026-02-30'");
    EXPECT_EQ(with({"--godown", "1", "--date", "22/11/2026"}),
              "5: date wants a day as YYYY-MM-DD, not '22/11/2026'");
    EXPECT_EQ(with({"--godown", "1", "--colour", "red"}), "5: unknown option '--colour'");
    EXPECT_EQ(with({"--godown"}), "5: --godown wants a value");
    EXPECT_EQ(with({"--godown", "1", "extra"}), "5: unexpected argument 'extra'");
    EXPECT_EQ(with({"--godown", "1", "--key-strip", "no"}),
              "5: key-strip wants on or off, not 'no'");
    EXPECT_EQ(with({"--godown", "1", "--printer", "LPT1"}),
              "5: --printer wants PORT=PATH, not 'LPT1'");
}

struct ConfigFile {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("tui-config-" + std::to_string(::getpid()));
    explicit ConfigFile(const std::string &text) { std::ofstream(path) << text; }
    ~ConfigFile() { std::filesystem::remove(path); }
};

TEST(SessionConfigTest, ConfigFileLinesAndOptionsOverThem) {
    ConfigFile file("# the shop's terminal\n"
                    "db = /var/lib/stockverify/shop.db\r\n"
                    "\n"
                    "company=4\n"
                    "  user =  7  \n"
                    "godown = 2\n"
                    "title = Godown Count\n"
                    "short-date = mm/dd/yyyy\n"
                    "key-strip = off\n"
                    "printer.LPT2 = /tmp/lpt2\n");
    auto c = parse({"--godown", "5", "--config", file.path.string()});
    EXPECT_EQ(c.sqlitePath(), "/var/lib/stockverify/shop.db");
    EXPECT_EQ(c.companyId, 4);
    EXPECT_EQ(c.userId, 7);
    EXPECT_EQ(c.godownId, 5) << "the option wins, even before --config";
    EXPECT_EQ(c.title, "Godown Count");
    EXPECT_EQ(c.shortDate, "mm/dd/yyyy");
    EXPECT_FALSE(c.keyStrip);
    EXPECT_EQ(c.printers.at("LPT2"), "/tmp/lpt2");
}

TEST(SessionConfigTest, ConfigFileMistakesNameTheLine) {
    ConfigFile file("db = x.db\ncompany 4\n");
    EXPECT_EQ(refusal({"--config", file.path.string()}),
              "5: " + file.path.string() + ":2: a setting reads 'key = value', not 'company 4'");
    ConfigFile other("db = x.db\nwarehouse = 4\n");
    EXPECT_EQ(refusal({"--config", other.path.string()}),
              "5: " + other.path.string() + ":2: unknown setting 'warehouse'");
    EXPECT_EQ(refusal({"--config", "/nonexistent/sv.conf"}),
              "53: File not found: the config file /nonexistent/sv.conf");
}

TEST(SessionConfigTest, EscapeDelayFromEscdelayThenTheFileThenTheOption) {
    using std::chrono::milliseconds;
    const std::vector<std::string> base{"--db",   "x.db", "--company", "1",
                                        "--user", "1",    "--godown",  "1"};
    EXPECT_EQ(parseRunOptions(base).escapeDelay, milliseconds(25));
    EXPECT_EQ(parseRunOptions(base, "200").escapeDelay, milliseconds(200));
    ConfigFile file("escape-delay = 80\n");
    auto withFile = base;
    withFile.insert(withFile.end(), {"--config", file.path.string()});
    EXPECT_EQ(parseRunOptions(withFile, "200").escapeDelay, milliseconds(80));
    auto withOption = withFile;
    withOption.insert(withOption.end(), {"--escape-delay", "10"});
    EXPECT_EQ(parseRunOptions(withOption, "200").escapeDelay, milliseconds(10));

    auto bad = base;
    bad.insert(bad.end(), {"--escape-delay", "0"});
    EXPECT_THROW(parseRunOptions(bad), vb::Error);
    try {
        parseRunOptions(base, "fast");
        ADD_FAILURE() << "a malformed ESCDELAY was taken";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.description(), "ESCDELAY wants milliseconds from 1 to 5000, not 'fast'");
    }
    EXPECT_EQ(parseRunOptions(base, "5000").escapeDelay, milliseconds(5000));
    EXPECT_THROW(parseRunOptions(base, "5001"), vb::Error);
}

} // namespace
} // namespace tui
