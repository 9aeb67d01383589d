#include "forms/ListItem.h"

#include "forms/Errors.h"
#include "forms/ListView.h"

namespace forms {

ListItem::ListItem(ListView &listView, std::string_view key, std::string_view text)
    : listView_(&listView), key_(key), text_(text) {}

void ListItem::setText(std::string_view text) {
    text_ = text;
}

void ListItem::checkSubItemIndex(int n) const {
    if (n < 1 || n >= listView_->ColumnHeaders().Count()) {
        throw errors::invalidPropertyValue();
    }
}

std::string ListItem::SubItems(int n) const {
    checkSubItemIndex(n);
    return n <= ListSubItemsCount() ? subItems_[n - 1].Text() : std::string();
}

void ListItem::setSubItems(int n, std::string_view text) {
    checkSubItemIndex(n);
    while (ListSubItemsCount() < n) {
        subItems_.emplace_back(ListSubItemsCount() + 1);
    }
    subItems_[n - 1].setText(text);
}

ListSubItem &ListItem::ListSubItems(int n) {
    if (n < 1 || n > ListSubItemsCount()) {
        throw errors::indexOutOfBounds();
    }
    return subItems_[n - 1];
}

const ListSubItem &ListItem::ListSubItems(int n) const {
    if (n < 1 || n > ListSubItemsCount()) {
        throw errors::indexOutOfBounds();
    }
    return subItems_[n - 1];
}

void ListItem::setSelected(bool selected) {
    if (selected) {
        listView_->setSelectedItem(this);
    } else if (selected_) {
        listView_->setSelectedItem(nullptr);
    }
}

void ListItem::EnsureVisible() {
    listView_->ensureVisible(*this);
}

} // namespace forms
