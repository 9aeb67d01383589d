// TrackError: the module's one way of reporting a failure, to the fault desk.
#pragma once

#include "vb/Error.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tqsv2731 {

class Module;

/// The number the fault desk is given: the last five characters of the
/// number's decimal text, so that the data layer's -2147217900 becomes 17900
/// and -2147467259 becomes 67259. A number of up to five characters stays as
/// it is: 3021 stays, and a negative number of up to four digits keeps its sign.
std::int32_t ShortErrorNumber(std::int32_t number);

/// Reports a failure: shortens `errNumber` in the caller's variable, looks up
/// the user's name at the session's godown and hands everything to
/// `FaultDesk.FaultEntry`'s ErrorTrack with the literal true, whatever
/// `blnShow` says. It has no handler of its own: when the database is gone,
/// the name look-up fails and that failure goes to the routine that was
/// reporting.
void TrackError(Module &m, std::string_view strSourceName, std::int32_t userId,
                std::string_view strRoutineName, std::int32_t &errNumber,
                std::string_view errSource, std::string_view errDescription,
                std::string_view strMode, bool blnShow);

/// What a failure handler of a form or of the shared routines does with the
/// failure it caught: reports it under the source and routine names, for the
/// session's user and transaction mode.
void TrackError(Module &m, std::string_view strSourceName, std::string_view strRoutineName,
                const vb::Error &e);

} // namespace tqsv2731
