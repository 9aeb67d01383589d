// ado::Parameter: one parameter of a command, as ADODB.Parameter was.
#pragma once

#include "ado/Constants.h"
#include "vb/Variant.h"

#include <string>

namespace ado {

/// A parameter: its name and declared type as the provider describes them,
/// its direction (adParamInput, adParamReturnValue...) and its value.
/// Assigning a value to it sets Value, as the default member did.
class Parameter {
public:
    Parameter() = default;
    Parameter(std::string name, std::string typeName, int direction,
              vb::Variant value = vb::Variant())
        : name_(std::move(name)), typeName_(std::move(typeName)), direction_(direction),
          value_(std::move(value)) {}

    const std::string &Name() const { return name_; }
    /// The type as declared by the procedure: "int", "varchar(1)".
    const std::string &TypeName() const { return typeName_; }
    int Direction() const { return direction_; }
    const vb::Variant &Value() const { return value_; }
    void Value(vb::Variant value) { value_ = std::move(value); }

    Parameter &operator=(const vb::Variant &value) {
        value_ = value;
        return *this;
    }
    operator vb::Variant() const { return value_; }

private:
    std::string name_;
    std::string typeName_;
    int direction_ = adParamInput;
    vb::Variant value_;
};

} // namespace ado
