#include "forms/ListItem.h"

#include "forms/Errors.h"
#include "forms/ListView.h"

namespace forms {

const std::string &ListSubItem::noText() {
    static const std::string empty;
    return empty;
}

ListSubItem::Extras &ListSubItem::extras() {
    if (!extras_) {
        extras_ = std::make_unique<Extras>();
    }
    return *extras_;
}

ListItem::ListItem(ListView &listView, std::string_view key, std::string_view text)
    : listView_(&listView), text_(text) {
    if (!key.empty()) {
        extras().key = key;
    }
}

const std::string &ListItem::noText() {
    static const std::string empty;
    return empty;
}

ListItem::Extras &ListItem::extras() {
    if (!extras_) {
        extras_ = std::make_unique<Extras>();
    }
    return *extras_;
}

void ListItem::setText(std::string_view text) {
    text_ = text;
}

void ListItem::checkSubItemIndex(int n) const {
    if (n < 1 || n >= listView_->ColumnHeaders().Count()) {
        throw errors::invalidPropertyValue();
    }
}

const std::string &ListItem::SubItems(int n) const {
    checkSubItemIndex(n);
    return n <= ListSubItemsCount() ? subItems_[n - 1].Text() : noText();
}

void ListItem::setSubItems(int n, std::string_view text) {
    checkSubItemIndex(n);
    if (subItems_.empty()) {
        // Rows are filled column by column: one allocation for all of them.
        subItems_.reserve(static_cast<std::size_t>(listView_->ColumnHeaders().Count() - 1));
    }
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
