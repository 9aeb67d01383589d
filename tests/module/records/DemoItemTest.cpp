// The demo's items: barcodes that scanners accept, and generated items that keep to the
// rules the demo promises (godowns, shipments, locations, quantities).
#include "module/records/DemoItem.h"
#include "module/records/DemoOptions.h"
#include "vb/Error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <set>

namespace records {
namespace {

bool validEan13(const std::string &code) {
    if (code.size() != 13)
        return false;
    int sum = 0;
    for (int i = 0; i < 13; ++i)
        sum += (code[i] - '0') * (i % 2 == 0 ? 1 : 3);
    return sum % 10 == 0;
}

TEST(DemoItemTest, BarcodesAreEan13WithTheirCheckDigit) {
    EXPECT_EQ(demoBarcode(1, 1), "8900000000111");
    EXPECT_EQ(demoBarcode(4, 2), "8900000000425");
    EXPECT_EQ(demoBarcode(12345, 2), "8900001234522");
    for (int id : {7, 99, 4567, 99999})
        for (int k : {1, 2})
            EXPECT_TRUE(validEan13(demoBarcode(id, k))) << demoBarcode(id, k);
}

TEST(DemoItemTest, HandMadeItemsAreTheDocumentedOnes) {
    const DemoItem rice = demoItem(1);
    EXPECT_EQ(rice.code, "GRO000001");
    EXPECT_EQ(rice.name + " " + rice.packSize, "Basmati Rice 5 kg bag");
    EXPECT_EQ(rice.barcodes.size(), 2u);
    EXPECT_FALSE(rice.barcodes[1].active);
    EXPECT_FALSE(demoItem(3).active);
    EXPECT_TRUE(demoItem(5).stock.empty());
    EXPECT_EQ(demoItem(7).godowns, std::vector<int>{2});
}

TEST(DemoItemTest, GeneratedItemsKeepToTheDemoRules) {
    std::set<std::string> codes;
    for (int id = demoFeaturedItems + 1; id <= 3000; ++id) {
        const DemoItem item = demoItem(id);
        SCOPED_TRACE(id);
        EXPECT_TRUE(codes.insert(item.code).second);
        ASSERT_FALSE(item.godowns.empty());
        ASSERT_FALSE(item.barcodes.empty());
        EXPECT_TRUE(item.barcodes[0].active);
        std::set<std::pair<int, int>> buckets;
        for (const auto &s : item.stock) {
            EXPECT_TRUE(buckets.insert({s.godown, s.shipment}).second) << "one row a shipment";
            EXPECT_NE(std::find(item.godowns.begin(), item.godowns.end(), s.godown),
                      item.godowns.end());
            EXPECT_GE(s.shipment, s.godown == 1 ? 1 : 2);
            EXPECT_LE(s.shipment, demoShipments);
            EXPECT_EQ(demoLocations()[static_cast<std::size_t>(s.location - 1)].godown, s.godown);
            const double scale = demoUnit(item.unit).decimals ? 1000.0 : 1.0;
            EXPECT_NEAR(std::round(s.good * scale), s.good * scale, 1e-6);
            EXPECT_GE(s.good, 0.0);
        }
    }
}

TEST(DemoItemTest, ThereIsNoItemZero) {
    EXPECT_THROW(demoItem(0), vb::Error);
}

} // namespace
} // namespace records
