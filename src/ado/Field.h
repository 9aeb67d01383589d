// ado::Field: one field of a recordset's current row, as ADODB.Field was.
#pragma once

#include "vb/Variant.h"

#include <memory>
#include <string>

namespace ado {

struct RecordsetState;

/// A field of a recordset: it reads and writes the value of its column in
/// the current row (or in the row being added). Reading at EOF or BOF raises
/// 3021; writing on a read-only recordset raises 3251. The value is written
/// to the database by Update. Assigning a Field assigns its value, as the
/// default member of the old object did: rs.Fields("a") = other.Fields("b").
class Field {
public:
    const std::string &Name() const;
    vb::Variant Value() const;
    void Value(const vb::Variant &value) const;

    Field(const Field &) = default;
    Field &operator=(const vb::Variant &value) {
        Value(value);
        return *this;
    }
    Field &operator=(const Field &other) {
        Value(other.Value());
        return *this;
    }
    operator vb::Variant() const { return Value(); }

private:
    friend class Recordset;
    friend class Fields;
    Field(std::shared_ptr<RecordsetState> rs, int index) : rs_(std::move(rs)), index_(index) {}

    std::shared_ptr<RecordsetState> rs_;
    int index_;
};

} // namespace ado
