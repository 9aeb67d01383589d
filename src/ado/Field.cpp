#include "ado/Field.h"

#include "ado/RecordsetState.h"

namespace ado {

const std::string &Field::Name() const {
    rs_->checkIndex(index_);
    return rs_->fields[static_cast<std::size_t>(index_)].name;
}

vb::Variant Field::Value() const {
    return rs_->value(index_);
}

void Field::Value(const vb::Variant &value) const {
    rs_->setValue(index_, value);
}

} // namespace ado
