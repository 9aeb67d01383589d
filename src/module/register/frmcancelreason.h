// frmcancelreason: the dialog that asks why an entry is being deleted.
#pragma once

#include "forms/CommandButton.h"
#include "forms/Form.h"
#include "forms/Label.h"
#include "forms/TextBox.h"

namespace tqsv2731 {

class Module;

/// Asks for the reason of a deletion while the delete's transaction waits.
/// It has no Cancel: once it is open the deletion goes on, and its one
/// product is the module's `strCancelReason`, cleared at every activation.
/// The close box with OK enabled works as OK (and keeps the dialog open on
/// an empty box); with OK disabled, after OK or when the box holds only
/// blanks, the dialog closes at once and the reason stays as it was.
class frmcancelreason : public forms::Form {
public:
    explicit frmcancelreason(Module &m);

    forms::Label Label1{*this, "Label1"};
    /// At most 200 characters; an apostrophe typed is dropped, since the
    /// reason goes into the header's remarks as it stands.
    forms::TextBox txtcanreason{*this, "txtcanreason"};
    forms::CommandButton cmdOK{*this, "cmdOK"};

    void Form_Load();
    void Form_Activate();
    void txtcanreason_KeyPress(int &KeyAscii);
    void txtcanreason_KeyUp(int &KeyCode, int Shift);
    void cmdOK_Click();
    void Form_QueryUnload(int &Cancel, int UnloadMode);

private:
    void bindEvents();

    Module &m_;
};

} // namespace tqsv2731
