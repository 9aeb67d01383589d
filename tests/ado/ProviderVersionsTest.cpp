#include "ado/ProviderVersions.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

namespace ado {
namespace {

TEST(ProviderVersionsTest, SqliteComesFirstAsItsReleaseNumber) {
    const auto versions = providerVersions();
    ASSERT_FALSE(versions.empty());
    EXPECT_EQ(versions[0].library, "SQLite");
    // The tests run on the machine that built them, whose library is the
    // headers' release.
    EXPECT_EQ(versions[0].version, SQLITE_VERSION);
}

TEST(ProviderVersionsTest, LibpqNumbersAsPeopleWriteThem) {
    EXPECT_EQ(libpqVersionText(150004), "15.4");
    EXPECT_EQ(libpqVersionText(170000), "17.0");
    EXPECT_EQ(libpqVersionText(100012), "10.12");
    EXPECT_EQ(libpqVersionText(90624), "9.6.24") << "three parts before release 10";
    EXPECT_EQ(libpqVersionText(90105), "9.1.5");
}

} // namespace
} // namespace ado
