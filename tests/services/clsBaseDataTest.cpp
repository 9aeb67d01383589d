#include "services/clsBaseData.h"

#include "ServiceFixture.h"
#include "TestForm.h"
#include "services/CreateObject.h"
#include "vb/Conversion.h"

namespace servicetest {
namespace {

class BaseDataTest : public ServiceTest {
protected:
    BaseDataTest() { data.adocon = adocon; }

    // The texts of a list row: its own text, then sub-items 1 to 13.
    static std::vector<std::string> rowOf(const forms::ListView &lvw, int index) {
        const forms::ListItem &item = lvw.ListItems()(index);
        std::vector<std::string> texts{item.Text()};
        for (int n = 1; n <= 13; ++n) {
            texts.push_back(item.SubItems(n));
        }
        return texts;
    }

    BaseServices::clsBaseData data{context};
    TestForm form{screen};
};

TEST_F(BaseDataTest, ReturnFieldReadsTheFirstRowOrGivesEmpty) {
    data.strTableName = "LOUSERS where userid=1 and GodownID = 1";
    EXPECT_EQ(data.fnReturnField("username"), vb::Variant("RAHUL MEHTA"));
    EXPECT_EQ(data.fnReturnField("username", "userid=2"), vb::Variant()) << "both conditions hold";
    data.strTableName = "aItem i, aUnit u";
    EXPECT_EQ(data.fnReturnField("u.UnitCode", "i.UnitsId = u.UnitId AND i.ItemId = 2"),
              vb::Variant("KG"));
    data.strTableName = "LOiSettings";
    EXPECT_TRUE(data.fnReturnField("defaultfetch", "Godownid=2").isNull());
    EXPECT_TRUE(data.fnReturnField("defaultfetch", "Godownid=9").isEmpty());
}

TEST_F(BaseDataTest, TableNameStaysForLaterCalls) {
    data.strTableName = "aGodown";
    EXPECT_EQ(vb::CLng(data.fnReturnField("departmentid", " godownid = 2")), 2);
    EXPECT_EQ(vb::CLng(data.fnReturnField("departmentid", " godownid = 1")), 1);
    EXPECT_EQ(vb::CLng(data.fnReturnField("count(*)")), 2);
}

TEST_F(BaseDataTest, DatabaseRefusalRaisesItsError) {
    data.strTableName = "aNoSuchTable";
    EXPECT_EQ(errorOf([&] { data.fnReturnField("x"); }).number(), -2147217865);
    BaseServices::clsBaseData unset(context);
    EXPECT_EQ(errorOf([&] { unset.fnGetNextMaxNo("itemid"); }).number(), 3709);
}

TEST_F(BaseDataTest, NextMaxNoSeesTheRowsOfTheOpenTransaction) {
    data.strTableName = "loiStockVerificationHeader where svhgodownid=1";
    EXPECT_EQ(data.fnGetNextMaxNo("svhid"), 7);
    adocon.BeginTrans();
    adocon.Execute("insert into loiStockVerificationHeader (svhid, svhno, svhGodownid) "
                   "values (7, 'SVA6', 1)");
    EXPECT_EQ(data.fnGetNextMaxNo("svhid"), 8);
    adocon.RollbackTrans();
    data.strTableName = "loiStockVerificationHeader where svhgodownid=9";
    EXPECT_EQ(data.fnGetNextMaxNo("svhid"), 1) << "no row: the first number";
}

TEST_F(BaseDataTest, PopulateListViewNumbersTheRowsWhereverSlnoStands) {
    form.lvwRequest.ListItems().Add(0, {}, "left over");
    data.PopulateListView(
        form.lvwRequest, "loiStockVerificationDetail, aitem, vwItemdescription, aUnit u",
        "aitem.itemid = svditemid  and vwItemdescription.itemid = aitem.itemid  and "
        "svdgodownid = 1 and svdid = 5 and svdgodownid = 1 and aItem.UnitsId = u.UnitId "
        "group by svditemid, vwItemdescription.itemdescription, itemcode",
        "SLNO", "1", "itemcode", "vwItemdescription.itemdescription",
        "ISNULL(sum(svdavailstock),0)", "isnull(sum(svdVerifiedStock),0)",
        "isnull(sum(svdAvailBadStock),0)", "isnull(sum(svdVerifiedBadStock),0)", "svditemid",
        "SLNO", "MAX(svdLocationId)", "MAX(svdShipmentId)",
        "convert(varchar(24),MAX(svdCostPrice))", "MIN(UnitCode)");
    ASSERT_EQ(form.lvwRequest.ListItems().Count(), 5);
    for (int i = 1; i <= 5; ++i) {
        EXPECT_EQ(rowOf(form.lvwRequest, i)[0], std::to_string(i));
        EXPECT_EQ(rowOf(form.lvwRequest, i)[9], std::to_string(i)) << "the tenth column, dummy";
    }
    EXPECT_EQ(rowOf(form.lvwRequest, 1),
              (std::vector<std::string>{"1", "1", "GRO000001", "Basmati Rice 5 kg bag", "148",
                                        "147", "2", "2", "1", "1", "1", "1", "14.5", "BAG"}));
}

TEST_F(BaseDataTest, PopulateListViewTakesSlnoInAnyLetterCaseAndNullAsEmpty) {
    data.PopulateListView(form.lvwRequest, "aItem", "itemid <= 3 order by itemid desc", "SlNo",
                          "slno", "itemcode", "null", "1", "2", "3", "4", "5", " SLNO ", "6", "7",
                          "8", "9");
    ASSERT_EQ(form.lvwRequest.ListItems().Count(), 3);
    EXPECT_EQ(rowOf(form.lvwRequest, 3),
              (std::vector<std::string>{"3", "3", "GRO000001", "", "1", "2", "3", "4", "5", "3",
                                        "6", "7", "8", "9"}));
}

TEST_F(BaseDataTest, PopulateListViewClearsTheListEvenWhenTheStatementFails) {
    form.lvwRequest.ListItems().Add(0, {}, "left over");
    EXPECT_NE(errorOf([&] {
                  data.PopulateListView(form.lvwRequest, "aItem", "itemid = 1", "SLNO",
                                        "nosuchcolumn", "3", "4", "5", "6", "7", "8", "9", "10",
                                        "11", "12", "13", "14");
              }).number(),
              0);
    EXPECT_EQ(form.lvwRequest.ListItems().Count(), 0);
}

TEST_F(BaseDataTest, InsertListViewWith15Or16ArgumentsFillsTheSameLeadingColumns) {
    TestForm other(screen, "frmOther");
    data.fnInsertListView(form.lvwRequest, 0, 1, " ", "GRO000002", "Toor Dal 1 kg", "45.500",
                          "45.000", "0.750", "0.750", 2, 1, 1, 1, 3.25);
    data.fnInsertListView(other.lvwRequest, 0, 1, " ", "GRO000002", "Toor Dal 1 kg", "45.500",
                          "45.000", "0.750", "0.750", 2, 1, 1, 1, 3.25, "KG");
    const auto fifteen = rowOf(form.lvwRequest, 1), sixteen = rowOf(other.lvwRequest, 1);
    EXPECT_EQ(std::vector(fifteen.begin(), fifteen.begin() + 13),
              std::vector(sixteen.begin(), sixteen.begin() + 13));
    EXPECT_EQ(fifteen[12], "3.25");
    EXPECT_EQ(form.lvwRequest.ListItems()(1).ListSubItemsCount(), 12) << "column 14 untouched";
    EXPECT_EQ(sixteen[13], "KG");

    data.fnInsertListView(form.lvwRequest, 1, "top", "", "", "", "", "", "", "", "", "", "", "",
                          "");
    EXPECT_EQ(form.lvwRequest.ListItems()(1).Text(), "top");
    EXPECT_EQ(form.lvwRequest.ListItems()(2).Text(), "1");
}

TEST_F(BaseDataTest, UpdateSelectedRecordSetsTwoFieldsOfTheSelectedRows) {
    data.strTableName = "moigodownstock";
    data.fnUpdateSelectedRecord(" gsGodownId=1 and gsShipmentId=1 and gsitemid=9", "gsStock", 30.5,
                                "gsBadStock", 1);
    const std::string row = " from moigodownstock where gsGodownId=1 and gsitemid=";
    EXPECT_EQ(scalar("select gsStock" + row + "9"), "30.5");
    EXPECT_EQ(scalar("select gsBadStock" + row + "9"), "1");
    EXPECT_EQ(scalar("select gsStock" + row + "10 and gsShipmentId=2"), "240");
}

} // namespace
} // namespace servicetest
