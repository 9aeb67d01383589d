// A database file in a fresh temporary folder, made for one test and removed after it.
#pragma once

#include "ado/Connection.h"
#include "ado/sqlite/Script.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

namespace adotest {

/// Tables that the behaviour tests share: the two verification tables with
/// SQL Server types, CITEXT on text columns, and an item table.
inline constexpr std::string_view testSchema = R"(
create table loiStockVerificationHeader (
    svhid int not null, svhno varchar(20) collate CITEXT, svhdate datetime,
    svhremarks varchar(250) collate CITEXT, svhVerificationby varchar(50) collate CITEXT,
    svhGodownid int not null, svhFutureVc varchar(7) collate CITEXT,
    svhcancelled int not null default 0, svhposted bit not null default 0,
    svhcancelledRemarks varchar(255) collate CITEXT, updatetime datetime);
create table loiStockVerificationDetail (
    svdid int, svdGodownID int, svdLocationid int, svdShipmentID int, svdItemID int,
    svdAvailStock numeric(18,3), svdVerifiedStock numeric(18,3),
    svdavailbadstock numeric(18,3), svdverifiedbadstock numeric(18,3), svdcostprice money);
create table aItem (ItemId int primary key, itemcode varchar(20) collate CITEXT,
    itemrate float, Active bit default 1);
)";

class TempDatabase {
public:
    explicit TempDatabase(std::string_view schema = testSchema) {
        std::string pattern = (std::filesystem::temp_directory_path() / "adotest-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
        path_ = (folder_ / "test.db").string();
        ado::Connection c = ado::sqlite::createDatabase(path_);
        ado::sqlite::executeScript(c, "begin;" + std::string(schema) + ";commit;");
        c.Close();
    }
    ~TempDatabase() {
        std::error_code ignored; // a folder that is already gone needs no removing
        std::filesystem::remove_all(folder_, ignored);
    }
    TempDatabase(const TempDatabase &) = delete;
    TempDatabase &operator=(const TempDatabase &) = delete;

    const std::string &path() const { return path_; }
    std::filesystem::path folder() const { return folder_; }

    ado::Connection connect() const {
        ado::Connection c;
        c.Open("sqlite:" + path_);
        return c;
    }

private:
    std::filesystem::path folder_;
    std::string path_;
};

/// Runs `body` and returns the vb::Error it raised; fails the test when it raised none.
template <class Body> vb::Error errorOf(Body &&body) {
    try {
        body();
    } catch (const vb::Error &e) {
        return e;
    }
    ADD_FAILURE() << "no vb::Error was raised";
    return vb::Error(0, "", "");
}

/// The first column of the first row of a native query, as text.
std::string scalar(const ado::Connection &c, std::string_view sql);

} // namespace adotest
