#include "ModuleSession.h"

#include "forms/Input.h"
#include "module/frame/clsStockVerification.h"
#include "module/register/frmMaster.h"
#include "services/CreateObject.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

/// A host's session: a screen and a database, and the class made by name.
struct Host {
    Host() {
        registerClsStockVerification();
        cls = services::CreateObject<clsStockVerification>("TQSV2731.clsstockverification",
                                                           session.context);
        cls->adocon = session.connection;
        cls->strMsgboxCaption = "Godown 1";
        cls->intCompanyID = 1;
        cls->intUserID = 2;
        cls->dtProcessDate = vb::DateSerial(2026, 11, 22);
        cls->intInterfaceID = 1013;
        cls->intGodownID = 1;
    }
    test::ModuleSession session;
    std::shared_ptr<clsStockVerification> cls;
};

TEST(clsStockVerificationTest, IsMadeByItsCreationNameInAnyLetterCase) {
    Host host;
    ASSERT_NE(host.cls, nullptr);
    EXPECT_EQ(host.cls->creationName(), "tqsv2731.clsStockVerification");
    const auto names = services::creationNames();
    EXPECT_NE(std::find(names.begin(), names.end(), "tqsv2731.clsStockVerification"), names.end());
}

TEST(clsStockVerificationTest, ShowCopiesTheValuesAndReturnsWhenTheRegisterCloses) {
    Host host;
    Module &m = host.cls->module();
    std::string caption;
    std::string firstNumber;
    host.session.ui.queueAction([&](forms::Input &input) {
        frmMaster &f = m.frmMaster();
        caption = f.Caption();
        firstNumber = f.flexMaster.TextMatrix(1, 1);
        input.click(f.CmdClose);
    });
    host.cls->Show();
    EXPECT_EQ(host.session.ui.modalForms(), std::vector<std::string>{"frmMaster"});
    EXPECT_EQ(caption, "Total Stock Verification");
    EXPECT_EQ(firstNumber, "TSA1");
    EXPECT_EQ(m.intUserID, 2);
    EXPECT_EQ(m.intInterfaceID, 1013);
    EXPECT_EQ(m.strMsgboxCaption, "Godown 1");
    EXPECT_EQ(m.dtProcessDate, vb::DateSerial(2026, 11, 22));
    EXPECT_TRUE(m.adocon == host.session.connection);
    EXPECT_FALSE(m.frmMasterSlot().loaded());
}

TEST(clsStockVerificationTest, ASecondShowLoadsAFreshRegisterAndKeepsOtherGlobals) {
    Host host;
    Module &m = host.cls->module();
    host.session.ui.queueAction([&](forms::Input &input) { input.closeForm(m.frmMaster()); });
    host.cls->Show();
    m.strTransactionMode = "E";
    m.lngVerificationId = 6;

    host.cls->intInterfaceID = 1005;
    std::string caption;
    host.session.ui.queueAction([&](forms::Input &input) {
        caption = m.frmMaster().Caption();
        input.closeForm(m.frmMaster());
    });
    host.cls->Show();
    EXPECT_EQ(caption, "Stock Verification");
    EXPECT_EQ(m.strTransactionMode, "E");
    EXPECT_EQ(m.lngVerificationId, 6);
}

TEST(clsStockVerificationTest, AConnectionNeverAssignedFailsToTheHost) {
    Host host;
    host.cls->adocon = ado::Connection();
    try {
        host.cls->Show();
        FAIL() << "the report of the first failure needs the database too";
    } catch (const vb::Error &e) {
        EXPECT_EQ(e.number(), 3709);
    }
    EXPECT_TRUE(host.session.ui.boxes().empty());
    EXPECT_FALSE(host.cls->module().frmMasterSlot().loaded());
}

} // namespace
} // namespace tqsv2731
