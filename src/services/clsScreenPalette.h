// ScreenPalette::clsScreenPalette: colours every form from the company's palette.
#pragma once

#include "ado/Connection.h"
#include "services/Context.h"
#include "services/Palette.h"
#include "services/ServiceObject.h"

#include <cstdint>
#include <string_view>

namespace forms {
class Form;
}

namespace ScreenPalette {

/// The colour service: one palette per company (the table aScreenPalette),
/// the system colours for a company without one.
class clsScreenPalette : public services::ServiceObject {
public:
    static constexpr std::string_view CreationName = "ScreenPalette.clsScreenPalette";

    /// Reads the palette of the context's company on the context's connection.
    explicit clsScreenPalette(const services::Context &context);
    std::string_view creationName() const override { return CreationName; }

    /// The database of the palettes; the session's connection unless set.
    ado::Connection adocon;
    /// The company whose palette colours the forms.
    std::int32_t intCompanyID;

    /// Colours the form and its controls (services::applyPalette) with the
    /// company's palette, read afresh, or the default palette when the company
    /// has none. A failing read raises, and the form keeps its colours.
    void ApplyScreenPalette(forms::Form &frm);

    /// The company's palette, or the default one when it has none.
    services::Palette companyPalette() const;
};

} // namespace ScreenPalette
