// frmStockVerification's postings to the location and expiry ledgers, and their reversals.
//
// The module counts by location and by expiry date only where a site turns
// that way of counting on; this configuration keeps it off, so nothing on the
// save paths calls these routines and the hidden grids they read stay empty.
#include "module/entry/frmStockVerification.h"

#include "ado/Recordset.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

#include <cmath>

namespace tqsv2731 {

namespace {

constexpr std::string_view FormName = "frmStockVerification";

/// The item's balance by location in the godown. Arrivals and issues are
/// summed apart and only then together, so that a location with issues and
/// no arrivals shows a negative balance, which the reversal makes good.
std::string locationBalanceSql(const std::string &godown, const std::string &item) {
    return "SELECT locationid, itemid, qty, LoiLocation.lLocationName"
           " FROM "
           "(SELECT LocationId, GodownId, "
           " ItemId, SUM(qty) qty"
           " FROM"
           " (SELECT ladLocationId LocationId, "
           " ladGodownId GodownId, ladItemId ItemId , SUM(ladItemQty) qty"
           " FROM loiLocationArrivalDetails"
           " WHERE ladGodownId = " +
           godown + " AND ladItemId = " + item +
           " AND ladCancel = 0 and ladconfirmed=1"
           " GROUP BY ladLocationId, ladGodownId, ladItemId"
           " UNION ALL"
           " SELECT lidLocationId, lidGodownId, lidItemId, - SUM(lidItemQty)"
           " FROM loiLocationIssueDetails"
           " WHERE lidGodownId = " +
           godown + " AND lidItemId = " + item +
           " AND lidCancel = 0 and lidconfirmed=1"
           " GROUP BY lidLocationId, lidGodownId, lidItemId) a"
           " GROUP BY LocationId, GodownId, ItemId"
           " HAVING SUM(qty) <> 0 ) b,"
           " LOiLocation"
           " WHERE b.LocationId = LOiLocation.lLocationId"
           " AND b.GodownId = loiLocation.lGodownId";
}

/// The item's balance by expiry date in the godown; the expiry rows carry no
/// confirmed flag.
std::string expiryBalanceSql(const std::string &godown, const std::string &item) {
    return "SELECT ExpiryDate, "
           " ItemId, SUM(qty) qty"
           " FROM"
           " (SELECT"
           " eadExpiryDate ExpiryDate, eadgodownid godownid, "
           " eadItemId ItemId , SUM(eadItemQty) Qty"
           " FROM loiExpiryArrivalDetails"
           " WHERE eadgodownid = " +
           godown + " AND eadItemId = " + item +
           " AND eadCancel = 0"
           " GROUP BY eadExpiryDate, eadgodownid, eadItemId"
           " UNION ALL"
           " SELECT eidExpiryDate, eidgodownId, eidItemId, - SUM(eidItemQty)"
           " FROM loiExpiryIssueDetails"
           " WHERE eidgodownId = " +
           godown + " AND eidItemId =  " + item +
           " AND eidCancel = 0"
           " GROUP BY eidExpiryDate, eidGODOWNId, eidItemId) a"
           " GROUP BY ExpiryDate, godownId, ItemId"
           " HAVING Sum(qty) <> 0";
}

/// A packing type id as the grids keep it: blank means none.
vb::Variant packingType(const std::string &text) {
    return vb::Trim(text).empty() ? vb::Variant::null() : vb::Variant(text);
}

/// A line number of the document: the counters are 16-bit, and a document
/// past their range stops with an overflow rather than wrap.
vb::Variant lineNumber(int number) {
    return vb::Variant(vb::CInt(vb::Variant(static_cast<double>(number))));
}

} // namespace

void frmStockVerification::SaveLocationDetails() {
    try {
        std::int16_t intArrivalCount = 0;
        std::int16_t intIssueCount = 0;
        const std::string interfaceId = std::to_string(m_.intInterfaceID);
        const std::string godown = std::to_string(m_.intGodownID);
        const std::string id = std::to_string(m_.lngVerificationId);
        if (m_.strTransactionMode == "E") {
            m_.adocon.Execute("DELETE FROM loiLocationArrivalDetails WHERE ladInterfaceId = " +
                              interfaceId + " AND ladGodownId = " + godown +
                              " AND ladTransId = " + id);
            m_.adocon.Execute("DELETE FROM loiLocationIssueDetails WHERE lidInterfaceId = " +
                              interfaceId + " AND lidGodownId = " + godown +
                              " AND lidTransactionId = " + id);
        }
        ReverseLocationStock(intArrivalCount, intIssueCount);

        ado::Recordset rs;
        rs.Open("SELECT * FROM loiLocationArrivalDetails", m_.adocon, ado::adOpenStatic,
                ado::adLockOptimistic);
        for (int i = 1; i <= flxLocations.Rows() - 1; ++i) {
            // Every value goes as the grid's text, for the database to convert.
            rs.AddNew();
            rs.Fields("ladInterfaceId") = vb::Variant(m_.intInterfaceID);
            rs.Fields("ladGodownId") = vb::Variant(m_.intGodownID);
            rs.Fields("ladTransId") = vb::Variant(m_.lngVerificationId);
            rs.Fields("ladDetailId") = lineNumber(i + intArrivalCount);
            rs.Fields("ladLocationId") = vb::Variant(flxLocations.TextMatrix(i, 3));
            rs.Fields("ladItemId") = vb::Variant(flxLocations.TextMatrix(i, 6));
            rs.Fields("ladItemQty") = vb::Variant(flxLocations.TextMatrix(i, 2));
            rs.Fields("ladPackingTypeId") = packingType(flxLocations.TextMatrix(i, 4));
            rs.Fields("ladPakingQty") = vb::Variant(flxLocations.TextMatrix(i, 5));
            rs.Fields("ladCancel") = vb::Variant(std::int16_t{0});
            rs.Fields("ladconfirmed") = vb::Variant(std::int16_t{1});
            rs.Fields("ladAdjustment") = vb::Variant(std::int16_t{0});
        }
        rs.UpdateBatch();
        rs.Close();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "SaveLocationDetails", e);
    }
}

void frmStockVerification::SaveExpiryDetails() {
    try {
        std::int16_t intArrivalCount = 0;
        std::int16_t intIssueCount = 0;
        const std::string interfaceId = std::to_string(m_.intInterfaceID);
        const std::string godown = std::to_string(m_.intGodownID);
        const std::string id = std::to_string(m_.lngVerificationId);
        if (m_.strTransactionMode == "E") {
            m_.adocon.Execute("DELETE FROM loiexpiryArrivalDetails WHERE eadinterfaceId = " +
                              interfaceId + " AND eadGodownId = " + godown +
                              " AND eadTransactionId = " + id);
            m_.adocon.Execute("DELETE FROM loiexpiryIssueDetails WHERE eidinterfaceId = " +
                              interfaceId + " AND eidGodownId = " + godown +
                              " AND eidTransactionId = " + id);
        }
        ReverseexpiryStock(intArrivalCount, intIssueCount);

        ado::Recordset rs;
        rs.Open("SELECT * FROM loiexpiryArrivalDetails", m_.adocon, ado::adOpenStatic,
                ado::adLockOptimistic);
        for (int i = 1; i <= flxexpiry.Rows() - 1; ++i) {
            // Only a quantity without a date is left out; a row with neither
            // is written as it stands.
            if (flxexpiry.TextMatrix(i, 1).empty() && !flxexpiry.TextMatrix(i, 2).empty()) {
                continue;
            }
            rs.AddNew();
            rs.Fields("eadInterfaceId") = vb::Variant(m_.intInterfaceID);
            rs.Fields("eadGodownId") = vb::Variant(m_.intGodownID);
            rs.Fields("eadTransactionId") = vb::Variant(m_.lngVerificationId);
            rs.Fields("eaddetailid") = lineNumber(i + intArrivalCount);
            rs.Fields("eadexpirydate") = vb::Variant(flxexpiry.TextMatrix(i, 1));
            rs.Fields("eadItemId") = vb::Variant(flxexpiry.TextMatrix(i, 5));
            rs.Fields("eadItemQty") = vb::Variant(vb::Val(flxexpiry.TextMatrix(i, 2)));
            rs.Fields("eadPackingTypeId") = packingType(flxexpiry.TextMatrix(i, 3));
            rs.Fields("eadPackingQty") = vb::Variant(vb::Val(flxexpiry.TextMatrix(i, 4)));
            rs.Fields("eadCancel") = vb::Variant(std::int16_t{0});
            rs.Fields("eadAdjustment") = vb::Variant(std::int16_t{0});
        }
        rs.UpdateBatch();
        rs.Close();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "SaveExpiryDetails", e);
    }
}

void frmStockVerification::ReverseLocationStock(std::int16_t &intArrivalCount,
                                                std::int16_t &intIssueCount) {
    try {
        const std::string godown = std::to_string(m_.intGodownID);
        auto &items = lvwRequest.ListItems();
        for (int i = 1; i <= items.Count(); ++i) {
            const std::int32_t lngItemId = vb::CLng(vb::Variant(items(i).SubItems(8)));
            ado::Recordset rsBalance;
            rsBalance.Open(locationBalanceSql(godown, std::to_string(lngItemId)), m_.adocon,
                           ado::adOpenStatic, ado::adLockReadOnly);
            while (!rsBalance.Eof()) {
                postBalancingRow(rsBalance, "loiLocationArrivalDetails", "loiLocationIssueDetails",
                                 "locationid", flxLocations, i, lngItemId, intArrivalCount,
                                 intIssueCount);
                rsBalance.MoveNext();
            }
            rsBalance.Close();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ReverseLocationStock", e);
    }
}

void frmStockVerification::ReverseexpiryStock(std::int16_t &intArrivalCount,
                                              std::int16_t &intIssueCount) {
    try {
        const std::string godown = std::to_string(m_.intGodownID);
        auto &items = lvwRequest.ListItems();
        for (int i = 1; i <= items.Count(); ++i) {
            const std::int32_t lngItemId = vb::CLng(vb::Variant(items(i).SubItems(8)));
            ado::Recordset rsBalance;
            rsBalance.Open(expiryBalanceSql(godown, std::to_string(lngItemId)), m_.adocon,
                           ado::adOpenStatic, ado::adLockReadOnly);
            while (!rsBalance.Eof()) {
                postBalancingRow(rsBalance, "loiexpiryArrivalDetails", "loiexpiryIssueDetails",
                                 "expirydate", flxexpiry, i, lngItemId, intArrivalCount,
                                 intIssueCount);
                rsBalance.MoveNext();
            }
            rsBalance.Close();
        }
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "ReverseexpiryStock", e);
    }
}

// One balancing row: a positive balance is taken away by an issue, a negative
// one made good by an arrival, each with the absolute quantity. The two
// ledgers of a kind name their columns differently, so the row is written by
// position. Position 10 is the expiry tables' adjustment flag but the
// location tables' confirmed flag: there the row counts in balances and its
// adjustment flag keeps the table's default. The packing type is read from
// column 4 of the grid at the list row's number, whichever grid it is.
void frmStockVerification::postBalancingRow(const ado::Recordset &rsBalance,
                                            const std::string &arrivalTable,
                                            const std::string &issueTable,
                                            const std::string &keyColumn,
                                            const forms::FlexGrid &grid, int listRow,
                                            std::int32_t lngItemId, std::int16_t &intArrivalCount,
                                            std::int16_t &intIssueCount) {
    const double qty = vb::CDbl(rsBalance.Fields("Qty").Value());
    std::string table;
    vb::Variant line;
    if (qty > 0) {
        line = lineNumber(intIssueCount + 1);
        intIssueCount = vb::CInt(line);
        table = issueTable;
    } else {
        line = lineNumber(intArrivalCount + 1);
        intArrivalCount = vb::CInt(line);
        table = arrivalTable;
    }
    ado::Recordset rs;
    rs.Open("SELECT * FROM " + table, m_.adocon, ado::adOpenDynamic, ado::adLockOptimistic);
    rs.AddNew();
    rs.Fields(0) = vb::Variant(m_.intInterfaceID);
    rs.Fields(1) = vb::Variant(m_.intGodownID);
    rs.Fields(2) = vb::Variant(m_.lngVerificationId);
    rs.Fields(3) = line;
    rs.Fields(4) = rsBalance.Fields(keyColumn).Value();
    rs.Fields(5) = vb::Variant(lngItemId);
    rs.Fields(6) = vb::Variant(std::fabs(qty));
    rs.Fields(7) = packingType(grid.TextMatrix(listRow, 4));
    rs.Fields(8) = vb::Variant(std::fabs(qty));
    rs.Fields(9) = vb::Variant(std::int16_t{0});
    rs.Fields(10) = vb::Variant(std::int16_t{1});
    rs.Update();
    rs.Close();
}

void frmStockVerification::SaveTotalStockLocationDetails() {
    try {
        if (m_.strTransactionMode == "E") {
            m_.adocon.Execute("DELETE FROM loiLocationArrivalDetails WHERE ladInterfaceId = " +
                              std::to_string(m_.intInterfaceID) +
                              " AND ladGodownId = " + std::to_string(m_.intGodownID) +
                              " AND ladTransId = " + std::to_string(m_.lngVerificationId));
        }
        // The total count only records what was counted: cancelled rows that
        // move no stock until they are taken up.
        ado::Recordset rs;
        rs.Open("SELECT * FROM loiLocationArrivalDetails", m_.adocon, ado::adOpenStatic,
                ado::adLockOptimistic);
        for (int i = 1; i <= flxLocations.Rows() - 1; ++i) {
            rs.AddNew();
            rs.Fields("ladInterfaceId") = vb::Variant(m_.intInterfaceID);
            rs.Fields("ladGodownId") = vb::Variant(m_.intGodownID);
            rs.Fields("ladTransId") = vb::Variant(m_.lngVerificationId);
            rs.Fields("ladDetailId") = lineNumber(i);
            rs.Fields("ladLocationId") = vb::Variant(flxLocations.TextMatrix(i, 3));
            rs.Fields("ladItemId") = vb::Variant(flxLocations.TextMatrix(i, 6));
            rs.Fields("ladItemQty") = vb::Variant(flxLocations.TextMatrix(i, 2));
            rs.Fields("ladPackingTypeId") = packingType(flxLocations.TextMatrix(i, 4));
            rs.Fields("ladPakingQty") = vb::Variant(flxLocations.TextMatrix(i, 5));
            rs.Fields("ladCancel") = vb::Variant(std::int16_t{1});
            rs.Fields("ladAdjustment") = vb::Variant(std::int16_t{0});
        }
        rs.UpdateBatch();
        rs.Close();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "SaveTotalStockLocationDetails", e);
    }
}

void frmStockVerification::SaveTotalStockExpiryDetails() {
    try {
        if (m_.strTransactionMode == "E") {
            m_.adocon.Execute("DELETE FROM loiExpiryArrivalDetails WHERE eadInterfaceId = " +
                              std::to_string(m_.intInterfaceID) +
                              " AND eadGodownId = " + std::to_string(m_.intGodownID) +
                              " AND eadTransactionId = " + std::to_string(m_.lngVerificationId));
        }
        ado::Recordset rs;
        rs.Open("SELECT * FROM loiExpiryArrivalDetails", m_.adocon, ado::adOpenStatic,
                ado::adLockOptimistic);
        for (int i = 1; i <= flxexpiry.Rows() - 1; ++i) {
            rs.AddNew();
            rs.Fields("eadInterfaceId") = vb::Variant(m_.intInterfaceID);
            rs.Fields("eadGodownId") = vb::Variant(m_.intGodownID);
            rs.Fields("eadTransactionId") = vb::Variant(m_.lngVerificationId);
            rs.Fields("eadDetailId") = lineNumber(i);
            rs.Fields("eadExpiryDate") = vb::Variant(flxexpiry.TextMatrix(i, 1));
            rs.Fields("eadItemId") = vb::Variant(flxexpiry.TextMatrix(i, 5));
            rs.Fields("eadItemQty") = vb::Variant(flxexpiry.TextMatrix(i, 2));
            rs.Fields("eadPackingTypeId") = packingType(flxexpiry.TextMatrix(i, 3));
            rs.Fields("eadPackingQty") = vb::Variant(flxexpiry.TextMatrix(i, 4));
            rs.Fields("eadCancel") = vb::Variant(std::int16_t{1});
            rs.Fields("eadAdjustment") = vb::Variant(std::int16_t{0});
        }
        rs.UpdateBatch();
        rs.Close();
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "SaveTotalStockExpiryDetails", e);
    }
}

} // namespace tqsv2731
