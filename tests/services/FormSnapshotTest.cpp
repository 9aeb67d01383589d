#include "services/FormSnapshot.h"

#include "ServiceFixture.h"
#include "TestForm.h"

#include <algorithm>
#include <string>
#include <utility>

namespace servicetest {
namespace {

using Value = std::pair<std::string, std::string>;

class FormSnapshotTest : public ServiceTest {
protected:
    bool holds(const Value &value) {
        const auto &values = services::snapshotOf(form).values;
        return std::find(values.begin(), values.end(), value) != values.end();
    }

    TestForm form{screen};
};

// Each cell is named by its row and column, so that a text moving from one
// cell to another, or row 1's twelfth column against row 11's second, tells.
TEST_F(FormSnapshotTest, NamesEveryCellOfAListAndAGridByItsPlace) {
    forms::ListItemCollection &items = form.lvwRequest.ListItems();
    for (int i = 1; i <= 11; ++i) {
        items.Add(0, {}, std::to_string(i));
    }
    items(1).setSubItems(12, "twelfth of one");
    items(11).setSubItems(2, "second of eleven");
    form.flexMaster.setRows(12);
    form.flexMaster.setTextMatrix(11, 1, "SVA11");
    const std::string list = form.lvwRequest.qualifiedName();
    const std::string grid = form.flexMaster.qualifiedName();

    EXPECT_TRUE(holds({list + ".Count", "11"}));
    EXPECT_TRUE(holds({list + "(11)", "11"}));
    EXPECT_TRUE(holds({list + "(1).12", "twelfth of one"}));
    EXPECT_TRUE(holds({list + "(11).2", "second of eleven"}));
    EXPECT_TRUE(holds({list + "(1).11", ""})) << "the sub-items made on the way";
    EXPECT_TRUE(holds({grid + "(11,1)", "SVA11"}));
    EXPECT_FALSE(holds({grid + "(1,11)", "SVA11"}));
}

} // namespace
} // namespace servicetest
