#include "forms/ColumnHeader.h"

#include "forms/Errors.h"
#include "forms/ListView.h"

namespace forms {

ColumnHeader::ColumnHeader(ListView &listView, std::string_view key, std::string_view text,
                           int width, int alignment)
    : listView_(&listView), key_(key), text_(text), width_(width), alignment_(alignment) {}

void ColumnHeader::setAlignment(int alignment) {
    if (alignment < lvwColumnLeft || alignment > lvwColumnCenter ||
        (index_ == 1 && alignment != lvwColumnLeft)) {
        throw errors::invalidPropertyValue();
    }
    alignment_ = alignment;
}

void ColumnHeader::setPosition(int position) {
    if (position < 1 || position > listView_->ColumnHeaders().Count()) {
        throw errors::invalidPropertyValue();
    }
    listView_->ColumnHeaders().movePosition(*this, position);
}

} // namespace forms
