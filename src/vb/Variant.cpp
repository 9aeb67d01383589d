#include "vb/Variant.h"

namespace vb {

namespace {
bool fitsLong(long long v) {
    return v >= INT32_MIN && v <= INT32_MAX;
}
} // namespace

Variant::Variant(long v) : Variant(static_cast<long long>(v)) {}

Variant::Variant(long long v) {
    if (fitsLong(v))
        value_ = static_cast<std::int32_t>(v);
    else
        value_ = static_cast<double>(v);
}

VarType Variant::type() const {
    switch (value_.index()) {
    case 0:
        return VarType::Empty;
    case 1:
        return VarType::Null;
    case 2:
        return VarType::Boolean;
    case 3:
        return VarType::Integer;
    case 4:
        return VarType::Long;
    case 5:
        return VarType::Double;
    case 6:
        return VarType::Date;
    default:
        return VarType::String;
    }
}

bool Variant::isNumber() const {
    return std::holds_alternative<std::int16_t>(value_) ||
           std::holds_alternative<std::int32_t>(value_) || std::holds_alternative<double>(value_);
}

double Variant::number() const {
    switch (type()) {
    case VarType::Boolean:
        return asBoolean() ? -1.0 : 0.0;
    case VarType::Integer:
        return asInteger();
    case VarType::Long:
        return asLong();
    case VarType::Double:
        return asDouble();
    case VarType::Date:
        return asDate().serial;
    default:
        return 0.0;
    }
}

} // namespace vb
