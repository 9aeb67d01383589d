#include "services/clsScreenPalette.h"

#include "ado/Recordset.h"
#include "vb/Conversion.h"

#include <cmath>
#include <string>

namespace ScreenPalette {

namespace {

// Colours are kept as the database's 32-bit integers, so a system colour
// (top bit set) may come back negative.
forms::Color colorOf(const ado::Recordset &rs, const char *column) {
    const double value = vb::CDbl(rs.Fields(column).Value());
    const auto whole = static_cast<long long>(std::llround(value));
    return static_cast<forms::Color>(static_cast<unsigned long long>(whole) & 0xFFFFFFFFull);
}

} // namespace

clsScreenPalette::clsScreenPalette(const services::Context &context)
    : adocon(context.connection), intCompanyID(context.companyId) {}

services::Palette clsScreenPalette::companyPalette() const {
    ado::Recordset rs = adocon.Execute(
        "select FormBackColor, FormForeColor, ControlBackColor, ControlForeColor, "
        "ButtonBackColor, GridBackColor, GridForeColor from aScreenPalette where CompanyID = " +
        std::to_string(intCompanyID));
    services::Palette palette = services::defaultPalette;
    if (!rs.Eof()) {
        palette.formBack = colorOf(rs, "FormBackColor");
        palette.formFore = colorOf(rs, "FormForeColor");
        palette.controlBack = colorOf(rs, "ControlBackColor");
        palette.controlFore = colorOf(rs, "ControlForeColor");
        palette.buttonBack = colorOf(rs, "ButtonBackColor");
        palette.gridBack = colorOf(rs, "GridBackColor");
        palette.gridFore = colorOf(rs, "GridForeColor");
    }
    rs.Close();
    return palette;
}

void clsScreenPalette::ApplyScreenPalette(forms::Form &frm) {
    services::applyPalette(frm, companyPalette());
}

} // namespace ScreenPalette
