#include "services/FaultEntry.h"

#include "ado/Recordset.h"
#include "forms/MsgBox.h"
#include "vb/Clock.h"
#include "vb/Error.h"
#include "vb/Strings.h"

namespace FaultDesk {

namespace {

std::string errorNote(std::string_view what, const vb::Error &e) {
    return std::string(what) + ": error " + std::to_string(e.number()) + ": " + e.description();
}

} // namespace

FaultEntry::FaultEntry(const services::Context &context)
    : adocon(context.connection), context_(context) {}

std::string faultMessage(const services::FaultReport &report) {
    return "Error " + std::to_string(report.number) + " in " + vb::Trim(report.routine) + " (" +
           vb::Trim(report.source) + "):\n" + report.description;
}

bool FaultEntry::ErrorTrack(std::string_view strSourceName, std::string_view strUserName,
                            std::string_view strRoutineName, std::int32_t lngErrorNumber,
                            std::string_view strErrorSource, std::string_view strErrorDescription,
                            std::string_view strTransactionMode, bool blnShowMessage) {
    if (lngErrorNumber == 0) {
        return true;
    }
    const services::FaultReport report{
        std::string(strSourceName),      std::string(strUserName),
        std::string(strRoutineName),     lngErrorNumber,
        std::string(strErrorSource),     std::string(strErrorDescription),
        std::string(strTransactionMode), vb::Now()};

    std::string tableNote = recordInTable(report);
    const bool inTable = tableNote.empty();
    if (inTable) {
        tableNote = "in fault table";
    }
    // The log is written before the box, which may wait long for the user.
    const bool inLog = services::appendFaultLog(context_.stateDirectory, report, tableNote);
    if (blnShowMessage) {
        show(report);
    }
    return inTable || inLog;
}

std::string FaultEntry::recordInTable(const services::FaultReport &report) {
    // The fault desk is where failures end: a database that refuses the row
    // (closed, locked, the table missing) must not turn into a second failure
    // of the routine that is reporting, so it is noted in the log instead.
    try {
        ado::Recordset rs;
        rs.Open("select * from aFaultLog", adocon, ado::adOpenKeyset, ado::adLockOptimistic);
        rs.AddNew();
        rs.Fields("SourceName").Value(report.source);
        rs.Fields("UserName").Value(report.user);
        rs.Fields("RoutineName").Value(report.routine);
        rs.Fields("ErrorNumber").Value(report.number);
        rs.Fields("ErrorSource").Value(report.errorSource);
        rs.Fields("ErrorDescription").Value(report.description);
        rs.Fields("TransactionMode").Value(report.mode);
        rs.Fields("LoggedAt").Value(report.time);
        rs.Update();
        rs.Close();
        return {};
    } catch (const vb::Error &e) {
        return errorNote("not in fault table", e);
    }
}

void FaultEntry::show(const services::FaultReport &report) {
    // A host that cannot show the box is noted in the log, for the same reason.
    try {
        forms::MsgBox(context_.screen(), faultMessage(report), forms::vbCritical);
    } catch (const vb::Error &e) {
        services::appendFaultLog(context_.stateDirectory, report,
                                 errorNote("message not shown", e));
    }
}

} // namespace FaultDesk
