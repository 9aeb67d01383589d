// BaseServices::clsBaseTools: the numeric key filter and the combo pickers the forms share.
#pragma once

#include "services/Context.h"
#include "services/ServiceObject.h"
#include "vb/Variant.h"

#include <cstdint>
#include <string_view>

namespace forms {
class ComboBox;
class TextBox;
} // namespace forms

namespace BaseServices {

/// The tool service. It has no state.
class clsBaseTools : public services::ServiceObject {
public:
    static constexpr std::string_view CreationName = "BaseServices.clsBaseTools";

    explicit clsBaseTools(const services::Context &context);
    std::string_view creationName() const override { return CreationName; }

    /// The key filter of the quantity and barcode boxes, called from KeyPress
    /// before the box takes the key. Backspace (8) passes. A digit or a point
    /// passes when the text the box would then hold (the selection replaced by
    /// the key, as typing replaces it) is a number of at most `intWidth` digits
    /// with at most `intDecimals` of them after one point: so at most
    /// `intWidth - intDecimals` before it. A point needs `intDecimals` above 0.
    /// Every other key (a sign, a letter, Enter, any other control key) comes
    /// back as 0.
    void TextValidateNum(const forms::TextBox &txt, int &KeyAscii, std::int16_t intWidth,
                         std::int16_t intDecimals = 0);

    /// Makes current (ListIndex, which raises Click) the first item whose item
    /// data equals the value, read as a number. No such item, or a value that
    /// is no number, leaves the combo as it is.
    void selectcomboitembyvalue(forms::ComboBox &cbo, const vb::Variant &value);

    /// Makes current the first item with that text, compared ignoring letter
    /// case and surrounding blanks (the text comes from the database, which
    /// compares so). No such item leaves the combo as it is.
    void SelectComboItemByname(forms::ComboBox &cbo, const vb::Variant &text);
};

/// The rule of TextValidateNum on plain values: whether `key` typed over the
/// selection [selStart, selStart + selLength) of `text` (positions in
/// characters) keeps the text a number of the width and decimals.
bool acceptsNumericKey(std::string_view text, int selStart, int selLength, int key, int width,
                       int decimals);

} // namespace BaseServices
