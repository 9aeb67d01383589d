// forms::ListItem and forms::ListSubItem: a row of a ListView and its further columns.
#pragma once

#include "forms/Colors.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace forms {

class ListView;

/// One further column of a list row (the old ListSubItems(n)).
///
/// A list of 100,000 rows holds over a million of these, almost all with a
/// text and nothing else; the rest (key, tag, tip, colour, bold) lives apart,
/// made when first set, so that a sub-item is its text and little more.
class ListSubItem {
public:
    explicit ListSubItem(int index) : index_(index) {}

    int Index() const { return index_; }
    const std::string &Text() const { return text_; }
    void setText(std::string_view text) { text_ = text; }
    const std::string &Key() const { return extras_ ? extras_->key : noText(); }
    void setKey(std::string_view key) { extras().key = key; }
    const std::string &Tag() const { return extras_ ? extras_->tag : noText(); }
    void setTag(std::string_view tag) { extras().tag = tag; }
    const std::string &ToolTipText() const { return extras_ ? extras_->toolTipText : noText(); }
    void setToolTipText(std::string_view text) { extras().toolTipText = text; }
    Color ForeColor() const { return extras_ ? extras_->foreColor : vbWindowText; }
    void setForeColor(Color c) { extras().foreColor = c; }
    bool Bold() const { return extras_ && extras_->bold; }
    void setBold(bool bold) { extras().bold = bold; }

private:
    struct Extras {
        std::string key;
        std::string tag;
        std::string toolTipText;
        Color foreColor = vbWindowText;
        bool bold = false;
    };
    static const std::string &noText();
    Extras &extras();

    std::string text_;
    std::unique_ptr<Extras> extras_;
    int index_;
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
    const std::string &Key() const { return extras_ ? extras_->key : noText(); }
    const std::string &Text() const { return text_; }
    void setText(std::string_view text);

    /// The text of column n + 1, "" where it was never written. The text
    /// stays the row's: a duplicate check reads one column of every row.
    const std::string &SubItems(int n) const;
    void setSubItems(int n, std::string_view text);
    ListSubItem &ListSubItems(int n);
    const ListSubItem &ListSubItems(int n) const;
    /// ListSubItems.Count: how many sub-items have been made.
    int ListSubItemsCount() const { return static_cast<int>(subItems_.size()); }

    /// Selecting an item deselects the others (single selection) and makes it
    /// the SelectedItem; deselecting the selected item leaves none. No event.
    bool Selected() const { return selected_; }
    void setSelected(bool selected);

    const std::string &Tag() const { return extras_ ? extras_->tag : noText(); }
    void setTag(std::string_view tag) { extras().tag = tag; }
    const std::string &ToolTipText() const { return extras_ ? extras_->toolTipText : noText(); }
    void setToolTipText(std::string_view text) { extras().toolTipText = text; }
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
    // Key, tag and tip are rare on a row; they live apart, as a sub-item's do.
    struct Extras {
        std::string key;
        std::string tag;
        std::string toolTipText;
    };
    static const std::string &noText();
    Extras &extras();

    ListView *listView_;
    std::string text_;
    std::vector<ListSubItem> subItems_;
    std::unique_ptr<Extras> extras_;
    int index_ = 0;
    Color foreColor_ = vbWindowText;
    bool selected_ = false;
    bool bold_ = false;
    bool checked_ = false;
};

} // namespace forms
