#include "testforms/frmLine.h"

#include "forms/MsgBox.h"

#include "vb/Conversion.h"

#include <utility>

namespace script::test {

frmLine::frmLine(forms::Screen &screen, std::string title, AddLine addLine)
    : Form(screen, "frmLine"), title_(std::move(title)), addLine_(std::move(addLine)) {
    setCaption("Line");
    lblItem.setCaption("&Item:");
    lblQty.setCaption("&Quantity:");
    txtQty.setMaxLength(6);
    cmdOK.setCaption("&OK");
    cmdOK.setDefault(true);
    cmdCancel.setCaption("Cancel");
    cmdCancel.setCancel(true);
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdCancel.onClick = [this] { Unload(); };
}

void frmLine::cmdOK_Click() {
    if (vb::Val(txtQty.Text()) <= 0) {
        forms::MsgBox(screen(), "Enter a quantity.", forms::vbExclamation, title_);
        txtQty.SetFocus();
        return;
    }
    addLine_(txtItem.Text(), txtQty.Text());
    Unload();
}

} // namespace script::test
