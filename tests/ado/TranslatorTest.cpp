// The translation of SQL Server text, case by case from tests/ado/data/translation.cases.
#include "ado/postgresql/PgDialect.h"
#include "ado/sqlite/SqliteDialect.h"

#include "vb/Error.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using ado::sql::Catalog;

struct Case {
    int line;
    std::string sql;
    bool rowid = false;
    std::string expected; // the translation, or the error's description
    bool error = false;
};

std::string after(const std::string &line, std::size_t n) {
    auto s = line.substr(n);
    auto b = s.find_first_not_of(' ');
    return b == std::string::npos ? "" : s.substr(b);
}

// "table NAME (col type, col type(n,m), ...)" or "view NAME (...)"
void addTable(Catalog &catalog, const std::string &line) {
    bool view = line.rfind("view ", 0) == 0;
    auto open = line.find('(');
    std::string name = after(line.substr(0, open), view ? 5 : 6);
    name.erase(name.find_last_not_of(' ') + 1);
    std::vector<std::pair<std::string, std::string>> columns;
    std::string body = line.substr(open + 1, line.rfind(')') - open - 1), piece;
    int depth = 0;
    for (char c : body + ",") {
        depth += c == '(' ? 1 : c == ')' ? -1 : 0;
        if (c != ',' || depth > 0) {
            piece += c;
            continue;
        }
        std::istringstream in(piece);
        std::string column, type;
        in >> column;
        std::getline(in, type);
        columns.emplace_back(column, after(type, 0));
        piece.clear();
    }
    catalog.add(name, view, columns);
}

void load(Catalog &catalog, std::vector<Case> &cases) {
    std::ifstream in(std::string(TEST_DATA_DIR) + "/translation.cases");
    ASSERT_TRUE(in) << "translation.cases not found";
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        if (line.rfind("table ", 0) == 0 || line.rfind("view ", 0) == 0)
            addTable(catalog, line);
        else if (line.rfind("sql:", 0) == 0)
            cases.push_back({number, after(line, 4), false, "", false});
        else if (line.rfind("sql+rowid:", 0) == 0)
            cases.push_back({number, after(line, 10), true, "", false});
        else if (line.rfind("sqlite:", 0) == 0)
            cases.back().expected = after(line, 7);
        else if (line.rfind("error:", 0) == 0)
            cases.back().expected = after(line, 6), cases.back().error = true;
    }
}

TEST(TranslatorTest, CasesFromDataFile) {
    Catalog catalog;
    std::vector<Case> cases;
    load(catalog, cases);
    ASSERT_GT(cases.size(), 40u);
    for (const auto &c : cases) {
        SCOPED_TRACE("translation.cases line " + std::to_string(c.line) + ": " + c.sql);
        std::string found;
        bool failed = false;
        try {
            found = ado::sqlite::translate(c.sql, catalog, {c.rowid}).sql;
        } catch (const vb::Error &e) {
            found = e.description();
            failed = true;
        }
        EXPECT_EQ(failed, c.error) << found;
        EXPECT_EQ(found, c.expected);
    }
}

TEST(TranslatorTest, ReportsTheTableOfAPlainSelectAndTheRowidItAdded) {
    Catalog catalog;
    catalog.add("aItem", false, {{"ItemId", "int"}, {"itemcode", "varchar(20)"}});
    catalog.add("vwItem", true, {{"ItemId", "int"}});

    auto plain = ado::sqlite::translate("select * from AITEM where itemid = 1", catalog, {true});
    EXPECT_EQ(plain.baseTable, "AITEM");
    EXPECT_TRUE(plain.rowidAdded);

    auto view = ado::sqlite::translate("select * from vwItem", catalog, {true});
    EXPECT_EQ(view.baseTable, "");
    EXPECT_FALSE(view.rowidAdded);

    auto joined = ado::sqlite::translate("select * from aItem a, vwItem v", catalog, {true});
    EXPECT_FALSE(joined.rowidAdded);

    auto grouped =
        ado::sqlite::translate("select itemcode from aItem group by itemcode", catalog, {true});
    EXPECT_FALSE(grouped.rowidAdded);

    // An aggregate inside a call still makes one row of the whole table, which has no
    // identity; a subquery's aggregate does not.
    auto wrapped = ado::sqlite::translate(
        "select isnull(max(convert(int, itemcode)), 0) from aItem", catalog, {true});
    EXPECT_FALSE(wrapped.rowidAdded);
    auto subquery = ado::sqlite::translate(
        "select itemcode, (select max(ItemId) from aItem) from aItem", catalog, {true});
    EXPECT_TRUE(subquery.rowidAdded);

    auto readOnly = ado::sqlite::translate("select * from aItem", catalog, {false});
    EXPECT_FALSE(readOnly.rowidAdded);
    EXPECT_EQ(readOnly.baseTable, "aItem");
}

TEST(TranslatorTest, CountsStatements) {
    Catalog catalog;
    EXPECT_EQ(ado::sqlite::translate("select 1", catalog).statements, 1);
    EXPECT_EQ(ado::sqlite::translate("select 1; select 2;", catalog).statements, 2);
    EXPECT_EQ(ado::sqlite::translate(" ; -- nothing", catalog).statements, 0);
}

} // namespace

namespace {

// The server's spelling of LIKE: whatever the pattern is, it is taken apart by
// the connection's sv_like_regex, and it ends where LIKE's precedence ends it
// (after the joins of text, before and, or a comparison).
TEST(TranslatorTest, LikeOnTheServerWrapsTheWholePatternAndItsEscape) {
    Catalog catalog;
    catalog.add("aItem", false, {{"ItemId", "int"}, {"itemcode", "varchar(20)"}});
    ado::postgresql::PgDialect pg;
    // The condition alone: how the select list is named is another rule's.
    auto sql = [&](std::string_view text) {
        std::string out = ado::sql::translate(text, catalog, pg).sql;
        return out.substr(out.find(" where "));
    };
    EXPECT_EQ(sql("select ItemId from aItem where itemcode not like '%' + rtrim(itemcode) + "
                  "'_' escape '!' and ItemId = 1"),
              " where itemcode !~* "
              "(pg_temp.sv_like_regex('%' || pg_temp.sv_rtrim(itemcode) || '_' , '!') COLLATE "
              "\"und-x-icu\") and ItemId = 1");
    EXPECT_EQ(sql("select ItemId from aItem where not itemcode like 'a[b-c]' or itemcode like "
                  "left(itemcode, 2)"),
              " where not itemcode ~* "
              "(pg_temp.sv_like_regex('a[b-c]') COLLATE \"und-x-icu\") or itemcode ~* "
              "(pg_temp.sv_like_regex(pg_temp.sv_left(itemcode, 2)) COLLATE \"und-x-icu\")");
}

} // namespace
