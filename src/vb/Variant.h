// vb::Variant: a value that carries its own kind, as the old language's Variant did.
#pragma once

#include "vb/Date.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace vb {

/// The kinds a Variant can hold, numbered as the old VarType function numbered them.
enum class VarType : int {
    Empty = 0,
    Null = 1,
    Integer = 2, // 16-bit
    Long = 3,    // 32-bit
    Double = 5,
    Date = 7,
    String = 8,
    Boolean = 11,
};

/// A value with its kind: Empty (never assigned), Null (no value, as from a
/// database), Boolean, 16- and 32-bit integers, Double, Date or String (UTF-8).
/// Conversions between kinds live in vb/Conversion.h and follow the old rules.
class Variant {
public:
    Variant() = default; // Empty
    Variant(bool v) : value_(v) {}
    Variant(std::int16_t v) : value_(v) {}
    Variant(std::int32_t v) : value_(v) {}
    /// A wider integer (a length, a count) is a Long when it fits, else a Double,
    /// as the old language had no integer kind wider than 32 bits.
    Variant(long v);
    Variant(long long v);
    Variant(double v) : value_(v) {}
    Variant(Date v) : value_(v) {}
    // Apart for lvalues, so that a text read from a control is copied once, not twice.
    Variant(const std::string &v) : value_(v) {}
    Variant(std::string &&v) : value_(std::move(v)) {}
    Variant(std::string_view v) : value_(std::string(v)) {}
    Variant(const char *v) : value_(std::string(v)) {}

    static Variant null() {
        Variant v;
        v.value_ = NullTag{};
        return v;
    }

    VarType type() const;
    bool isEmpty() const { return std::holds_alternative<std::monostate>(value_); }
    bool isNull() const { return std::holds_alternative<NullTag>(value_); }
    bool isString() const { return std::holds_alternative<std::string>(value_); }
    bool isDate() const { return std::holds_alternative<Date>(value_); }
    bool isBoolean() const { return std::holds_alternative<bool>(value_); }
    /// True for Integer, Long and Double (the numeric kinds; Boolean is not one here).
    bool isNumber() const;

    // Raw access to the held value; the kind must match (checked with type()).
    bool asBoolean() const { return std::get<bool>(value_); }
    std::int16_t asInteger() const { return std::get<std::int16_t>(value_); }
    std::int32_t asLong() const { return std::get<std::int32_t>(value_); }
    double asDouble() const { return std::get<double>(value_); }
    Date asDate() const { return std::get<Date>(value_); }
    const std::string &asString() const { return std::get<std::string>(value_); }

    /// The numeric value of a numeric or Boolean kind (true is -1).
    double number() const;

    /// Same kind and same value (Null equals Null here: this is identity, not
    /// the language's three-valued comparison).
    friend bool operator==(const Variant &a, const Variant &b) { return a.value_ == b.value_; }

private:
    struct NullTag {
        friend bool operator==(NullTag, NullTag) { return true; }
    };
    std::variant<std::monostate, NullTag, bool, std::int16_t, std::int32_t, double, Date,
                 std::string>
        value_;
};

} // namespace vb
