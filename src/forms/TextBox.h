// forms::TextBox: a single-line text field.
#pragma once

#include "forms/Control.h"

#include <functional>
#include <string>
#include <string_view>

namespace forms {

/// A single-line text box. Lengths and positions count characters, not bytes.
///
/// Typing goes through KeyDown and KeyPress first; a key that is still there
/// afterwards edits the text at the selection: a character replaces the
/// selection (refused when MaxLength would be passed or Locked is on),
/// Backspace and Delete remove, Left/Right/Home/End move the caret. Enter and
/// the other control characters never enter the text. Every change of the
/// text, by typing or by code, raises Change; setting the same text does not.
class TextBox : public Control {
public:
    TextBox(Form &form, std::string_view name, int index = -1);
    TextBox(Container &container, std::string_view name, int index = -1);

    const std::string &Text() const { return text_; }
    /// Sets the text, puts the caret at the start with nothing selected, and
    /// raises Change if the text differs. MaxLength does not limit code.
    void setText(std::string_view text);

    /// Most characters the user may type; 0 for no limit.
    int MaxLength() const { return maxLength_; }
    void setMaxLength(int length);
    /// Caret position (0 before the first character) and selection length.
    int SelStart() const { return selStart_; }
    void setSelStart(int start);
    int SelLength() const { return selLength_; }
    void setSelLength(int length);
    std::string SelText() const;
    /// Replaces the selection by code (raises Change when the text changes).
    void setSelText(std::string_view text);
    /// 0 left, 1 right, 2 centre.
    int Alignment() const { return alignment_; }
    void setAlignment(int alignment);
    /// A locked box takes the focus and raises its key events but keeps its text.
    bool Locked() const { return locked_; }
    void setLocked(bool locked) { locked_ = locked; }
    /// The character shown for each one typed (a password box); empty for none.
    const std::string &PasswordChar() const { return passwordChar_; }
    void setPasswordChar(std::string_view c) { passwordChar_ = c; }

    std::function<void()> onChange;

protected:
    void defaultKeyDown(int keyCode, int shift) override;
    void defaultKeyPress(char32_t keyAscii) override;

private:
    void changeText(std::string text, int caret);

    std::string text_;
    int maxLength_ = 0;
    int selStart_ = 0;
    int selLength_ = 0;
    int alignment_ = 0;
    bool locked_ = false;
    std::string passwordChar_;
};

} // namespace forms
