// report::writePdf: a laid-out report as a PDF file, through cairo and pango.
#pragma once

#include "report/Document.h"

#include <filesystem>

namespace report {

/// Writes the document as a PDF, one page per page of the document, in a
/// fixed-width font embedded in the file: A4, upright when the lines are up
/// to 100 characters wide, else on its side, the font sized so that a whole
/// line and a whole page fit. Raises vb::Error 75 naming the file when it
/// cannot be written.
void writePdf(const Document &document, const std::filesystem::path &file);

} // namespace report
