// ado::Fields: the fields of a recordset, as the ADODB.Fields collection was.
#pragma once

#include "ado/Field.h"

#include <memory>
#include <string_view>

namespace ado {

/// The fields of an open recordset, by position from 0 or by name (letter
/// case ignored). A field that is not there raises 3265.
class Fields {
public:
    int Count() const;
    Field Item(int index) const;
    Field Item(std::string_view name) const;
    Field operator()(int index) const { return Item(index); }
    Field operator()(std::string_view name) const { return Item(name); }
    Field operator()(const char *name) const { return Item(std::string_view(name)); }

private:
    friend class Recordset;
    explicit Fields(std::shared_ptr<RecordsetState> rs) : rs_(std::move(rs)) {}

    std::shared_ptr<RecordsetState> rs_;
};

} // namespace ado
