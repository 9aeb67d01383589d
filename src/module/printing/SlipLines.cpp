#include "module/printing/SlipLines.h"

#include "ado/Recordset.h"
#include "module/printing/SlipSettings.h"
#include "module/register/frmMaster.h"
#include "vb/Conversion.h"
#include "vb/FileChannels.h"
#include "vb/Format.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

constexpr int slipChannel = 1;

/// A blank, the padding, then the value; a value wider than its column just
/// loses its padding and pushes the rest of the line right.
std::string rightAligned(frmMaster &form, std::int16_t width, const std::string &value) {
    return " " + form.AddSpace(Int16(width - 1 - vb::Len(value))) + value;
}

/// A blank, the value cut to width - 1, then its padding.
std::string leftCut(frmMaster &form, std::int16_t width, const std::string &value) {
    const std::string cut = vb::Left(value, width - 1);
    return " " + cut + form.AddSpace(Int16(width - 1 - vb::Len(cut)));
}

std::string quantity(const ado::Recordset &rs, const char *field) {
    return vb::Format(rs.Fields(field).Value(), "0.000");
}

} // namespace

std::string SlipHeadings(frmMaster &form, const SlipColumns &c) {
    std::string line = form.AddSpace(Int16(form.intColSlNo - 5)) + "Sl.No";
    if (c.showItemCode == 1) {
        line += " Item Code" + form.AddSpace(Int16(c.codeWidth - 1 - 9));
    }
    line += " Item Description" + form.AddSpace(Int16(form.intColDescription - 1 - 16));
    line += " " + form.AddSpace(Int16(form.intColQty - 1 - 8)) + "Avl Good";
    line += " " + form.AddSpace(Int16(form.intColQty - 1 - 7)) + "Vr Good";
    if (c.badStock) {
        line += " " + form.AddSpace(Int16(form.intColQty - 1 - 7)) + "Avl Bad";
        line += " " + form.AddSpace(Int16(form.intColQty - 1 - 6)) + "Vr Bad";
    }
    if (c.unit) {
        line += " " + form.AddSpace(Int16(form.intColUnit - 1 - 4)) + "Unit";
    }
    if (c.showCost == 1) {
        line += " " + form.AddSpace(Int16(form.intColRate - 1 - 7)) + "Cost Pr";
        line += " " + form.AddSpace(Int16(form.intColAmount - 1 - 10)) + "Total Cost";
    }
    return line;
}

std::string SlipRow(frmMaster &form, const SlipColumns &c, std::int16_t serial,
                    const ado::Recordset &rs) {
    const std::string number = vb::Trim(vb::Str(serial));
    std::string row = form.AddSpace(Int16(form.intColSlNo - vb::Len(number))) + number;
    if (c.showItemCode == 1) {
        row += leftCut(form, c.codeWidth, vb::CStr(rs.Fields("itemcode").Value()));
    }
    row += leftCut(form, form.intColDescription, vb::CStr(rs.Fields("ItemDescription").Value()));
    row += rightAligned(form, form.intColQty, quantity(rs, "BeforeVerify"));
    row += rightAligned(form, form.intColQty, quantity(rs, "AfterVerify"));
    if (c.badStock) {
        row += rightAligned(form, form.intColQty, quantity(rs, "svdAvailBadStock"));
        row += rightAligned(form, form.intColQty, quantity(rs, "svdVerifiedbadStock"));
    }
    if (c.unit) {
        row += rightAligned(form, form.intColUnit, vb::CStr(rs.Fields("UnitCode").Value()));
    }
    if (c.showCost == 1) {
        const double rate = vb::CDbl(rs.Fields("itemrate").Value());
        const double after = vb::CDbl(rs.Fields("AfterVerify").Value());
        row += rightAligned(form, form.intColRate, vb::Format(vb::Variant(rate), "0.00"));
        row += rightAligned(form, form.intColAmount, vb::Format(vb::Variant(rate * after), "0.00"));
    }
    return row;
}

void WriteSlipTotals(frmMaster &form, const SlipColumns &c, double before, double after,
                     double cost) {
    const std::string Tb = vb::Format(vb::Variant(before), "0.000");
    const std::string Ta = vb::Format(vb::Variant(after), "0.000");
    const std::string Tc = vb::Format(vb::Variant(cost), "0.00");
    const std::int16_t D = Int16(form.intColSlNo + c.codeWidth + form.intColDescription - 14);
    // The blanks before the two sums are a plain blank string, which fails
    // on a sum wider than its field.
    if (c.showCost == 1 && c.showTotalQty == 1) {
        vb::PrintLine(slipChannel,
                      form.AddSpace(D) + "Grand Total:  " + vb::Space(form.intColQty - vb::Len(Tb)) +
                          Tb + vb::Space(form.intColUnit + form.intColQty - vb::Len(Ta)) + Ta +
                          form.AddSpace(Int16(form.intColRate + form.intColQty + form.intColQty +
                                              form.intColAmount - vb::Len(Tc))) +
                          Tc);
        vb::PrintLine(slipChannel, "");
    } else if (c.showCost == 1) {
        vb::PrintLine(slipChannel,
                      form.AddSpace(Int16(form.intPageWidth - 12 - vb::Len(Tc))) + "Grand Total:" +
                          Tc);
        vb::PrintLine(slipChannel, "");
    } else if (c.showTotalQty == 1) {
        vb::PrintLine(slipChannel,
                      form.AddSpace(D) + "Grand Total:  " + vb::Space(form.intColQty - vb::Len(Tb)) +
                          Tb + vb::Space(form.intColQty - vb::Len(Ta)) + Ta);
        vb::PrintLine(slipChannel, "");
    }
}

} // namespace tqsv2731
