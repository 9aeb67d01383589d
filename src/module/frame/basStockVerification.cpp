#include "module/frame/basStockVerification.h"

#include "ado/Recordset.h"
#include "forms/EventLoop.h"
#include "forms/MsgBox.h"
#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "services/CreateObject.h"
#include "services/clsBaseData.h"
#include "vb/Conversion.h"
#include "vb/FileChannels.h"
#include "vb/Strings.h"

namespace tqsv2731 {

namespace {

/// The settings file is read on this channel, as it always was.
constexpr int settingsChannel = 3;

/// Reads the file for the key; `lastKey` is the key of the last line read.
std::string readSetting(std::string_view fileName, const std::string &wanted,
                        std::string &lastKey) {
    std::string value;
    vb::FileOpen(settingsChannel, fileName, vb::FileMode::Input);
    while (!vb::FileEOF(settingsChannel)) {
        const std::string line = vb::LineInput(settingsChannel);
        // Key, one filler character, ":=", value. A line without ":=" makes
        // the left part fail, with the channel still open.
        const long pos = vb::InStr(1, line, ":=", vb::Compare::Text);
        lastKey = vb::UCase(vb::Left(line, pos - 2));
        if (lastKey == wanted) {
            value = vb::Mid(line, pos + 2);
            break;
        }
    }
    vb::FileClose(settingsChannel);
    return value;
}

} // namespace

void EnterAsTab(Module &m, int &KeyAscii) {
    if (KeyAscii == 13) {
        forms::SendKeys(m.screen(), "{TAB}");
    }
}

vb::Variant FileCode(Module &m, std::string_view strKey, std::string_view strFileName) {
    try {
        const std::string wanted = vb::UCase(strKey);
        std::string lastKey;
        std::string value = readSetting(strFileName, wanted, lastKey);
        if (lastKey != wanted) {
            forms::MsgBox(m.screen(),
                          std::string(strKey) + "  invalid parameter in Settings.ini file",
                          forms::vbCritical, m.strMsgboxCaption);
            value = "NotFound";
        }
        // Case-sensitive, so the "NotFound" above comes back as it is.
        if (value.empty() || value == "NOTFOUND") {
            value.clear();
        }
        return vb::Variant(value);
    } catch (const vb::Error &e) {
        if (e.number() == vb::err::FileNotFound) {
            forms::MsgBox(m.screen(), " Settings.ini file not found", forms::vbCritical,
                          m.strMsgboxCaption);
        }
        TrackError(m, "basStockVerification", "FileCode ", e);
        return vb::Variant();
    }
}

bool ItemHasExpiryDays(Module &m, std::int32_t itemId) {
    ado::Recordset rs;
    rs.Open("SELECT ExpiryNoOfDays FROM aItem WHERE ItemId = " + std::to_string(itemId), m.adocon);
    if (rs.Eof()) {
        return false;
    }
    const vb::Variant days = rs.Fields("ExpiryNoOfDays").Value();
    return !vb::IsNull(days) && vb::CDbl(days) > 0;
}

std::string GetUserName(Module &m, std::int16_t userId) {
    auto baseData =
        services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseData", m.context());
    baseData->adocon = m.adocon;
    baseData->strTableName = "loUsers";
    return vb::CStr(baseData->fnReturnField("UserName", "UserId = " + std::to_string(userId)));
}

std::string GetItemUnitCode(Module &m, std::int32_t itemId) {
    auto baseData =
        services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseData", m.context());
    baseData->adocon = m.adocon;
    baseData->strTableName = "aItem i, aUnit u";
    return vb::CStr(baseData->fnReturnField("u.UnitCode", "i.UnitsId = u.UnitId AND i.ItemId = " +
                                                              std::to_string(itemId)));
}

} // namespace tqsv2731
