// Val, CInt and CLng on any text: a number or the old runtime's error, nothing else.
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Variant.h"

#include <cstddef>
#include <cstdint>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string text(reinterpret_cast<const char *>(data), size);
    const double number = vb::Val(text);
    const vb::Variant asText(text);
    const vb::Variant asNumber(number);
    for (const vb::Variant *value : {&asText, &asNumber}) {
        try {
            vb::CInt(*value);
        } catch (const vb::Error &) {
            // Overflow (6) or type mismatch (13), as the old runtime raised them.
        }
        try {
            vb::CLng(*value);
        } catch (const vb::Error &) {
        }
    }
    return 0;
}
