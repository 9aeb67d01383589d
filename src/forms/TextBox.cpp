#include "forms/TextBox.h"

#include "forms/Errors.h"
#include "forms/Keys.h"
#include "forms/Utf8.h"

#include <algorithm>

namespace forms {

TextBox::TextBox(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::TextBox, name, index) {}

TextBox::TextBox(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::TextBox, name, index) {}

void TextBox::setText(std::string_view text) {
    changeText(std::string(text), 0);
}

void TextBox::changeText(std::string text, int caret) {
    selStart_ = caret;
    selLength_ = 0;
    if (text == text_) {
        return;
    }
    text_ = std::move(text);
    raise(onChange);
}

void TextBox::setMaxLength(int length) {
    if (length < 0) {
        throw errors::invalidPropertyValue();
    }
    maxLength_ = length;
}

void TextBox::setSelStart(int start) {
    if (start < 0) {
        throw errors::invalidPropertyValue();
    }
    selStart_ = std::min(start, utf8::length(text_));
    selLength_ = 0;
}

void TextBox::setSelLength(int length) {
    if (length < 0) {
        throw errors::invalidPropertyValue();
    }
    selLength_ = std::min(length, utf8::length(text_) - selStart_);
}

std::string TextBox::SelText() const {
    return utf8::substr(text_, selStart_, selLength_);
}

void TextBox::setSelText(std::string_view text) {
    std::string next = utf8::substr(text_, 0, selStart_) + std::string(text) +
                       utf8::substr(text_, selStart_ + selLength_, utf8::length(text_));
    changeText(std::move(next), selStart_ + utf8::length(text));
}

void TextBox::setAlignment(int alignment) {
    if (alignment < 0 || alignment > 2) {
        throw errors::invalidPropertyValue();
    }
    alignment_ = alignment;
}

void TextBox::defaultKeyDown(int keyCode, int) {
    int length = utf8::length(text_);
    switch (keyCode) {
    case vbKeyLeft:
        selStart_ = std::max(0, selLength_ ? selStart_ : selStart_ - 1);
        break;
    case vbKeyRight:
        selStart_ = std::min(length, selLength_ ? selStart_ + selLength_ : selStart_ + 1);
        break;
    case vbKeyHome:
        selStart_ = 0;
        break;
    case vbKeyEnd:
        selStart_ = length;
        break;
    case vbKeyDelete:
        if (!locked_ && (selLength_ > 0 || selStart_ < length)) {
            int count = selLength_ > 0 ? selLength_ : 1;
            changeText(utf8::substr(text_, 0, selStart_) +
                           utf8::substr(text_, selStart_ + count, length),
                       selStart_);
        }
        return;
    default:
        return;
    }
    selLength_ = 0;
}

void TextBox::defaultKeyPress(char32_t keyAscii) {
    if (locked_) {
        return;
    }
    int length = utf8::length(text_);
    if (keyAscii == vbKeyBack) {
        if (selLength_ > 0) {
            setSelText("");
        } else if (selStart_ > 0) {
            changeText(utf8::substr(text_, 0, selStart_ - 1) +
                           utf8::substr(text_, selStart_, length),
                       selStart_ - 1);
        }
        return;
    }
    if (keyAscii < 32 || keyAscii == 127) {
        return; // Enter, Escape and the control characters never enter a single-line box
    }
    if (maxLength_ > 0 && length - selLength_ + 1 > maxLength_) {
        return;
    }
    setSelText(utf8::encode(keyAscii));
}

} // namespace forms
