// The exact reading of quantities that the durability checks rest on.
#include "GodownBook.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace durability {
namespace {

TEST(GodownBookTest, QuantitiesReadExactlyToTheThousandthOrNotAtAll) {
    EXPECT_EQ(thousandths("127"), 127000);
    EXPECT_EQ(thousandths("127.1"), 127100);
    EXPECT_EQ(thousandths("-0.25"), -250);
    EXPECT_EQ(thousandths("0.125000"), 125);
    // Floating point residue is no quantity: a sum that should be 0 or 0.3 must fail.
    EXPECT_THROW(thousandths("5.55111512312578e-17"), std::invalid_argument);
    EXPECT_THROW(thousandths("0.30000000000000004"), std::invalid_argument);
    EXPECT_THROW(thousandths(""), std::invalid_argument);
    EXPECT_THROW(thousandths("NULL"), std::invalid_argument);
}

TEST(GodownBookTest, PostingAddsChangesAndOpensRowsForNewItems) {
    StockByItem before{{{1, 1}, {10000, 500}}};
    const StockByItem changes{{{1, 1}, {-300, 200}}, {{7, 2}, {1100, 0}}};
    const StockByItem after = posted(before, changes);
    EXPECT_EQ(after.at({1, 1}), (Quantity{9700, 700}));
    EXPECT_EQ(after.at({7, 2}), (Quantity{1100, 0}));
    EXPECT_EQ(after.size(), 2u);
}

} // namespace
} // namespace durability
