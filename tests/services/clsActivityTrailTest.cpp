#include "services/clsActivityTrail.h"

#include "ServiceFixture.h"
#include "TestForm.h"
#include "vb/Clock.h"

namespace servicetest {
namespace {

class ActivityTrailTest : public ServiceTest {
protected:
    ~ActivityTrailTest() override { vb::setClock(std::nullopt); }
    void open() { trail.OpenObject(adocon, 1, 2, 3, 1005, vb::DateSerial(2026, 11, 22)); }
    std::string last(const std::string &columns) const {
        return scalar("select " + columns +
                      " from aActivityTrail where ActivityId = "
                      "(select max(ActivityId) from aActivityTrail)");
    }

    StockActivityTrail::clsActivityTrail trail{context};
    TestForm form{screen};
};

TEST_F(ActivityTrailTest, SavesOneRowPerActionWithTheSessionOfOpenObject) {
    ado::Connection given = adocon;
    open();
    EXPECT_TRUE(given == adocon) << "the connection is handed back as it came";
    vb::setClock(vb::DateSerial(2026, 11, 22) + vb::TimeSerial(11, 0, 0).serial);
    trail.LoggedTime = vb::DateSerial(2026, 11, 22) + vb::TimeSerial(10, 59, 0).serial;
    std::int32_t lngNewId = 3;
    trail.SaveUserAuditingInfo(lngNewId, "SVB2", true, "N");
    EXPECT_EQ(last("CompanyID + GodownID * 10 + UserID * 100"), "321");
    EXPECT_EQ(last("InterfaceID"), "1005");
    EXPECT_EQ(last("TransKey + '/' + TransNo + '/' + ActionType"), "3/SVB2/N");
    EXPECT_EQ(last("LoggedTime"), "22/11/2026 10:59:00");
    EXPECT_EQ(last("SavedTime"), "22/11/2026 11:00:00");
    trail.SaveUserAuditingInfo("2", "SVB1", false, "D");
    EXPECT_EQ(last("LoggedTime"), "<null>");
}

TEST_F(ActivityTrailTest, RowsGoInsideTheCallersTransaction) {
    open();
    const std::string before = last("ActivityId");
    adocon.BeginTrans();
    trail.SaveUserAuditingInfo("7", "SVA6", true, "N");
    EXPECT_NE(last("ActivityId"), before);
    adocon.RollbackTrans();
    EXPECT_EQ(last("ActivityId"), before);
}

TEST_F(ActivityTrailTest, RefusesToWriteBeforeOpenObjectOrForAnotherAction) {
    EXPECT_EQ(errorOf([&] { trail.SaveUserAuditingInfo("1", "SVA1", true, "N"); }).number(),
              vb::err::ObjectNotSet);
    open();
    EXPECT_EQ(errorOf([&] { trail.SaveUserAuditingInfo("1", "SVA1", true, "X"); }).number(),
              vb::err::InvalidProcedureCall);
    EXPECT_EQ(errorOf([&] { trail.DataChanged(form); }).number(), vb::err::InvalidProcedureCall)
        << "no snapshot yet";
}

TEST_F(ActivityTrailTest, DataChangedIsFalseRightAfterTheSnapshotAndTrueAfterAChange) {
    form.setTag("loaded");
    form.txtno.setText("12");
    trail.SaveInToTag(form);
    EXPECT_FALSE(trail.DataChanged(form));
    EXPECT_FALSE(trail.fnDataChanged(form));
    form.txtno.setText("13");
    EXPECT_TRUE(trail.DataChanged(form));
    form.txtno.setText("12");
    EXPECT_FALSE(trail.DataChanged(form)) << "changed back";
    EXPECT_EQ(form.Tag(), "loaded") << "the form's Tag is left alone";
}

TEST_F(ActivityTrailTest, DataChangedSeesEachKindOfValueAndNothingElse) {
    const std::vector<std::pair<std::string, std::function<void()>>> changes{
        {"combo", [&] { form.cboItem.setListIndex(1); }},
        {"check", [&] { form.chkConfirm.setValue(1); }},
        {"option", [&] { form.optDescend.setValue(true); }},
        {"list row", [&] { form.lvwRequest.ListItems().Add(0, {}, "1"); }},
        {"list cell", [&] { form.lvwRequest.ListItems()(1).setSubItems(9, "-1"); }},
        {"grid cell", [&] { form.flexMaster.setTextMatrix(1, 1, "SVA1"); }},
        {"grid rows", [&] { form.flexMaster.setRows(5); }},
    };
    for (const auto &[what, change] : changes) {
        trail.SaveInToTag(form);
        change();
        EXPECT_TRUE(trail.DataChanged(form)) << what;
    }
    trail.SaveInToTag(form);
    form.lblNo.setCaption("Number:");
    form.cmdOK.setEnabled(false);
    form.txtno.setBackColor(forms::vbRed);
    form.txtno.setTag("x");
    EXPECT_FALSE(trail.DataChanged(form)) << "captions, states, colours and tags are no values";
}

TEST_F(ActivityTrailTest, SnapshotsAreKeptPerFormAndAnEditRenewsItsForm) {
    TestForm detail(screen, "frmDetail");
    trail.SaveInToTag(form);
    trail.SaveInToTag(detail);
    detail.txtno.setText("changed");
    EXPECT_FALSE(trail.DataChanged(form));
    EXPECT_TRUE(trail.DataChanged(detail));
    open();
    trail.SaveUserAuditingInfo("5", "SVA5", true, "E", &detail);
    EXPECT_FALSE(trail.DataChanged(detail));
}

} // namespace
} // namespace servicetest
