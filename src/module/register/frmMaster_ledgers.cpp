// frmMaster: the two fills of the entry form's hidden location and expiry grids.
//
// Nothing calls them: the location and expiry panels stay switched off, so the
// entry form's hidden grids stay empty on every live path. They are kept so
// that the ledger postings of the entry form find their rows the day a site
// shows the panels; each grid row is laid out as those postings read it.
#include "module/register/frmMaster.h"

#include "ado/Recordset.h"
#include "module/entry/frmStockVerification.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "vb/Conversion.h"

#include <string>

namespace tqsv2731 {

void frmMaster::FillEntryExpiryGrid() {
    ado::Recordset rs;
    try {
        std::string strSql =
            "SELECT Arrival.* FROM loiexpiryArrivalDetails Arrival WHERE eadInterfaceId = " +
            std::to_string(m_.intInterfaceID) + " AND eadGodownId = " +
            std::to_string(m_.intGodownID) +
            " AND eadTransactionId = " + std::to_string(m_.lngVerificationId);
        // A total count keeps its cancelled and adjusting rows: the reversal of
        // a confirmed count must see everything it posted.
        if (m_.intInterfaceID != 1013) {
            strSql += " AND eadCancel <> 1 AND eadAdjustment <> 1";
        }
        rs.Open(strSql, m_.adocon, ado::adOpenForwardOnly, ado::adLockReadOnly);
        forms::FlexGrid &grid = m_.frmStockVerification().flxexpiry;
        while (!rs.Eof()) {
            grid.AddItem("");
            const int row = grid.Rows() - 1;
            grid.setTextMatrix(row, 1, vb::TextOf(rs.Fields("eadexpirydate").Value()));
            grid.setTextMatrix(row, 2, vb::TextOf(rs.Fields("eadItemQty").Value()));
            grid.setTextMatrix(row, 3, vb::TextOf(rs.Fields("eadPackingTypeId").Value()));
            grid.setTextMatrix(row, 4, vb::TextOf(rs.Fields("eadPackingQty").Value()));
            grid.setTextMatrix(row, 5, vb::TextOf(rs.Fields("eadItemId").Value()));
            rs.MoveNext();
        }
        rs.Close();
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "FillEntryExpiryGrid", e);
    }
}

void frmMaster::FillEntryLocationGrid() {
    ado::Recordset rs;
    try {
        std::string strSql =
            "SELECT Arrival.*, Location.lLocationName LocationName FROM "
            "loiLocationArrivalDetails Arrival LEFT OUTER JOIN loiLocation Location ON "
            "Arrival.ladLocationId = Location.lLocationId AND Arrival.ladGodownID = "
            "Location.lGodownId WHERE ladInterfaceId = " +
            std::to_string(m_.intInterfaceID) + " AND ladGodownId = " +
            std::to_string(m_.intGodownID) + " AND ladTransId = " +
            std::to_string(m_.lngVerificationId);
        strSql += " AND ladCancel <> 1 and ladconfirmed=1 AND ladAdjustment <> 1";
        rs.Open(strSql, m_.adocon, ado::adOpenForwardOnly, ado::adLockReadOnly);
        forms::FlexGrid &grid = m_.frmStockVerification().flxLocations;
        while (!rs.Eof()) {
            grid.AddItem("");
            const int row = grid.Rows() - 1;
            grid.setTextMatrix(row, 1, vb::TextOf(rs.Fields("LocationName").Value()));
            grid.setTextMatrix(row, 2, vb::TextOf(rs.Fields("ladItemQty").Value()));
            grid.setTextMatrix(row, 3, vb::TextOf(rs.Fields("ladLocationId").Value()));
            grid.setTextMatrix(row, 4, vb::TextOf(rs.Fields("ladPackingTypeId").Value()));
            grid.setTextMatrix(row, 5, vb::TextOf(rs.Fields("ladPakingQty").Value()));
            grid.setTextMatrix(row, 6, vb::TextOf(rs.Fields("ladItemId").Value()));
            rs.MoveNext();
        }
        rs.Close();
    } catch (const vb::Error &e) {
        TrackError(m_, "frmMaster", "FillEntryLocationGrid", e);
    }
}

} // namespace tqsv2731
