#include "module/records/DemoItem.h"

#include "module/records/DemoOptions.h"
#include "module/records/DemoRandom.h"
#include "vb/Error.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

namespace records {

namespace {

enum Category {
    Grocery = 1,
    Beverages,
    Dairy,
    Household,
    Stationery,
    Hardware,
    PersonalCare,
    Frozen
};
enum Unit { Pcs = 1, Kg, Ltr, Box, Pkt, Bag };

constexpr std::array<DemoCategory, 8> categories{{
    {Grocery, "Grocery", "GRO"},
    {Beverages, "Beverages", "BEV"},
    {Dairy, "Dairy", "DAI"},
    {Household, "Household", "HOU"},
    {Stationery, "Stationery", "STA"},
    {Hardware, "Hardware", "HAR"},
    {PersonalCare, "Personal Care", "PER"},
    {Frozen, "Frozen Foods", "FRZ"},
}};

constexpr std::array<DemoUnit, 6> units{{
    {Pcs, "PCS", "Pieces", false},
    {Kg, "KG", "Kilogram", true},
    {Ltr, "LTR", "Litre", true},
    {Box, "BOX", "Box", false},
    {Pkt, "PKT", "Packet", false},
    {Bag, "BAG", "Bag", false},
}};

constexpr std::array<DemoLocation, 7> locations{{
    {1, 1, "RACK A1"},
    {2, 1, "RACK A2"},
    {3, 1, "RACK B1"},
    {4, 1, "COLD ROOM"},
    {5, 2, "BAY 1"},
    {6, 2, "BAY 2"},
    {7, 2, "YARD"},
}};

// What generated items of a category are called and packed in.
struct CategoryWords {
    std::span<const std::string_view> names;
    std::span<const std::string_view> sizes;
    std::span<const int> units;
    int expiryFrom, expiryTo; // shelf life in days; 0 for goods that keep
};

constexpr std::string_view groceryNames[] = {
    "Basmati Rice", "Brown Rice", "Wheat Flour", "Toor Dal",      "Moong Dal",       "Chickpeas",
    "Sugar",        "Rock Salt",  "Rolled Oats", "Chilli Powder", "Turmeric Powder", "Cumin Seeds"};
constexpr std::string_view grocerySizes[] = {"500 g", "1 kg", "2 kg", "5 kg"};
constexpr int groceryUnits[] = {Kg, Pkt, Bag};
constexpr std::string_view beverageNames[] = {
    "Mango Juice",    "Orange Juice", "Apple Juice",   "Green Tea",  "Black Tea",
    "Instant Coffee", "Cola",         "Mineral Water", "Lemon Soda", "Ginger Ale"};
constexpr std::string_view beverageSizes[] = {"250 ml", "330 ml can", "500 ml",
                                              "1 L",    "1.5 L",      "25 bags"};
constexpr int beverageUnits[] = {Pcs, Box, Ltr};
constexpr std::string_view dairyNames[] = {"Fresh Milk", "Toned Milk", "Curd",  "Butter",
                                           "Cheddar",    "Paneer",     "Cream", "Ghee"};
constexpr std::string_view dairySizes[] = {"200 g", "400 g", "500 ml", "1 L"};
constexpr int dairyUnits[] = {Pcs, Ltr, Kg};
constexpr std::string_view householdNames[] = {
    "Dish Wash Liquid", "Floor Cleaner", "Glass Cleaner", "Detergent Powder",
    "Toilet Cleaner",   "Garbage Bags",  "Scrub Pad",     "Air Freshener"};
constexpr std::string_view householdSizes[] = {"500 ml", "1 L", "2 kg", "pack of 30", "set of 3"};
constexpr int householdUnits[] = {Pcs, Ltr, Pkt};
constexpr std::string_view stationeryNames[] = {
    "A4 Copier Paper", "Ball Point Pen Blue", "Gel Pen Black", "Pencil HB",   "Eraser",
    "Stapler",         "Staple Pins",         "Notebook",      "File Folder", "Marker Pen"};
constexpr std::string_view stationerySizes[] = {"box of 10", "500 sheets", "pack of 5",
                                                "200 pages"};
constexpr int stationeryUnits[] = {Pcs, Box, Pkt};
constexpr std::string_view hardwareNames[] = {
    "Steel Padlock",  "Door Hinge",      "Wood Screws",    "Wall Plugs",  "LED Bulb",
    "Extension Cord", "Insulation Tape", "Measuring Tape", "Claw Hammer", "Screwdriver Set"};
constexpr std::string_view hardwareSizes[] = {"50 mm", "9 W", "3 m", "box of 100", "5 m"};
constexpr int hardwareUnits[] = {Pcs, Box};
constexpr std::string_view personalNames[] = {"Hand Sanitizer", "Bath Soap",  "Shampoo",
                                              "Toothpaste",     "Toothbrush", "Hair Oil",
                                              "Face Wash",      "Body Lotion"};
constexpr std::string_view personalSizes[] = {"75 g", "100 ml", "250 ml", "pack of 4", "400 ml"};
constexpr int personalUnits[] = {Pcs};
constexpr std::string_view frozenNames[] = {"Frozen Peas",  "Mixed Vegetables",  "Chicken Nuggets",
                                            "Fish Fillet",  "Vanilla Ice Cream", "French Fries",
                                            "Plain Paratha"};
constexpr std::string_view frozenSizes[] = {"500 g", "1 kg", "pack of 10", "1 L"};
constexpr int frozenUnits[] = {Pkt, Kg, Pcs};

const CategoryWords &wordsOf(int category) {
    static const std::array<CategoryWords, 8> words{{
        {groceryNames, grocerySizes, groceryUnits, 0, 0},
        {beverageNames, beverageSizes, beverageUnits, 120, 365},
        {dairyNames, dairySizes, dairyUnits, 5, 30},
        {householdNames, householdSizes, householdUnits, 0, 0},
        {stationeryNames, stationerySizes, stationeryUnits, 0, 0},
        {hardwareNames, hardwareSizes, hardwareUnits, 0, 0},
        {personalNames, personalSizes, personalUnits, 0, 0},
        {frozenNames, frozenSizes, frozenUnits, 90, 240},
    }};
    return words.at(static_cast<std::size_t>(category - 1));
}

constexpr std::string_view brands[] = {"Sunvale",   "Purely",      "HomeGlo",    "Metro",
                                       "Evergreen", "Golden Leaf", "Blue Ridge", "Kisan Gold"};

constexpr std::uint64_t itemSeed = 0x5EED0A11C0FFEEull;

std::string itemCode(int category, int id) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "%06d", id);
    return std::string(categories.at(static_cast<std::size_t>(category - 1)).codePrefix) + digits;
}

std::string upper(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return text;
}

double quantity(DemoRandom &random, int unit, long wholeFrom, long wholeTo) {
    if (demoUnit(unit).decimals)
        return milli(random.between(wholeFrom * 1000, wholeTo * 1000));
    return static_cast<double>(random.between(wholeFrom, wholeTo));
}

void drawStock(DemoItem &item, DemoRandom &random) {
    for (int godown : item.godowns) {
        if (!random.chance(85))
            continue;
        const int firstShipment = godown == 1 ? 1 : 2;
        const int firstLocation = godown == 1 ? 1 : 5;
        const int lastLocation = godown == 1 ? 4 : 7;
        const long buckets = random.chance(60) ? 1 : random.between(2, 3);
        std::vector<int> shipments;
        while (static_cast<long>(shipments.size()) < buckets) {
            const int shipment = static_cast<int>(random.between(firstShipment, demoShipments));
            if (std::find(shipments.begin(), shipments.end(), shipment) == shipments.end())
                shipments.push_back(shipment);
        }
        std::sort(shipments.begin(), shipments.end());
        for (int shipment : shipments) {
            const int location = static_cast<int>(random.between(firstLocation, lastLocation));
            const double good = quantity(random, item.unit, 0, 400);
            const double bad = random.chance(15) ? quantity(random, item.unit, 1, 5) : 0.0;
            item.stock.push_back({godown, shipment, location, good, bad});
        }
    }
}

DemoItem generatedItem(int id) {
    DemoRandom random(itemSeed ^ (static_cast<std::uint64_t>(id) * 0x9E3779B97F4A7C15ull));
    DemoItem item;
    item.id = id;
    item.category = static_cast<int>(random.between(1, 8));
    const CategoryWords &words = wordsOf(item.category);
    item.name = std::string(random.pick(std::span<const std::string_view>(brands))) + " " +
                std::string(random.pick(words.names));
    item.packSize = std::string(random.pick(words.sizes));
    item.unit = random.pick(words.units);
    item.code = itemCode(item.category, id);
    item.rate = static_cast<double>(random.between(25, 25000)) / 100.0;
    item.active = !random.chance(3);
    if (random.chance(60))
        item.partCode =
            "P" + std::to_string(item.category) + "-" + std::to_string(1000 + id % 9000);
    if (words.expiryTo > 0)
        item.expiryDays = static_cast<int>(random.between(words.expiryFrom, words.expiryTo));
    if (random.chance(20))
        item.printName = upper(item.name).substr(0, 30);
    item.barcodes.push_back({demoBarcode(id, 1), true});
    if (random.chance(25))
        item.barcodes.push_back({demoBarcode(id, 2), !random.chance(40)});
    const bool inFirst = random.chance(80);
    const bool inSecond = random.chance(50);
    if (inFirst || !inSecond)
        item.godowns.push_back(1);
    if (inSecond)
        item.godowns.push_back(2);
    drawStock(item, random);
    return item;
}

struct Featured {
    int category;
    std::string_view name, packSize, printName;
    int unit;
    double rate;
    std::string_view partCode;
    bool active;
    int expiryDays;
    std::vector<DemoBarcode> barcodes;
    std::vector<int> godowns;
    std::vector<DemoStock> stock;
};

// The hand-made items. Their facts are listed in docs/database.md; keep the two together.
DemoItem featuredItem(int id) {
    static const std::array<Featured, demoFeaturedItems> featured{{
        {Grocery,
         "Basmati Rice",
         "5 kg bag",
         "BASMATI RICE 5KG",
         Bag,
         14.5,
         "RB-5",
         true,
         365,
         {{demoBarcode(1, 1), true}, {demoBarcode(1, 2), false}},
         {1, 2},
         {{1, 1, 1, 120, 2}, {1, 3, 2, 30, 0}, {2, 2, 5, 40, 0}}},
        {Grocery,
         "Toor Dal",
         "1 kg",
         "",
         Kg,
         3.25,
         "TD-1",
         true,
         0,
         {{demoBarcode(2, 1), true}},
         {1},
         {{1, 1, 1, 45.25, 0.75}}},
        {Grocery,
         "Sunflower Oil",
         "1 L",
         "",
         Ltr,
         4.8,
         "",
         false,
         0,
         {{demoBarcode(3, 1), true}},
         {1},
         {{1, 2, 2, 18, 0}}},
        {Beverages,
         "Green Tea",
         "25 bags",
         "",
         Box,
         2.95,
         "GT-25",
         true,
         540,
         {{demoBarcode(4, 1), false}, {demoBarcode(4, 2), true}},
         {1},
         {{1, 1, 3, 40, 4}, {1, 2, 3, 24, 0}}},
        {Household,
         "Dish Wash Liquid",
         "500 ml",
         "",
         Pcs,
         1.75,
         "",
         true,
         0,
         {{demoBarcode(5, 1), true}},
         {1},
         {}},
        {Stationery,
         "A4 Copier Paper",
         "500 sheets",
         "",
         Pkt,
         5.4,
         "A4-500",
         true,
         0,
         {{demoBarcode(6, 1), true}},
         {1},
         {{1, 1, 2, 0, 0}}},
        {Hardware,
         "Steel Padlock",
         "50 mm",
         "",
         Pcs,
         6.25,
         "PL-50",
         true,
         0,
         {{demoBarcode(7, 1), true}},
         {2},
         {{2, 3, 6, 25, 0}}},
        {Dairy,
         "Fresh Milk",
         "1 L",
         "",
         Ltr,
         0.95,
         "",
         true,
         7,
         {{demoBarcode(8, 1), true}},
         {1},
         {{1, 4, 4, 36, 0}}},
        {Stationery,
         "Ball Point Pen Blue",
         "box of 10",
         "",
         Box,
         2.1,
         "BP-10",
         true,
         0,
         {{demoBarcode(9, 1), true}},
         {1},
         {{1, 1, 1, 20, 0}}},
        {Beverages,
         "Cola",
         "330 ml can",
         "COLA CAN",
         Pcs,
         0.6,
         "",
         true,
         180,
         {{demoBarcode(10, 1), true}},
         {1, 2},
         {{1, 2, 2, 240, 0}, {2, 2, 5, 120, 3}}},
        {Beverages,
         "Mineral Water",
         "1.5 L",
         "",
         Pcs,
         0.4,
         "",
         true,
         0,
         {{demoBarcode(11, 1), true}},
         {1, 2},
         {{1, 3, 2, 0, 6}, {2, 4, 7, 300, 0}}},
        {PersonalCare,
         "Hand Sanitizer",
         "250 ml",
         "",
         Pcs,
         3.5,
         "HS-250",
         true,
         0,
         {{demoBarcode(12, 1), true}},
         {1, 2},
         {{1, 5, 3, 15, 0}, {2, 5, 6, 10, 0}}},
    }};
    const Featured &f = featured.at(static_cast<std::size_t>(id - 1));
    DemoItem item;
    item.id = id;
    item.category = f.category;
    item.code = itemCode(f.category, id);
    item.name = f.name;
    item.packSize = f.packSize;
    item.printName = f.printName;
    item.unit = f.unit;
    item.rate = f.rate;
    item.partCode = f.partCode;
    item.active = f.active;
    item.expiryDays = f.expiryDays;
    item.barcodes = f.barcodes;
    item.godowns = f.godowns;
    item.stock = f.stock;
    return item;
}

} // namespace

std::span<const DemoCategory> demoCategories() {
    return categories;
}
std::span<const DemoUnit> demoUnits() {
    return units;
}
std::span<const DemoLocation> demoLocations() {
    return locations;
}

const DemoUnit &demoUnit(int id) {
    for (const auto &unit : units)
        if (unit.id == id)
            return unit;
    throw vb::Error(vb::err::SubscriptOutOfRange, "records", "No demo unit " + std::to_string(id));
}

DemoItem demoItem(int id) {
    if (id < 1)
        throw vb::Error(vb::err::InvalidProcedureCall, "records",
                        "No demo item " + std::to_string(id));
    return id <= demoFeaturedItems ? featuredItem(id) : generatedItem(id);
}

std::string demoBarcode(int itemId, int k) {
    char digits[16];
    std::snprintf(digits, sizeof digits, "890%09d", itemId * 10 + k);
    int sum = 0;
    for (int i = 0; i < 12; ++i)
        sum += (digits[i] - '0') * (i % 2 == 0 ? 1 : 3);
    return std::string(digits) + static_cast<char>('0' + (10 - sum % 10) % 10);
}

double milli(long thousandths) {
    return static_cast<double>(thousandths) / 1000.0;
}

} // namespace records
