// What the picture of a picture-only button shows on a terminal, which has no bitmaps.
#pragma once

#include <string_view>

namespace forms {
class CommandButton;
}

namespace tui {

/// The text that stands for the picture of a button that has no caption of
/// its own: "|<", "<", ">", ">|" for the buttons that step to the first,
/// previous, next and last row. The pictures are known by the buttons that
/// carry them; a button not in the table has none (and draws blank, as a
/// missing picture did).
std::string_view pictureGlyph(const forms::CommandButton &button);

} // namespace tui
