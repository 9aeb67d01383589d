// The empty schema: every object the module reads, the column order the ledgers need,
// the stored procedures' rows, and a failed creation that leaves nothing behind.
#include "TestDatabase.h"

#include "ado/sqlite/NativeStatement.h"
#include "ado/sqlite/Script.h"
#include "module/records/EmbeddedSql.h"
#include "module/records/ProcedureSource.h"
#include "module/records/Schema.h"

#include <gtest/gtest.h>

#include <set>

namespace records::testing {
namespace {

std::vector<std::string> column(const ado::Connection &connection, const std::string &sql) {
    ado::sqlite::NativeStatement query(connection, sql);
    std::vector<std::string> values;
    while (query.step())
        values.push_back(query.text(0));
    return values;
}

class SchemaTest : public ::testing::Test {
protected:
    void SetUp() override {
        connection = ado::sqlite::createDatabase(folder.file("schema.db").string());
        createSchema(connection);
    }
    std::vector<std::string> columnsOf(const std::string &table) {
        return column(connection, "SELECT name FROM pragma_table_info('" + table + "')");
    }

    TempFolder folder;
    ado::Connection connection;
};

TEST_F(SchemaTest, HoldsEveryTableAndViewTheModuleReads) {
    const auto names = column(connection, "SELECT lower(name) FROM sqlite_master");
    const std::set<std::string> present(names.begin(), names.end());
    for (const char *name : {"loistockverificationheader",
                             "loistockverificationdetail",
                             "loilocationarrivaldetails",
                             "loilocationissuedetails",
                             "loiexpiryarrivaldetails",
                             "loiexpiryissuedetails",
                             "loilocation",
                             "acompanymaster",
                             "adepartmentmaster",
                             "agodown",
                             "acountrymaster",
                             "acity",
                             "afinancialyear",
                             "aprefix",
                             "lousers",
                             "louserrights",
                             "loisettings",
                             "apackagesettings",
                             "aalias",
                             "asettings",
                             "vwgodownclosedate",
                             "alistviewheader",
                             "alistviewdetails",
                             "atables",
                             "atablecolumns",
                             "ashopprintmessages",
                             "avendormaster",
                             "acustomermaster",
                             "aaccountmaster",
                             "exchangerate",
                             "exchangeratedetail",
                             "aitem",
                             "aunit",
                             "aitemcategory",
                             "aitempackingdetail",
                             "agodowndetail",
                             "ashipment",
                             "vwitemdescription",
                             "vwitemdescriptionprint",
                             "vwinquirygodownstock",
                             "moigodownstock",
                             "vwquantityunprocessed",
                             "vwgodownstockverification",
                             "sv_procedure",
                             "afaultlog",
                             "aactivitytrail",
                             "ascreenpalette",
                             "agridcolumnprofile"})
        EXPECT_TRUE(present.count(name)) << name;
}

TEST_F(SchemaTest, LedgersHaveTheirFirstColumnsInTheOrderTheyAreWrittenByPosition) {
    using Names = std::vector<std::string>;
    auto firstEleven = [&](const char *table) {
        auto names = columnsOf(table);
        names.resize(11);
        return names;
    };
    EXPECT_EQ(firstEleven("loiLocationArrivalDetails"),
              (Names{"ladInterfaceId", "ladGodownId", "ladTransId", "ladDetailId", "ladLocationId",
                     "ladItemId", "ladItemQty", "ladPackingTypeId", "ladPakingQty", "ladCancel",
                     "ladconfirmed"}));
    EXPECT_EQ(firstEleven("loiLocationIssueDetails"),
              (Names{"lidInterfaceId", "lidGodownId", "lidTransactionId", "lidDetailId",
                     "lidLocationId", "lidItemId", "lidItemQty", "lidPackingTypeId", "lidPakingQty",
                     "lidCancel", "lidconfirmed"}));
    EXPECT_EQ(firstEleven("loiExpiryArrivalDetails"),
              (Names{"eadInterfaceId", "eadGodownId", "eadTransactionId", "eaddetailid",
                     "eadexpirydate", "eadItemId", "eadItemQty", "eadPackingTypeId",
                     "eadPackingQty", "eadCancel", "eadAdjustment"}));
    EXPECT_EQ(firstEleven("loiExpiryIssueDetails"),
              (Names{"eidinterfaceId", "eidGodownId", "eidTransactionId", "eidDetailId",
                     "eidExpiryDate", "eidItemId", "eidItemQty", "eidPackingTypeId",
                     "eidPackingQty", "eidCancel", "eidAdjustment"}));
    EXPECT_EQ(columnsOf("loiLocationArrivalDetails").at(11), "ladAdjustment");
}

TEST_F(SchemaTest, StoresTheThreeProceduresWithTheirParameters) {
    EXPECT_EQ(column(connection, "SELECT name || ' ' || params FROM sv_procedure ORDER BY name"),
              (std::vector<std::string>{
                  "spGodownTotalStockVerification @svhid int,@godownid int",
                  "spReverseGodownTotalStockVerification @svhid int,@godownid int",
                  "spupdateGodownVerification @svhid int,@godownid int,@mode varchar(1)"}));
    EXPECT_EQ(column(connection, "SELECT count(*) FROM sv_procedure WHERE name = "
                                 "'SPUPDATEGODOWNVERIFICATION' AND body LIKE '%moigodownstock%'"),
              std::vector<std::string>{"1"});
}

TEST_F(SchemaTest, TextColumnsIgnoreLetterCaseAndTrailingBlanks) {
    ado::sqlite::executeScript(connection, "INSERT INTO aUnit VALUES (1, 'PCS', 'Pieces')");
    EXPECT_EQ(column(connection, "SELECT UnitId FROM aUnit WHERE UnitCode = 'pcs  '"),
              std::vector<std::string>{"1"});
}

TEST(SchemaCreationTest, AFailureLeavesNoTableBehind) {
    TempFolder folder;
    auto connection = ado::sqlite::createDatabase(folder.file("taken.db").string());
    ado::sqlite::executeScript(connection, "CREATE TABLE aGodown (x INT)");
    EXPECT_THROW(createSchema(connection), vb::Error);
    EXPECT_EQ(column(connection, "SELECT name FROM sqlite_master"),
              std::vector<std::string>{"aGodown"});
}

TEST(ProcedureSourceTest, ReadsNameParamsAndBody) {
    const auto source =
        procedureSource("procedures/spX.sql", "-- params: @a int,@b varchar(1)\r\nSELECT @a;\n");
    EXPECT_EQ(source.name, "spX");
    EXPECT_EQ(source.params, "@a int,@b varchar(1)");
    EXPECT_EQ(source.body, "SELECT @a;\n");
}

TEST(ProcedureSourceTest, RefusesAFileWithoutItsParamsLineOrOutsideTheFolder) {
    EXPECT_THROW(procedureSource("procedures/spX.sql", "SELECT 1;\n"), vb::Error);
    EXPECT_THROW(procedureSource("procedures/spX.sql", "-- params: @a int"), vb::Error);
    EXPECT_THROW(procedureSource("tables.sql", "-- params: @a int\nSELECT 1;"), vb::Error);
}

TEST(EmbeddedSqlTest, HoldsEveryFileAndRefusesAnUnknownName) {
    std::vector<std::string> names;
    for (const auto &file : embeddedSqlFiles())
        names.emplace_back(file.name);
    EXPECT_EQ(names, (std::vector<std::string>{
                         "postgresql/clock.sql",
                         "postgresql/procedures/spGodownTotalStockVerification.sql",
                         "postgresql/procedures/spReverseGodownTotalStockVerification.sql",
                         "postgresql/procedures/spupdateGodownVerification.sql",
                         "postgresql/tables.sql", "postgresql/views.sql",
                         "procedures/spGodownTotalStockVerification.sql",
                         "procedures/spReverseGodownTotalStockVerification.sql",
                         "procedures/spupdateGodownVerification.sql", "tables.sql", "views.sql"}));
    EXPECT_THROW(embeddedSql("nothing.sql"), vb::Error);
}

} // namespace
} // namespace records::testing
