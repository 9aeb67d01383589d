#include "services/clsBaseTools.h"

#include "forms/ComboBox.h"
#include "forms/TextBox.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

#include <algorithm>

namespace BaseServices {

namespace {

constexpr int keyBackspace = 8;

// The text with the characters [start, start + length) replaced by `with`,
// positions in characters of UTF-8 text.
std::string replaceSelection(std::string_view text, int start, int length, char with) {
    const long total = vb::Len(text);
    const long from = std::clamp<long>(start, 0, total);
    const long to = std::clamp<long>(from + std::max(length, 0), from, total);
    return vb::Left(text, from) + with + vb::Mid(text, to + 1);
}

} // namespace

bool acceptsNumericKey(std::string_view text, int selStart, int selLength, int key, int width,
                       int decimals) {
    const bool point = key == '.';
    if (!point && (key < '0' || key > '9')) {
        return false;
    }
    if (point && decimals <= 0) {
        return false;
    }
    const std::string after = replaceSelection(text, selStart, selLength, static_cast<char>(key));
    const std::size_t at = after.find('.');
    if (at != std::string::npos && after.find('.', at + 1) != std::string::npos) {
        return false;
    }
    const long whole = vb::Len(std::string_view(after).substr(0, at));
    const long fraction = at == std::string::npos ? 0 : vb::Len(after) - whole - 1;
    return whole <= width - std::max(decimals, 0) && fraction <= decimals;
}

clsBaseTools::clsBaseTools(const services::Context &) {}

void clsBaseTools::TextValidateNum(const forms::TextBox &txt, int &KeyAscii, std::int16_t intWidth,
                                   std::int16_t intDecimals) {
    if (KeyAscii == keyBackspace) {
        return;
    }
    if (!acceptsNumericKey(txt.Text(), txt.SelStart(), txt.SelLength(), KeyAscii, intWidth,
                           intDecimals)) {
        KeyAscii = 0;
    }
}

void clsBaseTools::selectcomboitembyvalue(forms::ComboBox &cbo, const vb::Variant &value) {
    if (!vb::IsNumeric(value)) {
        return;
    }
    const double wanted = vb::CDbl(value);
    for (int i = 0; i < cbo.ListCount(); ++i) {
        if (cbo.ItemData(i) == wanted) {
            cbo.setListIndex(i);
            return;
        }
    }
}

void clsBaseTools::SelectComboItemByname(forms::ComboBox &cbo, const vb::Variant &text) {
    const std::string wanted = vb::Trim(vb::TextOf(text));
    for (int i = 0; i < cbo.ListCount(); ++i) {
        if (vb::StrComp(vb::Trim(cbo.List(i)), wanted, vb::Compare::Text) == 0) {
            cbo.setListIndex(i);
            return;
        }
    }
}

} // namespace BaseServices
