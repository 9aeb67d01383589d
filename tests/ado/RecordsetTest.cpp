// Recordsets: lazy opening, moving, fields, adding and changing rows, the errors of the old
// objects.
#include "ado/Recordset.h"

#include "EngineTest.h"
#include "ado/Connection.h"
#include "vb/Date.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using adotest::errorOf;
using adotest::scalar;

constexpr std::string_view items = "insert into aItem (ItemId, itemcode, itemrate) values "
                                   "(1, 'A1', 1.5), (2, 'B2', null), (3, 'C3', 3)";

class RecordsetTest : public adotest::EngineTest {};

std::string readFile(const std::string &path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST_P(RecordsetTest, RecordCountIsKnownForKeysetAndStaticOnly) {
    c.Execute(std::string(items));
    for (auto [cursor, expected] : {std::pair{ado::adOpenForwardOnly, -1L},
                                    {ado::adOpenKeyset, 3L},
                                    {ado::adOpenDynamic, -1L},
                                    {ado::adOpenStatic, 3L}}) {
        ado::Recordset rs;
        rs.Open("select * from aItem", c, cursor, ado::adLockOptimistic);
        EXPECT_EQ(rs.RecordCount(), expected) << "cursor type " << cursor;
    }
}

TEST_P(RecordsetTest, MovesThroughRowsAndRaises3021PastTheEnds) {
    c.Execute(std::string(items));
    ado::Recordset rs;
    rs.Open("select ItemId from aItem order by ItemId", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    EXPECT_FALSE(rs.Bof());
    EXPECT_EQ(rs.Fields(0).Value(), vb::Variant(1));
    rs.MoveLast();
    EXPECT_EQ(rs.Fields(0).Value(), vb::Variant(3));
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
    auto atEof = errorOf([&] { rs.Fields("ItemId").Value(); });
    EXPECT_EQ(atEof.number(), 3021);
    EXPECT_EQ(errorOf([&] { rs.MoveNext(); }).number(), 3021);
    rs.MoveFirst();
    rs.MovePrevious();
    EXPECT_TRUE(rs.Bof());
    EXPECT_EQ(errorOf([&] { rs.Fields(0).Value(); }).number(), 3021);
    EXPECT_EQ(errorOf([&] { rs.MovePrevious(); }).number(), 3021);
}

TEST_P(RecordsetTest, EmptyResultIsAtBothEndsAndMoveFirstFails) {
    for (int cursor : {ado::adOpenForwardOnly, ado::adOpenKeyset}) {
        ado::Recordset rs;
        rs.Open("select * from aItem", c, cursor, ado::adLockReadOnly);
        EXPECT_TRUE(rs.Eof());
        EXPECT_TRUE(rs.Bof());
        EXPECT_EQ(errorOf([&] { rs.MoveFirst(); }).number(), 3021);
        EXPECT_EQ(rs.Fields().Count(), 4);
    }
}

TEST_P(RecordsetTest, ForwardOnlyReadsOnwardAndRefusesToGoBack) {
    c.Execute(std::string(items));
    ado::Recordset rs;
    rs.Open("select itemcode from aItem order by ItemId", c);
    std::string seen;
    while (!rs.Eof()) {
        seen += vb::Variant(rs.Fields(0)).asString();
        rs.MoveNext();
    }
    EXPECT_EQ(seen, "A1B2C3");
    EXPECT_FALSE(rs.Bof());
    EXPECT_EQ(errorOf([&] { rs.MovePrevious(); }).number(), -2147217884);
    rs.MoveFirst(); // runs the statement again
    EXPECT_EQ(rs.Fields(0).Value(), vb::Variant("A1"));
}

TEST_P(RecordsetTest, FieldsByNameIgnoreCaseAndKeepTheStatementsNames) {
    c.Execute(std::string(items));
    ado::Recordset rs;
    rs.Open("select ITEMCODE, itemrate * 2, itemrate rate from aItem where ItemId = 1", c);
    EXPECT_EQ(rs.Fields().Count(), 3);
    EXPECT_EQ(rs.Fields(0).Name(), "ITEMCODE");
    EXPECT_EQ(rs.Fields(1).Name(), "");
    EXPECT_EQ(rs.Fields(2).Name(), "rate");
    EXPECT_EQ(rs.Fields("itemCode").Value(), vb::Variant("A1"));
    EXPECT_EQ(rs.Fields()("RATE").Value(), vb::Variant(1.5));
    auto missing = errorOf([&] { rs.Fields("itemname"); });
    EXPECT_EQ(missing.number(), 3265);
    EXPECT_NE(missing.description().find("itemname"), std::string::npos);
    EXPECT_EQ(errorOf([&] { rs.Fields(3); }).number(), 3265);
}

TEST_P(RecordsetTest, ValuesComeAsTheOldLayerGaveThem) {
    c.Execute("insert into loiStockVerificationHeader (svhid, svhno, svhdate, svhGodownid, "
              "svhposted, updatetime) values (7, 'SV/7', '2026/11/22', 1, 1, null)");
    c.Execute("insert into loiStockVerificationDetail (svdid, svdAvailStock) values (7, 12)");
    ado::Recordset h = c.Execute("select svhid, svhno, svhdate, svhposted, updatetime, "
                                 "svhcancelled from loiStockVerificationHeader");
    EXPECT_EQ(h.Fields("svhid").Value(), vb::Variant(7));
    EXPECT_EQ(h.Fields("svhno").Value(), vb::Variant("SV/7"));
    EXPECT_EQ(h.Fields("svhdate").Value(), vb::Variant(vb::DateSerial(2026, 11, 22)));
    EXPECT_EQ(h.Fields("svhposted").Value(), vb::Variant(true));
    EXPECT_TRUE(h.Fields("updatetime").Value().isNull());
    EXPECT_EQ(h.Fields("svhcancelled").Value(), vb::Variant(0)); // the column's default
    ado::Recordset latest = c.Execute("select max(svhdate), max(svhno) from "
                                      "loiStockVerificationHeader");
    EXPECT_EQ(latest.Fields(0).Value(), vb::Variant(vb::DateSerial(2026, 11, 22)));
    EXPECT_EQ(latest.Fields(1).Value(), vb::Variant("SV/7"));
    ado::Recordset d = c.Execute("select svdAvailStock from loiStockVerificationDetail");
    EXPECT_EQ(d.Fields(0).Value(), vb::Variant(12.0)); // a decimal column gives a Double
}

TEST_P(RecordsetTest, OpeningToAddNewReadsNoRow) {
    c.Execute(std::string(items));
    std::string trace = (folder() / "trace.txt").string();
    c.traceSql(trace);
    {
        ado::Recordset rs;
        rs.Open("select * from aItem", c, ado::adOpenKeyset, ado::adLockOptimistic);
        rs.AddNew();
        rs.Fields("ItemId") = 4;
        rs.Fields("itemcode") = "D4";
        rs.Update();
        rs.Close();
    }
    EXPECT_NE(readFile(trace).find("rows:    0 read, 1 added, 0 changed"), std::string::npos)
        << readFile(trace);
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "4");
}

TEST_P(RecordsetTest, AddedRowTakesTheDefaultsAndStoredForms) {
    ado::Recordset rs;
    rs.Open("select * from loiStockVerificationHeader", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    rs.AddNew();
    EXPECT_FALSE(rs.Eof());
    rs.Fields("svhid") = 1;
    rs.Fields("svhGodownid") = 2;
    rs.Fields("svhdate") = "2026/11/22";
    rs.Fields("updatetime") = vb::Variant(vb::Date{vb::DateSerial(2026, 11, 22).serial + 0.5});
    rs.Update();
    EXPECT_EQ(rs.Fields("svhcancelled").Value(), vb::Variant(0));
    EXPECT_EQ(rs.Fields("svhdate").Value(), vb::Variant(vb::DateSerial(2026, 11, 22)));
    EXPECT_EQ(rs.RecordCount(), 1);
    EXPECT_EQ(scalar(c, "select svhdate || '|' || updatetime from loiStockVerificationHeader"),
              "2026-11-22 00:00:00|2026-11-22 12:00:00");
}

TEST_P(RecordsetTest, NumericColumnsRefuseTextThatIsNoNumber) {
    ado::Recordset rs;
    rs.Open("select * from loiStockVerificationDetail", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    rs.AddNew();
    rs.Fields("svdid") = "12";
    rs.Fields("svdAvailStock") = " 3.500 ";
    rs.Update();
    EXPECT_EQ(scalar(c, "select svdid || '|' || svdAvailStock from loiStockVerificationDetail"),
              "12|3.5");

    rs.AddNew();
    rs.Fields("svdItemID") = "1x";
    auto integer = errorOf([&] { rs.Update(); });
    EXPECT_EQ(integer.number(), -2147217913);
    EXPECT_NE(integer.description().find("Conversion failed when converting the varchar value "
                                         "'1x' to data type int."),
              std::string::npos);
    EXPECT_EQ(rs.EditMode(), ado::adEditAdd); // the row stays pending, as it did
    rs.CancelUpdate();

    rs.AddNew();
    rs.Fields("svdVerifiedStock") = "abc";
    auto decimal = errorOf([&] { rs.Update(); });
    EXPECT_NE(decimal.description().find("Error converting data type varchar to numeric."),
              std::string::npos);
    rs.CancelUpdate();
    EXPECT_EQ(scalar(c, "select count(*) from loiStockVerificationDetail"), "1");
}

TEST_P(RecordsetTest, ChangesTheRowItReadAndNoOther) {
    if (onServer())
        GTEST_SKIP() << "on PostgreSQL rows are told apart by their table's key, so two rows "
                        "alike in every column cannot stand in a table that recordsets change";
    // Two rows alike in every column: only the rowid tells them apart.
    c.Execute("insert into loiStockVerificationHeader (svhid, svhGodownid) values (1, 1), (1, 1)");
    ado::Recordset rs;
    rs.Open("select * from loiStockVerificationHeader where svhid=1 and svhGodownid=1", c,
            ado::adOpenKeyset, ado::adLockOptimistic);
    ASSERT_EQ(rs.RecordCount(), 2);
    rs.Fields("svhcancelled") = 1;
    rs.Fields("svhcancelledRemarks") = "clerk:counted twice";
    rs.Update();
    EXPECT_EQ(scalar(c, "select group_concat(svhcancelled || ':' || ifnull(svhcancelledRemarks, "
                        "'-'), ',') from (select * from loiStockVerificationHeader order by "
                        "rowid)"),
              "1:clerk:counted twice,0:-");
}

TEST_P(RecordsetTest, MovingOffAnEditedRowSavesIt) {
    c.Execute(std::string(items));
    ado::Recordset rs;
    rs.Open("select * from aItem order by ItemId", c, ado::adOpenStatic, ado::adLockOptimistic);
    rs.Fields("itemcode") = "a1";
    EXPECT_EQ(rs.EditMode(), ado::adEditInProgress);
    rs.MoveNext();
    EXPECT_EQ(rs.EditMode(), ado::adEditNone);
    EXPECT_EQ(scalar(c, "select itemcode from aItem where ItemId = 1"), "a1");
}

TEST_P(RecordsetTest, BatchOptimisticWritesOnUpdateBatch) {
    ado::Recordset rs;
    rs.Open("SELECT * FROM aItem", c, ado::adOpenStatic, ado::adLockBatchOptimistic);
    for (int id : {1, 2}) {
        rs.AddNew();
        rs.Fields("ItemId") = id;
    }
    rs.Update();
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "0");
    rs.UpdateBatch();
    EXPECT_EQ(scalar(c, "select count(*) from aItem"), "2");
}

TEST_P(RecordsetTest, RefusesWritesItCannotMake) {
    c.Execute(std::string(items));
    ado::Recordset ro;
    ro.Open("select * from aItem", c, ado::adOpenKeyset, ado::adLockReadOnly);
    EXPECT_EQ(errorOf([&] { ro.Fields("itemcode") = "x"; }).number(), 3251);
    EXPECT_EQ(errorOf([&] { ro.AddNew(); }).number(), 3251);

    ado::Recordset joined;
    joined.Open("select a.itemcode from aItem a, aItem b where a.ItemId = b.ItemId", c,
                ado::adOpenKeyset, ado::adLockOptimistic);
    EXPECT_EQ(errorOf([&] { joined.AddNew(); }).number(), -2147467259);

    ado::Recordset expression;
    expression.Open("select itemrate * 2 from aItem", c, ado::adOpenKeyset, ado::adLockOptimistic);
    EXPECT_EQ(errorOf([&] { expression.Fields(0) = 1; }).number(), -2147217887);

    ado::Recordset editing;
    editing.Open("select * from aItem", c, ado::adOpenKeyset, ado::adLockOptimistic);
    editing.AddNew();
    EXPECT_EQ(errorOf([&] { editing.Close(); }).number(), 3219);
    editing.CancelUpdate();
    editing.Close();
    EXPECT_EQ(errorOf([&] { editing.Eof(); }).number(), 3704);
    EXPECT_EQ(errorOf([&] { editing.Open("select 1", c, 5); }).number(), 3001);
}

TEST_P(RecordsetTest, StatementWithoutRowsRunsAtOnceAndStaysClosed) {
    c.Execute(std::string(items));
    ado::Recordset rs;
    rs.Open("update aItem set itemrate = 0 where ItemId = 1", c, ado::adOpenKeyset,
            ado::adLockOptimistic);
    EXPECT_EQ(rs.State(), ado::adStateClosed);
    EXPECT_EQ(scalar(c, "select itemrate from aItem where ItemId = 1"), "0.0");
    EXPECT_EQ(errorOf([&] { rs.Open("select 1; select 2", c); }).number(), -2147217900);
}

TEST_P(RecordsetTest, CopiesShareTheCursor) {
    c.Execute(std::string(items));
    ado::Recordset a;
    a.Open("select ItemId from aItem order by ItemId", c, ado::adOpenKeyset, ado::adLockReadOnly);
    ado::Recordset b = a;
    b.MoveNext();
    EXPECT_EQ(a.Fields(0).Value(), vb::Variant(2));
    EXPECT_TRUE(a == b);
}

RUN_ON_BOTH_ENGINES(RecordsetTest);

} // namespace
