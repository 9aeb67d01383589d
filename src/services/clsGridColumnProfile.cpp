#include "services/clsGridColumnProfile.h"

#include "ado/Recordset.h"
#include "forms/FlexGrid.h"
#include "forms/Form.h"
#include "vb/Conversion.h"

namespace GridColumnProfiles {

clsGridColumnProfile::clsGridColumnProfile(const services::Context &) {}

std::string profileName(const forms::FlexGrid &grid) {
    return grid.form().Name() + "." + grid.qualifiedName();
}

void clsGridColumnProfile::fnGridSettings(std::int16_t intUserID, std::int16_t intCompanyID,
                                          forms::FlexGrid &grid, ado::Connection &adocon) {
    ado::Recordset rs = adocon.Execute(
        "select ColumnIndex, ColumnWidth from aGridColumnProfile where UserID = " +
        std::to_string(intUserID) + " and CompanyID = " + std::to_string(intCompanyID) +
        " and GridName = '" + profileName(grid) + "' order by ColumnIndex");
    while (!rs.Eof()) {
        const std::int32_t column = vb::CLng(rs.Fields(0).Value());
        if (column >= 0 && column < grid.Cols()) {
            grid.setColWidth(column, vb::CLng(rs.Fields(1).Value()));
        }
        rs.MoveNext();
    }
    rs.Close();
}

} // namespace GridColumnProfiles
