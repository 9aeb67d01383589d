// The currency routines of basStockVerification: the rate list and the look-ups behind it.
#include "module/frame/basStockVerification.h"

#include "ado/Recordset.h"
#include "module/frame/Module.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

/// Each half of the rate list ends in ":", so splitting it leaves an empty
/// last piece, which the old ReDim Preserve dropped (and refused on nothing).
void dropLast(std::vector<std::string> &parts) {
    if (parts.empty()) {
        throw vb::Error::standard(vb::err::SubscriptOutOfRange);
    }
    parts.pop_back();
}

std::string joinWithColons(const std::vector<std::string> &parts) {
    std::string out;
    for (const auto &p : parts) {
        out += p + ":";
    }
    return out;
}

std::string rateStatement(Module &m, const std::string &kind, std::int32_t partyId) {
    const std::string id = std::to_string(partyId);
    const std::string company = std::to_string(m.intCompanyID);
    if (kind == "V") {
        return "select a.currencyid CurID,SellingRate from avendormaster a, ExchangeRateDetail b "
               "Where a.CompanyID = b.CompanyID And a.currencyid = b.CurrencyID and a.vendorID=" +
               id + " and a.companyid=" + company;
    }
    if (kind == "C") {
        return "select a.currencyid CurID,SellingRate from acustomermaster a, ExchangeRateDetail b "
               "Where a.CompanyID = b.CompanyID And a.currencyid = b.CurrencyID and a.customerID=" +
               id + " and a.companyid=" + company;
    }
    if (kind == "D") {
        return "select depcurrencyid CurID,SellingRate from aDepartmentMaster a, "
               "ExchangeRateDetail "
               "b Where a.CompanyID = b.CompanyID And a.depcurrencyid = b.CurrencyID and "
               "a.DepartmentID=" +
               id + " and a.companyid=" + company;
    }
    if (kind == "A") {
        return "select a.currencyid CurID,SellingRate from aaccountmaster a, ExchangeRateDetail b "
               "Where a.CompanyID = b.CompanyID And a.currencyid = b.CurrencyID and a.accountID=" +
               id + " and a.companyid=" + company;
    }
    if (kind == "Z") {
        return "select a.CurrencyID CurID,SellingRate from acompanymaster a, ExchangeRateDetail b  "
               "Where a.CompanyID = b.CompanyID And a.currencyid = b.CurrencyID  and a.Companyid=" +
               id;
    }
    if (kind == "B") {
        return "select a.CashGroupID CurID,SellingRate from aSettings a, ExchangeRateDetail b  "
               "Where a.CompanyID = b.CompanyID And a.CashGroupID = b.CurrencyID  and "
               "a.companyid=" +
               company;
    }
    return "";
}

std::string currencyStatement(Module &m, std::string_view kind, std::int32_t partyId) {
    const std::string id = std::to_string(partyId);
    const std::string company = std::to_string(m.intCompanyID);
    if (kind == "Z") {
        return "select CurrencyID curID from acompanyMaster where companyID=" + company;
    }
    if (kind == "D") {
        return "select depcurrencyid curID from adepartmentMaster where DepartmentID=" + id +
               " and CompanyID=" + company;
    }
    if (kind == "V") {
        return "select CurrencyID curID from avendorMaster where companyid=" + company +
               " and vendorID=" + id;
    }
    if (kind == "A") {
        return "select CurrencyID curID from aaccountmaster where companyid=" + company +
               " and accountid=" + id;
    }
    return "";
}

} // namespace

void SplitRateList(Module &m, std::string_view strRateList) {
    m.strRatePairs = vb::Split(strRateList, "-");
    if (m.strRatePairs.size() < 2) {
        throw vb::Error::standard(vb::err::SubscriptOutOfRange);
    }
    m.strCurrencyIds = vb::Split(m.strRatePairs[0], ":");
    m.strSellingRates = vb::Split(m.strRatePairs[1], ":");
    dropLast(m.strCurrencyIds);
    dropLast(m.strSellingRates);
}

vb::Variant AddExchangeRate(Module &m, std::string_view strRateList, std::string_view strKind,
                            std::int32_t partyId) {
    const bool listEmpty = vb::Trim(strRateList).empty();
    if (!listEmpty) {
        SplitRateList(m, strRateList);
    }

    ado::Recordset rs;
    rs.Open(rateStatement(m, vb::UCase(strKind), partyId), m.adocon, ado::adOpenKeyset,
            ado::adLockOptimistic);
    if (rs.Eof()) {
        // The old routine left here without a result and without closing.
        return vb::Variant();
    }

    const std::string curId = vb::CStr(rs.Fields("curID").Value());
    const std::string rate = vb::CStr(rs.Fields("SellingRate").Value());
    if (listEmpty) {
        m.strCurrencyIds = {curId};
        m.strSellingRates = {rate};
    } else if (!IsCurrencyListed(m, vb::Val(curId))) {
        m.strCurrencyIds.push_back(curId);
        m.strSellingRates.push_back(rate);
    }
    rs.Close();

    return vb::Variant(joinWithColons(m.strCurrencyIds) + "-" + joinWithColons(m.strSellingRates));
}

bool IsCurrencyListed(Module &m, double currencyId) {
    for (const auto &id : m.strCurrencyIds) {
        if (vb::Val(id) == currencyId) {
            return true;
        }
    }
    return false;
}

double GetRateRatio(Module &m, std::int16_t currencyOne, std::int16_t currencyTwo) {
    if (vb::Trim(m.strExchangeRates).empty()) {
        return 1;
    }
    SplitRateList(m, m.strExchangeRates);

    // A later equal id overwrites an earlier one; an absent id leaves its rate at 0.
    double rateOne = 0;
    double rateTwo = 0;
    for (std::size_t i = 0; i < m.strCurrencyIds.size(); ++i) {
        const std::int16_t id = vb::CInt(vb::Variant(m.strCurrencyIds[i]));
        if (i >= m.strSellingRates.size()) {
            throw vb::Error::standard(vb::err::SubscriptOutOfRange);
        }
        if (id == currencyOne) {
            rateOne = vb::CDbl(vb::Variant(m.strSellingRates[i]));
        }
        if (id == currencyTwo) {
            rateTwo = vb::CDbl(vb::Variant(m.strSellingRates[i]));
        }
    }
    if (rateOne == 0 || rateTwo == 0) {
        return 1;
    }
    return rateTwo / rateOne;
}

std::int16_t GetCurrencyId(Module &m, std::string_view strKind, std::int32_t partyId) {
    ado::Recordset rs;
    rs.Open(currencyStatement(m, strKind, partyId), m.adocon);
    if (rs.Eof()) {
        return 0;
    }
    const std::int16_t id = vb::CInt(rs.Fields("curID").Value());
    rs.Close();
    return id;
}

} // namespace tqsv2731
