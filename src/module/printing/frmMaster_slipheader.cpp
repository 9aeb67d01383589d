// frmMaster's slip header and footer, and the two padding helpers of all slip text.
#include "module/register/frmMaster.h"

#include "ado/Recordset.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/printing/SlipSettings.h"
#include "services/CreateObject.h"
#include "services/clsBaseData.h"
#include "vb/Clock.h"
#include "vb/Conversion.h"
#include "vb/Error.h"
#include "vb/FileChannels.h"
#include "vb/Format.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

constexpr int slipChannel = 1;

/// The Mid statement: `with` written over `text` from position `start` (1 is
/// the first character), never changing its length. A start before the
/// first character or past the last raises 5.
void overwrite(std::string &text, long start, std::string_view with) {
    if (start < 1 || start > vb::Len(text)) {
        throw vb::Error::standard(vb::err::InvalidProcedureCall);
    }
    const std::size_t at = static_cast<std::size_t>(start - 1);
    text.replace(at, std::min(with.size(), text.size() - at), with.substr(0, text.size() - at));
}

} // namespace

std::string frmMaster::AddSpace(std::int16_t n) {
    try {
        return n > 0 ? vb::Space(n) : std::string();
    } catch (const vb::Error &e) {
        TrackError(m_, "FrmMaster", "AddSpace", e);
        return {};
    }
}

std::string frmMaster::CenterMe(std::string str, std::int16_t width) {
    try {
        const long k = static_cast<long>(vb::Int(width / 2.0)) -
                       static_cast<long>(vb::Int(vb::Len(vb::Trim(str)) / 2.0));
        return k > 0 ? vb::Space(k) + str : str;
    } catch (const vb::Error &e) {
        TrackError(m_, "FrmMaster", "CenterMe", e);
        return {};
    }
}

void frmMaster::HeaderPrint(std::int32_t id) {
    try {
        intHeadLines = 0;
        const std::int16_t margin = ReadSettingCInt(m_, *this, "headerleftmargin");
        const std::int16_t addressGap = ReadSettingCInt(m_, *this, "linesafteraddress");
        const std::int16_t padding = ReadSettingCInt(m_, *this, "linesafterheader");
        const std::int16_t headLimit = ReadSettingVal(m_, *this, "totalheadcount");
        const std::int16_t titleFlag = ReadSettingVal(m_, *this, "printtransnameabove");

        ado::Recordset rsEntry;
        rsEntry.Open("select svhNo,svhDate,svhVerificationby,svhRemarks from "
                     "vwgodownstockverification where svhid=" +
                         std::to_string(id) + " and svhGodownid=" + std::to_string(m_.intGodownID),
                     m_.adocon, ado::adOpenKeyset, ado::adLockReadOnly);
        ado::Recordset rsGodown;
        rsGodown.Open("select GodownName, Address, CityName, CountryName, GodownTelephoneNo, "
                      "GodownFaxNo from agodown s, acountrymaster co, acity  ci where s.countryid "
                      "= co.countryid and  ci.cityid = s.cityid and s.godownid=" +
                          std::to_string(m_.intGodownID),
                      m_.adocon, ado::adOpenKeyset, ado::adLockReadOnly);
        if (rsGodown.RecordCount() < 1) {
            return;
        }

        // Each line counts; the head check ends the header at its limit.
        const auto headFull = [&] { return headLimit > 0 && intHeadLines == headLimit; };
        const auto write = [&](const std::string &line) {
            vb::PrintLine(slipChannel, line);
            intHeadLines = Int16(intHeadLines + 1);
        };
        const std::string marginBlanks = vb::Space(margin);
        const auto field = [](const ado::Recordset &rs, const char *name) {
            return rs.Fields(name).Value();
        };

        const std::string contact = "Tel:" + vb::TextOf(field(rsGodown, "GodownTelephoneNo")) +
                                    "  Fax: " + vb::TextOf(field(rsGodown, "GodownFaxNo"));
        // Composed as they always were, and printed nowhere.
        [[maybe_unused]] const std::string godownLine =
            marginBlanks + vb::TextOf(field(rsGodown, "godownname"));
        [[maybe_unused]] const std::string cityLine = vb::TextOf(field(rsGodown, "CityName")) +
                                                      " , " +
                                                      vb::TextOf(field(rsGodown, "CountryName"));

        const std::int16_t skipFirst = ReadSettingRawCInt(m_, *this, "linetoskipfirst");
        for (int i = 1; i <= skipFirst; ++i) {
            if (headFull()) {
                return;
            }
            write("");
        }

        if (titleFlag == 1) {
            if (m_.intInterfaceID == 1013) {
                std::string title = vb::Space(intPageWidth);
                overwrite(title, vb::CInt(vb::Variant((intPageWidth - 25) / 2.0)),
                          "Godown Stock Verification");
                write(title);
            } else {
                write(AddSpace(Int16(intPageWidth - margin - 29)) +
                      "Stock Verification For Godown");
            }
        }

        if (ReadSettingRawCInt(m_, *this, "PrintCompanyName") == 1) {
            objBaseData = services::CreateObject<BaseServices::clsBaseData>(
                "BaseServices.clsBaseData", m_.context());
            objBaseData->adocon = m_.adocon;
            objBaseData->strTableName = "acompanymaster";
            if (headFull()) {
                return;
            }
            write(vb::Chr(14) + vb::Chr(15) + marginBlanks +
                  vb::TextOf(objBaseData->fnReturnField("name")));
            for (const auto &[key, column] : {std::pair{"printadd1", "Address1"},
                                              std::pair{"printadd2", "Address2"},
                                              std::pair{"printadd3", "Address3"}}) {
                if (ReadSettingRawCInt(m_, *this, key) == 1) {
                    if (headFull()) {
                        return;
                    }
                    write(marginBlanks + vb::TextOf(objBaseData->fnReturnField(column)));
                }
            }
        }

        if (headFull()) {
            return;
        }
        write(marginBlanks + vb::TextOf(field(rsGodown, "godownname")));

        // The godown's address, on one line, with the number at the right edge.
        const std::string svhno = vb::CStr(field(rsEntry, "svhno"));
        std::string numberText =
            "Verification No     : " + AddSpace(Int16(15 - vb::Len(svhno))) + svhno;
        const std::string address =
            vb::Replace(vb::CStr(field(rsGodown, "address")), "\r\n", " ");
        numberText = AddSpace(Int16(intPageWidth - vb::Len(numberText) - margin -
                                    vb::Len(address))) +
                     numberText;
        if (headFull()) {
            return;
        }
        write(marginBlanks + address + numberText);

        for (int i = 1; i <= addressGap; ++i) {
            if (headFull()) {
                return;
            }
            write("");
        }

        const std::string svhdate = vb::CStr(field(rsEntry, "svhdate"));
        std::string dateText =
            "Verification Date   : " + AddSpace(Int16(15 - vb::Len(svhdate))) + svhdate;
        dateText = AddSpace(Int16(intPageWidth - vb::Len(dateText) - vb::Len(contact) - margin)) +
                   dateText;
        if (headFull()) {
            return;
        }
        write(marginBlanks + contact + dateText);

        if (headFull()) {
            return;
        }
        write("");
        if (headFull()) {
            return;
        }
        write(marginBlanks + "Remarks     :" + vb::TextOf(field(rsEntry, "svhremarks")));
        if (headFull()) {
            return;
        }
        write(marginBlanks + "Verified By :" + vb::TextOf(field(rsEntry, "svhverificationby")));
        if (headFull()) {
            return;
        }
        write("");

        if (titleFlag == 0) {
            const std::string title =
                AddSpace(Int16(intPageWidth - margin - 29)) + "Stock Verification For Godown";
            if (headFull()) {
                return;
            }
            write(marginBlanks + title);
        }
        if (headFull()) {
            return;
        }
        write("");

        if (padding == 1) {
            // The loop's end is fixed before the first padding line counts.
            const int first = intHeadLines + 1;
            for (int i = first; i <= headLimit; ++i) {
                write("");
            }
        }
    } catch (const vb::Error &e) {
        TrackError(m_, "FrmMaster", "HeaderPrint ", e);
    }
}

void frmMaster::FooterPrint() {
    try {
        vb::PrintLine(slipChannel, "");
        ado::Recordset rs;
        rs.Open("select Username from Lousers where userid = " + std::to_string(m_.intUserID) +
                    " and godownid = " + std::to_string(m_.intGodownID),
                m_.adocon, ado::adOpenKeyset, ado::adLockReadOnly);
        if (!rs.Eof()) {
            // Two readings of the clock, as the date and the time were taken.
            const std::string line = vb::TextOf(rs.Fields("UserName").Value()) + " - " +
                                     vb::Format(vb::Variant(vb::Now()), "dd/mm/yyyy") + " - " +
                                     vb::Format(vb::Variant(vb::Now()), "HH:MM:SS");
            vb::PrintLine(slipChannel, CenterMe(line, intPageWidth));
        }
    } catch (const vb::Error &e) {
        TrackError(m_, "FrmMaster", "FooterPrint", e);
    }
}

} // namespace tqsv2731
