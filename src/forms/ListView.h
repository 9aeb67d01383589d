// forms::ListView: a list of rows with columns (report layout), with its collections.
#pragma once

#include "forms/ColumnHeader.h"
#include "forms/Control.h"
#include "forms/ListItem.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace forms {

class ListView;

/// The old ListItems collection: rows from 1.
class ListItemCollection {
public:
    explicit ListItemCollection(ListView &listView) : listView_(&listView) {}

    /// Adds a row at the end (index 0) or at `index` (1 to Count + 1). Raises
    /// 35600 for an index out of range, 35602 ("Key is not unique in
    /// collection") for a key already used. The first row added to an empty
    /// list becomes the selected one, as in the old list.
    ListItem &Add(int index = 0, std::string_view key = {}, std::string_view text = {});
    /// Removes the row at `index` (35600 out of range). Removing the selected
    /// row leaves none selected.
    void Remove(int index);
    void Remove(std::string_view key);
    void Clear();
    int Count() const { return static_cast<int>(items_.size()); }
    /// The row at `index` from 1; raises 35600 ("Index out of bounds") outside.
    ListItem &Item(int index);
    const ListItem &Item(int index) const;
    /// The row with a key; raises 35601 ("Element not found") when none has it.
    ListItem &Item(std::string_view key);
    ListItem &operator()(int index) { return Item(index); }
    const ListItem &operator()(int index) const { return Item(index); }

private:
    friend class ListView;
    friend class ListItem;
    void renumber();

    ListView *listView_;
    std::vector<std::unique_ptr<ListItem>> items_;
};

/// The old ColumnHeaders collection: columns from 1.
class ColumnHeaderCollection {
public:
    explicit ColumnHeaderCollection(ListView &listView) : listView_(&listView) {}

    /// Adds a column at the end (index 0) or at `index`. A width below 0 gives
    /// the default of 1440 twips.
    ColumnHeader &Add(int index = 0, std::string_view key = {}, std::string_view text = {},
                      int width = -1, int alignment = lvwColumnLeft);
    void Remove(int index);
    void Clear();
    int Count() const { return static_cast<int>(columns_.size()); }
    /// The column at `index` from 1; raises 35600 outside.
    ColumnHeader &Item(int index);
    const ColumnHeader &Item(int index) const;
    ColumnHeader &operator()(int index) { return Item(index); }
    const ColumnHeader &operator()(int index) const { return Item(index); }
    /// The columns in the order they show (by Position).
    std::vector<ColumnHeader *> inDisplayOrder() const;

private:
    friend class ColumnHeader;
    void renumber();
    void movePosition(ColumnHeader &column, int position);

    ListView *listView_;
    std::vector<std::unique_ptr<ColumnHeader>> columns_;
};

// View values; this system uses the report layout only.
inline constexpr int lvwIcon = 0;
inline constexpr int lvwSmallIcon = 1;
inline constexpr int lvwList = 2;
inline constexpr int lvwReport = 3;
inline constexpr int lvwAscending = 0;
inline constexpr int lvwDescending = 1;
inline constexpr int lvwAutomatic = 0;
inline constexpr int lvwManual = 1;

/// A list view in report layout: rows (ListItems) under column headers.
///
/// One row at most is selected. A user's click on a row selects it and raises
/// ItemClick; the Up, Down, Home, End, PageUp and PageDown keys move the
/// selection and raise ItemClick too. A right click selects the row under the
/// pointer before MouseDown and MouseUp (button 2) run, so a popup menu acts
/// on it. A sorted list sorts by the text of column SortKey (0 the row's own
/// text, n sub-item n), letter case ignored, in SortOrder: when Sorted is set,
/// when SortKey or SortOrder change while it is on, and a row added to it
/// takes its place by the key it has when added (its sub-items come later).
class ListView : public Control {
public:
    ListView(Form &form, std::string_view name, int index = -1);
    ListView(Container &container, std::string_view name, int index = -1);

    ListItemCollection &ListItems() { return items_; }
    const ListItemCollection &ListItems() const { return items_; }
    ColumnHeaderCollection &ColumnHeaders() { return columns_; }
    const ColumnHeaderCollection &ColumnHeaders() const { return columns_; }

    /// The selected row; raises 91 ("Object variable or With block variable
    /// not set") when none is, as using the old Nothing did.
    ListItem &SelectedItem() const;
    /// The selected row or nullptr (the old "SelectedItem Is Nothing" test).
    ListItem *selectedItemOrNull() const { return selected_; }
    /// Selects a row (nullptr selects none), as the old Set SelectedItem did.
    void setSelectedItem(ListItem *item);

    int View() const { return view_; }
    void setView(int view) { view_ = view; }
    bool FullRowSelect() const { return fullRowSelect_; }
    void setFullRowSelect(bool on) { fullRowSelect_ = on; }
    bool GridLines() const { return gridLines_; }
    void setGridLines(bool on) { gridLines_ = on; }
    bool HideSelection() const { return hideSelection_; }
    void setHideSelection(bool on) { hideSelection_ = on; }
    /// lvwAutomatic (0) or lvwManual (1); rows are never edited in place here.
    int LabelEdit() const { return labelEdit_; }
    void setLabelEdit(int mode) { labelEdit_ = mode; }
    bool Sorted() const { return sorted_; }
    void setSorted(bool sorted);
    int SortKey() const { return sortKey_; }
    void setSortKey(int key);
    int SortOrder() const { return sortOrder_; }
    void setSortOrder(int order);

    /// For hosts: the first row shown, from 1 (EnsureVisible scrolls it).
    int topIndex() const { return topIndex_; }
    void setTopIndex(int index);
    /// For hosts: how many rows fit under the header (at 240 twips a row).
    int visibleRows() const;

    std::function<void(ListItem &Item)> onItemClick;
    std::function<void(ColumnHeader &Column)> onColumnClick;

protected:
    void defaultKeyDown(int keyCode, int shift) override;

private:
    friend class Input;
    friend class ListItem;
    friend class ListItemCollection;

    void selectByUser(ListItem &item);
    void sortItems();
    void ensureVisible(const ListItem &item);

    ListItemCollection items_{*this};
    ColumnHeaderCollection columns_{*this};
    ListItem *selected_ = nullptr;
    int view_ = lvwReport;
    bool fullRowSelect_ = false;
    bool gridLines_ = false;
    bool hideSelection_ = true;
    int labelEdit_ = lvwAutomatic;
    bool sorted_ = false;
    int sortKey_ = 0;
    int sortOrder_ = lvwAscending;
    int topIndex_ = 1;
};

} // namespace forms
