// forms::ListItem and forms::ListSubItem: a row of a ListView and its further columns.
#pragma once

#include "forms/Colors.h"

#include <string>
#include <string_view>
#include <vector>

namespace forms {

class ListView;

/// One further column of a list row (the old ListSubItems(n)).
class ListSubItem {
public:
    explicit ListSubItem(int index) : index_(index) {}

    int Index() const { return index_; }
    const std::string &Text() const { return text_; }
    void setText(std::string_view text) { text_ = text; }
    const std::string &Key() const { return key_; }
    void setKey(std::string_view key) { key_ = key; }
    const std::string &Tag() const { return tag_; }
    void setTag(std::string_view tag) { tag_ = tag; }
    const std::string &ToolTipText() const { return toolTipText_; }
    void setToolTipText(std::string_view text) { toolTipText_ = text; }
    Color ForeColor() const { return foreColor_; }
    void setForeColor(Color c) { foreColor_ = c; }
    bool Bold() const { return bold_; }
    void setBold(bool bold) { bold_ = bold; }

private:
    int index_;
    std::string text_;
    std::string key_;
    std::string tag_;
    std::string toolTipText_;
    Color foreColor_ = vbWindowText;
    bool bold_ = false;
};

/// A row of a ListView. Its own Text is the first column; sub-item n is
/// column n + 1. SubItems(n) may be read and written for n from 1 to the
/// number of column headers less one (380 "Invalid property value" outside);
/// writing sub-item n makes the ListSubItems up to n, which ListSubItems(n)
/// then reaches (35600 "Index out of bounds" past them, as the old one did).
class ListItem {
public:
    ListItem(ListView &listView, std::string_view key, std::string_view text);
    ListItem(const ListItem &) = delete;
    ListItem &operator=(const ListItem &) = delete;

    ListView &listView() const { return *listView_; }

    /// Position in the list, from 1.
    int Index() const { return index_; }
    const std::string &Key() const { return key_; }
    const std::string &Text() const { return text_; }
    void setText(std::string_view text);

    std::string SubItems(int n) const;
    void setSubItems(int n, std::string_view text);
    ListSubItem &ListSubItems(int n);
    const ListSubItem &ListSubItems(int n) const;
    /// ListSubItems.Count: how many sub-items have been made.
    int ListSubItemsCount() const { return static_cast<int>(subItems_.size()); }

    /// Selecting an item deselects the others (single selection) and makes it
    /// the SelectedItem; deselecting the selected item leaves none. No event.
    bool Selected() const { return selected_; }
    void setSelected(bool selected);

    const std::string &Tag() const { return tag_; }
    void setTag(std::string_view tag) { tag_ = tag; }
    const std::string &ToolTipText() const { return toolTipText_; }
    void setToolTipText(std::string_view text) { toolTipText_ = text; }
    Color ForeColor() const { return foreColor_; }
    void setForeColor(Color c) { foreColor_ = c; }
    bool Bold() const { return bold_; }
    void setBold(bool bold) { bold_ = bold; }
    bool Checked() const { return checked_; }
    void setChecked(bool checked) { checked_ = checked; }

    /// Scrolls the list so that this item shows.
    void EnsureVisible();

private:
    friend class ListView;
    friend class ListItemCollection;
    void checkSubItemIndex(int n) const;

    ListView *listView_;
    int index_ = 0;
    std::string key_;
    std::string text_;
    std::vector<ListSubItem> subItems_;
    bool selected_ = false;
    std::string tag_;
    std::string toolTipText_;
    Color foreColor_ = vbWindowText;
    bool bold_ = false;
    bool checked_ = false;
};

} // namespace forms
