#include "hosts/tui/SessionConfig.h"

#include "vb/Error.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <cstdlib>
#include <fstream>
#include <optional>
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
    EXPECT_EQ(c.userId.value_or(0), 2);
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
        parse({"--connection", "odbc:DSN=shop", "--company", "1", "--godown", "1"});
    EXPECT_FALSE(c.userId) << "the clerk comes from the login";
    EXPECT_EQ(c.interfaceId, 1005);
    EXPECT_FALSE(c.processDate) << "today, when the session starts";
    EXPECT_EQ(c.title, "Stock Verification");
    EXPECT_EQ(c.shortDate, "dd/mm/yyyy");
    EXPECT_TRUE(c.keyStrip);
    EXPECT_EQ(c.sqlitePath(), "") << "not a SQLite connection";
}

TEST(SessionConfigTest, RefusesWhatItCannotUse) {
    const std::vector<std::string> base{"--db", "x.db", "--company", "1"};
    auto with = [&](std::vector<std::string> more) {
        auto args = base;
        args.insert(args.end(), more.begin(), more.end());
        return refusal(args);
    };
    EXPECT_EQ(with({"--godown", "1"}), "");
    EXPECT_EQ(with({}), "5: --godown is missing");
    EXPECT_EQ(refusal({"--company", "1", "--godown", "1"}),
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
    EXPECT_EQ(c.userId.value_or(0), 7);
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

/// A system folder and a user folder of config files, made fresh for a test.
class ConfigFolderTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::remove_all(root_);
        std::filesystem::create_directories(folders_.system);
        std::filesystem::create_directories(folders_.user);
    }
    void TearDown() override { std::filesystem::remove_all(root_); }

    void write(const std::filesystem::path &path, const std::string &text) {
        std::ofstream(path) << text;
    }
    SessionConfig parseIn(std::vector<std::string> args) { return parseRunOptions(args, folders_); }
    /// The number and message of the refusal, and whether it is the config
    /// file's kind (run leaves with 3) rather than an option's (2).
    std::string refusalIn(std::vector<std::string> args) {
        try {
            parseRunOptions(args, folders_);
        } catch (const ConfigFileError &e) {
            return "file " + std::to_string(e.number()) + ": " + e.description();
        } catch (const vb::Error &e) {
            return "option " + std::to_string(e.number()) + ": " + e.description();
        }
        return "";
    }

    std::filesystem::path root_ =
        std::filesystem::temp_directory_path() / ("tui-folders-" + std::to_string(::getpid()));
    ConfigFolders folders_{root_ / "etc", root_ / "home"};
};

TEST_F(ConfigFolderTest, SystemThenUserThenGroupThenOptionsEachLaterWins) {
    write(folders_.system / "stockverify.conf",
          "db = /srv/shop.db\ncompany = 1\ngodown = 1\ntitle = Site\nshort-date = mm/dd/yyyy\n");
    write(folders_.system / "dock.conf", "godown = 2\ntitle = Dock\nkey-strip = off\n");
    write(folders_.user / "stockverify.conf", "title = Mine\ngodown = 3\n");
    write(folders_.user / "dock.conf", "godown = 4\n");

    auto c = parseIn({"--config", "dock", "--short-date", "dd-mm-yyyy"});
    EXPECT_EQ(c.sqlitePath(), "/srv/shop.db");
    EXPECT_EQ(c.godownId, 4) << "the user's file of the group comes last";
    EXPECT_EQ(c.title, "Mine") << "the user's common file comes after the system's group";
    EXPECT_FALSE(c.keyStrip);
    EXPECT_EQ(c.shortDate, "dd-mm-yyyy");
    EXPECT_EQ(c.files, (std::vector<std::string>{(folders_.system / "stockverify.conf").string(),
                                                 (folders_.system / "dock.conf").string(),
                                                 (folders_.user / "stockverify.conf").string(),
                                                 (folders_.user / "dock.conf").string()}));

    // Without a group only the common files count; a group of the user's
    // folder alone is enough.
    auto plain = parseIn({});
    EXPECT_EQ(plain.godownId, 3);
    std::filesystem::remove(folders_.system / "dock.conf");
    EXPECT_EQ(parseIn({"--config", "dock"}).title, "Mine");
}

TEST_F(ConfigFolderTest, AFileGivenByPathIsReadAfterTheFolders) {
    write(folders_.system / "stockverify.conf", "db = /srv/shop.db\ncompany = 1\ngodown = 1\n");
    write(root_ / "trial.conf", "godown = 9\n");
    auto c = parseIn({"--config", (root_ / "trial.conf").string()});
    EXPECT_EQ(c.godownId, 9);
    EXPECT_EQ(c.companyId, 1);
    ASSERT_EQ(c.files.size(), 2u);
}

TEST_F(ConfigFolderTest, AllowUserOptionCountsOnlyInTheSystemFolder) {
    write(folders_.system / "stockverify.conf",
          "db = x.db\ncompany = 1\ngodown = 1\nallow-user-option = root, admin1\tsetup\n");
    EXPECT_EQ(parseIn({}).userOptionLogins, (std::vector<std::string>{"root", "admin1", "setup"}));

    write(folders_.user / "stockverify.conf", "\nallow-user-option = clerk7\n");
    EXPECT_EQ(refusalIn({}), "file 5: " + (folders_.user / "stockverify.conf").string() +
                                 ":2: allow-user-option is read only from the files of the "
                                 "system folder (/etc/stockverify)");
    std::filesystem::remove(folders_.user / "stockverify.conf");

    // Nor from a file named by path, nor as an option.
    write(root_ / "trial.conf", "allow-user-option = clerk7\n");
    EXPECT_EQ(refusalIn({"--config", (root_ / "trial.conf").string()}).substr(0, 7), "file 5:");
    EXPECT_EQ(refusalIn({"--allow-user-option", "clerk7"}),
              "option 5: unknown option '--allow-user-option'");
}

TEST_F(ConfigFolderTest, ASystemFileIsOneNamedInTheSystemFolderWhereverItPoints) {
    std::filesystem::create_directories(root_ / "srv");
    write(root_ / "srv" / "dock.conf", "db = x.db\ncompany = 1\ngodown = 1\nallow-user-option = admin\n");
    std::filesystem::create_symlink(root_ / "srv" / "dock.conf", folders_.system / "dock.conf");
    EXPECT_EQ(parseIn({"--config", "dock"}).userOptionLogins, std::vector<std::string>{"admin"});
    // Named by a path that leads through the system folder: still the system's.
    const auto roundabout = (folders_.user / ".." / "etc" / "dock.conf").string();
    EXPECT_EQ(parseIn({"--config", roundabout}).userOptionLogins,
              std::vector<std::string>{"admin"});
    // The file itself, named where it lies, is not.
    EXPECT_EQ(refusalIn({"--config", (root_ / "srv" / "dock.conf").string()}).substr(0, 7),
              "file 5:");
}

TEST_F(ConfigFolderTest, FilesThatCannotBeUsedAreConfigFileRefusals) {
    write(folders_.system / "stockverify.conf", "db = x.db\ncompany = 1\ngodown = 1\n");
    EXPECT_EQ(refusalIn({"--config", "dock"}),
              "file 53: File not found: the config file of 'dock', neither " +
                  (folders_.system / "dock.conf").string() + " nor " +
                  (folders_.user / "dock.conf").string());

    // A file that is there but cannot be read stops the session, however
    // optional it is.
    std::filesystem::create_directory(folders_.user / "stockverify.conf");
    EXPECT_EQ(refusalIn({}), "file 75: Path/File access error: the config file " +
                                 (folders_.user / "stockverify.conf").string() + " is not a file");
    std::filesystem::remove(folders_.user / "stockverify.conf");

    write(folders_.system / "stockverify.conf", "db = x.db\ncompany = 1\n\n# x\ngodwn = 1\n");
    EXPECT_EQ(refusalIn({}), "file 5: " + (folders_.system / "stockverify.conf").string() +
                                 ":5: unknown setting 'godwn'");
    // A value the command line lacks is an option's refusal, not the file's.
    write(folders_.system / "stockverify.conf", "db = x.db\ncompany = 1\n");
    EXPECT_EQ(refusalIn({}), "option 5: --godown is missing");
}

TEST(ConfigFoldersTest, FromTheEnvironment) {
    struct Saved {
        const char *name;
        std::optional<std::string> value;
    };
    std::vector<Saved> saved;
    for (const char *name : {"XDG_CONFIG_HOME", "HOME", "STOCKVERIFY_SYSCONFDIR"}) {
        const char *v = std::getenv(name);
        saved.push_back({name, v ? std::optional<std::string>(v) : std::nullopt});
    }
    ::setenv("HOME", "/home/clerk", 1);
    ::setenv("XDG_CONFIG_HOME", "relative/ignored", 1);
    ::unsetenv("STOCKVERIFY_SYSCONFDIR");
    auto f = configFoldersFromEnvironment();
    EXPECT_EQ(f.system, "/etc/stockverify");
    EXPECT_EQ(f.user, "/home/clerk/.config/stockverify");
    ::setenv("XDG_CONFIG_HOME", "/cfg", 1);
    ::setenv("STOCKVERIFY_SYSCONFDIR", "/tmp/etc-sv", 1);
    f = configFoldersFromEnvironment();
    EXPECT_EQ(f.user, "/cfg/stockverify");
    EXPECT_EQ(f.system, "/tmp/etc-sv") << "this build is made for tests";
    for (const auto &s : saved) {
        if (s.value) {
            ::setenv(s.name, s.value->c_str(), 1);
        } else {
            ::unsetenv(s.name);
        }
    }
}

TEST(SessionConfigTest, EscapeDelayFromEscdelayThenTheFileThenTheOption) {
    using std::chrono::milliseconds;
    const std::vector<std::string> base{"--db",   "x.db", "--company", "1",
                                        "--user", "1",    "--godown",  "1"};
    EXPECT_EQ(parseRunOptions(base).escapeDelay, milliseconds(25));
    EXPECT_EQ(parseRunOptions(base, {}, "200").escapeDelay, milliseconds(200));
    ConfigFile file("escape-delay = 80\n");
    auto withFile = base;
    withFile.insert(withFile.end(), {"--config", file.path.string()});
    EXPECT_EQ(parseRunOptions(withFile, {}, "200").escapeDelay, milliseconds(80));
    auto withOption = withFile;
    withOption.insert(withOption.end(), {"--escape-delay", "10"});
    EXPECT_EQ(parseRunOptions(withOption, {}, "200").escapeDelay, milliseconds(10));

    auto bad = base;
    bad.insert(bad.end(), {"--escape-delay", "0"});
    EXPECT_THROW(parseRunOptions(bad), vb::Error);
    try {
        parseRunOptions(base, {}, "fast");
        ADD_FAILURE() << "a malformed ESCDELAY was taken";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.description(), "ESCDELAY wants milliseconds from 1 to 5000, not 'fast'");
    }
    EXPECT_EQ(parseRunOptions(base, {}, "5000").escapeDelay, milliseconds(5000));
    EXPECT_THROW(parseRunOptions(base, {}, "5001"), vb::Error);
}

} // namespace
} // namespace tui
