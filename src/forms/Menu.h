// forms::Menu: a menu or menu item, such as the items of a popup menu.
#pragma once

#include "forms/Control.h"
#include "forms/Keys.h"

#include <string>
#include <string_view>
#include <vector>

namespace forms {

/// A menu of a form. A top menu (made with the form) holds items (made with
/// their parent menu); Form::PopupMenu shows a top menu's visible items at
/// the pointer. Choosing an enabled item raises its Click.
class Menu : public Control {
public:
    Menu(Form &form, std::string_view name, int index = -1);
    Menu(Menu &parent, std::string_view name, int index = -1);
    ~Menu() override;

    const std::string &Caption() const { return caption_; }
    void setCaption(std::string_view caption) { caption_ = caption; }
    bool Checked() const { return checked_; }
    void setChecked(bool checked) { checked_ = checked; }

    /// The menu this item belongs to; nullptr for a top menu.
    Menu *parentMenu() const { return parent_; }
    /// The items of this menu, in creation order.
    const std::vector<Menu *> &items() const { return items_; }

    bool focusable() const override { return false; }
    char32_t accessKey() const override { return accessKeyOf(caption_); }

private:
    friend class Form;
    /// Runs the item's Click, as choosing it does.
    void choose();

    std::string caption_;
    bool checked_ = false;
    Menu *parent_ = nullptr;
    std::vector<Menu *> items_;
};

} // namespace forms
