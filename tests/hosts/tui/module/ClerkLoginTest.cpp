#include "hosts/tui/ClerkLogin.h"

#include "ado/Connection.h"
#include "module/records/DatabaseFile.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace tui {
namespace {

/// An empty database with three users, the logins of the clerks mapped.
class ClerkLoginTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::remove_all(dir_);
        std::filesystem::create_directories(dir_);
        records::createDatabaseFile(dir_ / "shop.db", {});
        connection_.Open("sqlite:" + (dir_ / "shop.db").string());
        for (const char *row :
             {"(1, 1, 'ANITA')", "(1, 2, 'ANITA')", "(2, 1, 'BALU')", "(3, 1, 'CHANDRA')"}) {
            connection_.Execute(std::string("insert into lousers (userid, GodownID, username) "
                                            "values ") +
                                row);
        }
        for (const char *row : {"('anita', 1)", "('balu', 2)", "('Balu', 3)", "('shared', 3)",
                                "('shared', 1)", "('ghost', 9)", "('o''neil', 2)"}) {
            connection_.Execute(std::string("insert into svUserLogin (login, UserID) values ") +
                                row);
        }
    }
    void TearDown() override {
        connection_.Close();
        std::filesystem::remove_all(dir_);
    }

    std::string refusal(const SessionConfig &config, std::string_view login) {
        try {
            return "user " + std::to_string(sessionUser(config, connection_, login));
        } catch (const ClerkRefusal &e) {
            return std::to_string(e.number()) + ": " + e.description();
        }
    }

    std::filesystem::path dir_ =
        std::filesystem::temp_directory_path() / ("tui-clerk-" + std::to_string(::getpid()));
    ado::Connection connection_;
};

TEST_F(ClerkLoginTest, TheLoginsOneUserIsTheClerk) {
    SessionConfig config;
    EXPECT_EQ(refusal(config, "anita"), "user 1");
    EXPECT_EQ(refusal(config, "balu"), "user 2");
    EXPECT_EQ(refusal(config, "Balu"), "user 3") << "logins differ by letter case, as in Unix";
    EXPECT_EQ(refusal(config, "o'neil"), "user 2");
}

TEST_F(ClerkLoginTest, NoClerkIsGuessed) {
    SessionConfig config;
    EXPECT_EQ(refusal(config, "nobody"),
              "70: login 'nobody' maps to no user: the administrator adds it to the table "
              "svUserLogin");
    EXPECT_EQ(refusal(config, "BALU"),
              "70: login 'BALU' maps to no user: the administrator adds it to the table "
              "svUserLogin");
    EXPECT_EQ(refusal(config, "shared"),
              "70: login 'shared' maps to users 1 and 3 in svUserLogin: the administrator "
              "keeps one");
    EXPECT_EQ(refusal(config, "ghost"), "70: login 'ghost' maps to user 9, who is not in lousers");
}

TEST_F(ClerkLoginTest, UserOptionOnlyForTheLoginsAllowed) {
    SessionConfig config;
    config.userId = 3;
    EXPECT_EQ(refusal(config, "anita"),
              "70: --user 3 is refused: login 'anita' is not in allow-user-option of the system "
              "config files (/etc/stockverify); the clerk is the user the login maps to");
    config.userId = 1;
    EXPECT_EQ(refusal(config, "anita"), "user 1") << "her own user: nothing is chosen";
    EXPECT_EQ(refusal(config, "shared").substr(0, 19), "70: --user 1 is ref")
        << "one of two users is a choice";
    config.userId = 9;
    EXPECT_EQ(refusal(config, "ghost").substr(0, 19), "70: --user 9 is ref")
        << "a user who is not in lousers is nobody's own";
    config.userId = 3;
    config.userOptionLogins = {"root", "anita"};
    EXPECT_EQ(refusal(config, "anita"), "user 3") << "allowed: the asked user, not the mapped one";
    EXPECT_EQ(refusal(config, "nobody").substr(0, 19), "70: --user 3 is ref")
        << "an unmapped login is refused the option too";
    EXPECT_EQ(refusal(config, "Anita").substr(0, 19), "70: --user 3 is ref");
}

TEST(ClerkLoginDemoTest, TheDemoMapsTheLoginsItIsGivenToItsStoreClerk) {
    const auto dir =
        std::filesystem::temp_directory_path() / ("tui-clerk-demo-" + std::to_string(::getpid()));
    std::filesystem::remove_all(dir);
    std::filesystem::create_directories(dir);
    records::DatabaseFileOptions options;
    options.demo = records::DemoOptions{};
    options.demo->items = 12;
    options.demo->logins = {"root", "clerk", "root"};
    records::createDatabaseFile(dir / "demo.db", options);
    {
        ado::Connection connection;
        connection.Open("sqlite:" + (dir / "demo.db").string());
        EXPECT_EQ(mappedUsers(connection, "root"), std::vector<std::int32_t>{1});
        EXPECT_EQ(mappedUsers(connection, "clerk"), std::vector<std::int32_t>{1});
        EXPECT_TRUE(mappedUsers(connection, "other").empty());
        connection.Close();
    }
    std::filesystem::remove_all(dir);
}

TEST(ProcessLoginTest, IsTheNameThatIdGivesTheEffectiveUser) {
    std::string expected;
    FILE *id = ::popen("id -un", "r");
    ASSERT_NE(id, nullptr);
    for (int c; (c = std::fgetc(id)) != EOF && c != '\n';) {
        expected += static_cast<char>(c);
    }
    ::pclose(id);
    EXPECT_EQ(processLogin(), expected);
}

} // namespace
} // namespace tui
