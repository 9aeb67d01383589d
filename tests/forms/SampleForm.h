// A small form for the forms tests: an entry field, a frame with options, a list, buttons.
#pragma once

#include "forms/CheckBox.h"
#include "forms/ComboBox.h"
#include "forms/CommandButton.h"
#include "forms/Form.h"
#include "forms/Frame.h"
#include "forms/Label.h"
#include "forms/OptionButton.h"
#include "forms/PictureBox.h"
#include "forms/Screen.h"
#include "forms/TestUi.h"
#include "forms/TextBox.h"

#include "vb/Error.h"

#include <string>
#include <vector>

namespace forms::test {

/// Records what happened, in order, so that tests can compare event sequences.
struct Log {
    std::vector<std::string> lines;
    void operator()(std::string line) { lines.push_back(std::move(line)); }
};

class SampleForm : public Form {
public:
    SampleForm(Screen &screen, Log &log, std::string name = "frmSample")
        : Form(screen, name), log_(log) {
        lblName.setCaption("&Name:");
        txtName.setMaxLength(5);
        cboKind.setStyle(vbComboDropdownList);
        fraOptions.setCaption("Order");
        optAscend.setCaption("&Ascending");
        optDescend.setCaption("&Descending");
        chkDone.setCaption("Confirm &Finished");
        cmdOK.setCaption("&OK");
        cmdCancel.setCaption("&Close");
        onLoad = [this] { log_(Name() + ".Load"); };
        onActivate = [this] { log_(Name() + ".Activate"); };
        onUnload = [this](int &) { log_(Name() + ".Unload"); };
        for (Control *c : controls()) {
            c->onGotFocus = [this, c] { log_(c->Name() + ".GotFocus"); };
            c->onLostFocus = [this, c] { log_(c->Name() + ".LostFocus"); };
            c->onClick = [this, c] { log_(c->Name() + ".Click"); };
        }
        txtName.onChange = [this] { log_("txtName.Change " + txtName.Text()); };
    }

    Label lblName{*this, "lblName"};
    TextBox txtName{*this, "txtName"};
    ComboBox cboKind{*this, "cboKind"};
    Frame fraOptions{*this, "fraOptions"};
    PictureBox Picture1{fraOptions, "Picture1"};
    OptionButton optAscend{Picture1, "optAscend"};
    OptionButton optDescend{Picture1, "optDescend"};
    CheckBox chkDone{*this, "chkDone"};
    TextBox txtRemarks{*this, "txtRemarks"};
    CommandButton cmdOK{*this, "cmdOK"};
    CommandButton cmdCancel{*this, "cmdCancel"};

private:
    Log &log_;
};

/// A screen with a scripted Ui, for one test.
struct Session {
    TestUi ui;
    Screen screen{ui};
};

} // namespace forms::test
