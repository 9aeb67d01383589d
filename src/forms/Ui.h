// forms::Ui: what a host (terminal or scripted) does for the forms runtime.
#pragma once

#include "vb/Variant.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace forms {

class Form;
class Menu;
class Screen;

/// A report to open in a preview window: the report file, the window title,
/// the parameter values by position (the first is parameter 1) and a selection
/// formula (empty when the report chooses its rows by parameters alone). The
/// report engine fills in the pages it laid out, whether the window offers
/// printing and export, and how to write the report as a PDF file.
struct ReportPreview {
    std::string reportFile;
    std::string title;
    std::vector<vb::Variant> parameters;
    std::string selectionFormula;
    /// Each page's lines joined by "\n"; empty when no engine laid it out.
    std::vector<std::string> pages;
    bool canPrint = true;
    bool canExport = true;
    /// Writes the report as a PDF file; raises vb::Error when it cannot.
    std::function<void(const std::string &file)> writePdf;
};

/// The services that only a host can give. Each host implements this once:
/// the terminal host for people, the scenario runner for scripts, TestUi for
/// unit tests. The module never calls these directly; it goes through
/// Form::Show, MsgBox, DoEvents, SendKeys and Screen::setMousePointer, which
/// keep the old platform's rules and call down here.
class Ui {
public:
    virtual ~Ui() = default;

    /// The nested event loop of a modal Show. Runs until `form.Visible()` is
    /// false (the form was unloaded or hidden), then returns. Each turn first
    /// runs what SendKeys queued (Input::processQueued) and only when nothing
    /// is queued takes the next user input and hands it to forms::Input.
    /// A loop that can get no more input must raise rather than wait forever.
    virtual void runModal(Form &form) = 0;

    /// Shows a message box and returns the answer (vbOK 1, vbCancel 2, vbYes 6,
    /// vbNo 7, ...). `buttons` is the old style number: the button set plus icon
    /// plus default-button flag (see MsgBox.h for the helpers that split it).
    /// `title` is never empty here: MsgBox has put the application title in.
    virtual int msgBox(std::string_view prompt, int buttons, std::string_view title) = 0;
    /// A message box that gave no title of its own and so carries the
    /// application's, `appTitle`. A screen shows it as any other box (the
    /// default does just that); a host that checks the forms can tell it apart.
    virtual int untitledMsgBox(std::string_view prompt, int buttons, std::string_view appTitle) {
        return msgBox(prompt, buttons, appTitle);
    }

    /// Shows a popup menu of `form` (the visible items of `menu`) and returns
    /// the item the user chose, or nullptr when the menu was dismissed. The
    /// runtime then runs the item's Click before PopupMenu returns.
    virtual Menu *popupMenu(Form &form, Menu &menu) = 0;

    /// The host's part of DoEvents, after the runtime has run queued keystrokes:
    /// redraw, and take any input that is already waiting.
    virtual void doEvents() = 0;

    /// Shows a text file in a full window and returns at once, without waiting
    /// for the user to close it.
    virtual void showTextFile(const std::string &path) = 0;

    /// Opens a printer port (a name from the settings file such as "LPT1") for
    /// raw bytes. Raises vb::Error (the old file errors: 52, 53, 75, 76) when
    /// the port cannot be opened. Bytes are sent when the stream is destroyed.
    virtual std::unique_ptr<std::ostream> openPrinter(const std::string &port) = 0;

    /// Opens a report preview window and returns without waiting for it.
    /// Raises vb::Error when the report cannot be shown.
    virtual void previewReport(const ReportPreview &report) = 0;

    /// The screen's mouse pointer, or that of the active form or control,
    /// changed (Screen::effectivePointer gives the one to show, 11 is busy).
    virtual void mousePointerChanged(Screen &screen) = 0;
};

} // namespace forms
