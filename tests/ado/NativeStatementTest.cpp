// Native SQLite past the translator: prepared statements, scripts and new database files.
#include "ado/sqlite/NativeStatement.h"

#include "TempDatabase.h"
#include "ado/sqlite/Script.h"

#include <gtest/gtest.h>

namespace {

using adotest::errorOf;
using adotest::scalar;
using adotest::TempDatabase;

TEST(NativeStatementTest, BindsStepsAndRunsAgain) {
    TempDatabase db;
    auto c = db.connect();
    ado::sqlite::NativeStatement insert(c, "insert into aItem (ItemId, itemcode, itemrate) "
                                           "values (?1, ?2, ?3)");
    EXPECT_EQ(insert.parameterCount(), 3);
    for (int id : {1, 2}) {
        insert.reset();
        insert.bindInteger(1, id);
        insert.bindText(2, "item" + std::to_string(id));
        insert.bindReal(3, id * 1.5);
        EXPECT_FALSE(insert.step());
    }
    ado::sqlite::NativeStatement query(c, "select ItemId, itemcode, itemrate, null from aItem "
                                          "order by ItemId desc");
    ASSERT_TRUE(query.step());
    EXPECT_EQ(query.integer(0), 2);
    EXPECT_EQ(query.text(1), "item2");
    EXPECT_EQ(query.value(2), vb::Variant(3.0));
    EXPECT_TRUE(query.isNull(3));
    EXPECT_EQ(query.declaredType(1), "varchar(20)");
    EXPECT_EQ(query.originTable(1), "aItem");
    EXPECT_EQ(query.columnName(0), "ItemId");
}

TEST(NativeStatementTest, RefusesWhatIsNotOneGoodStatement) {
    TempDatabase db;
    auto c = db.connect();
    EXPECT_EQ(errorOf([&] { ado::sqlite::NativeStatement(c, "select 1; select 2"); }).number(),
              -2147217900);
    EXPECT_EQ(errorOf([&] { ado::sqlite::NativeStatement(c, "  -- nothing"); }).number(),
              -2147217900);
    EXPECT_EQ(
        errorOf([&] { ado::sqlite::NativeStatement(c, "select * from nosuch"); }).description(),
        "Invalid object name 'nosuch'.");
    ado::sqlite::NativeStatement twice(c, "insert into aItem (ItemId) values (1)");
    twice.step();
    twice.reset();
    // aItem.ItemId is the primary key.
    EXPECT_EQ(errorOf([&] { twice.step(); }).number(), -2147217873);
}

TEST(ScriptTest, RunsNativeStatementsAndTakesBackAFailedTransaction) {
    TempDatabase db;
    auto c = db.connect();
    ado::sqlite::executeScript(c, "insert into aItem (ItemId) values (1);\n"
                                  "-- a comment; with a semicolon\n"
                                  "insert into aItem (ItemId, itemcode) values (2, 'a;b');");
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "2");
    auto e = errorOf([&] {
        ado::sqlite::executeScript(c, "begin; insert into aItem (ItemId) values (3); "
                                      "insert into nosuch values (1); commit;");
    });
    EXPECT_EQ(e.number(), -2147217865);
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "2");
    c.BeginTrans(); // the connection is usable: no transaction was left open
    c.RollbackTrans();
}

TEST(ScriptTest, CreateDatabaseMakesAFileThatOpenThenFinds) {
    TempDatabase db;
    std::string path = (db.folder() / "new.db").string();
    ado::Connection made = ado::sqlite::createDatabase(path);
    EXPECT_EQ(made.ConnectionString(), "sqlite:" + path);
    made.Close();
    ado::Connection c;
    c.Open("sqlite:" + path);
    EXPECT_EQ(c.State(), ado::adStateOpen);
}

} // namespace
