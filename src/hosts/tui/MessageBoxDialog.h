// tui::MessageBoxDialog: a message box drawn centred over the forms and answered by keys.
#pragma once

#include "hosts/tui/Overlay.h"

#include <string>
#include <string_view>
#include <vector>

namespace tui {

/// A message box: the title in its top edge, the icon's word ("Critical",
/// "Question", "Exclamation", "Information"), the prompt wrapped, and the
/// buttons of the style, the default one focused. Enter and Space press the
/// focused button; Escape gives the style's escape answer (nothing for a box
/// that cannot be dismissed, such as Yes/No); Left, Right, Up, Down, Tab and
/// Shift+Tab move between the buttons; a button's letter (its access key, or
/// the first letter of "OK" and "Cancel"), with or without Alt, presses it.
class MessageBoxDialog : public Overlay {
public:
    MessageBoxDialog(std::string_view prompt, int buttons, std::string_view title);

    /// The answer given (vbOK, vbYes, ...), 0 while the box is open.
    int answer() const { return answer_; }
    /// The answer of the focused button.
    int focusedAnswer() const { return answers_[focus_]; }

    void paint(Canvas &canvas, const Rect &area) const override;
    bool handleKey(const forms::KeyStroke &key) override;
    std::string statusText() const override;

    /// The word that stands for a style's icon, "" for none.
    static std::string iconWord(int buttons);

private:
    char32_t letterOf(int answer) const;

    std::string prompt_;
    int buttons_;
    std::string title_;
    std::vector<int> answers_;
    std::size_t focus_ = 0;
    int answer_ = 0;
};

} // namespace tui
