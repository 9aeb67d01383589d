// frmLine: a small dialog of the runner's test forms that adds a line to frmOrders.
#pragma once

#include "forms/CommandButton.h"
#include "forms/Form.h"
#include "forms/Label.h"
#include "forms/TextBox.h"

#include <functional>
#include <string>

namespace script::test {

/// Asks for an item and a quantity. OK refuses a quantity that is not above
/// zero with a message box; otherwise it hands the line to `addLine` and
/// unloads. Enter presses OK, Escape presses Cancel.
class frmLine : public forms::Form {
public:
    using AddLine = std::function<void(const std::string &item, const std::string &qty)>;
    frmLine(forms::Screen &screen, std::string title, AddLine addLine);

    forms::Label lblItem{*this, "lblItem"};
    forms::TextBox txtItem{*this, "txtItem"};
    forms::Label lblQty{*this, "lblQty"};
    forms::TextBox txtQty{*this, "txtQty"};
    forms::CommandButton cmdOK{*this, "cmdOK"};
    forms::CommandButton cmdCancel{*this, "cmdCancel"};

private:
    void cmdOK_Click();

    std::string title_;
    AddLine addLine_;
};

} // namespace script::test
