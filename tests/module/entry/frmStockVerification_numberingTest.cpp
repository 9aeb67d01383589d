#include "EntrySession.h"

#include "module/frame/Module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tqsv2731 {
namespace {

std::string nextNumber(const std::string &setupSql) {
    test::EntrySession e({}, setupSql);
    e.entry().GenerateVerificationNo();
    return e.entry().txtno.Text();
}

TEST(GenerateVerificationNoTest, SendsBothStatementsLetterForLetter) {
    test::SessionValues second;
    second.godown = 2;
    second.interfaceId = 1013;
    test::EntrySession e(second);
    e.s.forget();
    e.entry().GenerateVerificationNo();
    EXPECT_EQ(e.s.sent(),
              (std::vector<std::string>{
                  "SELECT Prefix FROM aPrefix WHERE InterfaceID = 1013AND FinancialId = (Select "
                  "FinancialId from aFinancialYear where CurFinancialYear = 1) and godownid=2",
                  "Select isnull(max(convert(int,right(svhno,len(svhno)-0))),0) from "
                  "loiStockVerificationHeader where svhgodownid = 2 and len(svhno)>len('') and  "
                  "isnumeric(isnull(right(svhno,len(svhno)-0),0)) =1 and "
                  "substring(svhno,1,len(''))=''"}));
    EXPECT_EQ(e.s.sentHow(),
              (std::vector<std::string>{"open static read-only", "open static optimistic"}));
    // No prefix: every numeric number of the godown counts ("1"), "SVB1" does not.
    EXPECT_EQ(e.entry().txtno.Text(), "2");
}

TEST(GenerateVerificationNoTest, CountsOnFromTheHighestNumericTailUnderThePrefix) {
    // Unpadded past 9, and a tail that is no number does not count.
    EXPECT_EQ(nextNumber("update loiStockVerificationHeader set svhno = case svhid when 2 then "
                         "'SVA9' else 'SVAX99' end where svhid in (2, 3) and svhgodownid = 1"),
              "SVA10");
    EXPECT_EQ(nextNumber("update aPrefix set Prefix = null"), "1");
    EXPECT_EQ(nextNumber("delete from loiStockVerificationHeader"), "SVA1");
}

TEST(ExchangeRateRoutinesTest, ConvertTakesTheSellingRateOverTheRate) {
    test::EntrySession e;
    frmStockVerification &f = e.entry();
    double rate = 0;
    std::int32_t euro = 2;
    e.s.forget();
    EXPECT_DOUBLE_EQ(f.convertExchangeRate(rate, euro), 0.92);
    EXPECT_EQ(rate, 1) << "a rate of 0 becomes 1 for the caller too";
    EXPECT_EQ(e.s.sent().at(0), "select ED.sellingrate from  ExchangeRate EH, ExchangeRateDetail "
                                "ED where EH.CompanyID =  ED.CompanyID and EH.ExchangeID = "
                                "ED.ExchangeID  and ED.CurrencyID = 2");
    rate = 2;
    std::int32_t unknown = 9;
    EXPECT_DOUBLE_EQ(f.convertExchangeRate(rate, unknown), 0.5);
}

TEST(ExchangeRateRoutinesTest, GetExchangeRateGoesByCompanyOrDepartmentCurrency) {
    test::EntrySession e;
    std::int16_t company = 1;
    double out = 0;
    EXPECT_DOUBLE_EQ(e.entry().GetExchangeRate(company, out), 1);

    test::SessionValues second;
    second.godown = 2;
    test::EntrySession g(second);
    std::int16_t department = 0;
    g.s.forget();
    EXPECT_DOUBLE_EQ(g.entry().GetExchangeRate(department, out), 1 / 0.92);
    EXPECT_DOUBLE_EQ(out, 1 / 0.92);
    const std::vector<std::string> sent = g.s.sent();
    ASSERT_EQ(sent.size(), 5u);
    EXPECT_EQ(sent[0], "select DepCurrencyId from aDepartmentMaster d, aGodown g where  "
                       "d.departmentid=g.departmentid AND g.godownid=2");
    EXPECT_EQ(sent[2], "select currencyid from aaccountmaster am, aPackageSettings pk where  "
                       "am.accountid=pk.inventoryid and am.companyid = pk.companyid");
    EXPECT_EQ(sent[3], "select ED.sellingrate from ExchangeRate EH, ExchangeRatEDetail ED  where "
                       "EH.CompanyID = ED.CompanyID and  EH.ExchangeID = ED.ExchangeID  and "
                       "ED.CurrencyID = 1");
}

} // namespace
} // namespace tqsv2731
