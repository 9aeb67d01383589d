// frmPrint: the print dialog, which sends the register's selected entry to one of three destinations.
#pragma once

#include "forms/CommandButton.h"
#include "forms/Form.h"
#include "forms/Frame.h"
#include "forms/OptionButton.h"
#include "forms/PictureBox.h"

#include <memory>
#include <string_view>

namespace services {
class PrintEngine;
class EngineReport;
class PrintWindowOptions;
class ParameterFieldDefinitions;
class ParameterFieldDefinition;
} // namespace services

namespace tqsv2731 {

class Module;

/// The print dialog of the register, shown modally over it. "Windows Print"
/// previews the entry as a report and leaves the dialog open; "To Screen"
/// writes the text slip and opens it in the viewer; "To Printer" writes the
/// slip to the printer port of ShopSetting.txt. The two slip destinations
/// close the dialog.
class frmPrint : public forms::Form {
public:
    static constexpr std::string_view FormName = "frmPrint";

    explicit frmPrint(Module &m);

    forms::Frame fraPrint{*this, "fraPrint"};
    forms::PictureBox Picture1{fraPrint, "Picture1"};
    forms::OptionButton optScreen{Picture1, "optScreen"};
    forms::OptionButton Optwindowsprint{Picture1, "Optwindowsprint"};
    forms::OptionButton optPrint{Picture1, "optPrint"};
    forms::CommandButton cmdOK{*this, "cmdOK"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};

    /// The print engine's objects of the last preview. They live as long as
    /// the dialog, so that the preview's report stays alive; a new preview
    /// replaces them.
    std::shared_ptr<services::PrintEngine> objCrystalApp;
    std::shared_ptr<services::EngineReport> objCrystalReport;
    std::shared_ptr<services::PrintWindowOptions> objPrintWindowOptions;
    std::shared_ptr<services::ParameterFieldDefinitions> objParameterFields;
    std::shared_ptr<services::ParameterFieldDefinition> objParameterField;

    void Form_Load();
    void cmdOK_Click();
    void cmdCancel_Click();
    void Form_KeyPress(int &KeyAscii);
    /// The report preview of the selected entry through the print engine.
    void WIndowsprint();

private:
    void layOut();
    void bindEvents();

    Module &m_;
};

} // namespace tqsv2731
