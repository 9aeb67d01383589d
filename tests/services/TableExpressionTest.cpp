#include "services/TableExpression.h"

#include <gtest/gtest.h>

namespace {

TEST(TableExpressionTest, FindsOnlyAWhereOfItsOwn) {
    for (const char *with : {"lousers where userid=1", "LOUSERS WHERE userid=1",
                             "lousers\twhere\tuserid=1", "aItem where itemcode = 'where''s'"}) {
        EXPECT_TRUE(services::hasWhereClause(with)) << with;
    }
    for (const char *without :
         {"LOUsers", "aItem i, aUnit u", "somewhere", "where_used w",
          "(select * from aItem where itemid = 1) x", "[where] w", "aItem as \"a where\""}) {
        EXPECT_FALSE(services::hasWhereClause(without)) << without;
    }
}

TEST(TableExpressionTest, JoinsTheConditionSoBothHold) {
    EXPECT_EQ(services::withCondition("aGodown", " godownid = 1"), "aGodown where  godownid = 1");
    EXPECT_EQ(services::withCondition("lousers where userid=1", "GodownID=2"),
              "lousers where userid=1 and GodownID=2");
    EXPECT_EQ(services::withCondition("aGodown", "   "), "aGodown");
}

} // namespace
