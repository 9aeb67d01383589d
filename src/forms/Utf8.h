// Character positions in UTF-8 text, for the controls that edit text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace forms::utf8 {

/// Number of characters (code points) in the text.
int length(std::string_view text);
/// Byte offset of the character at `index` (the text's size past the end).
std::size_t offsetOf(std::string_view text, int index);
/// `count` characters from character `start`.
std::string substr(std::string_view text, int start, int count);
/// The UTF-8 form of a code point.
std::string encode(char32_t c);
/// The code points of a text, for typing it key by key.
std::u32string decode(std::string_view text);

} // namespace forms::utf8
