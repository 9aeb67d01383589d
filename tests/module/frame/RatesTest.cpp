#include "ModuleSession.h"

#include "module/frame/basStockVerification.h"
#include "vb/Conversion.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

// The demo company: currency 1 (rate 1) for the company, its cash group,
// department 1 and accounts 1001 and 1002; currency 2 (rate 0.92) for
// department 2 and account 1003.

TEST(AddExchangeRateTest, StartsAListAndAddsOnlyNewCurrencies) {
    test::ModuleSession s;
    vb::Variant list = AddExchangeRate(s.m, "", "B", 1);
    EXPECT_EQ(list, vb::Variant("1:-1:"));
    list = AddExchangeRate(s.m, vb::CStr(list), "z", 1);
    EXPECT_EQ(list, vb::Variant("1:-1:")) << "the company's currency is listed already";
    list = AddExchangeRate(s.m, vb::CStr(list), "D", 2);
    EXPECT_EQ(list, vb::Variant("1:2:-1:0.92:"));
    list = AddExchangeRate(s.m, vb::CStr(list), "A", 1003);
    EXPECT_EQ(list, vb::Variant("1:2:-1:0.92:"));
    EXPECT_EQ(s.m.strCurrencyIds, (std::vector<std::string>{"1", "2"}));
    EXPECT_EQ(s.m.strSellingRates, (std::vector<std::string>{"1", "0.92"}));
}

TEST(AddExchangeRateTest, SendsEachKindsStatementLetterForLetter) {
    test::ModuleSession s;
    AddExchangeRate(s.m, "", "V", 7);
    AddExchangeRate(s.m, "", "C", 8);
    AddExchangeRate(s.m, "", "D", 2);
    AddExchangeRate(s.m, "", "A", 1001);
    AddExchangeRate(s.m, "", "Z", 1);
    AddExchangeRate(s.m, "", "B", 99);
    const std::vector<std::string> expected{
        "select a.currencyid CurID,SellingRate from avendormaster a, ExchangeRateDetail b Where "
        "a.CompanyID = b.CompanyID And a.currencyid = b.CurrencyID and a.vendorID=7 and "
        "a.companyid=1",
        "select a.currencyid CurID,SellingRate from acustomermaster a, ExchangeRateDetail b Where "
        "a.CompanyID = b.CompanyID And a.currencyid = b.CurrencyID and a.customerID=8 and "
        "a.companyid=1",
        "select depcurrencyid CurID,SellingRate from aDepartmentMaster a, ExchangeRateDetail b "
        "Where a.CompanyID = b.CompanyID And a.depcurrencyid = b.CurrencyID and a.DepartmentID=2 "
        "and a.companyid=1",
        "select a.currencyid CurID,SellingRate from aaccountmaster a, ExchangeRateDetail b Where "
        "a.CompanyID = b.CompanyID And a.currencyid = b.CurrencyID and a.accountID=1001 and "
        "a.companyid=1",
        "select a.CurrencyID CurID,SellingRate from acompanymaster a, ExchangeRateDetail b  Where "
        "a.CompanyID = b.CompanyID And a.currencyid = b.CurrencyID  and a.Companyid=1",
        "select a.CashGroupID CurID,SellingRate from aSettings a, ExchangeRateDetail b  Where "
        "a.CompanyID = b.CompanyID And a.CashGroupID = b.CurrencyID  and a.companyid=1",
    };
    EXPECT_EQ(s.sent(), expected);
    for (const std::string &how : s.sentHow()) {
        EXPECT_EQ(how, "open keyset optimistic");
    }
}

TEST(AddExchangeRateTest, APartyWithoutRateEmptiesTheResult) {
    test::ModuleSession s;
    EXPECT_TRUE(AddExchangeRate(s.m, "1:-1:", "V", 999).isEmpty());
    // The list was split before the look-up came back empty.
    EXPECT_EQ(s.m.strCurrencyIds, (std::vector<std::string>{"1"}));
}

TEST(AddExchangeRateTest, AnUnknownKindFailsOnTheOpen) {
    test::ModuleSession s;
    EXPECT_THROW(AddExchangeRate(s.m, "", "Q", 1), vb::Error);
}

TEST(AddExchangeRateTest, AListWithoutItsTwoHalvesIsOutOfRange) {
    test::ModuleSession s;
    try {
        AddExchangeRate(s.m, "1:", "B", 1);
        FAIL();
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 9);
    }
}

TEST(GetRateRatioTest, DividesTheSecondRateByTheFirst) {
    test::ModuleSession s;
    s.m.strExchangeRates = "1:2:-1:0.92:";
    EXPECT_DOUBLE_EQ(GetRateRatio(s.m, 1, 2), 0.92);
    EXPECT_DOUBLE_EQ(GetRateRatio(s.m, 2, 1), 1 / 0.92);
    EXPECT_DOUBLE_EQ(GetRateRatio(s.m, 2, 2), 1);
}

TEST(GetRateRatioTest, MissingZeroOrNoRatesGiveOne) {
    test::ModuleSession s;
    s.m.strExchangeRates = "1:2:-1:0.92:";
    EXPECT_DOUBLE_EQ(GetRateRatio(s.m, 1, 3), 1);
    s.m.strExchangeRates = "1:2:-0:4:";
    EXPECT_DOUBLE_EQ(GetRateRatio(s.m, 1, 2), 1);
    s.m.strExchangeRates = "   ";
    EXPECT_DOUBLE_EQ(GetRateRatio(s.m, 1, 2), 1);
}

TEST(GetRateRatioTest, ALaterEqualIdOverwritesAnEarlierOne) {
    test::ModuleSession s;
    s.m.strExchangeRates = "1:2:2:-1:4:8:";
    EXPECT_DOUBLE_EQ(GetRateRatio(s.m, 1, 2), 8);
}

TEST(GetRateRatioTest, OnePairSplitsIntoOneIdAndOneRate) {
    test::ModuleSession s;
    s.m.strExchangeRates = "5:-2.5:";
    EXPECT_DOUBLE_EQ(GetRateRatio(s.m, 5, 5), 1);
    EXPECT_EQ(s.m.strCurrencyIds, (std::vector<std::string>{"5"}));
    EXPECT_EQ(s.m.strSellingRates, (std::vector<std::string>{"2.5"}));
}

TEST(IsCurrencyListedTest, ComparesTheIdsAsNumbers) {
    test::ModuleSession s;
    s.m.strCurrencyIds = {"1", " 02"};
    EXPECT_TRUE(IsCurrencyListed(s.m, 2));
    EXPECT_TRUE(IsCurrencyListed(s.m, 1));
    EXPECT_FALSE(IsCurrencyListed(s.m, 3));
}

TEST(GetCurrencyIdTest, ReadsEachKindsCurrency) {
    test::ModuleSession s;
    EXPECT_EQ(GetCurrencyId(s.m, "Z", 12345), 1) << "the party id is not used for the company";
    EXPECT_EQ(GetCurrencyId(s.m, "D", 2), 2);
    EXPECT_EQ(GetCurrencyId(s.m, "A", 1003), 2);
    EXPECT_EQ(GetCurrencyId(s.m, "A", 4242), 0);
    const std::vector<std::string> expected{
        "select CurrencyID curID from acompanyMaster where companyID=1",
        "select depcurrencyid curID from adepartmentMaster where DepartmentID=2 and CompanyID=1",
        "select CurrencyID curID from aaccountmaster where companyid=1 and accountid=1003",
        "select CurrencyID curID from aaccountmaster where companyid=1 and accountid=4242",
    };
    EXPECT_EQ(s.sent(), expected);
    GetCurrencyId(s.m, "V", 3);
    EXPECT_EQ(s.sent().back(),
              "select CurrencyID curID from avendorMaster where companyid=1 and vendorID=3");
    EXPECT_EQ(s.sentHow().back(), "open forward-only read-only");
}

} // namespace
} // namespace tqsv2731
