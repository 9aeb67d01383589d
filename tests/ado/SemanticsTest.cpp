// SQL Server's semantics that the module relies on, run on a real database file.
#include "EngineTest.h"
#include "ado/Connection.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"

#include <gtest/gtest.h>

namespace {

using adotest::errorOf;

// The first field of the first row of a translated statement, as text ("<eof>" for none).
std::string first(const ado::Connection &c, std::string_view sql) {
    ado::Recordset rs = c.Execute(sql);
    if (rs.Eof())
        return "<eof>";
    vb::Variant v = rs.Fields(0).Value();
    if (v.isNull())
        return "<null>";
    if (v.isString())
        return v.asString();
    return std::to_string(static_cast<long long>(v.number()));
}

class SemanticsTest : public adotest::EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        if (IsSkipped())
            return;
        c.Execute("insert aItem (ItemId, itemcode) values (1, 'AbC  '), (2, 'x'), (3, null)");
        c.Execute("insert loiStockVerificationHeader (svhid, svhno, svhdate, svhGodownid, "
                  "svhFutureVc) values "
                  "(1, 'SV/0009', '2026-11-21 00:00:00', 1, 'on00001'), "
                  "(2, 'SV/0010', '2026-11-22 00:00:00', 1, 'tc00002'), "
                  "(3, 'SV/0011', '2026-11-23 09:30:00', 1, 'on00003'), "
                  "(4, 'SV/00X2', '2026-11-24 00:00:00', 1, 'on00004'), "
                  "(5, 'XY/0999', '2026-11-25 00:00:00', 1, 'on00005')");
    }
};

// The value of one expression, as the recordset gives it.
vb::Variant valueOf(const ado::Connection &c, const std::string &expression) {
    return c.Execute("select " + expression).Fields(0).Value();
}

TEST_P(SemanticsTest, ArithmeticGivesSqlServersValuesAndTypes) {
    // Integers divide to an integer, cut toward zero; the remainder takes the dividend's sign.
    EXPECT_EQ(valueOf(c, "7 / 2"), vb::Variant(3));
    EXPECT_EQ(valueOf(c, "-7 / 2"), vb::Variant(-3));
    EXPECT_EQ(valueOf(c, "7 % -3"), vb::Variant(1));
    EXPECT_EQ(valueOf(c, "-7 % 3"), vb::Variant(-1));
    EXPECT_EQ(valueOf(c, "7 / 2").type(), vb::VarType::Long);
    // A decimal on either side gives a decimal quotient.
    EXPECT_EQ(valueOf(c, "7.0 / 2"), vb::Variant(3.5));
    EXPECT_EQ(valueOf(c, "7 / 2.0"), vb::Variant(3.5));
    EXPECT_EQ(valueOf(c, "7.5 % 2"), vb::Variant(1.5));
    // * / % bind before + and -, left to right.
    EXPECT_EQ(valueOf(c, "2 + 3 * 4 / 5"), vb::Variant(4));
    EXPECT_EQ(valueOf(c, "100 / 10 / 5"), vb::Variant(2));
    EXPECT_EQ(valueOf(c, "20 % 7 / 2"), vb::Variant(3));
    EXPECT_EQ(valueOf(c, "-(4) / -2 - 1"), vb::Variant(1));
    EXPECT_EQ(valueOf(c, "(case when 1 = 1 then 9 else 0 end) / 2 + len('abc') / 2"),
              vb::Variant(5));
    EXPECT_EQ(valueOf(c, "case when 1 = 1 then 9 else 0 end / 2"), vb::Variant(4));
    // + adds when a side is a number, text converted to it; it joins only text.
    EXPECT_EQ(valueOf(c, "1 + '2'"), vb::Variant(3));
    EXPECT_EQ(valueOf(c, "'1' + 2 + '3'"), vb::Variant(6));
    EXPECT_EQ(valueOf(c, "'1' + '2'"), vb::Variant("12"));
    EXPECT_EQ(valueOf(c, "1.5 + ' 2.5 '"), vb::Variant(4.0));
    EXPECT_EQ(valueOf(c, "'AB' + itemcode from aItem where ItemId = 2"), vb::Variant("ABx"));

    auto zero = errorOf([&] { valueOf(c, "sum(ItemId / (ItemId - 2)) from aItem"); });
    EXPECT_EQ(zero.number(), -2147217833);
    EXPECT_EQ(zero.description(), "Divide by zero error encountered.");
    auto text = errorOf([&] { valueOf(c, "2 + itemcode from aItem where ItemId = 2"); });
    EXPECT_EQ(text.number(), -2147217913);
    EXPECT_EQ(text.description(),
              "Conversion failed when converting the varchar value 'x' to data type int.");
    EXPECT_TRUE(valueOf(c, "itemcode / 0 from aItem where ItemId = 3").isNull());
}

TEST_P(SemanticsTest, TextInArithmeticConvertsToTheNumbersType) {
    c.Execute("update aItem set itemcode = ' 12 ' where ItemId = 2");
    EXPECT_EQ(valueOf(c, "ItemId + itemcode from aItem where ItemId = 2"), vb::Variant(14));
    EXPECT_EQ(valueOf(c, "itemcode - ItemId from aItem where ItemId = 2"), vb::Variant(10));
    EXPECT_EQ(valueOf(c, "itemcode * 2 from aItem where ItemId = 2"), vb::Variant(24));
    EXPECT_EQ(valueOf(c, "itemcode / 5 from aItem where ItemId = 2"), vb::Variant(2));
    EXPECT_EQ(valueOf(c, "itemcode % 5 from aItem where ItemId = 2"), vb::Variant(2));
    EXPECT_EQ(valueOf(c, "'1' + '2' + itemcode from aItem where ItemId = 2"),
              vb::Variant("12 12 "));
    auto text = errorOf([&] { valueOf(c, "1.5 + 'x'"); });
    EXPECT_EQ(text.number(), -2147217913);
    EXPECT_EQ(text.description(), "Error converting data type varchar to numeric.");
}

TEST_P(SemanticsTest, DivideByZeroRefusesTheStatementAndKeepsTheTransaction) {
    c.BeginTrans();
    c.Execute("update aItem set itemcode = 'kept' where ItemId = 1");
    for (const char *sql : {"select 7 / 0", "select 7 % 0", "select 7.5 / 0",
                            "update aItem set ItemId = ItemId / 0 where ItemId = 2"}) {
        auto zero = errorOf([&] {
            ado::Recordset rs = c.Execute(sql);
            if (rs.State() == ado::adStateOpen)
                rs.Fields(0).Value();
        });
        EXPECT_EQ(zero.number(), -2147217833) << sql;
        EXPECT_EQ(zero.description(), "Divide by zero error encountered.") << sql;
    }
    c.CommitTrans();
    EXPECT_EQ(first(c, "select itemcode from aItem where ItemId = 1"), "kept");
    EXPECT_EQ(first(c, "select count(*) from aItem where ItemId = 2"), "1");
}

TEST_P(SemanticsTest, TextComparesIgnoringCaseAndTrailingBlanks) {
    EXPECT_EQ(first(c, "select ItemId from aItem where itemcode = 'abc'"), "1");
    EXPECT_EQ(first(c, "select ItemId from aItem where upper(itemcode) = 'abc '"), "1");
    EXPECT_EQ(first(c, "select ItemId from aItem where ltrim(rtrim(upper(itemcode))) = 'ABC'"),
              "1");
    EXPECT_EQ(
        first(c, "select count(*) from aItem a, aItem b where a.itemcode = upper(b.itemcode)"),
        "2");
    EXPECT_EQ(first(c, "select ItemId from aItem where itemcode <> 'ABC' order by ItemId"), "2");
    // Beyond ASCII letters too: accented, Greek and Cyrillic capitals.
    c.Execute("insert aItem (ItemId, itemcode) values (4, 'CAFÉ ŒUVRE ΣΩ ЖЁ')");
    EXPECT_EQ(first(c, "select ItemId from aItem where itemcode = 'café œuvre σω жё  '"), "4");
    EXPECT_EQ(first(c, "select count(*) from aItem where itemcode = 'cafe œuvre σω жё'"), "0");
    EXPECT_EQ(first(c, "select count(*) from aItem where itemcode > 'CAFÉ' and itemcode < 'cafÉ "
                       "ŒUVRE ΣΩ ЖЁЁ'"),
              "1");
}

TEST_P(SemanticsTest, TextWithTrailingBlanksIsOneValueInSetsAndOrders) {
    c.Execute("insert aItem (ItemId, itemcode) values (5, 'abc'), (6, 'ABC ')");
    // The value read back keeps the blanks it was written with.
    EXPECT_EQ(first(c, "select itemcode from aItem where ItemId = 1"), "AbC  ");
    EXPECT_EQ(first(c, "select isnull(itemcode, '') from aItem where ItemId = 6"), "ABC ");
    EXPECT_EQ(first(c, "select '[' + itemcode + ']' from aItem where ItemId = 1"), "[AbC  ]");
    EXPECT_EQ(first(c, "select upper(ltrim(itemcode)) + '|' from aItem where ItemId = 6"),
              "ABC |");
    // A blank at the end neither orders a text after its equal nor keeps them apart.
    EXPECT_EQ(first(c, "select count(*) from aItem where itemcode > 'abc'"), "1");
    EXPECT_EQ(first(c, "select count(*) from aItem where itemcode < 'abc  ' and itemcode > 'a'"),
              "0");
    EXPECT_EQ(first(c, "select count(*) from aItem where itemcode >= 'ABC' and itemcode <= 'abc'"),
              "3");
    EXPECT_EQ(first(c, "select count(*) from aItem where itemcode in ('abc   ', 'y')"), "3");
    EXPECT_EQ(first(c, "select count(*) from aItem where itemcode <> 'abc'"), "1");
    EXPECT_EQ(first(c, "select count(distinct itemcode) from aItem"), "2");
    EXPECT_EQ(first(c, "select count(*) from (select distinct itemcode from aItem "
                       "where itemcode is not null) d"),
              "2");
    EXPECT_EQ(first(c, "select count(*) from aItem a, aItem b where a.itemcode = b.itemcode"),
              "10");
    ado::Recordset groups =
        c.Execute("select count(*), max(ItemId) from aItem where itemcode is not null "
                  "group by itemcode order by count(*) desc");
    EXPECT_EQ(vb::CStr(groups.Fields(0).Value()) + "/" + vb::CStr(groups.Fields(1).Value()),
              "3/6");
    // min and max pick among equals; whichever they pick compares equal to 'abc'.
    EXPECT_EQ(first(c, "select count(*) from aItem where itemcode = (select max(itemcode) from "
                       "aItem where itemcode < 'b')"),
              "3");
}

TEST_P(SemanticsTest, LikeTakesSqlServersPatterns) {
    c.Execute("insert aItem (ItemId, itemcode) values (4, 'b[x]'), (5, 'Élan'), (6, 'a_c')");
    auto ids = [&](std::string_view pattern) {
        std::string out;
        ado::Recordset rs = c.Execute("select ItemId from aItem where itemcode like " +
                                      std::string(pattern) + " order by ItemId");
        for (; !rs.Eof(); rs.MoveNext())
            out += (out.empty() ? "" : ",") + vb::CStr(rs.Fields(0).Value());
        return out;
    };
    EXPECT_EQ(ids("'[a-c]%'"), "1,4,6");
    EXPECT_EQ(ids("'[^a]%'"), "2,4,5");
    EXPECT_EQ(ids("'%[[]%'"), "4");
    EXPECT_EQ(ids("'b[[]x]'"), "4");
    EXPECT_EQ(ids("'é%'"), "5");
    EXPECT_EQ(ids("'_'"), "2");
    EXPECT_EQ(ids("'a!_c' escape '!'"), "6");
    EXPECT_EQ(ids("'a_c'"), "1,6");
    EXPECT_EQ(ids("'%'"), "1,2,4,5,6"); // null matches nothing
    EXPECT_EQ(ids("'%LAN'"), "5");
    // A [ without a ] after it is the character itself.
    EXPECT_EQ(ids("'b[%'"), "4");
    EXPECT_EQ(ids("'b[x'"), "");
    EXPECT_EQ(ids("'[z-a]%'"), ""); // a range written backwards holds nothing
    // Blanks at the end of the text may stay unmatched; blanks of the pattern may not.
    EXPECT_EQ(ids("'abc'"), "1");
    EXPECT_EQ(ids("'abc '"), "1");
    EXPECT_EQ(ids("'x '"), "");
    // A pattern that changes from row to row is taken apart for each row, sets and all.
    EXPECT_EQ(ids("replace(itemcode, '[', '[[]')"), "1,2,4,5,6");
    EXPECT_EQ(ids("'%' + rtrim(itemcode) + '%'"), "1,2,5,6"); // 'b[x]' holds a set
    EXPECT_EQ(ids("'[' + 'a-c' + ']%'"), "1,4,6");
    EXPECT_EQ(ids("left(itemcode, 1) + '!_c' escape '!'"), "6");
    ado::Recordset rs = c.Execute("select ItemId from aItem where itemcode not like '[a-c]%' "
                                  "and not itemcode like 'x' order by ItemId");
    EXPECT_EQ(vb::CStr(rs.Fields(0).Value()), "5");
    rs.MoveNext();
    EXPECT_TRUE(rs.Eof());
}

TEST_P(SemanticsTest, StringFunctionsCountAsSqlServerCounts) {
    EXPECT_EQ(first(c, "select len(itemcode) from aItem where ItemId = 1"), "3");
    EXPECT_EQ(first(c, "select left(itemcode, 2) + '|' + right(itemcode, 3) from aItem where "
                       "ItemId = 1"),
              "Ab|C  ");
    EXPECT_EQ(first(c, "select substring('abcdef', 0, 3)"), "ab");
    EXPECT_EQ(first(c, "select substring('abcdef', 5, 10)"), "ef");
    EXPECT_EQ(first(c, "select isnull(itemcode, 'none') from aItem where ItemId = 3"), "none");
    EXPECT_EQ(first(c, "select 'item ' + itemcode from aItem where ItemId = 3"), "<null>");
    EXPECT_EQ(first(c, "select len(itemcode) from aItem where ItemId = 3"), "<null>");
    auto e = errorOf([&] { first(c, "select left('abc', -1)"); });
    EXPECT_NE(e.description().find("Invalid length parameter passed to the left function."),
              std::string::npos);
}

TEST_P(SemanticsTest, IsnumericAndConvertFollowSqlServer) {
    for (auto [text, expected] : {std::pair{"'12'", "1"},
                                  {"' 1.5 '", "1"},
                                  {"'1e3'", "1"},
                                  {"'$'", "1"},
                                  {"'\u00a312.50'", "1"},
                                  {"' \u20ac-5'", "1"},
                                  {"'\u00a5'", "1"},
                                  {"'#5'", "0"},
                                  {"'\u00e912'", "0"},
                                  {"'1,000'", "1"},
                                  {"''", "0"},
                                  {"'12a'", "0"},
                                  {"null", "0"},
                                  {"42", "1"}})
        EXPECT_EQ(first(c, "select isnumeric(" + std::string(text) + ")"), expected) << text;
    EXPECT_EQ(first(c, "select convert(int, ' 12 ') + 1"), "13");
    EXPECT_EQ(first(c, "select convert(int, 12.9)"), "12");
    EXPECT_EQ(first(c, "select convert(varchar(3), 'abcdef')"), "abc");
    EXPECT_EQ(first(c, "select convert(varchar(24), 12.5)"), "12.5");
    EXPECT_EQ(first(c, "select convert(varchar(24), 0.1 + 0.2)"), "0.3");
    // A float keeps 6 significant digits, as SQL Server writes it, with the
    // exponent form past 6 digits before the point or below 0.0001.
    for (auto [value, expected] : {std::pair{"1234.56789", "1234.57"},
                                   {"1234567.5", "1.23457e+006"},
                                   {"-98765432.1", "-9.87654e+007"},
                                   {"999999.5", "1e+006"},
                                   {"123456", "123456"},
                                   {"0.0001", "0.0001"},
                                   {"0.00001234", "1.234e-005"},
                                   {"100", "100"},
                                   {"0", "0"}})
        EXPECT_EQ(first(c, "select convert(varchar(24), convert(float, " + std::string(value) +
                               "))"),
                  expected)
            << value;
    EXPECT_EQ(first(c, "select convert(varchar, convert(float, null))"), "<null>");
    if (!onServer()) {
        // A float keeps 6 significant digits, as SQL Server writes it. The
        // embedded database reads these literals as floats; the server reads
        // them as decimals, as SQL Server does, and keeps their digits.
        EXPECT_EQ(first(c, "select convert(varchar(24), 1234.56789)"), "1234.57");
        EXPECT_EQ(first(c, "select convert(varchar(24), 1234567.5)"), "1.23457e+006");
        EXPECT_EQ(first(c, "select convert(varchar(24), 0.00001234)"), "1.234e-005");
    } else {
        EXPECT_EQ(first(c, "select convert(varchar(24), 1234.56789)"), "1234.56789");
    }
    auto e = errorOf([&] { first(c, "select convert(int, 'SV')"); });
    EXPECT_EQ(e.number(), -2147217913);
    EXPECT_EQ(e.description(), "Conversion failed when converting the varchar value 'SV' to "
                               "data type int.");
}

TEST_P(SemanticsTest, NextNumberTakesTheHighestNumericTailOfThePrefix) {
    std::string sql = "Select isnull(max(convert(int,right(svhno,len(svhno)-3))),0) from "
                      "loiStockVerificationHeader where svhgodownid = 1 and "
                      "len(svhno)>len('SV/') and  isnumeric(isnull(right(svhno,len(svhno)-3),0)) "
                      "=1 and substring(svhno,1,len('SV/'))='SV/'";
    EXPECT_EQ(first(c, sql), "11");
}

TEST_P(SemanticsTest, DateColumnsCompareWithTheLiteralsTheModuleWrites) {
    auto count = [&](std::string_view where) {
        return first(c,
                     "select count(*) from loiStockVerificationHeader where " + std::string(where));
    };
    EXPECT_EQ(count("svhDate>'20261122'"), "3"); // strictly after: the 22nd itself is not listed
    EXPECT_EQ(count("svhDate > '2026/Nov/22'"), "3");
    EXPECT_EQ(count("svhdate >= '2026/11/22'"), "4");
    EXPECT_EQ(count("svhdate > '2026/11/23 09:29'"), "3");
    EXPECT_EQ(count("'20261123' > svhdate"), "2");
    EXPECT_EQ(count("svhdate between '20261122' and '2026/Nov/24'"), "3");
    EXPECT_EQ(count("svhdate in ('2026/11/21', '20261124')"), "2");
    auto e = errorOf([&] { count("svhdate > 'soon'"); });
    EXPECT_EQ(e.number(), -2147217913);
}

TEST_P(SemanticsTest, RegisterListingsOfBothInterfaces) {
    c.Execute("update loiStockVerificationHeader set svhcancelled = 1 where svhid = 3");
    ado::Recordset plain = c.Execute(
        "select svhid,svhno,svhdate,svhVerificationby,  case svhcancelled when 1 then 'Yes' when "
        "0 then 'No' end, svhremarks,case svhposted when 1 then 'Yes' when 0 then 'No' end  from "
        "loiStockVerificationHeader where svhDate>'20261121' and svhgodownid=1 and "
        "left(svhFutureVc, 1) <> 't' order by svhid");
    ASSERT_FALSE(plain.Eof());
    EXPECT_EQ(plain.Fields().Count(), 7);
    EXPECT_EQ(plain.Fields(0).Value(), vb::Variant(3));
    EXPECT_EQ(plain.Fields(2).Value(), vb::Variant(vb::Date{vb::DateSerial(2026, 11, 23).serial +
                                                            vb::TimeSerial(9, 30, 0).serial}));
    EXPECT_EQ(plain.Fields(4).Value(), vb::Variant("Yes"));
    EXPECT_EQ(plain.Fields(6).Value(), vb::Variant("No"));
    plain.MoveNext();
    EXPECT_EQ(plain.Fields(0).Value(), vb::Variant(4));

    EXPECT_EQ(first(c, "select svhid, svhno, svhdate from loiStockVerificationHeader where "
                       "svhDate > '2026/Nov/20' and svhgodownid = 1 and left(svhFutureVc, 1) = "
                       "'T' order by svhid"),
              "2");
}

TEST_P(SemanticsTest, GetdateIsTheClockAndTopLimitsRows) {
    vb::setClock(vb::Date{vb::DateSerial(2026, 11, 22).serial + 0.75});
    c.Execute("Update loiStockVerificationHeader set updatetime=getdate() where svhid=1");
    vb::setClock(std::nullopt);
    ado::Recordset rs =
        c.Execute("select updatetime from loiStockVerificationHeader where svhid = 1");
    EXPECT_EQ(rs.Fields(0).Value(), vb::Variant(vb::Date{vb::DateSerial(2026, 11, 22).serial +
                                                         vb::TimeSerial(18, 0, 0).serial}));
    // The clock is read anew for each statement: a later one sees it moved.
    vb::setClock(vb::Date{vb::DateSerial(2026, 11, 23).serial + 0.5});
    EXPECT_EQ(c.Execute("select getdate()").Fields(0).Value(),
              vb::Variant(vb::Date{vb::DateSerial(2026, 11, 23).serial +
                                   vb::TimeSerial(12, 0, 0).serial}));
    vb::setClock(std::nullopt);
    EXPECT_EQ(first(c, "select top 1 svhid from loiStockVerificationHeader order by svhid desc"),
              "5");
    ado::Recordset two;
    two.Open("select top 2 * from loiStockVerificationHeader", c, ado::adOpenKeyset,
             ado::adLockOptimistic);
    EXPECT_EQ(two.RecordCount(), 2);
}

RUN_ON_BOTH_ENGINES(SemanticsTest);

} // namespace
