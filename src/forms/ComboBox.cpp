#include "forms/ComboBox.h"

#include "forms/Errors.h"
#include "forms/Keys.h"
#include "forms/Utf8.h"

#include <algorithm>
#include <cctype>

namespace forms {

namespace {

std::string folded(std::string_view s) {
    std::string out(s);
    for (char &c : out) {
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
}

} // namespace

ComboBox::ComboBox(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::ComboBox, name, index) {}

ComboBox::ComboBox(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::ComboBox, name, index) {}

void ComboBox::setStyle(int style) {
    if (style < vbComboDropdown || style > vbComboDropdownList) {
        throw errors::invalidPropertyValue();
    }
    style_ = style;
}

void ComboBox::setSorted(bool sorted) {
    sorted_ = sorted;
    if (sorted) {
        std::string chosen = listIndex_ >= 0 ? items_[listIndex_].text : std::string();
        std::stable_sort(items_.begin(), items_.end(), [](const Item &a, const Item &b) {
            return folded(a.text) < folded(b.text);
        });
        if (listIndex_ >= 0) {
            auto it = std::find_if(items_.begin(), items_.end(),
                                   [&](const Item &i) { return i.text == chosen; });
            listIndex_ = static_cast<int>(it - items_.begin());
        }
    }
}

void ComboBox::checkIndex(int index, int errorNumber) const {
    if (index < 0 || index >= ListCount()) {
        throw errorNumber == 381 ? errors::invalidArrayIndex() : errors::invalidProcedureCall();
    }
}

void ComboBox::AddItem(std::string_view item, int index) {
    if (index < -1 || index > ListCount()) {
        throw errors::invalidProcedureCall();
    }
    if (sorted_) {
        std::string key = folded(item);
        auto it = std::upper_bound(
            items_.begin(), items_.end(), key,
            [](const std::string &k, const Item &i) { return k < folded(i.text); });
        index = static_cast<int>(it - items_.begin());
    } else if (index == -1) {
        index = ListCount();
    }
    items_.insert(items_.begin() + index, Item{std::string(item), 0});
    if (listIndex_ >= index) {
        ++listIndex_;
    }
    newIndex_ = index;
}

void ComboBox::RemoveItem(int index) {
    checkIndex(index, 5);
    items_.erase(items_.begin() + index);
    newIndex_ = -1;
    if (listIndex_ == index) {
        listIndex_ = -1;
        if (style_ == vbComboDropdownList) {
            text_.clear();
        }
    } else if (listIndex_ > index) {
        --listIndex_;
    }
}

void ComboBox::Clear() {
    items_.clear();
    listIndex_ = -1;
    newIndex_ = -1;
    text_.clear();
}

std::string ComboBox::List(int index) const {
    return index >= 0 && index < ListCount() ? items_[index].text : std::string();
}

void ComboBox::setList(int index, std::string_view text) {
    checkIndex(index, 381);
    items_[index].text = text;
    if (index == listIndex_) {
        text_ = text;
    }
}

std::int32_t ComboBox::ItemData(int index) const {
    checkIndex(index, 381);
    return items_[index].data;
}

void ComboBox::setItemData(int index, std::int32_t data) {
    checkIndex(index, 381);
    items_[index].data = data;
}

void ComboBox::setListIndex(int index) {
    if (index < -1 || index >= ListCount()) {
        throw errors::invalidPropertyValue();
    }
    listIndex_ = index;
    if (index == -1) {
        text_.clear();
        return;
    }
    text_ = items_[index].text;
    raise(onClick);
}

void ComboBox::setText(std::string_view text) {
    if (style_ == vbComboDropdownList) {
        std::string key = folded(text);
        for (int i = 0; i < ListCount(); ++i) {
            if (folded(items_[i].text) == key) {
                setListIndex(i);
                return;
            }
        }
        throw errors::textReadOnly();
    }
    listIndex_ = -1;
    for (int i = 0; i < ListCount(); ++i) {
        if (items_[i].text == text) {
            listIndex_ = i;
            break;
        }
    }
    if (text == text_) {
        return;
    }
    text_ = text;
    raise(onChange);
}

void ComboBox::userChoose(int index) {
    setListIndex(index);
}

void ComboBox::defaultKeyDown(int keyCode, int) {
    if (items_.empty()) {
        return;
    }
    int last = ListCount() - 1;
    int to;
    switch (keyCode) {
    case vbKeyDown:
        to = std::min(last, listIndex_ + 1);
        break;
    case vbKeyUp:
        to = std::max(0, listIndex_ - 1);
        break;
    case vbKeyHome:
        to = 0;
        break;
    case vbKeyEnd:
        to = last;
        break;
    case vbKeyPageDown:
        to = std::min(last, listIndex_ + 8);
        break;
    case vbKeyPageUp:
        to = std::max(0, listIndex_ - 8);
        break;
    default:
        return;
    }
    if (to != listIndex_) {
        setListIndex(to);
    }
}

void ComboBox::defaultKeyPress(char32_t keyAscii) {
    if (style_ != vbComboDropdownList) {
        // The edit field types like a text box, at its end.
        if (keyAscii == vbKeyBack) {
            int n = utf8::length(text_);
            if (n > 0) {
                setText(utf8::substr(text_, 0, n - 1));
            }
        } else if (keyAscii >= 32 && keyAscii != 127) {
            setText(text_ + utf8::encode(keyAscii));
        }
        return;
    }
    // A list-only combo jumps to the next item that starts with the letter typed.
    if (keyAscii < 32 || items_.empty()) {
        return;
    }
    std::string letter = folded(utf8::encode(keyAscii));
    int n = ListCount();
    for (int step = 1; step <= n; ++step) {
        int i = (listIndex_ + step + n) % n;
        if (folded(utf8::substr(items_[i].text, 0, 1)) == letter) {
            setListIndex(i);
            return;
        }
    }
}

} // namespace forms
