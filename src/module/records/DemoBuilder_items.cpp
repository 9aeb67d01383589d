// Items with their barcodes and godowns, the book stock, and the location and expiry ledgers.
#include "module/records/DemoBuilder.h"

#include "module/records/DemoDb.h"
#include "module/records/DemoItem.h"
#include "module/records/DemoRandom.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <utility>

namespace records {

namespace {

constexpr int goodsReceipt = 1001; // interface that brings stock in: its id is the shipment's
constexpr int stockIssue = 1003;   // interface that sends stock out
constexpr int linesPerDocument = 500;

long thousandths(double quantity) {
    return std::lround(quantity * 1000.0);
}

/// Writes items and everything that hangs on them, with the ledger documents numbered as
/// the suite numbers them: receipts by shipment, issues in one running series per godown.
class ItemWriter {
public:
    ItemWriter(DemoDb &c, std::function<std::string(int)> day)
        : day_(std::move(day)),
          item_(c, "aItem",
                {"ItemId", "itemcode", "ItemName", "PackSize", "ItemPrintName", "ItemCategoryID",
                 "UnitsId", "itemrate", "part_code", "Active", "ExpiryNoOfDays"}),
          barcode_(c, "aitempackingdetail",
                   {"itemid", "packingbarcode", "PackingTypeId", "PackingQty", "Active"}),
          godown_(c, "agodowndetail", {"godownid", "itemid", "ReorderLevel"}),
          stock_(c, "moigodownstock",
                 {"gsGodownId", "gsItemId", "gsShipmentId", "gsLocationId", "gsStock", "gsBadStock",
                  "gsItemCost"}),
          locationIn_(c, "loiLocationArrivalDetails",
                      {"ladInterfaceId", "ladGodownId", "ladTransId", "ladDetailId",
                       "ladLocationId", "ladItemId", "ladItemQty", "ladPackingTypeId",
                       "ladPakingQty", "ladCancel", "ladconfirmed", "ladAdjustment"}),
          locationOut_(c, "loiLocationIssueDetails",
                       {"lidInterfaceId", "lidGodownId", "lidTransactionId", "lidDetailId",
                        "lidLocationId", "lidItemId", "lidItemQty", "lidPackingTypeId",
                        "lidPakingQty", "lidCancel", "lidconfirmed", "lidAdjustment"}),
          expiryIn_(c, "loiExpiryArrivalDetails",
                    {"eadInterfaceId", "eadGodownId", "eadTransactionId", "eaddetailid",
                     "eadexpirydate", "eadItemId", "eadItemQty", "eadPackingTypeId",
                     "eadPackingQty", "eadCancel", "eadAdjustment"}),
          expiryOut_(c, "loiExpiryIssueDetails",
                     {"eidinterfaceId", "eidGodownId", "eidTransactionId", "eidDetailId",
                      "eidExpiryDate", "eidItemId", "eidItemQty", "eidPackingTypeId",
                      "eidPackingQty", "eidCancel", "eidAdjustment"}) {}

    void write(const DemoItem &item) {
        item_.row({item.id, item.code, item.name, orNull(item.packSize), orNull(item.printName),
                   item.category, item.unit, item.rate, orNull(item.partCode), item.active ? 1 : 0,
                   item.expiryDays > 0 ? Cell(item.expiryDays) : nullptr});
        for (const auto &b : item.barcodes)
            barcode_.row({item.id, b.code, 1, 1, b.active ? 1 : 0});
        for (int godown : item.godowns)
            godown_.row({godown, item.id, 10});
        for (const auto &s : item.stock)
            stock_.row({s.godown, item.id, s.shipment, s.location, s.good, s.bad, item.rate});
        DemoRandom random(0x1ED6E5ull ^ (static_cast<std::uint64_t>(item.id) << 20));
        if (item.id == 9)
            writePenLedger();
        else
            for (const auto &s : item.stock)
                writeLocationLedger(item, s, random);
        for (const auto &s : item.stock)
            if (item.expiryDays > 0 && s.good > 0)
                writeExpiryLedger(item, s, random);
    }

private:
    static Cell orNull(const std::string &text) { return text.empty() ? Cell(nullptr) : text; }

    std::pair<int, int> receiptLine(int godown, int shipment) {
        const int n = receipts_[{godown, shipment}]++;
        return {shipment * 100 + n / linesPerDocument, n % linesPerDocument + 1};
    }
    std::pair<int, int> issueLine(int godown) {
        const int n = issues_[godown]++;
        return {5000 + n / linesPerDocument, n % linesPerDocument + 1};
    }

    void arrive(int godown, int shipment, int location, int item, long qty, int confirmed) {
        const auto [doc, line] = receiptLine(godown, shipment);
        locationIn_.row({goodsReceipt, godown, doc, line, location, item, milli(qty), nullptr,
                         milli(qty), 0, confirmed, 0});
    }
    void issue(int godown, int location, int item, long qty, int cancel, int adjustment) {
        const auto [doc, line] = issueLine(godown);
        locationOut_.row({stockIssue, godown, doc, line, location, item, milli(qty), nullptr,
                          milli(qty), cancel, 1, adjustment});
    }

    // Confirmed arrivals less confirmed issues at the stock's location make its good stock;
    // now and then a row that does not count (unconfirmed, cancelled) or counts unseen
    // (an adjustment) stands among them.
    void writeLocationLedger(const DemoItem &item, const DemoStock &s, DemoRandom &random) {
        const long good = thousandths(s.good);
        const bool whole = !demoUnit(item.unit).decimals;
        if (good == 0) {
            if (random.chance(30)) {
                arrive(s.godown, s.shipment, s.location, item.id, 5000, 1);
                issue(s.godown, s.location, item.id, 5000, 0, 0);
            }
            return;
        }
        long issued = random.chance(50) ? random.between(1, std::max(1L, good / 2000)) * 1000 : 0;
        if (!whole && issued > 0)
            issued += random.between(0, 999);
        const long adjusted = random.chance(3) ? 1000 * random.between(1, 3) : 0;
        arrive(s.godown, s.shipment, s.location, item.id, good + issued + adjusted, 1);
        if (issued > 0)
            issue(s.godown, s.location, item.id, issued, 0, 0);
        if (adjusted > 0)
            issue(s.godown, s.location, item.id, adjusted, 0, 1);
        if (random.chance(5))
            arrive(s.godown, s.shipment, s.location, item.id, 1000 * random.between(1, 10), 0);
        if (random.chance(4))
            issue(s.godown, s.location, item.id, 1000 * random.between(1, 5), 1, 0);
    }

    // Ball point pens: a location that ran out, one that went below zero, an unconfirmed
    // arrival and an adjustment, all in godown 1 against a book stock of 20.
    void writePenLedger() {
        arrive(1, 1, 1, 9, 50000, 1);
        issue(1, 1, 9, 20000, 0, 0);
        arrive(1, 1, 1, 9, 10000, 0);
        issue(1, 1, 9, 6000, 0, 1);
        arrive(1, 1, 2, 9, 5000, 1);
        issue(1, 2, 9, 5000, 0, 0);
        issue(1, 3, 9, 4000, 0, 0);
    }

    void expiryRow(DemoInsert &table, int interfaceId, int godown, int doc, int line,
                   const std::string &expiry, int item, long qty) {
        table.row(
            {interfaceId, godown, doc, line, expiry, item, milli(qty), nullptr, milli(qty), 0, 0});
    }

    // The good stock split over one or two expiry dates, some of them past already.
    void writeExpiryLedger(const DemoItem &item, const DemoStock &s, DemoRandom &random) {
        const long good = thousandths(s.good);
        long first = good;
        if (good >= 4000 && random.chance(50))
            first = (good * random.between(30, 70) / 100) / 1000 * 1000;
        const long parts[2] = {first, good - first};
        for (long part : parts) {
            if (part <= 0)
                continue;
            const std::string expiry =
                day_(random.chance(10) ? -static_cast<int>(random.between(1, 20))
                                       : static_cast<int>(random.between(2, item.expiryDays)));
            const long issued = random.chance(40) ? 1000 * random.between(1, 5) : 0;
            const auto [doc, line] = receiptLine(s.godown, s.shipment);
            expiryRow(expiryIn_, goodsReceipt, s.godown, doc, line, expiry, item.id, part + issued);
            if (issued > 0) {
                const auto [out, outLine] = issueLine(s.godown);
                expiryRow(expiryOut_, stockIssue, s.godown, out, outLine, expiry, item.id, issued);
            }
        }
    }

    std::function<std::string(int)> day_;
    DemoInsert item_, barcode_, godown_, stock_;
    DemoInsert locationIn_, locationOut_, expiryIn_, expiryOut_;
    std::map<std::pair<int, int>, int> receipts_;
    std::map<int, int> issues_;
};

} // namespace

void DemoBuilder::addItems() {
    DemoInsert category(db_, "aitemcategory",
                        {"ItemCategoryID", "categorynamedescription"});
    for (const auto &c : demoCategories())
        category.row({c.id, c.name});
    DemoInsert unit(db_, "aUnit", {"UnitId", "UnitCode", "UnitName"});
    for (const auto &u : demoUnits())
        unit.row({u.id, u.code, u.name});
    DemoInsert shipment(db_, "aShipment",
                        {"sShipmentId", "sShipmentno", "sShipmentDate", "sVendorId"});
    for (int id = 1; id <= demoShipments; ++id)
        shipment.row(
            {id, "SHP/" + std::to_string(1000 + id), day(-400 + id * 25), id % 4 == 0 ? 2 : 1});

    ItemWriter writer(db_, [this](int offset) { return day(offset); });
    const long total = options_.items;
    for (int id = 1; id <= total; ++id) {
        writer.write(demoItem(id));
        if (id % 1000 == 0 || id == total)
            report("items", id, total);
    }
}

} // namespace records
