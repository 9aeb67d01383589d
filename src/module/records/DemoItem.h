// One item of the demo company with its barcodes, its godowns and its stock.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace records {

struct DemoCategory {
    int id;
    std::string_view name;
    std::string_view codePrefix; // item codes are this and the item id in six digits
};

struct DemoUnit {
    int id;
    std::string_view code;
    std::string_view name;
    bool decimals; // quantities in this unit have three decimals
};

struct DemoBarcode {
    std::string code; // EAN-13
    bool active;
};

/// Stock of one item and shipment in a godown, before any verification entry moved it.
struct DemoStock {
    int godown;
    int shipment;
    int location;
    double good;
    double bad;
};

struct DemoItem {
    int id = 0;
    std::string code;
    std::string name;
    std::string packSize;  // empty: none
    std::string printName; // empty: none
    int category = 0;
    int unit = 0;
    double rate = 0;
    std::string partCode; // empty: null
    bool active = true;
    int expiryDays = 0; // 0: null
    std::vector<DemoBarcode> barcodes;
    std::vector<int> godowns; // the godowns that carry the item
    std::vector<DemoStock> stock;
};

std::span<const DemoCategory> demoCategories();
std::span<const DemoUnit> demoUnits();
const DemoUnit &demoUnit(int id);

/// Locations of the two demo godowns: godown 1 has 1 to 4, godown 2 has 5 to 7.
struct DemoLocation {
    int id;
    int godown;
    std::string_view name;
};
std::span<const DemoLocation> demoLocations();

/// Number of shipments; godown 1 holds stock of shipments 1 up, godown 2 of 2 up.
inline constexpr int demoShipments = 12;

/// The item with this id: one of the hand-made ones for ids 1 to 12, otherwise one drawn
/// from the id alone.
DemoItem demoItem(int id);

/// The EAN-13 barcode of packing `k` of an item: "890", nine digits of id * 10 + k, and
/// the check digit.
std::string demoBarcode(int itemId, int k);

/// A quantity kept to three decimals exactly as the database keeps it.
double milli(long thousandths);

} // namespace records
