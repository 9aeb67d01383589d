// FaultDesk::FaultEntry: where a failure is recorded and shown to the user.
#pragma once

#include "ado/Connection.h"
#include "services/Context.h"
#include "services/FaultReport.h"
#include "services/ServiceObject.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace FaultDesk {

/// The fault desk: the one place where a failure of the module becomes
/// visible. It records each failure in the fault table (aFaultLog) when the
/// database takes it and always in faults.log under the state directory, and
/// shows the user one message box.
class FaultEntry : public services::ServiceObject {
public:
    static constexpr std::string_view CreationName = "FaultDesk.FaultEntry";

    /// Records into the context's connection and state directory.
    explicit FaultEntry(const services::Context &context);
    std::string_view creationName() const override { return CreationName; }

    /// The database of the fault table; the session's connection unless set.
    ado::Connection adocon;

    /// Reports one failure. Number 0 is no failure (the print dialog reports
    /// after every preview, failed or not): nothing is recorded or shown.
    /// Otherwise the report goes to the fault table and the log file, and, when
    /// `blnShowMessage` is true, one critical message box (style 16) names the
    /// routine, the number and the description. It never raises: a fault table
    /// that cannot be written is noted in the log file instead. Returns true
    /// when the report was kept (in the table or the log), or there was none.
    bool ErrorTrack(std::string_view strSourceName, std::string_view strUserName,
                    std::string_view strRoutineName, std::int32_t lngErrorNumber,
                    std::string_view strErrorSource, std::string_view strErrorDescription,
                    std::string_view strTransactionMode, bool blnShowMessage);

private:
    /// Writes the fault table's row; "" when written, else what went wrong.
    std::string recordInTable(const services::FaultReport &report);
    void show(const services::FaultReport &report);

    services::Context context_;
};

/// The text of the fault desk's message box.
std::string faultMessage(const services::FaultReport &report);

} // namespace FaultDesk
