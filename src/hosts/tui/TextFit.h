// Fitting text into cells: widths, alignment and word wrapping.
#pragma once

#include "hosts/tui/Cell.h"

#include <string>
#include <string_view>
#include <vector>

namespace tui {

class Canvas;

/// How text stands in a field: the old platform's left (0), right (1) and centre (2).
enum class Align { Left, Right, Center };

/// Columns the text takes: one per character.
int columnsOf(std::string_view utf8);

/// Writes text into a field of `width` cells at (x, y): aligned within it,
/// cut at the right when it is longer. The rest of the field is not touched.
void drawAligned(Canvas &canvas, int x, int y, int width, std::string_view utf8, Align align,
                 Style style);

/// A grid or list cell drawn in a column `width` cells wide whose last cell
/// holds the "│" between columns: text goes in the cells before it. A number
/// too long for them may take the separator's cell as well, so that no digit
/// is lost; a number longer still is cut and ends in "…", so that the cut
/// shows. Other text is cut at the column's edge, as it always was.
void drawCell(Canvas &canvas, int x, int y, int width, std::string_view utf8, Align align,
              Style style);

/// Splits text into lines of at most `width` characters: at line breaks
/// (CR LF, CR or LF), then between words, cutting words longer than a line.
std::vector<std::string> wrapText(std::string_view utf8, int width);

} // namespace tui
