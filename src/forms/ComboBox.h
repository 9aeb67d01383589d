// forms::ComboBox: a drop-down list with item data, possibly with an edit field.
#pragma once

#include "forms/Control.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace forms {

inline constexpr int vbComboDropdown = 0;     // edit field and list
inline constexpr int vbComboSimple = 1;       // edit field and a list always shown
inline constexpr int vbComboDropdownList = 2; // list only: Text is the chosen item

/// A combo box.
///
/// Events fired by code, as the old combo fired them:
/// - setting ListIndex to an item (0 or more) raises Click, also when the
///   index does not change: the module relies on it (the detail form sets
///   ListIndex to 0 on a one-item combo and again through the item-data
///   look-up, and both run the item's stock read);
/// - setting ListIndex to -1 clears the selection and the text and raises
///   nothing, so clearing a sort choice does not sort;
/// - AddItem, RemoveItem and Clear raise nothing;
/// - setting Text raises Change (styles 0 and 1) when it differs.
/// The user picks an item with the mouse (Input::chooseItem) or with the
/// arrow keys, or in style 2 by typing its first letter: each raises Click.
class ComboBox : public Control {
public:
    ComboBox(Form &form, std::string_view name, int index = -1);
    ComboBox(Container &container, std::string_view name, int index = -1);

    /// vbComboDropdown (0, the default), vbComboSimple (1), vbComboDropdownList (2).
    int Style() const { return style_; }
    void setStyle(int style);
    /// Keep the list in text order (letter case ignored); AddItem inserts in place.
    bool Sorted() const { return sorted_; }
    void setSorted(bool sorted);

    /// Adds an item at the end, or before `index` (0 to ListCount). Raises 5
    /// for an index out of range. Sets NewIndex.
    void AddItem(std::string_view item, int index = -1);
    /// Removes an item; raises 5 for an index out of range. NewIndex becomes -1;
    /// removing the chosen item leaves none chosen.
    void RemoveItem(int index);
    /// Empties the list and the text; ListIndex and NewIndex become -1.
    void Clear();
    int ListCount() const { return static_cast<int>(items_.size()); }
    /// The text of an item; "" for an index out of range, as the old List did.
    std::string List(int index) const;
    void setList(int index, std::string_view text);
    /// The number kept with an item. Raises 381 ("Invalid property array
    /// index") for an index out of range.
    std::int32_t ItemData(int index) const;
    void setItemData(int index, std::int32_t data);
    /// The chosen item, -1 for none. Setting raises 380 ("Invalid property
    /// value") below -1 or past the last item.
    int ListIndex() const { return listIndex_; }
    void setListIndex(int index);
    /// The index of the item added last; -1 after Clear or RemoveItem.
    int NewIndex() const { return newIndex_; }

    /// The edit field's text (style 0 and 1) or the chosen item's (style 2).
    const std::string &Text() const { return text_; }
    /// Style 0 and 1: sets the edit text (Change when it differs); ListIndex
    /// follows the item with exactly that text, else -1. Style 2: chooses the
    /// item with that text (letter case ignored) as setting ListIndex does;
    /// raises 383 ("'Text' property is read-only") when no item has it.
    void setText(std::string_view text);

    std::function<void()> onChange;

protected:
    void defaultKeyDown(int keyCode, int shift) override;
    void defaultKeyPress(char32_t keyAscii) override;

private:
    friend class Input;
    struct Item {
        std::string text;
        std::int32_t data = 0;
    };

    void checkIndex(int index, int errorNumber) const;
    void userChoose(int index);

    std::vector<Item> items_;
    int style_ = vbComboDropdown;
    bool sorted_ = false;
    int listIndex_ = -1;
    int newIndex_ = -1;
    std::string text_;
};

} // namespace forms
