// GridColumnProfiles::clsGridColumnProfile: a user's own column widths for a grid.
#pragma once

#include "ado/Connection.h"
#include "services/Context.h"
#include "services/ServiceObject.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace forms {
class FlexGrid;
}

namespace GridColumnProfiles {

/// The grid profile service: the column widths a user keeps for a grid of a
/// form, per company (the table aGridColumnProfile, one row per column, the
/// grid named "{form}.{grid}", as "frmMaster.flexMaster").
class clsGridColumnProfile : public services::ServiceObject {
public:
    static constexpr std::string_view CreationName = "GridColumnProfiles.clsGridColumnProfile";

    explicit clsGridColumnProfile(const services::Context &context);
    std::string_view creationName() const override { return CreationName; }

    /// Sets the saved widths of the user's profile on the grid, after the
    /// module has set its own, so the saved ones have the last word. Columns
    /// without a saved width keep theirs; saved columns the grid no longer has
    /// (its layout changed since) are passed over. The connection is only read
    /// and handed back as it came.
    void fnGridSettings(std::int16_t intUserID, std::int16_t intCompanyID, forms::FlexGrid &grid,
                        ado::Connection &adocon);
};

/// The name a grid's profile is kept under: "{form name}.{grid name}".
std::string profileName(const forms::FlexGrid &grid);

} // namespace GridColumnProfiles
