#include "forms/ListView.h"

#include "forms/Errors.h"
#include "forms/Keys.h"

#include <algorithm>
#include <cctype>

namespace forms {

namespace {

constexpr int itemHeight = 240;
constexpr int defaultColumnWidth = 1440;

/// ASCII letters only, as tolower does in the C locale and for the single
/// bytes of UTF-8 text; inline, since a sort asks it many times.
int lowerAscii(unsigned char c) {
    return c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c;
}

int compareNoCase(std::string_view a, std::string_view b) {
    std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
        int x = lowerAscii(static_cast<unsigned char>(a[i]));
        int y = lowerAscii(static_cast<unsigned char>(b[i]));
        if (x != y) {
            return x < y ? -1 : 1;
        }
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
}

} // namespace

// ---- ListItems -----------------------------------------------------------

ListItem &ListItemCollection::Add(int index, std::string_view key, std::string_view text) {
    if (index < 0 || index > Count() + 1) {
        throw errors::indexOutOfBounds();
    }
    if (!key.empty()) {
        for (const auto &item : items_) {
            if (item->Key() == key) {
                throw errors::keyNotUnique();
            }
        }
    }
    bool wasEmpty = items_.empty();
    auto item = std::make_unique<ListItem>(*listView_, key, text);
    ListItem &added = *item;
    std::size_t at = index == 0 ? items_.size() : static_cast<std::size_t>(index - 1);
    items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(at), std::move(item));
    if (at + 1 == items_.size()) {
        added.index_ = Count(); // appending, as lists are filled, renumbers nothing
    } else {
        renumber();
    }
    if (listView_->Sorted()) {
        listView_->sortItems();
    }
    if (wasEmpty && !listView_->selectedItemOrNull()) {
        listView_->setSelectedItem(&added);
    }
    return added;
}

void ListItemCollection::Remove(int index) {
    ListItem &item = Item(index);
    if (listView_->selected_ == &item) {
        listView_->selected_ = nullptr;
    }
    items_.erase(items_.begin() + (index - 1));
    renumber();
    listView_->setTopIndex(listView_->topIndex());
}

void ListItemCollection::Remove(std::string_view key) {
    Remove(Item(key).Index());
}

void ListItemCollection::Clear() {
    listView_->selected_ = nullptr;
    items_.clear();
    listView_->topIndex_ = 1;
}

ListItem &ListItemCollection::Item(int index) {
    if (index < 1 || index > Count()) {
        throw errors::indexOutOfBounds();
    }
    return *items_[static_cast<std::size_t>(index - 1)];
}

const ListItem &ListItemCollection::Item(int index) const {
    if (index < 1 || index > Count()) {
        throw errors::indexOutOfBounds();
    }
    return *items_[static_cast<std::size_t>(index - 1)];
}

ListItem &ListItemCollection::Item(std::string_view key) {
    for (const auto &item : items_) {
        if (item->Key() == key) {
            return *item;
        }
    }
    throw errors::elementNotFound();
}

void ListItemCollection::renumber() {
    for (std::size_t i = 0; i < items_.size(); ++i) {
        items_[i]->index_ = static_cast<int>(i + 1);
    }
}

// ---- ColumnHeaders -------------------------------------------------------

ColumnHeader &ColumnHeaderCollection::Add(int index, std::string_view key, std::string_view text,
                                          int width, int alignment) {
    if (index < 0 || index > Count() + 1) {
        throw errors::indexOutOfBounds();
    }
    if (alignment < lvwColumnLeft || alignment > lvwColumnCenter) {
        throw errors::invalidPropertyValue();
    }
    auto column = std::make_unique<ColumnHeader>(*listView_, key, text,
                                                 width < 0 ? defaultColumnWidth : width,
                                                 Count() == 0 ? lvwColumnLeft : alignment);
    ColumnHeader &added = *column;
    std::size_t at = index == 0 ? columns_.size() : static_cast<std::size_t>(index - 1);
    for (const auto &c : columns_) {
        if (c->position_ >= static_cast<int>(at) + 1) {
            ++c->position_;
        }
    }
    column->position_ = static_cast<int>(at) + 1;
    columns_.insert(columns_.begin() + static_cast<std::ptrdiff_t>(at), std::move(column));
    renumber();
    return added;
}

void ColumnHeaderCollection::Remove(int index) {
    ColumnHeader &column = Item(index);
    int position = column.position_;
    columns_.erase(columns_.begin() + (index - 1));
    for (const auto &c : columns_) {
        if (c->position_ > position) {
            --c->position_;
        }
    }
    renumber();
}

void ColumnHeaderCollection::Clear() {
    columns_.clear();
}

ColumnHeader &ColumnHeaderCollection::Item(int index) {
    if (index < 1 || index > Count()) {
        throw errors::indexOutOfBounds();
    }
    return *columns_[static_cast<std::size_t>(index - 1)];
}

const ColumnHeader &ColumnHeaderCollection::Item(int index) const {
    if (index < 1 || index > Count()) {
        throw errors::indexOutOfBounds();
    }
    return *columns_[static_cast<std::size_t>(index - 1)];
}

std::vector<ColumnHeader *> ColumnHeaderCollection::inDisplayOrder() const {
    std::vector<ColumnHeader *> out;
    for (const auto &c : columns_) {
        out.push_back(c.get());
    }
    std::sort(out.begin(), out.end(),
              [](ColumnHeader *a, ColumnHeader *b) { return a->Position() < b->Position(); });
    return out;
}

void ColumnHeaderCollection::renumber() {
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        columns_[i]->index_ = static_cast<int>(i + 1);
    }
}

void ColumnHeaderCollection::movePosition(ColumnHeader &column, int position) {
    std::vector<ColumnHeader *> order = inDisplayOrder();
    std::erase(order, &column);
    order.insert(order.begin() + (position - 1), &column);
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i]->position_ = static_cast<int>(i + 1);
    }
}

// ---- ListView ------------------------------------------------------------

ListView::ListView(Form &form, std::string_view name, int index)
    : Control(form, ControlKind::ListView, name, index) {}

ListView::ListView(Container &container, std::string_view name, int index)
    : Control(container, ControlKind::ListView, name, index) {}

ListItem &ListView::SelectedItem() const {
    if (!selected_) {
        throw errors::objectNotSet();
    }
    return *selected_;
}

void ListView::setSelectedItem(ListItem *item) {
    if (selected_) {
        selected_->selected_ = false;
    }
    selected_ = item;
    if (item) {
        item->selected_ = true;
    }
}

void ListView::setSorted(bool sorted) {
    sorted_ = sorted;
    if (sorted) {
        sortItems();
    }
}

void ListView::setSortKey(int key) {
    if (key < 0) {
        throw errors::invalidPropertyValue();
    }
    sortKey_ = key;
    if (sorted_) {
        sortItems();
    }
}

void ListView::setSortOrder(int order) {
    if (order != lvwAscending && order != lvwDescending) {
        throw errors::invalidPropertyValue();
    }
    sortOrder_ = order;
    if (sorted_) {
        sortItems();
    }
}

void ListView::sortItems() {
    static const std::string none;
    // By reference: a sort compares each row many times.
    auto keyText = [this](const ListItem &item) -> const std::string & {
        if (sortKey_ == 0) {
            return item.Text();
        }
        return sortKey_ <= item.ListSubItemsCount() ? item.subItems_[sortKey_ - 1].Text() : none;
    };
    std::stable_sort(items_.items_.begin(), items_.items_.end(),
                     [&](const std::unique_ptr<ListItem> &a, const std::unique_ptr<ListItem> &b) {
                         int cmp = compareNoCase(keyText(*a), keyText(*b));
                         return sortOrder_ == lvwAscending ? cmp < 0 : cmp > 0;
                     });
    items_.renumber();
}

int ListView::visibleRows() const {
    return std::max(1, (Height() - itemHeight) / itemHeight);
}

void ListView::setTopIndex(int index) {
    int last = std::max(1, items_.Count() - visibleRows() + 1);
    topIndex_ = std::clamp(index, 1, last);
}

void ListView::ensureVisible(const ListItem &item) {
    int index = item.Index();
    if (index < topIndex_) {
        setTopIndex(index);
    } else if (index >= topIndex_ + visibleRows()) {
        setTopIndex(index - visibleRows() + 1);
    }
}

void ListView::selectByUser(ListItem &item) {
    setSelectedItem(&item);
    ensureVisible(item);
    raise(onItemClick, item);
}

void ListView::defaultKeyDown(int keyCode, int) {
    int count = items_.Count();
    if (count == 0) {
        return;
    }
    int at = selected_ ? selected_->Index() : 0;
    int to;
    switch (keyCode) {
    case vbKeyUp:
        to = std::max(1, at - 1);
        break;
    case vbKeyDown:
        to = std::min(count, at + 1);
        break;
    case vbKeyHome:
        to = 1;
        break;
    case vbKeyEnd:
        to = count;
        break;
    case vbKeyPageUp:
        to = std::max(1, at - visibleRows());
        break;
    case vbKeyPageDown:
        to = std::min(count, at + visibleRows());
        break;
    default:
        return;
    }
    if (to != at) {
        selectByUser(items_.Item(to));
    }
}

} // namespace forms
