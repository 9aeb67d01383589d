#include "ado/sql/FittedText.h"

#include <string_view>

namespace ado::sql {

namespace {
// Characters, not bytes: a UTF-8 character starts at every byte that is no continuation.
std::size_t characters(std::string_view text) {
    std::size_t n = 0;
    for (char c : text)
        n += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return n;
}
} // namespace

std::optional<std::string> fittedText(std::string text, const ColumnType &type) {
    if (type.length <= 0)
        return text;
    const auto length = static_cast<std::size_t>(type.length);
    if (characters(text) <= length)
        return text;
    std::size_t kept = text.find_last_not_of(' ');
    std::string_view core =
        kept == std::string::npos ? std::string_view() : std::string_view(text).substr(0, kept + 1);
    if (characters(core) > length)
        return std::nullopt;
    text.resize(core.size() + (length - characters(core)));
    return text;
}

} // namespace ado::sql
