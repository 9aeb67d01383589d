#include "module/frame/TrackError.h"

#include "module/frame/Module.h"
#include "services/CreateObject.h"
#include "services/FaultEntry.h"
#include "services/clsBaseData.h"
#include "vb/Conversion.h"
#include "vb/Strings.h"

namespace tqsv2731 {

std::int32_t ShortErrorNumber(std::int32_t number) {
    // The fault desk's number field is narrow: the data layer's long numbers
    // keep their last five digits, which still tell one failure from another.
    const std::string text = std::to_string(number);
    if (vb::Len(text) <= 5) {
        return number;
    }
    return static_cast<std::int32_t>(vb::Val(vb::Right(text, 5)));
}

void TrackError(Module &m, std::string_view strSourceName, std::int32_t userId,
                std::string_view strRoutineName, std::int32_t &errNumber,
                std::string_view errSource, std::string_view errDescription,
                std::string_view strMode, bool /*blnShow*/) {
    auto faultEntry =
        services::CreateObject<FaultDesk::FaultEntry>("FaultDesk.FaultEntry", m.context());
    errNumber = ShortErrorNumber(errNumber);

    auto baseData =
        services::CreateObject<BaseServices::clsBaseData>("BaseServices.clsBaseData", m.context());
    baseData->adocon = m.adocon;
    baseData->strTableName = "LOUSERS where userid=" + std::to_string(userId) +
                             " and GodownID = " + std::to_string(m.intGodownID);
    const std::string userName = vb::CStr(baseData->fnReturnField("username"));

    // The desk is always asked to show the failure, whatever the caller wanted;
    // its answer changes nothing.
    faultEntry->ErrorTrack(strSourceName, userName, strRoutineName, errNumber, errSource,
                           errDescription, strMode, true);
}

void TrackError(Module &m, std::string_view strSourceName, std::string_view strRoutineName,
                const vb::Error &e) {
    std::int32_t number = e.number();
    TrackError(m, strSourceName, m.intUserID, strRoutineName, number, e.source(), e.description(),
               m.strTransactionMode, true);
}

} // namespace tqsv2731
