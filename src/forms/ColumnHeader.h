// forms::ColumnHeader: a column of a ListView in report layout.
#pragma once

#include <string>
#include <string_view>

namespace forms {

class ListView;

// ColumnHeader alignments.
inline constexpr int lvwColumnLeft = 0;
inline constexpr int lvwColumnRight = 1;
inline constexpr int lvwColumnCenter = 2;

/// A column of a list in report layout. Index is its place among the column
/// headers (1 is the items' own text, n + 1 is sub-item n); Position is where
/// it shows on the screen, from 1. A width of 0 hides the column.
class ColumnHeader {
public:
    ColumnHeader(ListView &listView, std::string_view key, std::string_view text, int width,
                 int alignment);
    ColumnHeader(const ColumnHeader &) = delete;
    ColumnHeader &operator=(const ColumnHeader &) = delete;

    int Index() const { return index_; }
    const std::string &Key() const { return key_; }
    const std::string &Text() const { return text_; }
    void setText(std::string_view text) { text_ = text; }
    int Width() const { return width_; }
    void setWidth(int twips) { width_ = twips; }
    /// lvwColumnLeft (0), lvwColumnRight (1) or lvwColumnCenter (2). The first
    /// column is always left aligned; setting it there raises 380.
    int Alignment() const { return alignment_; }
    void setAlignment(int alignment);
    /// Screen position from 1; setting it moves the columns between.
    int Position() const { return position_; }
    void setPosition(int position);
    const std::string &Tag() const { return tag_; }
    void setTag(std::string_view tag) { tag_ = tag; }

private:
    friend class ListView;
    friend class ColumnHeaderCollection;

    ListView *listView_;
    int index_ = 0;
    int position_ = 0;
    std::string key_;
    std::string text_;
    int width_;
    int alignment_;
    std::string tag_;
};

} // namespace forms
