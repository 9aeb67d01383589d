#include "services/FaultEntry.h"

#include "ServiceFixture.h"
#include "forms/MsgBox.h"
#include "vb/Clock.h"

#include <fstream>
#include <sstream>

namespace servicetest {
namespace {

class FaultEntryTest : public ServiceTest {
protected:
    FaultEntryTest() {
        vb::setClock(vb::DateSerial(2026, 11, 22) + vb::TimeSerial(10, 15, 30).serial);
    }
    ~FaultEntryTest() override { vb::setClock(std::nullopt); }

    bool report(std::int32_t number, std::string_view description = "Invalid object name 'x'.",
                bool show = true) {
        return FaultDesk::FaultEntry(context).ErrorTrack(
            "frmMaster", "RAHUL MEHTA", "Form_Load ", number,
            "Microsoft OLE DB Provider for SQL Server", description, "N", show);
    }
    std::string logText() const {
        std::stringstream text;
        text << std::ifstream(folder / "state" / "faults.log").rdbuf();
        return text.str();
    }
    void reopen() { adocon.Open("sqlite:" + (folder / "test.db").string()); }
};

TEST_F(FaultEntryTest, RecordsInTableAndLogAndShowsOneBox) {
    ui.queueAnswer(forms::vbOK);
    EXPECT_TRUE(report(17900));
    EXPECT_EQ(scalar("select SourceName + '|' + UserName + '|' + RoutineName + '|' + "
                     "convert(varchar(9), ErrorNumber) + '|' + ErrorDescription + '|' + "
                     "TransactionMode from aFaultLog"),
              "frmMaster|RAHUL MEHTA|Form_Load |17900|Invalid object name 'x'.|N");
    EXPECT_EQ(scalar("select LoggedAt from aFaultLog"), "22/11/2026 10:15:30");
    EXPECT_EQ(logText(), "2026-11-22 10:15:30\tfrmMaster\tRAHUL MEHTA\tForm_Load \t17900\t"
                         "Microsoft OLE DB Provider for SQL Server\tInvalid object name 'x'.\t"
                         "N\tin fault table\n");
    ASSERT_EQ(ui.boxes().size(), 1u);
    EXPECT_EQ(ui.boxes()[0].buttons, forms::vbCritical);
    EXPECT_EQ(ui.boxes()[0].prompt,
              "Error 17900 in Form_Load (frmMaster):\nInvalid object name 'x'.");

    EXPECT_TRUE(report(3021, "No current record", false));
    EXPECT_EQ(ui.boxes().size(), 1u) << "without the flag it only records";
    EXPECT_EQ(scalar("select count(*) from aFaultLog"), "2");
}

TEST_F(FaultEntryTest, NumberZeroIsNoFailureAndShowsNothing) {
    EXPECT_TRUE(report(0, ""));
    EXPECT_TRUE(ui.boxes().empty());
    EXPECT_EQ(scalar("select count(*) from aFaultLog"), "0");
    EXPECT_FALSE(std::filesystem::exists(folder / "state" / "faults.log"));
}

TEST_F(FaultEntryTest, DatabaseGoneStillLogsAndShowsAndNeverRaises) {
    adocon.failNthCall(1, vb::Error(-2147217871, "Provider", "Timeout expired"));
    EXPECT_NO_THROW(report(5, "Invalid procedure call or argument", false));
    adocon.Close();
    ui.queueAnswer(forms::vbOK);
    bool kept = false;
    EXPECT_NO_THROW(kept = report(67259, "Connection failure"));
    EXPECT_TRUE(kept);
    EXPECT_EQ(ui.boxes().size(), 1u);
    const std::string log = logText();
    EXPECT_NE(log.find("\t5\t"), std::string::npos) << log;
    EXPECT_NE(log.find("not in fault table: error -2147217871: Timeout expired"), log.npos);
    EXPECT_NE(log.find("\t67259\t"), std::string::npos);
    EXPECT_NE(log.find("not in fault table: error 3709: "), std::string::npos);
    reopen();
    EXPECT_EQ(scalar("select count(*) from aFaultLog"), "0");
}

TEST_F(FaultEntryTest, LogLinesStayOneLineEachAndAppend) {
    report(1, "first\tline\r\nsecond", false);
    report(2, "again", false);
    const std::string log = logText();
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2);
    EXPECT_NE(log.find("first line  second"), std::string::npos) << log;
}

TEST_F(FaultEntryTest, ReportIsLostOnlyWhenNeitherTableNorLogTakesIt) {
    std::ofstream(folder / "blocker") << "a file where the state folder should be";
    context.stateDirectory = folder / "blocker";
    EXPECT_TRUE(report(20507, "Invalid file name.", false));
    adocon.Close();
    EXPECT_FALSE(report(20507, "Invalid file name.", false));
    reopen();
}

TEST_F(FaultEntryTest, AHostThatCannotShowTheBoxIsNotedNotRaised) {
    ui.queueAnswer(forms::vbYes); // not a button of an OK box: MsgBox raises 5
    EXPECT_NO_THROW(report(13, "Type mismatch"));
    EXPECT_NE(logText().find("message not shown: error 5"), std::string::npos) << logText();
}

} // namespace
} // namespace servicetest
