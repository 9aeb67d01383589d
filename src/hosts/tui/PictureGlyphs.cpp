#include "hosts/tui/PictureGlyphs.h"

#include "forms/CommandButton.h"

#include "vb/Strings.h"

#include <array>
#include <utility>

namespace tui {

namespace {

/// The picture buttons of the application's forms, by name (letter case as
/// the forms vary it), and what each picture shows.
constexpr std::array<std::pair<std::string_view, std::string_view>, 4> pictures{{
    {"CMDFIRST", "|<"},
    {"CMDPREV", "<"},
    {"CMDNEXT", ">"},
    {"CMDLAST", ">|"},
}};

} // namespace

std::string_view pictureGlyph(const forms::CommandButton &button) {
    if (!button.Caption().empty()) {
        return {};
    }
    std::string name = vb::UCase(button.Name());
    for (const auto &[key, glyph] : pictures) {
        if (name == key) {
            return glyph;
        }
    }
    return {};
}

} // namespace tui
