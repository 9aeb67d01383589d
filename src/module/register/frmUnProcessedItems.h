// frmUnProcessedItems: the quantities still under way that keep a total count from starting.
#pragma once

#include "ado/Recordset.h"
#include "forms/CommandButton.h"
#include "forms/Form.h"
#include "forms/Image.h"
#include "forms/Label.h"
#include "forms/ListView.h"

#include <string>

namespace tqsv2731 {

class Module;

/// Lists the unfinished transfers of the godown that the register found, so
/// that the clerk knows what to finish before a total count. Preview prints
/// them through the report "rptUnProcessedQuantities", narrowed to the items
/// of the list.
class frmUnProcessedItems : public forms::Form {
public:
    explicit frmUnProcessedItems(Module &m);

    forms::Image Image1{*this, "Image1"};
    forms::Label Label1{*this, "Label1"};
    forms::ListView lvwUnProcessed{*this, "lvwUnProcessed"};
    forms::CommandButton cmdPreview{*this, "cmdPreview"};
    forms::CommandButton cmdOK{*this, "cmdOK"};

    /// The open rows of the unprocessed quantities; the register sets it
    /// before it shows the form, and closes it itself.
    ado::Recordset rsUnProcessed;
    /// The report control's file, title and selection, as the preview set them.
    std::string crptReportFileName;
    std::string crptWindowTitle;
    std::string crptSelectionFormula;

    /// Fills the list from the present row of `rsUnProcessed` to its end.
    void Form_Load();
    void cmdOK_Click();
    /// The report of the listed items in a maximised preview.
    void cmdPreview_Click();
    /// The listed item ids joined by ", ", each once; an id is taken for one
    /// already listed when the text holds it followed by a comma, so 12
    /// after 112 is left out.
    std::string GetItemIdString();

private:
    /// Starts the report as the control's action 1 did. Until the report
    /// engine is part of the module the report file is never there, and the
    /// call fails as a missing file does.
    void startReport();
    void bindEvents();

    Module &m_;
};

} // namespace tqsv2731
