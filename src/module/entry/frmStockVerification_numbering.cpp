// frmStockVerification's numbering of a new entry and its two exchange rate routines.
#include "module/entry/frmStockVerification.h"

#include "ado/Recordset.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "services/clsBaseData.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerification";

/// 1 over a rate, failing on a zero rate as the old division did (11).
double reciprocal(double rate) {
    if (rate == 0) {
        throw vb::Error::standard(11);
    }
    return 1 / rate;
}

} // namespace

void frmStockVerification::GenerateVerificationNo() {
    try {
        const std::string godown = std::to_string(m_.intGodownID);
        ado::Recordset rs;
        rs.Open(
            "SELECT Prefix FROM aPrefix WHERE InterfaceID = " + std::to_string(m_.intInterfaceID) +
                "AND FinancialId = (Select FinancialId from aFinancialYear where "
                "CurFinancialYear = 1) and godownid=" +
                godown,
            m_.adocon, ado::adOpenStatic, ado::adLockReadOnly);
        // Without a prefix row the numbers are bare.
        std::string prefix;
        if (!rs.Bof() && !rs.Eof()) {
            prefix = vb::TextOf(rs.Fields("Prefix").Value());
        }
        rs.Close();

        // The highest numeric tail under this prefix, in any year and either
        // interface, cancelled entries included.
        const std::string n = std::to_string(vb::Len(prefix));
        rs.Open("Select isnull(max(convert(int,right(svhno,len(svhno)-" + n +
                    "))),0) from loiStockVerificationHeader where svhgodownid = " + godown +
                    " and len(svhno)>len('" + prefix + "') and " +
                    " isnumeric(isnull(right(svhno,len(svhno)-" + n +
                    "),0)) =1 and substring(svhno,1,len('" + prefix + "'))='" + prefix + "'",
                m_.adocon, ado::adOpenStatic, ado::adLockOptimistic);
        const std::string last = rs.Eof() ? std::string("0") : vb::CStr(rs.Fields(0).Value());
        rs.Close();

        const std::int32_t next = last != "0" ? vb::CLng(vb::Variant(vb::Val(last) + 1)) : 1;
        txtno.setText(prefix + std::to_string(next));
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "GenerateVerificationNo", e);
    }
}

double frmStockVerification::convertExchangeRate(double &dblRate, std::int32_t &lngCurrencyId) {
    try {
        BaseServices::clsBaseData &base = data();
        base.strTableName = " ExchangeRate EH, ExchangeRateDetail ED";
        double dblSellingRate = vb::CDbl(base.fnReturnField(
            "ED.sellingrate", std::string("EH.CompanyID = ") +
                                  " ED.CompanyID and EH.ExchangeID = ED.ExchangeID  and "
                                  "ED.CurrencyID = " +
                                  std::to_string(lngCurrencyId)));
        if (dblRate == 0) {
            dblRate = 1;
        }
        if (dblSellingRate == 0) {
            dblSellingRate = 1;
        }
        return (1 / dblRate) * dblSellingRate;
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "convertExchangeRate", e);
        return 0;
    }
}

double frmStockVerification::GetExchangeRate(std::int16_t &intFlag, double &dblExchangeRate) {
    try {
        BaseServices::clsBaseData &base = data();
        std::int32_t lngTargetCurrency = 0;
        if (intFlag != 0) {
            base.strTableName = "aCompanyMaster";
            lngTargetCurrency = vb::CLng(base.fnReturnField("CurrencyId"));
        } else {
            base.strTableName =
                std::string("aDepartmentMaster d, aGodown g where ") +
                " d.departmentid=g.departmentid AND g.godownid=" + std::to_string(m_.intGodownID);
            lngTargetCurrency = vb::CLng(base.fnReturnField("DepCurrencyId"));
        }
        base.strTableName = "aSettings";
        std::int32_t lngCashCurrency = vb::CLng(base.fnReturnField("cashGroupId"));
        base.strTableName = std::string("aaccountmaster am, aPackageSettings pk where ") +
                            " am.accountid=pk.inventoryid and am.companyid = pk.companyid";
        const std::int32_t lngInventoryCurrency = vb::CLng(base.fnReturnField("currencyid"));

        base.strTableName = "ExchangeRate EH, ExchangeRatEDetail ED ";
        double dblRate = vb::CDbl(base.fnReturnField(
            "ED.sellingrate", std::string("EH.CompanyID = ED.CompanyID and ") +
                                  " EH.ExchangeID = ED.ExchangeID  and ED.CurrencyID = " +
                                  std::to_string(lngInventoryCurrency)));
        if (dblRate == 0) {
            dblRate = 1;
        }

        // One step when either side is the inventory currency, else by way of cash.
        if (lngTargetCurrency == lngInventoryCurrency || lngCashCurrency == lngInventoryCurrency) {
            dblExchangeRate = reciprocal(convertExchangeRate(dblRate, lngTargetCurrency));
        } else {
            double dblCash = convertExchangeRate(dblRate, lngCashCurrency);
            dblExchangeRate = reciprocal(convertExchangeRate(dblCash, lngTargetCurrency));
        }
        return dblExchangeRate;
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "GetExchangeRate", e);
        return dblExchangeRate;
    }
}

} // namespace tqsv2731
