// forms::Screen: the shown forms, the mouse pointer and the keystroke queue of one session.
#pragma once

#include "forms/Keys.h"

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace forms {

class Control;
class Form;
class Ui;

// Mouse pointer values (Screen.MousePointer, Form.MousePointer, ...).
inline constexpr int vbDefault = 0;
inline constexpr int vbArrow = 1;
inline constexpr int vbHourglass = 11;

/// What the old platform's Screen object and its message queue were for one
/// running module: the stack of shown forms (the top one is active and takes
/// the user's input), Screen.MousePointer, the keystrokes that SendKeys queued,
/// and the host's Ui. Every Form is made with the Screen it belongs to; there
/// is no global one, so a test can run as many sessions as it likes. The
/// screen must outlive its forms, and the Ui the screen.
class Screen {
public:
    explicit Screen(Ui &ui);
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;

    Ui &ui() const { return *ui_; }

    /// Screen.MousePointer: 0 default, 11 hourglass. Tells the Ui on change.
    int MousePointer() const { return mousePointer_; }
    void setMousePointer(int pointer);
    /// The pointer a host should show: the screen's when it is not 0, else the
    /// active form's, else that of the active form's focused control.
    int effectivePointer() const;

    /// The form that takes input: the one shown last and still shown.
    Form *ActiveForm() const;
    /// The focused control of the active form, or nullptr.
    Control *ActiveControl() const;
    /// Shown forms, from the first shown to the active one.
    const std::vector<Form *> &shownForms() const { return shown_; }

    /// Title of message boxes that give none (the old App.Title).
    const std::string &appTitle() const { return appTitle_; }
    void setAppTitle(std::string_view title) { appTitle_ = title; }

    /// Keystrokes queued by SendKeys, waiting for the event loop (see Input).
    void queueKeys(const std::vector<KeyStroke> &keys);
    bool hasQueuedKeys() const { return !queued_.empty(); }
    std::size_t queuedKeyCount() const { return queued_.size(); }

    /// How many inputs were dispatched in this session (user input and queued
    /// keystrokes alike); watchdogs compare it between turns of a loop.
    std::size_t dispatchCount() const { return dispatchCount_; }

private:
    friend class Form;
    friend class Input;
    friend class Control;

    void pushShown(Form &form);
    void removeShown(Form &form);
    void notifyPointer();
    KeyStroke takeQueuedKey();

    Ui *ui_;
    int mousePointer_ = vbDefault;
    std::vector<Form *> shown_;
    std::deque<KeyStroke> queued_;
    std::string appTitle_ = "stockverify";
    std::size_t dispatchCount_ = 0;
};

} // namespace forms
