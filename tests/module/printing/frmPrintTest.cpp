#include "SlipFixture.h"

#include "forms/MsgBox.h"
#include "services/PrintEngine.h"
#include "vb/Clock.h"

#include <gtest/gtest.h>

namespace tqsv2731 {
namespace {

using test::SlipFixture;

/// The print dialog's OK on the entry, with one destination chosen.
void pressOK(SlipFixture &f, std::int32_t id, forms::OptionButton frmPrint::*option) {
    f.select(id);
    frmPrint &dialog = f.s.m.frmPrint();
    (dialog.*option).setValue(true);
    dialog.cmdOK_Click();
}

bool dialogLoaded(SlipFixture &f) {
    return f.s.m.slotOf<frmPrint>(f.s.m.frmPrint_).loaded();
}

std::vector<std::string> prompts(const SlipFixture &f) {
    std::vector<std::string> out;
    for (const auto &box : f.s.ui.boxes()) {
        out.push_back(box.prompt.substr(0, box.prompt.find('\n')));
    }
    return out;
}

class frmPrintTest : public ::testing::Test {
protected:
    frmPrintTest() { vb::setClock(vb::DateSerial(2026, 11, 22) + 0.5); }
    ~frmPrintTest() override { vb::setClock(std::nullopt); }

    void writeReport(const std::string &text) {
        std::filesystem::create_directories(f.s.folder.path() / "reports");
        std::ofstream(f.s.folder.path() / "reports" / "rptGodownStockVerification.rpt") << text;
    }

    SlipFixture f;
};

TEST_F(frmPrintTest, ToScreenWritesTheSlipFileAndOpensTheViewerOnIt) {
    f.settings(test::exampleSettings());
    pressOK(f, 5, &frmPrint::optScreen);
    ASSERT_EQ(f.s.ui.textFilesShown().size(), 1u);
    EXPECT_EQ(f.s.ui.textFilesShown()[0], f.slipFile().string())
        << "c:\\StockVer.txt of the viewer is C:\\StockVer.txt of the slip";
    EXPECT_NE(f.slip().find("Grand Total:"), std::string::npos);
    EXPECT_FALSE(dialogLoaded(f)) << "the dialog closes";
    EXPECT_EQ(f.s.screen.MousePointer(), forms::vbHourglass) << "and leaves the pointer busy";
}

TEST_F(frmPrintTest, ToPrinterSendsTheSameBytesToThePortAndOpensNoViewer) {
    f.settings(test::exampleSettings());
    pressOK(f, 5, &frmPrint::optScreen);
    const std::string screen = f.slip();
    pressOK(f, 5, &frmPrint::optPrint);
    EXPECT_EQ(f.s.ui.printed("LPT1"), screen);
    EXPECT_EQ(f.s.ui.textFilesShown().size(), 1u);
}

TEST_F(frmPrintTest, APortThatRefusesGoesDownTheFailurePathAndPrintsNothing) {
    f.settings(test::exampleSettings());
    f.s.ui.refusePrinter("LPT1");
    f.s.ui.queueAnswer(forms::vbOK);
    pressOK(f, 5, &frmPrint::optPrint);
    EXPECT_EQ(f.s.ui.printed("LPT1"), "");
    ASSERT_EQ(f.s.faultLog().size(), 1u);
    EXPECT_NE(f.s.faultLog()[0].find("PrintBill \t75"), std::string::npos) << f.s.faultLog()[0];
}

TEST_F(frmPrintTest, AMissingSettingsFileWarnsTwiceThenFailsOnTheFirstNumber) {
    f.s.ui.queueAnswer(forms::vbOK, " Settings.ini file not found");
    f.s.ui.queueAnswer(forms::vbOK); // FileCode's report
    f.s.ui.queueAnswer(forms::vbOK, " Settings.ini file not found");
    f.s.ui.queueAnswer(forms::vbOK); // FileCode's report
    f.s.ui.queueAnswer(forms::vbOK); // PrintBill's report
    pressOK(f, 5, &frmPrint::optScreen);
    EXPECT_EQ(prompts(f), (std::vector<std::string>{
                              " Settings.ini file not found", "Error 53 in FileCode (basStockVerification):",
                              " Settings.ini file not found", "Error 53 in FileCode (basStockVerification):",
                              "Error 13 in PrintBill (FrmMaster):"}));
    EXPECT_FALSE(std::filesystem::exists(f.slipFile())) << "nothing was opened for the slip";
    ASSERT_EQ(f.s.ui.textFilesShown().size(), 1u) << "the viewer still starts";
}

TEST_F(frmPrintTest, KeysWithoutTheBlankBeforeTheMarkerAreNeverFound) {
    f.settingsText("port:=LPT1\r\ninternalprintnoofrecords:=60\r\n");
    f.s.ui.queueAnswer(forms::vbOK, "port  invalid parameter in Settings.ini file");
    f.s.ui.queueAnswer(forms::vbOK,
                       "internalprintnoofrecords  invalid parameter in Settings.ini file");
    f.s.ui.queueAnswer(forms::vbOK); // PrintBill's report: "NotFound" is no number
    pressOK(f, 5, &frmPrint::optPrint);
    EXPECT_EQ(f.s.ui.boxes().size(), 3u);
    EXPECT_EQ(f.s.m.frmMaster().strPrintPort, "NOTFOUND");
}

TEST_F(frmPrintTest, ABlankLineBeforeAKeyLeavesTheFileOpenForEveryLaterRead) {
    f.settingsText("port :=LPT1\r\n\r\ninternalprintnoofrecords :=60\r\n");
    f.s.ui.queueAnswer(forms::vbOK); // FileCode: the blank line's left part fails
    f.s.ui.queueAnswer(forms::vbOK); // PrintBill: the empty value is no number
    pressOK(f, 5, &frmPrint::optPrint);
    EXPECT_EQ(f.s.m.frmMaster().strPrintPort, "LPT1") << "port stands before the blank line";
    EXPECT_EQ(prompts(f)[0], "Error 5 in FileCode (basStockVerification):");

    // A fixed file does not help: channel 3 is still open.
    f.settings(test::exampleSettings());
    f.s.ui.queueAnswer(forms::vbOK);
    f.s.ui.queueAnswer(forms::vbOK);
    f.s.ui.queueAnswer(forms::vbOK);
    pressOK(f, 5, &frmPrint::optPrint);
    EXPECT_EQ(prompts(f)[2], "Error 55 in FileCode (basStockVerification):");
    EXPECT_EQ(f.s.ui.printed("LPT1"), "");
}

TEST_F(frmPrintTest, WindowsPrintPreviewsTheReportWithItsFiveParametersAndStaysOpen) {
    writeReport("title T\nparameter G number\nparameter E number\nparameter C text\n"
                "parameter U text\nparameter D text\n"
                "query select svhno from loiStockVerificationHeader where svhid = {?E} "
                "and svhGodownid = {?G}\n"
                "header {?C}|{?U}|{?D}\ncolumn No; svhno; 10; left\n");
    f.s.m.AppPath = f.s.folder.path().string();
    pressOK(f, 5, &frmPrint::Optwindowsprint);
    ASSERT_EQ(f.s.ui.reportsPreviewed().size(), 1u);
    const forms::ReportPreview &r = f.s.ui.reportsPreviewed()[0];
    EXPECT_EQ(r.title, "Stock Verification");
    EXPECT_EQ(r.parameters.size(), 5u);
    EXPECT_EQ(r.parameters[0], vb::Variant(std::int32_t{1}));
    EXPECT_EQ(r.parameters[1], vb::Variant(5.0));
    EXPECT_EQ(r.parameters[2], vb::Variant("Stock Verification "));
    ASSERT_FALSE(r.pages.empty());
    EXPECT_EQ(r.pages[0].substr(0, r.pages[0].find('\n')),
              "Stock Verification |RAHUL MEHTA|Central Stores");
    EXPECT_NE(r.pages[0].find("SVA5"), std::string::npos);
    EXPECT_TRUE(r.canPrint && r.canExport);
    EXPECT_TRUE(dialogLoaded(f)) << "the dialog stays for another preview";
    EXPECT_TRUE(f.s.ui.boxes().empty()) << "the report with number 0 shows nothing";
    EXPECT_EQ(f.s.screen.MousePointer(), forms::vbDefault);

    auto first = f.s.m.frmPrint().objCrystalReport;
    f.s.m.frmPrint().cmdOK_Click();
    EXPECT_EQ(f.s.ui.reportsPreviewed().size(), 2u);
    EXPECT_NE(f.s.m.frmPrint().objCrystalReport, first) << "a new run replaces the objects";
}

TEST_F(frmPrintTest, AMissingOrMalformedReportIsReportedAndTheDialogStays) {
    f.s.ui.queueAnswer(forms::vbOK);
    pressOK(f, 5, &frmPrint::Optwindowsprint);
    ASSERT_EQ(f.s.ui.boxes().size(), 1u);
    EXPECT_EQ(prompts(f)[0], "Error 20504 in WIndowsprint (frmPrint):");
    EXPECT_TRUE(dialogLoaded(f));

    writeReport("title T\ncolum No; svhno; 10; left\n");
    f.s.ui.queueAnswer(forms::vbOK);
    f.s.m.frmPrint().cmdOK_Click();
    EXPECT_NE(f.s.ui.boxes()[1].prompt.find("unknown keyword 'colum'"), std::string::npos)
        << f.s.ui.boxes()[1].prompt;
    EXPECT_TRUE(f.s.ui.reportsPreviewed().empty());
}

TEST_F(frmPrintTest, EscapeAndCancelCloseTheDialog) {
    frmPrint &dialog = f.s.m.frmPrint();
    EXPECT_TRUE(dialog.Optwindowsprint.Value()) << "Windows Print is chosen at first";
    int key = 27;
    dialog.Form_KeyPress(key);
    EXPECT_FALSE(dialogLoaded(f));
    f.s.m.frmPrint().cmdCancel_Click();
    EXPECT_FALSE(dialogLoaded(f));
}

} // namespace
} // namespace tqsv2731
