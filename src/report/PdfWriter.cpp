#include "report/PdfWriter.h"

#include "vb/Error.h"

#include <algorithm>
#include <cairo-pdf.h>
#include <memory>
#include <pango/pangocairo.h>

namespace report {

namespace {

constexpr double a4Short = 595.0; // points
constexpr double a4Long = 842.0;
constexpr double margin = 36.0;

struct SurfaceDeleter {
    void operator()(cairo_surface_t *s) const { cairo_surface_destroy(s); }
};
struct ContextDeleter {
    void operator()(cairo_t *c) const { cairo_destroy(c); }
};
struct FontDeleter {
    void operator()(PangoFontDescription *f) const { pango_font_description_free(f); }
};
struct LayoutDeleter {
    void operator()(PangoLayout *l) const { g_object_unref(l); }
};

[[noreturn]] void cannotWrite(const std::filesystem::path &file, const char *why) {
    throw vb::Error(vb::err::PathFileAccessError, "report",
                    "Path/File access error: cannot write the PDF " + file.string() + " (" + why +
                        ")");
}

} // namespace

void writePdf(const Document &document, const std::filesystem::path &file) {
    const bool upright = document.width <= 100;
    const double pageWidth = upright ? a4Short : a4Long;
    const double pageHeight = upright ? a4Long : a4Short;

    std::unique_ptr<cairo_surface_t, SurfaceDeleter> surface(
        cairo_pdf_surface_create(file.c_str(), pageWidth, pageHeight));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        cannotWrite(file, cairo_status_to_string(cairo_surface_status(surface.get())));
    }
    cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_TITLE,
                                   document.title.c_str());
    std::unique_ptr<cairo_t, ContextDeleter> cr(cairo_create(surface.get()));

    // A monospaced character is about 0.6 of the font size wide; the lines of
    // a page are 1.2 of it apart. The smaller of the two fits both ways.
    const double byWidth = (pageWidth - 2 * margin) / (0.602 * std::max(document.width, 1));
    const double byHeight = (pageHeight - 2 * margin) / (1.2 * std::max(document.linesPerPage, 1));
    const double size = std::min({byWidth, byHeight, 11.0});

    std::unique_ptr<PangoFontDescription, FontDeleter> font(
        pango_font_description_from_string("DejaVu Sans Mono"));
    pango_font_description_set_absolute_size(font.get(), size * PANGO_SCALE);
    std::unique_ptr<PangoLayout, LayoutDeleter> layout(pango_cairo_create_layout(cr.get()));
    pango_layout_set_font_description(layout.get(), font.get());

    for (const auto &page : document.pages) {
        double y = margin;
        for (const std::string &line : page) {
            if (!line.empty()) {
                cairo_move_to(cr.get(), margin, y);
                pango_layout_set_text(layout.get(), line.c_str(), static_cast<int>(line.size()));
                pango_cairo_show_layout(cr.get(), layout.get());
            }
            y += size * 1.2;
        }
        cairo_show_page(cr.get());
    }
    cr.reset();
    cairo_surface_finish(surface.get());
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS) {
        cannotWrite(file, cairo_status_to_string(cairo_surface_status(surface.get())));
    }
}

} // namespace report
