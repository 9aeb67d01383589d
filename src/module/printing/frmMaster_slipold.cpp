// frmMaster's PrintBillOld: the earlier form of the slip, kept with no caller.
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
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

constexpr int slipChannel = 1;

} // namespace

void frmMaster::PrintBillOld(std::int32_t id) {
    try {
        strDashLine.clear();
        strSettingsFile = SettingsFilePath(m_);

        strPrintPort = ReadSettingText(m_, *this, "port");
        intPrintRows = ReadSettingCInt(m_, *this, "internalprintnoofrecords");
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
        // Four quantity columns are taken off in both interfaces, and the
        // unit, which this slip does not print, in all but the total count.
        long description = intPageWidth - intColSlNo - 4L * intColQty - intCodeWidth;
        if (m_.intInterfaceID != 1013) {
            description -= intColUnit;
        }
        if (showCost == 1) {
            description -= intColRate + intColAmount;
        }
        intColDescription = Int16(description);
        const std::int16_t intTotalLines = (showCost == 1 || showTotalQty == 1) ? 2 : 0;
        const SlipColumns columns{intCodeWidth, showItemCode, showCost, showTotalQty,
                                  m_.intInterfaceID != 1013, false};

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
            orderClause = " order by svdid, svditemid";
        } else if (savedOrder == 2) {
            orderClause = " order by a.itemdescription";
        }
        ado::Recordset rs;
        rs.Open("select svhid,svhno,svhdate,svhverificationby,svhremarks,"
                " vw.ItemDescription, sum(isnull(svdAvailStock,0)) BeforeVerify,  "
                "sum(isnull(svdVerifiedStock,0)) AfterVerify, sum(isnull(svdAvailBadStock,0))  "
                "svdAvailBadStock,   sum(isnull(svdVerifiedBadStock,0)) svdVerifiedbadStock,  case "
                "when max(isnull(svdcostprice,0))=0 then max(isnull(itemrate,0)) else  "
                "max(isnull(a.itemrate,0)) end itemrate , a.itemcode from "
                "loistockverificationheader,"
                " loistockverificationdetail, aitem a, vwitemdescription vw where svhid = svdid "
                " and svhgodownid = svdgodownid and svditemid = a.itemid and svhid=" +
                    std::to_string(id) + " and a.itemid = vw.itemid and svhgodownid=" +
                    std::to_string(m_.intGodownID) +
                    " group by svhid,svhno,svhdate, svdid, svditemid, "
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

        // The page budget from the page's lines alone, the header not counted.
        const auto budget = [&] {
            const long R = intRecordsLeft;
            long N = intPrintRows - topLine - headBottomLine - detailBottomLine - 1;
            if (N - 2 - intTotalLines >= R) {
                N = N - 2 - intTotalLines;
            } else if (footerEachPage == 1) {
                N = N - 2 >= R ? R : N - 2;
            } else if (N >= R) {
                N = R - 1;
            }
            intPrintRows = Int16(N);
        };
        budget();

        std::int16_t intPageRow = 1;
        double sumBefore = 0;
        double sumAfter = 0;
        double sumCost = 0;
        while (!rs.Eof()) {
            if (intPageRow == 1) {
                if (topLine == 1) {
                    write(strDashLine);
                }
                write(SlipHeadings(*this, columns));
                if (headBottomLine == 1) {
                    write(strDashLine);
                }
            }
            write(SlipRow(*this, columns, intSerial, rs));
            sumBefore += vb::CDbl(rs.Fields("BeforeVerify").Value());
            sumAfter += vb::CDbl(rs.Fields("AfterVerify").Value());
            if (showCost == 1) {
                sumCost += vb::CDbl(rs.Fields("itemrate").Value()) *
                           vb::CDbl(rs.Fields("AfterVerify").Value());
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
                intPrintRows = ReadSettingCInt(m_, *this, "internalprintnoofrecords");
                budget();
            }
        }

        if (detailBottomLine == 1) {
            write(strDashLine);
        }
        WriteSlipTotals(*this, columns, sumBefore, sumAfter, sumCost);
        FooterPrint();
        vb::FileClose(slipChannel);
    } catch (const vb::Error &e) {
        TrackError(m_, "FrmMaster", "PrintBillOld", e);
    }
}

} // namespace tqsv2731
