// The company, its godowns, users and settings: the master data every screen reads.
#include "module/records/DemoBuilder.h"

#include "module/records/DemoDb.h"
#include "module/records/DemoItem.h"

#include <set>
#include <string>

namespace records {

void DemoBuilder::addCompany() {
    DemoInsert currency(db_, "aCurrencyMaster",
                        {"CurrencyID", "CurrencyCode", "CurrencyName", "Decimals"});
    currency.row({1, "USD", "US Dollar", 2});
    currency.row({2, "EUR", "Euro", 2});

    DemoInsert company(db_, "aCompanyMaster",
                       {"CompanyID", "name", "Address1", "Address2", "Address3", "CurrencyID"});
    company.row({1, "HARBOURLINE TRADING CO.", "14 Wharf Road", "Port District, Mumbai 400001",
                 "Tel 022-2261 0100", 1});

    DemoInsert department(db_, "aDepartmentMaster",
                          {"DepartmentID", "CompanyID", "Departmentname", "depcurrencyid"});
    department.row({1, 1, "Central Stores", 1});
    department.row({2, 1, "Export Division", 2});

    DemoInsert country(db_, "acountrymaster", {"countryid", "CountryName"});
    country.row({1, "India"});
    country.row({2, "Sri Lanka"});
    DemoInsert city(db_, "acity", {"cityid", "CityName", "countryid"});
    city.row({1, "Mumbai", 1});
    city.row({2, "Pune", 1});
    city.row({3, "Colombo", 2});

    DemoInsert account(db_, "aaccountmaster",
                       {"accountID", "CompanyID", "AccountName", "CurrencyID"});
    account.row({1001, 1, "Inventory", 1});
    account.row({1002, 1, "Stock Transfer Control", 1});
    account.row({1003, 1, "Export Receivables", 2});
    DemoInsert vendor(db_, "avendormaster",
                      {"vendorID", "CompanyID", "VendorName", "CurrencyID"});
    vendor.row({1, 1, "Coastal Foods Pvt Ltd", 1});
    vendor.row({2, 1, "EuroPack GmbH", 2});
    DemoInsert customer(db_, "acustomermaster",
                        {"customerID", "CompanyID", "CustomerName", "CurrencyID"});
    customer.row({1, 1, "City Mart", 1});
    customer.row({2, 1, "Lanka Retail Ltd", 2});

    // One rate table: the rate lists join the parties' currencies to it without a date.
    DemoInsert rate(db_, "ExchangeRate", {"CompanyID", "ExchangeID", "ExchangeDate"});
    rate.row({1, 1, day(-1)});
    DemoInsert rateDetail(db_, "ExchangeRateDetail",
                          {"CompanyID", "ExchangeID", "CurrencyID", "SellingRate", "BuyingRate"});
    rateDetail.row({1, 1, 1, 1.0, 1.0});
    rateDetail.row({1, 1, 2, 0.92, 0.91});

    DemoInsert settings(db_, "aSettings", {"CompanyID", "CashGroupID"});
    settings.row({1, 1});
    DemoInsert package(db_, "aPackageSettings",
                       {"CompanyID", "InventoryID", "stocktransfercontrolacc", "IntegerQuantity",
                        "Alias", "AllowItemCodeDuplication"});
    package.row({1, 1001, 1002, 0, 0, 0});
    DemoInsert alias(db_, "aAlias", {"AliasId", "CompanyId", "Alias"});
    alias.row({1, 1, "Outlet"});
    alias.row({2, 1, "Godown"});
}

void DemoBuilder::addGodowns() {
    DemoInsert godown(db_, "aGodown",
                      {"GodownID", "CompanyID", "DepartmentId", "GodownName", "Address",
                       "GodownTelephoneNo", "GodownFaxNo", "countryid", "cityid"});
    godown.row({1, 1, 1, "MAIN GODOWN", "Plot 14, MIDC Industrial Area\r\nBhosari", "020-2712 0101",
                "020-2712 0102", 1, 2});
    godown.row({2, 1, 2, "HARBOUR GODOWN", "Shed 3, Harbour Estate", "022-2261 0303",
                "022-2261 0304", 1, 1});

    DemoInsert shop(db_, "aShop", {"ShopId", "CompanyID", "ShopName"});
    shop.row({1, 1, "CITY SHOP"});
    shop.row({2, 1, "AIRPORT SHOP"});

    DemoInsert location(db_, "loiLocation", {"lLocationId", "lLocationName", "lGodownId"});
    for (const auto &l : demoLocations())
        location.row({l.id, l.name, l.godown});

    // Financial years run April to March; the third holds the demo date.
    using namespace std::chrono;
    DemoInsert year(db_, "aFinancialYear",
                    {"FinancialId", "CompanyID", "FromDate", "ToDate", "CurFinancialYear"});
    for (int id = 1; id <= 3; ++id) {
        const sys_days from = sys_days{year_month_day{financialYearStart()} - years{3 - id}};
        const sys_days to = sys_days{year_month_day{from} + years{1}} - days{1};
        year.row({id, 1, day(static_cast<int>((from - options_.date).count())),
                  day(static_cast<int>((to - options_.date).count())), id == 3 ? 1 : 0});
    }

    // Godown 2 has no prefix for total verifications: those entries get bare numbers.
    DemoInsert prefix(db_, "aPrefix", {"InterfaceID", "FinancialId", "godownid", "Prefix"});
    for (int financialYear : {2, 3}) {
        prefix.row({1005, financialYear, 1, "SVA"});
        prefix.row({1013, financialYear, 1, "TSA"});
        prefix.row({1005, financialYear, 2, "SVB"});
    }

    DemoInsert closing(db_, "aGodownClosing",
                       {"GodownID", "CloseDate", "ClosedBy", "ClosedOn"});
    closing.row({1, day(-145), 3, day(-144, "18:30:00")});
    closing.row({1, day(-53), 3, day(-52, "18:45:00")});

    DemoInsert settings(db_, "LOiSettings", {"GodownID", "sNoBackDays", "defaultfetch"});
    settings.row({1, 60, "ItemDescription"});
    settings.row({2, 30, nullptr});
}

void DemoBuilder::addUsers() {
    struct User {
        int id;
        const char *name;
        const char *designation;
        const char *rights; // the same in both interfaces; null: no rights row
    };
    const User users[] = {
        {1, "RAHUL MEHTA", "Store Clerk", "NEDP"},
        {2, "SUNITA IYER", "Store Assistant", "nep"},
        {3, "ADMINISTRATOR", "System Administrator", "ADMIN"},
        {4, "DEEPAK JOSHI", "Trainee", nullptr},
    };
    DemoInsert user(db_, "lousers",
                    {"userid", "GodownID", "username", "Designation", "Active"});
    DemoInsert rights(db_, "louserrights",
                      {"userid", "interfaceid", "companyid", "functionrights"});
    for (const auto &u : users) {
        for (int godown : {1, 2})
            user.row({u.id, godown, u.name, u.designation, 1});
        if (u.rights)
            for (int interfaceId : {1005, 1013})
                rights.row({u.id, interfaceId, 1, u.rights});
    }
    // "root" ran init-db as well as being named: one row is enough.
    DemoInsert login(db_, "svUserLogin", {"login", "UserID"});
    const std::set<std::string> logins(options_.logins.begin(), options_.logins.end());
    for (const auto &name : logins)
        login.row({name, 1});
}

void DemoBuilder::addLayouts() {
    DemoInsert list(db_, "alistviewheader",
                    {"lvwid", "lvwtransname", "lvwname", "lvwmodulename"});
    list.row({1, "GodownStockVerification", "lvwRequest", "frmStockVerification"});
    // Width (twips) and alignment (0 left, 1 right) of the 14 columns of the entry's list.
    const int widths[14] = {700, 0, 1500, 4800, 1500, 1500, 1400, 1400, 0, 0, 0, 0, 1300, 900};
    const int aligns[14] = {0, 0, 0, 0, 1, 1, 1, 1, 0, 0, 0, 0, 1, 0};
    DemoInsert column(db_, "alistviewdetails",
                      {"lvwdid", "lvwcolid", "lvwdcolwidth", "lvwdcolalign"});
    for (int i = 0; i < 14; ++i)
        column.row({1, i + 1, widths[i], aligns[i]});

    DemoInsert table(db_, "atables", {"tableid", "tablename"});
    table.row({1, "loiStockVerificationHeader"});
    DemoInsert header(db_, "atablecolumns",
                      {"tableid", "columnorder", "columnheader", "columnname"});
    const char *headers[7][2] = {{"Id", "svhid"},
                                 {"Verification No", "svhno"},
                                 {"Date", "svhdate"},
                                 {"Verified By", "svhVerificationby"},
                                 {"Deleted", "svhcancelled"},
                                 {"Remarks", "svhremarks"},
                                 {"Posted", "svhposted"}};
    for (int i = 0; i < 7; ++i)
        header.row({1, i + 1, headers[i][0], headers[i][1]});

    DemoInsert message(db_, "ashopprintmessages",
                       {"shopid", "transtype", "lineno", "message"});
    message.row({1, "POSPO", 1, "Goods once verified are posted to the books."});
    message.row({1, "POSPO", 2, "Report differences to the godown manager."});

    DemoInsert palette(db_, "aScreenPalette",
                       {"CompanyID", "FormBackColor", "FormForeColor", "ControlBackColor",
                        "ControlForeColor", "ButtonBackColor", "GridBackColor", "GridForeColor",
                        "FontName", "FontSize"});
    palette.row(
        {1, 0xF0F0F0, 0x000000, 0xFFFFFF, 0x000000, 0xE0E0E0, 0xFFFFFF, 0x000000, "Sans", 8});
}

} // namespace records
