// UTF-8 text as a sequence of characters, for the string functions that count characters.
#pragma once

#include <string>
#include <string_view>

namespace vb::utf8 {

/// The characters of a UTF-8 text. A byte that is not part of a well-formed
/// sequence becomes one character of its own (U+DC80 to U+DCFF), so that any
/// byte string survives decode and encode unchanged.
std::u32string decode(std::string_view text);
/// How many characters decode would give, without making them.
std::size_t count(std::string_view text);
/// Back to UTF-8; the stand-ins for stray bytes become those bytes again.
std::string encode(std::u32string_view chars);

/// Upper and lower case of one character: ASCII, Latin-1, Latin Extended-A,
/// Greek and Cyrillic. Characters without a one-to-one counterpart stay.
char32_t toUpper(char32_t c);
char32_t toLower(char32_t c);

} // namespace vb::utf8
