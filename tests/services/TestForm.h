// A form with one control of each kind the services look at.
#pragma once

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "forms/Frame.h"
#include "forms/Label.h"
#include "forms/ListView.h"
#include "forms/OptionButton.h"
#include "forms/TextBox.h"

#include <string_view>

namespace servicetest {

class TestForm : public forms::Form {
public:
    explicit TestForm(forms::Screen &screen, std::string_view name = "frmTest")
        : Form(screen, name) {
        cboItem.AddItem("Basmati Rice");
        cboItem.setItemData(0, 1);
        cboItem.AddItem("Toor Dal");
        cboItem.setItemData(1, 2);
        cboItem.AddItem("Cola");
        cboItem.setItemData(2, 10);
        for (int c = 1; c <= 14; ++c) {
            lvwRequest.ColumnHeaders().Add(0, {}, "Column " + std::to_string(c));
        }
        optAscend.setValue(true);
    }

    forms::Label lblNo{*this, "lblNo"};
    forms::TextBox txtno{*this, "txtno"};
    forms::ComboBox cboItem{*this, "cboItem"};
    forms::CheckBox chkConfirm{*this, "chkConfirm"};
    forms::Frame fraBrowse{*this, "fraBrowse"};
    forms::OptionButton optAscend{fraBrowse, "optAscend"};
    forms::OptionButton optDescend{fraBrowse, "optDescend"};
    forms::ListView lvwRequest{*this, "lvwRequest"};
    forms::FlexGrid flexMaster{*this, "flexMaster"};
    forms::CommandButton cmdOK{*this, "cmdOK"};
};

} // namespace servicetest
