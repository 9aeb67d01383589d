// frmRestless: a test form whose keystrokes never stop coming, for the runner's watchdog.
#pragma once

#include "forms/EventLoop.h"
#include "forms/Form.h"
#include "forms/TextBox.h"

namespace script::test {

/// Each text box sends Tab to the event loop when it gets the focus, so the
/// focus goes round forever and the modal loop never waits for input.
class frmRestless : public forms::Form {
public:
    explicit frmRestless(forms::Screen &screen) : Form(screen, "frmRestless") {
        txtA.onGotFocus = [this] { forms::SendKeys(this->screen(), "{TAB}"); };
        txtB.onGotFocus = [this] { forms::SendKeys(this->screen(), "{TAB}"); };
    }

    forms::TextBox txtA{*this, "txtA"};
    forms::TextBox txtB{*this, "txtB"};
};

} // namespace script::test
