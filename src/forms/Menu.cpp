#include "forms/Menu.h"

#include <algorithm>

namespace forms {

Menu::Menu(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::Menu, name, index) {
    setTabStop(false);
}

Menu::Menu(Menu &parent, std::string_view name, int index)
    : Control(parent.form(), ControlKind::Menu, name, index), parent_(&parent) {
    setTabStop(false);
    parent.items_.push_back(this);
}

Menu::~Menu() {
    if (parent_) {
        std::erase(parent_->items_, this);
    }
}

void Menu::choose() {
    raise(onClick);
}

} // namespace forms
