// frmMaster's text slip: PrintBill writes one entry's slip to the slip file or a printer port.
#include "module/register/frmMaster.h"

#include "ado/Recordset.h"
#include "forms/Screen.h"
#include "forms/Ui.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/printing/SlipLines.h"
#include "module/printing/SlipSettings.h"
#include "module/printing/frmPrint.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/FileChannels.h"
#include "vb/Format.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

/// The slip goes out on this channel, as it always did.
constexpr int slipChannel = 1;

double number(const ado::Recordset &rs, const char *field) {
    return vb::CDbl(rs.Fields(field).Value());
}

} // namespace

void frmMaster::PrintBill(std::int32_t id) {
    try {
        strDashLine.clear();
        strSettingsFile = SettingsFilePath(m_);

        strPrintPort = ReadSettingText(m_, *this, "port");
        intPrintRows = ReadSettingCInt(m_, *this, "internalprintnoofrecords");
        // The second reading is kept whole; intPrintRows is worked down per page.
        const std::int16_t intPrintPageLines =
            ReadSettingCInt(m_, *this, "internalprintnoofrecords");
        intPageWidth = ReadSettingCInt(m_, *this, "pagewidth");
        intColSlNo = ReadSettingCInt(m_, *this, "SlNo");
        intColQty = ReadSettingCInt(m_, *this, "Qty");
        intColUnit = ReadSettingCInt(m_, *this, "Unit");
        intColRate = ReadSettingCInt(m_, *this, "Rate");
        intColAmount = ReadSettingCInt(m_, *this, "Amount");
        ReadSettingCInt(m_, *this, "ExtraLine");
        ReadSettingCInt(m_, *this, "EndPage");
        ReadSettingCInt(m_, *this, "Seperator");
        const std::int16_t topLine = ReadSettingCInt(m_, *this, "printheadertopline");
        const std::int16_t headBottomLine = ReadSettingCInt(m_, *this, "printheaderbottomline");
        const std::int16_t detailBottomLine = ReadSettingCInt(m_, *this, "printdetailbottomline");
        const std::int16_t spaceInLine = ReadSettingCInt(m_, *this, "spaceinlinecode");
        const std::int16_t footerEachPage = ReadSettingCInt(m_, *this, "printfooterineachpage");
        const std::int16_t showCost = ReadSettingVal(m_, *this, "showcostintrans");
        const std::int16_t showItemCode = ReadSettingVal(m_, *this, "showitemcodeinprint");
        const std::int16_t savedOrder = ReadSettingVal(m_, *this, "printinsavedorder");
        const std::int16_t showTotalQty = ReadSettingVal(m_, *this, "showtotalqty");

        strDashLine.clear();
        const std::int16_t intCodeWidth = showItemCode != 0 ? 15 : 0;

        // The description takes what the other columns leave of the page.
        long description = intPageWidth - intColSlNo - intColUnit - intCodeWidth;
        description -= m_.intInterfaceID == 1013 ? 2L * intColQty : 4L * intColQty;
        if (showCost == 1) {
            description -= intColRate + intColAmount;
        }
        intColDescription = Int16(description);

        const std::int16_t intTotalLines = (showCost == 1 || showTotalQty == 1) ? 2 : 0;
        const SlipColumns columns{intCodeWidth, showItemCode, showCost, showTotalQty,
                                  m_.intInterfaceID != 1013, true};

        // The print messages of the godown: counted, and the count dropped.
        ado::Recordset rsMessages;
        rsMessages.Open("Select count(*) messacount from ashopprintmessages where shopid=" +
                            std::to_string(m_.intGodownID) + " and upper(transtype)='POSPO'",
                        m_.adocon);
        if (!rsMessages.Eof()) {
            vb::CInt(vb::Variant(vb::CDbl(rsMessages.Fields("messacount").Value()) + 3));
        }

        // The rule line: dashes with spaceinlinecode blanks between them.
        if (spaceInLine + 1 == 0) {
            throw vb::Error::standard(11);
        }
        const std::int16_t dashes =
            vb::CInt(vb::Variant(static_cast<double>(intPageWidth) / (spaceInLine + 1)));
        for (int i = 1; i <= dashes; ++i) {
            strDashLine = strDashLine.empty() ? "-" : strDashLine + vb::Space(spaceInLine) + "-";
        }
        if (strDashLine == "-") {
            strDashLine.clear();
        }

        const std::int16_t headerId =
            vb::CInt(vb::Variant(flexMaster.TextMatrix(flexMaster.Row(), 0)));
        std::string orderClause;
        if (savedOrder == 1) {
            orderClause = " order by svdid, svdItemId";
        } else if (savedOrder == 2) {
            orderClause = " order by a.itemdescription";
        }
        ado::Recordset rs;
        rs.Open(
            "select Min(UnitCode) UnitCode, svhid,svhno,svhdate,svhverificationby,svhremarks, "
            "vw.ItemDescription, sum(isnull(svdAvailStock,0)) BeforeVerify,  "
            "sum(isnull(svdVerifiedStock,0)) AfterVerify, sum(isnull(svdAvailBadStock,0))  "
            "svdAvailBadStock,   sum(isnull(svdVerifiedBadStock,0)) svdVerifiedbadStock,  case "
            "when max(isnull(svdcostprice,0))=0 then max(isnull(itemrate,0)) else  "
            "max(isnull(a.itemrate,0)) end itemrate , a.itemcode from "
            "loistockverificationheader,   loistockverificationdetail, aItem a, "
            "vwItemDescriptionPrint vw, aUnit u where svhid = svdid  and svhgodownid = "
            "svdgodownid and svdItemId = a.ItemId and svhid=" +
                std::to_string(id) + " and a.ItemId = vw.ItemId and svhgodownid=" +
                std::to_string(m_.intGodownID) +
                " and a.UnitsId = u.UnitId group by svhid,svhno,svhdate, svdid, svdItemId,  "
                "a.itemcode, vw.itemdescription, svhverificationby,svhremarks " +
                orderClause,
            m_.adocon, ado::adOpenKeyset, ado::adLockReadOnly);

        if (m_.frmPrint().optScreen.Value()) {
            vb::FileOpen(slipChannel, DriveCFile(m_, "C:\\StockVer.txt"), vb::FileMode::Output);
        } else {
            vb::FileOpenDevice(slipChannel, strPrintPort,
                               m_.screen().ui().openPrinter(strPrintPort));
        }
        auto write = [](const std::string &line) { vb::PrintLine(slipChannel, line); };

        rs.MoveFirst();
        std::int16_t intSerial = 1;
        std::int16_t intRecordsLeft = 0;
        if (!rs.Eof()) {
            intRecordsLeft = vb::CInt(vb::Variant(rs.RecordCount()));
            HeaderPrint(headerId);
        }

        intPrintRows =
            Int16(intPrintRows - intHeadLines - topLine - headBottomLine - detailBottomLine - 1);
        std::int16_t intPageRow = 1;
        double sumBefore = 0;
        double sumAfter = 0;
        double sumCost = 0;
        while (!rs.Eof()) {
            if (intPageRow == 1) {
                // The page budget: how many rows this page takes, keeping
                // room for the footer and, on the last page, the totals.
                const long R = intRecordsLeft;
                const long X = intPrintPageLines - topLine - detailBottomLine - headBottomLine -
                               intHeadLines - 1;
                long N = intPrintRows;
                if (N - 2 - intTotalLines >= R) {
                    N = N - 2 - intTotalLines;
                } else if (footerEachPage == 1) {
                    N = N - 2;
                    N = N >= R - 1 ? R - 1 : X - 2;
                } else {
                    N = X >= R ? R - 1 : X;
                }
                intPrintRows = Int16(N);

                if (topLine == 1) {
                    write(strDashLine);
                }
                write(SlipHeadings(*this, columns));
                if (headBottomLine == 1) {
                    write(strDashLine);
                }
            }

            write(SlipRow(*this, columns, intSerial, rs));
            sumBefore += number(rs, "BeforeVerify");
            sumAfter += number(rs, "AfterVerify");
            if (showCost == 1) {
                sumCost += number(rs, "itemrate") * number(rs, "AfterVerify");
            }

            intSerial = Int16(intSerial + 1);
            rs.MoveNext();
            if (intRecordsLeft > 0) {
                --intRecordsLeft;
            }
            if (!rs.Eof() && intPageRow == intPrintRows) {
                if (detailBottomLine == 1) {
                    write(strDashLine);
                }
                if (footerEachPage == 1) {
                    FooterPrint();
                }
            }
            if (!rs.Eof()) {
                intPageRow = Int16(intPageRow + 1);
            }
            if (intPageRow > intPrintRows && intRecordsLeft > 0) {
                intPageRow = 1;
                write(vb::Chr(12));
                intHeadLines = 0;
                intPrintRows = Int16(intPrintPageLines - topLine - detailBottomLine -
                                     headBottomLine - 1);
            }
        }

        if (detailBottomLine == 1) {
            write(strDashLine);
        }

        WriteSlipTotals(*this, columns, sumBefore, sumAfter, sumCost);

        FooterPrint();
        vb::FileClose(slipChannel);
    } catch (const vb::Error &e) {
        // Channel 1 and the recordsets stay as the failure left them.
        TrackError(m_, "FrmMaster", "PrintBill ", e);
    }
}

} // namespace tqsv2731
