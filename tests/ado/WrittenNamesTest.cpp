// Column names as the schema and the statements write them, where the server folds them.
#include "ado/postgresql/PgCursor.h"
#include "ado/postgresql/WrittenNames.h"

#include <gtest/gtest.h>

namespace {

using ado::postgresql::resultNames;
using ado::postgresql::writtenNames;

std::string listed(std::string_view ddl) {
    std::string out;
    for (const auto &n : writtenNames(ddl))
        out += n.relation + "." + n.column + " ";
    return out;
}

TEST(WrittenNamesTest, TablesGiveTheirColumnDefinitionsNotTheirConstraints) {
    EXPECT_EQ(listed(R"(
-- a comment; with a semicolon
CREATE TABLE aGodownClosing (
    GodownID INT NOT NULL,
    CloseDate TIMESTAMP(3) NOT NULL,
    remarks CITEXT CONSTRAINT remarks_length CHECK (length(rtrim(remarks, ' ')) <= 100),
    "Quoted" INT,
    CONSTRAINT closing_key UNIQUE (GodownID),
    PRIMARY KEY (GodownID, CloseDate)
);
CREATE TABLE IF NOT EXISTS public.aUnit (UnitId INT, unitcode CITEXT);
CREATE DOMAIN sv_bit AS SMALLINT CHECK (VALUE IN (0, 1));
INSERT INTO aUnit (UnitId) VALUES (1);
)"),
              "aGodownClosing.GodownID aGodownClosing.CloseDate aUnit.UnitId ");
}

TEST(WrittenNamesTest, ViewsGiveTheirAliasesOrTheLastPartOfAColumn) {
    EXPECT_EQ(listed(R"(
CREATE VIEW vwQuantityUnProcessed AS
SELECT d.stdItemId AS ItemId,
       h.sthNo TransNo,
       h.sthDate,
       (CASE h.sthFromLocationType WHEN 'G' THEN 'a, b' ELSE 'c' END)::citext AS Fromlocation,
       count(*),
       lower(h.Name)
FROM loiStockTransferHeader h, (SELECT 1 AS NotAColumn) x
UNION ALL
SELECT d.OtherName, 1, 2, 3, 4, 5 FROM y;
CREATE OR REPLACE VIEW vwCodes (ItemId, code) AS SELECT 1, 2;
)"),
              "vwQuantityUnProcessed.ItemId vwQuantityUnProcessed.TransNo "
              "vwQuantityUnProcessed.sthDate vwQuantityUnProcessed.Fromlocation "
              "vwCodes.ItemId ");
    // A name after an operator is part of an expression, which names nothing.
    EXPECT_EQ(listed("create view v as select a + Rate, b::Numeric, c Alias from t"),
              "v.Alias ");
}

TEST(WrittenNamesTest, CommentsKeepTheNamesForTheCatalog) {
    EXPECT_EQ(ado::postgresql::writtenNameComments("create table T (ItemId int, code int)"),
              "COMMENT ON COLUMN T.ItemId IS 'ItemId';\n");
}

TEST(WrittenNamesTest, AResultIsNamedAsItsSelectListAndTheSchemaWriteIt) {
    using Items = std::vector<std::optional<std::string>>;
    const std::string itemId = "ItemId", itemCode = "ItemCode";
    auto join = [](const std::vector<std::string> &names) {
        std::string out;
        for (const auto &n : names)
            out += n + "|";
        return out;
    };
    // The alias as written; a quoted name as the server kept it; an unnamed expression stays so.
    EXPECT_EQ(join(resultNames({"curid", "SellingRate", ""}, Items{"CurID", "SellingRate", ""},
                               {&itemId, nullptr, nullptr})),
              "CurID|SellingRate||");
    // A star's columns take the schema's names; the items around it their own, even where
    // the column they read has a schema name of another case.
    EXPECT_EQ(join(resultNames({"key", "itemid", "itemcode", "itemcode"},
                               Items{"Key", std::nullopt, "itemcode"},
                               {nullptr, &itemId, &itemCode, &itemCode})),
              "Key|ItemId|ItemCode|itemcode|");
    // No select list known (no select, or one that does not fit the result): the schema only.
    EXPECT_EQ(join(resultNames({"itemid", "x"}, Items{}, {&itemId, nullptr})), "ItemId|x|");
    EXPECT_EQ(join(resultNames({"itemid"}, Items{"A", "B"}, {&itemId})), "ItemId|");
    // An item whose name is not the server's (the list misread) leaves the server's name.
    EXPECT_EQ(join(resultNames({"itemid"}, Items{"Other"}, {&itemId})), "itemid|");
}

} // namespace
