#include "services/clsGridColumnProfile.h"

#include "ServiceFixture.h"
#include "TestForm.h"

namespace servicetest {
namespace {

class GridColumnProfileTest : public ServiceTest {
protected:
    GridColumnProfileTest() {
        form.flexMaster.setCols(4);
        for (int c = 0; c < 4; ++c) {
            form.flexMaster.setColWidth(c, 1000 + c);
        }
    }
    void save(const std::string &values) {
        adocon.Execute("insert into aGridColumnProfile values (" + values + ")");
    }
    TestForm form{screen, "frmMaster"};
    GridColumnProfiles::clsGridColumnProfile profile{context};
};

TEST_F(GridColumnProfileTest, SavedWidthsOfTheUsersGridHaveTheLastWord) {
    save("1, 1, 'frmMaster.flexMaster', 0, 0");
    save("1, 1, 'frmMaster.flexMaster', 2, 2500");
    save("1, 1, 'frmMaster.flexMaster', 9, 700"); // a column the grid no longer has
    save("2, 1, 'frmMaster.flexMaster', 1, 1");   // another user
    save("1, 2, 'frmMaster.flexMaster', 1, 2");   // another company
    save("1, 1, 'frmPrint.flexMaster', 1, 3");    // another form's grid
    ado::Connection given = adocon;
    profile.fnGridSettings(1, 1, form.flexMaster, adocon);
    const int widths[] = {0, 1001, 2500, 1003};
    for (int c = 0; c < 4; ++c) {
        EXPECT_EQ(form.flexMaster.ColWidth(c), widths[c]) << c;
    }
    EXPECT_TRUE(given == adocon);
    profile.fnGridSettings(4, 1, form.flexMaster, adocon); // no profile: nothing moves
    EXPECT_EQ(form.flexMaster.ColWidth(2), 2500);
}

} // namespace
} // namespace servicetest
