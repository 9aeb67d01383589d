// Stock transfers under way and the verification entries already made, with their effect on
// the stock: each entry's procedures run as the module ran them when it was saved.
#include "module/records/DemoBuilder.h"

#include "module/records/DemoDb.h"
#include "module/records/DemoItem.h"

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

namespace records {

/// One counted item of an entry: the count is the book stock of the moment moved by these.
struct DemoLine {
    int item;
    double goodDifference;
    double badDifference;
};

struct DemoEntry {
    int godown;
    int id;
    const char *number;
    int dayOffset;
    const char *remarks;
    const char *verifiedBy;
    int userId;
    const char *createdTime;
    int interfaceId;
    bool confirmed;
    bool posted;
    const char *cancelRemarks; // null: live
    const char *editedTime;    // time of an edit on the entry's next day; null: never edited
    std::vector<DemoLine> lines;
};

namespace {

struct TransferLine {
    int item;
    double qty;
};

struct Transfer {
    int id;
    int dayOffset;
    const char *fromType;
    int fromId;
    const char *toType;
    int toId;
    const char *status;
    int cancelled;
    std::vector<TransferLine> lines;
};

double plus(double a, double b) {
    return milli(std::lround(a * 1000.0) + std::lround(b * 1000.0));
}

std::string marker(const DemoEntry &entry, long rows) {
    char text[16];
    std::snprintf(text, sizeof text, "%c%c%05ld", entry.interfaceId == 1005 ? 'o' : 't',
                  entry.confirmed ? 'c' : 'n', rows);
    return text;
}

// The rate list of a save in each godown: the cash group, company and account currency (1),
// then the department's, which is 2 in godown 2.
const char *rateList(int godown) {
    return godown == 1 ? "1:-1:" : "1:2:-1:0.92:";
}
double departmentRate(int godown) {
    return godown == 1 ? 1.0 : 0.92;
}

std::string text(int number) {
    return std::to_string(number);
}

} // namespace

void DemoBuilder::addTransfers() {
    DemoInsert header(db_, "loiStockTransferHeader",
                      {"sthId", "sthNo", "sthDate", "sthFromLocationType", "sthFromLocationId",
                       "sthToLocationType", "sthToLocationId", "sthStatus", "sthCancelled"});
    DemoInsert detail(db_, "loiStockTransferDetail",
                      {"stdId", "stdLineNo", "stdItemId", "stdQty"});
    // Only godown 2 has quantities under way: godown 1's transfers are received or cancelled.
    const Transfer transfers[] = {
        {99, -5, "G", 1, "S", 2, "D", 1, {{2, 5.5}}},
        {100, -9, "G", 1, "S", 1, "R", 0, {{4, 6}, {10, 48}}},
        {101, -3, "G", 2, "S", 1, "D", 0, {{1, 5}, {10, 24}, {11, 12}}},
        {102, -1, "S", 2, "G", 2, "D", 0, {{7, 2}, {12, 3}}},
    };
    for (const auto &t : transfers) {
        header.row({t.id, "ST/" + text(t.id), day(t.dayOffset), t.fromType, t.fromId, t.toType,
                    t.toId, t.status, t.cancelled});
        int lineNo = 0;
        for (const auto &l : t.lines)
            detail.row({t.id, ++lineNo, l.item, l.qty});
    }
}

void DemoBuilder::addEntries() {
    const std::vector<DemoEntry> godownOne = {
        {1,
         1,
         "SVA1",
         -100,
         "Quarterly count, rack A",
         "RAHUL MEHTA",
         1,
         "10:12:40",
         1005,
         false,
         false,
         nullptr,
         nullptr,
         {{1, -2, 0}, {2, -0.25, 0}, {4, 0, -1}}},
        {1,
         2,
         "SVA2",
         -48,
         "Stationery and beverages recount",
         "SUNITA IYER",
         2,
         "16:05:11",
         1005,
         false,
         false,
         nullptr,
         "09:40:02",
         {{9, 2, 0}, {10, -4, 0}, {12, 0, 0}}},
        {1,
         3,
         "SVA3",
         -34,
         "Rice and paper spot check",
         "RAHUL MEHTA",
         1,
         "11:20:55",
         1005,
         false,
         false,
         "RAHUL MEHTA:Counted the wrong rack, recount planned",
         nullptr,
         {{1, 5, 0}, {6, 3, 0}}},
        {1,
         4,
         "SVA4",
         -20,
         "Dairy and water monthly count",
         "SUNITA IYER",
         2,
         "09:02:31",
         1005,
         false,
         true,
         nullptr,
         nullptr,
         {{8, -1, 0}, {11, 0, -1}, {2, 0.5, 0}}},
        {1,
         5,
         "SVA5",
         -13,
         "Fast movers weekly count",
         "RAHUL MEHTA",
         1,
         "17:45:09",
         1005,
         false,
         false,
         nullptr,
         nullptr,
         {{1, -1, 0}, {4, 2, 0}, {9, 0, 0}, {10, 6, 0}, {12, -3, 0}}},
        {1,
         6,
         "TSA1",
         -6,
         "Year end total count, first pass",
         "RAHUL MEHTA",
         1,
         "15:30:00",
         1013,
         false,
         false,
         nullptr,
         "11:05:37",
         {{1, 0, 0}, {2, -0.75, 0}, {4, 1, 0}, {8, -2, 0}}},
    };
    for (const auto &entry : godownOne)
        addEntry(entry);
    addTotalCount();
    addEntry({2,
              2,
              "SVB1",
              -10,
              "Hardware and beverages check",
              "RAHUL MEHTA",
              1,
              "14:10:45",
              1005,
              false,
              false,
              nullptr,
              nullptr,
              {{1, -3, 0}, {7, 1, 0}, {10, 0, -1}}});
    report("entries", 1, 1);
}

// Lines as the detail form makes them: the godown's lowest shipment and first location,
// the book stock of the moment, the item's rate as cost. A total count that has been
// edited carries 1 as available bad stock on every line and no verified bad stock.
void DemoBuilder::addEntry(const DemoEntry &e) {
    const std::string godown = text(e.godown);
    const long shipment = std::lround(demoNumber(
        db_, "SELECT min(gsShipmentId) FROM moigodownstock WHERE gsGodownId = " + godown));
    const long location = std::lround(demoNumber(
        db_, "SELECT min(lLocationId) FROM loiLocation WHERE lGodownId = " + godown));
    DemoInsert detail(db_, "loiStockVerificationDetail",
                      {"svdid", "svdGodownID", "svdLocationid", "svdShipmentID", "svdItemID",
                       "svdAvailStock", "svdVerifiedStock", "svdavailbadstock",
                       "svdverifiedbadstock", "svdcostprice"});
    for (const auto &l : e.lines) {
        const std::string where =
            " FROM moigodownstock WHERE gsGodownId = " + godown + " AND gsItemId = " + text(l.item);
        const double good = demoNumber(db_, "SELECT sum(gsStock)" + where);
        const double bad = demoNumber(db_, "SELECT sum(gsBadStock)" + where);
        const double rate = demoItem(l.item).rate;
        if (e.interfaceId == 1013)
            detail.row({e.id, e.godown, location, shipment, l.item, good,
                        plus(good, l.goodDifference), 1, nullptr, rate});
        else
            detail.row({e.id, e.godown, location, shipment, l.item, good,
                        plus(good, l.goodDifference), bad, plus(bad, l.badDifference), rate});
    }
    DemoInsert header(db_, "loiStockVerificationHeader",
                      {"svhid", "svhno", "svhdate", "svhremarks", "svhverificationby",
                       "svhGodownid", "svhdepartmentid", "svhconexrate", "svhdepexrate",
                       "svhexchangerates", "svhFutureVc", "svhcreatedtime", "updatetime",
                       "svhposted", "svhcancelled", "svhcancelledRemarks"});
    const bool plainEdit = e.editedTime && e.interfaceId == 1005;
    header.row({e.id, e.number, day(e.dayOffset), e.remarks, e.verifiedBy, e.godown, e.godown, 1.0,
                departmentRate(e.godown), rateList(e.godown),
                marker(e, static_cast<long>(e.lines.size())), e.createdTime,
                plainEdit ? Cell(day(e.dayOffset + 1, e.editedTime)) : nullptr, e.posted ? 1 : 0,
                e.cancelRemarks ? 1 : 0, e.cancelRemarks ? Cell(e.cancelRemarks) : nullptr});
    if (e.interfaceId == 1005) {
        demoCall(db_, "spupdateGodownVerification", {e.id, e.godown, "F"});
        if (e.cancelRemarks)
            demoCall(db_, "spupdateGodownVerification", {e.id, e.godown, "R"});
    }
    addEntryTrail(e);
}

// Godown 2's total count, confirmed: one line for every stock row of the godown, most of
// them as the books had them, some a little off. Confirming ran the total procedure.
void DemoBuilder::addTotalCount() {
    const DemoEntry e{2,
                      1,
                      "1",
                      -19,
                      "Harbour godown total count",
                      "SUNITA IYER",
                      2,
                      "08:30:00",
                      1013,
                      true,
                      false,
                      nullptr,
                      "12:15:20",
                      {}};
    demoExecute(db_,
                "INSERT INTO loiStockVerificationDetail (svdid, svdGodownID, svdLocationid, "
                "svdShipmentID, svdItemID, svdAvailStock, svdVerifiedStock, svdavailbadstock, "
                "svdverifiedbadstock, svdcostprice) "
                "SELECT 1, 2, gsLocationId, gsShipmentId, gsItemId, gsStock, "
                "(CASE WHEN gsStock + (CASE WHEN gsItemId % 7 = 3 THEN -1 "
                "WHEN gsItemId % 11 = 5 THEN 2 ELSE 0 END) < 0 THEN 0 "
                "ELSE gsStock + (CASE WHEN gsItemId % 7 = 3 THEN -1 "
                "WHEN gsItemId % 11 = 5 THEN 2 ELSE 0 END) END), 1, NULL, gsItemCost "
                "FROM moigodownstock WHERE gsGodownId = 2 ORDER BY gsItemId, gsShipmentId");
    const long rows = std::lround(demoNumber(
        db_,
        "SELECT count(*) FROM loiStockVerificationDetail WHERE svdGodownID = 2 AND svdid = 1"));
    DemoInsert header(db_, "loiStockVerificationHeader",
                      {"svhid", "svhno", "svhdate", "svhremarks", "svhverificationby",
                       "svhGodownid", "svhdepartmentid", "svhconexrate", "svhdepexrate",
                       "svhexchangerates", "svhFutureVc", "svhcreatedtime"});
    header.row({e.id, e.number, day(e.dayOffset), e.remarks, e.verifiedBy, e.godown, e.godown, 1.0,
                departmentRate(e.godown), rateList(e.godown), marker(e, rows), e.createdTime});
    demoCall(db_, "spGodownTotalStockVerification", {e.id, e.godown});
    addEntryTrail(e);
}

void DemoBuilder::addEntryTrail(const DemoEntry &e) {
    DemoInsert trail(db_, "aActivityTrail",
                     {"CompanyID", "GodownID", "UserID", "InterfaceID", "TransKey", "TransNo",
                      "ActionType", "LoggedTime", "SavedTime"});
    const std::string saved = day(e.dayOffset, e.createdTime);
    trail.row({1, e.godown, e.userId, e.interfaceId, text(e.id), e.number, "N", saved, saved});
    if (e.editedTime) {
        const std::string edited = day(e.dayOffset + 1, e.editedTime);
        trail.row(
            {1, e.godown, e.userId, e.interfaceId, text(e.id), e.number, "E", edited, edited});
    }
    if (e.cancelRemarks) {
        const std::string deleted = day(e.dayOffset + 1, "10:00:00");
        trail.row(
            {1, e.godown, e.userId, e.interfaceId, text(e.id), e.number, "D", deleted, deleted});
    }
}

} // namespace records
