#include "ado/Fields.h"

#include "ado/RecordsetState.h"

namespace ado {

int Fields::Count() const {
    rs_->requireOpen();
    return static_cast<int>(rs_->fields.size());
}

Field Fields::Item(int index) const {
    rs_->checkIndex(index);
    return Field(rs_, index);
}

Field Fields::Item(std::string_view name) const {
    return Field(rs_, rs_->indexOf(name));
}

} // namespace ado
