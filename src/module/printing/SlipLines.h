// The lines of the slip's body that PrintBill and PrintBillOld share: headings, item rows, totals.
#pragma once

#include <cstdint>
#include <string>

namespace ado {
class Recordset;
}

namespace tqsv2731 {

class frmMaster;

/// What shapes the body of one slip, from the settings and the interface.
struct SlipColumns {
    std::int16_t codeWidth = 0;
    std::int16_t showItemCode = 0;
    std::int16_t showCost = 0;
    std::int16_t showTotalQty = 0;
    /// Interface 1013 has no bad stock columns.
    bool badStock = true;
    /// PrintBillOld has no unit column.
    bool unit = true;
};

/// The column headings, each piece joined directly to the one before.
std::string SlipHeadings(frmMaster &form, const SlipColumns &c);

/// The row of the recordset's current item.
std::string SlipRow(frmMaster &form, const SlipColumns &c, std::int16_t serial,
                    const ado::Recordset &rs);

/// Writes the totals and their empty line to the slip's channel, as the
/// settings ask (nothing when neither costs nor quantities are totalled).
/// The offsets are fixed: they do not follow the columns of the rows.
void WriteSlipTotals(frmMaster &form, const SlipColumns &c, double before, double after,
                     double cost);

} // namespace tqsv2731
