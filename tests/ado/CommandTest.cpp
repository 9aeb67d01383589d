// Commands: stored procedures by position inside the caller's transaction, text commands.
#include "ado/Command.h"

#include "TempDatabase.h"
#include "ado/sqlite/Script.h"

#include <gtest/gtest.h>

namespace {

using adotest::errorOf;
using adotest::scalar;
using adotest::TempDatabase;

// A stock table moved by a procedure, the way the verification procedures move it.
constexpr std::string_view procedureSchema = R"(
create table stock (itemid int, qty numeric(18,3));
create table moves (svhid int, mode varchar(1));
create table sv_procedure (name text primary key collate nocase, params text not null,
                           body text not null);
insert into stock values (1, 10);
insert into sv_procedure values ('spMoveStock', '@svhid int,@qty numeric(18,3),@mode varchar(1)',
  'update stock set qty = qty + case @MODE when ''F'' then @qty else -@qty end where itemid = 1;
   insert into moves values (@svhid, @mode)');
insert into sv_procedure values ('spHalfDone', '@svhid int',
  'insert into moves values (@svhid, ''H''); insert into nosuchtable values (1)');
insert into sv_procedure values ('spShare', '@svhid int,@parts int,@mode varchar(5)',
  'insert into moves values (@svhid, ''S'');
   update stock set qty = qty / @parts where itemid = 1;
   update moves set mode = @mode || '' '' where svhid = @svhid');
)";

ado::Command procedure(const ado::Connection &c, std::string_view name) {
    ado::Command cmd;
    cmd.ActiveConnection(c);
    cmd.CommandType(ado::adCmdStoredProc);
    cmd.CommandText(name);
    return cmd;
}

TEST(CommandTest, ProcedureTakesPositionalParametersReadFromTheDatabase) {
    TempDatabase db(procedureSchema);
    auto c = db.connect();
    auto cmd = procedure(c, "SPMOVESTOCK");
    cmd.Parameters(1) = 5; // before any Refresh: the parameters are read at first touch
    cmd.Parameters(2) = "2.5";
    cmd.Parameters(3) = "F";
    EXPECT_EQ(cmd.Parameters().Count(), 4);
    EXPECT_EQ(cmd.Parameters(0).Direction(), ado::adParamReturnValue);
    EXPECT_EQ(cmd.Parameters(3).Name(), "@mode");
    EXPECT_EQ(cmd.Parameters("@QTY").TypeName(), "numeric(18,3)");
    long changed = 0;
    cmd.Execute(&changed);
    EXPECT_EQ(changed, 2);
    EXPECT_EQ(cmd.Parameters(0).Value(), vb::Variant(0));
    EXPECT_EQ(scalar(c, "select qty from stock"), "12.5");
    EXPECT_EQ(scalar(c, "select svhid || mode from moves"), "5F");
}

TEST(CommandTest, ProcedureRunsInsideTheCallersTransaction) {
    TempDatabase db(procedureSchema);
    auto c = db.connect();
    c.BeginTrans();
    auto cmd = procedure(c, "spMoveStock");
    cmd.Parameters(1) = 5;
    cmd.Parameters(2) = 3;
    cmd.Parameters(3) = "R";
    cmd.Execute();
    EXPECT_EQ(scalar(c, "select qty from stock"), "7");
    c.RollbackTrans();
    EXPECT_EQ(scalar(c, "select qty from stock"), "10");
    EXPECT_EQ(scalar(c, "select count(*) from moves"), "0");
}

TEST(CommandTest, FailingBodyLeavesNoneOfItsChangesButTheCallersStay) {
    TempDatabase db(procedureSchema);
    auto c = db.connect();
    c.BeginTrans();
    c.Execute("insert into moves values (1, 'X')");
    auto cmd = procedure(c, "spHalfDone");
    cmd.Parameters(1) = 9;
    auto e = errorOf([&] { cmd.Execute(); });
    EXPECT_EQ(e.number(), -2147217865);
    EXPECT_NE(e.description().find("nosuchtable"), std::string::npos) << e.description();
    EXPECT_NE(e.description().find("spHalfDone"), std::string::npos) << e.description();
    EXPECT_EQ(scalar(c, "select group_concat(svhid || mode) from moves"), "1X");
    c.CommitTrans();
}

TEST(CommandTest, BodyRefusesADivisorOfZeroAndTextTooLongForItsColumn) {
    TempDatabase db(procedureSchema);
    auto c = db.connect();
    c.BeginTrans();
    c.Execute("insert into moves values (1, 'X')");
    auto share = [&](int parts, const char *mode) {
        auto cmd = procedure(c, "spShare");
        cmd.Parameters(1) = 7;
        cmd.Parameters(2) = parts;
        cmd.Parameters(3) = mode;
        cmd.Execute();
    };
    auto zero = errorOf([&] { share(0, "Z"); });
    EXPECT_EQ(zero.number(), -2147217833);
    EXPECT_EQ(zero.description(),
              "Divide by zero error encountered. (in stored procedure 'spShare')");
    auto longText = errorOf([&] { share(4, "ZZ"); }); // moves.mode is varchar(1)
    EXPECT_EQ(longText.number(), -2147217833);
    EXPECT_EQ(longText.description(),
              "String or binary data would be truncated. (in stored procedure 'spShare')");
    // Neither failure left any of the body's rows; the caller's row and transaction stay.
    EXPECT_EQ(scalar(c, "select group_concat(svhid || mode) from moves"), "1X");
    EXPECT_EQ(scalar(c, "select qty from stock"), "10");
    share(4, "Z"); // the blank after it goes quietly
    EXPECT_EQ(scalar(c, "select group_concat(svhid || '[' || mode || ']') from moves"),
              "1[X],7[Z]");
    EXPECT_EQ(scalar(c, "select qty from stock"), "2.5");
    c.CommitTrans();
}

TEST(CommandTest, UnknownProcedureAndMissingArgumentsAreRefused) {
    TempDatabase db(procedureSchema);
    auto c = db.connect();
    auto unknown = procedure(c, "spNope");
    auto e = errorOf([&] { unknown.Execute(); });
    EXPECT_EQ(e.number(), -2147217900);
    EXPECT_EQ(e.description(), "Could not find stored procedure 'spNope'.");
    EXPECT_EQ(errorOf([&] { unknown.Parameters(1); }).number(), -2147217900);

    auto partial = procedure(c, "spMoveStock");
    partial.Parameters(1) = 5;
    auto missing = errorOf([&] { partial.Execute(); });
    EXPECT_NE(missing.description().find("expects parameter '@qty'"), std::string::npos)
        << missing.description();

    TempDatabase bare;
    auto noTable = procedure(bare.connect(), "spMoveStock");
    EXPECT_EQ(errorOf([&] { noTable.Execute(); }).description(),
              "Could not find stored procedure 'spMoveStock'.");
}

TEST(CommandTest, WithoutAConnectionRaises3709) {
    ado::Command cmd;
    cmd.CommandType(ado::adCmdStoredProc);
    cmd.CommandText("spMoveStock");
    EXPECT_EQ(errorOf([&] { cmd.Execute(); }).number(), 3709);
    EXPECT_EQ(errorOf([&] { cmd.Parameters(1); }).number(), 3265);
}

TEST(CommandTest, TextCommandRunsTranslatedText) {
    TempDatabase db;
    auto c = db.connect();
    ado::Command cmd;
    cmd.ActiveConnection(c);
    cmd.CommandText("insert aItem (ItemId, itemcode) values (1, 'x' + 'y')");
    long n = 0;
    cmd.Execute(&n);
    EXPECT_EQ(n, 1);
    EXPECT_EQ(scalar(c, "select itemcode from aItem"), "xy");
}

} // namespace
