// Format on any value and pattern. The input is: one byte choosing the kind of the value,
// the value's text, a NUL, the pattern.
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Format.h"
#include "vb/Variant.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

/// The value as the module hands it to Format: text, a number, or a date.
vb::Variant valueOf(std::uint8_t kind, const std::string &text) {
    switch (kind % 4) {
    case 0:
        return vb::Variant(text);
    case 1:
        return vb::Variant(vb::Val(text));
    case 2:
        return vb::Variant(vb::CLng(vb::Variant(vb::Val(text))));
    default:
        return vb::Variant(vb::CDate(vb::Variant(text)));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::string_view rest(reinterpret_cast<const char *>(data) + 1, size - 1);
    const std::size_t nul = rest.find('\0');
    const std::string text(rest.substr(0, nul));
    const std::string_view pattern = nul == std::string_view::npos ? "" : rest.substr(nul + 1);
    try {
        const vb::Variant value = valueOf(data[0], text);
        vb::Format(value, pattern);
        vb::Format(value);
    } catch (const vb::Error &) {
        // Type mismatch for text that is no date, overflow of Val or CLng: the old
        // runtime's refusals.
    }
    return 0;
}
