// Val, CInt and CLng on any text: a number or the old runtime's error, nothing else.
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/Variant.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

/// CInt and CLng of a value; overflow (6) and type mismatch (13) are their answers to
/// what does not fit or is no number.
void narrow(const vb::Variant &value) {
    try {
        vb::CInt(value);
    } catch (const vb::Error &) {
    }
    try {
        vb::CLng(value);
    } catch (const vb::Error &) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string text(reinterpret_cast<const char *>(data), size);
    narrow(vb::Variant(text));
    try {
        // Val reads what it can and raises overflow (6) for a number past Double's range.
        narrow(vb::Variant(vb::Val(text)));
    } catch (const vb::Error &) {
    }
    return 0;
}
