#include "services/PrintEngine.h"

#include "ado/Recordset.h"
#include "forms/Screen.h"
#include "forms/Ui.h"
#include "report/Definition.h"
#include "report/Document.h"
#include "report/PdfWriter.h"
#include "report/Table.h"
#include "vb/Error.h"
#include "vb/Strings.h"
#include "vb/WindowsPath.h"

namespace services {

namespace {

constexpr std::string_view engineSource = "Crystal.CRPE.Application";

[[noreturn]] void logonRefused(const std::string &why) {
    throw vb::Error(vb::err::InvalidProcedureCall, std::string(engineSource),
                    "Unable to connect: incorrect log on parameters. (" + why + ")");
}

} // namespace

std::shared_ptr<ParameterFieldDefinition>
ParameterFieldDefinitions::Item(std::int16_t position) const {
    if (position < 1 || position > Count()) {
        throw vb::Error::standard(vb::err::SubscriptOutOfRange, std::string(engineSource));
    }
    return all_[static_cast<std::size_t>(position - 1)];
}

std::vector<vb::Variant> ParameterFieldDefinitions::values() const {
    std::vector<vb::Variant> out;
    for (const auto &p : all_) {
        out.push_back(p->CurrentValue());
    }
    return out;
}

void PrintWindowOptions::setProperty(int dispatchId, bool value) {
    switch (dispatchId) {
    case HasPrintButton: print_ = value; break;
    case HasExportButton: export_ = value; break;
    case HasNavigationControls: navigation_ = value; break;
    case HasCancelButton: cancel_ = value; break;
    case HasCloseButton: close_ = value; break;
    default: throw vb::Error::standard(438, std::string(engineSource));
    }
}

bool PrintWindowOptions::property(int dispatchId) const {
    switch (dispatchId) {
    case HasPrintButton: return print_;
    case HasExportButton: return export_;
    case HasNavigationControls: return navigation_;
    case HasCancelButton: return cancel_;
    case HasCloseButton: return close_;
    default: throw vb::Error::standard(438, std::string(engineSource));
    }
}

EngineReport::EngineReport(const Context &context, ado::Connection connection,
                           std::filesystem::path file,
                           std::shared_ptr<const report::Definition> definition)
    : context_(context), connection_(std::move(connection)), file_(std::move(file)),
      definition_(std::move(definition)),
      options_(std::make_shared<services::PrintWindowOptions>()) {
    std::vector<std::shared_ptr<ParameterFieldDefinition>> all;
    for (const report::Parameter &p : definition_->parameters) {
        all.push_back(std::make_shared<ParameterFieldDefinition>(p.name));
    }
    parameters_ = std::make_shared<ParameterFieldDefinitions>(std::move(all));
}

void EngineReport::Preview(std::string_view title, std::int32_t, std::int32_t, std::int32_t,
                           std::int32_t, std::int32_t) {
    const std::vector<vb::Variant> values = parameters_->values();
    ado::Recordset rs;
    rs.Open(report::boundQuery(*definition_, values), connection_);
    const report::Table table =
        report::applySelectionFormula(report::readTable(rs), RecordSelectionFormula);
    rs.Close();
    auto document = std::make_shared<report::Document>(report::layOut(*definition_, values, table));

    forms::ReportPreview preview;
    preview.reportFile = file_.string();
    preview.title = std::string(title);
    preview.parameters = values;
    preview.selectionFormula = RecordSelectionFormula;
    for (const auto &page : document->pages) {
        preview.pages.push_back(vb::Join(page, "\n"));
    }
    preview.canPrint = options_->property(PrintWindowOptions::HasPrintButton);
    preview.canExport = options_->property(PrintWindowOptions::HasExportButton);
    preview.writePdf = [document](const std::string &file) { report::writePdf(*document, file); };
    context_.screen().ui().previewReport(preview);
}

void PrintEngine::LogOnServer(std::string_view driver, std::string_view server, std::string_view,
                              std::string_view, std::string_view) {
    if (vb::StrComp(driver, "pdsodbc.dll", vb::Compare::Text) != 0) {
        logonRefused("no server driver " + std::string(driver));
    }
    for (const auto &[name, connectionString] : context_.dataSources) {
        if (vb::StrComp(name, server, vb::Compare::Text) == 0) {
            ado::Connection connection;
            connection.Open(connectionString);
            logon_ = connection;
            return;
        }
    }
    if (context_.connection.State() != 1) {
        logonRefused("the data source " + std::string(server) +
                     " names no database and the session has none open");
    }
    logon_ = context_.connection;
}

std::shared_ptr<EngineReport> PrintEngine::OpenReport(std::string_view path) {
    const std::filesystem::path file = vb::PathIgnoringCase(path);
    auto definition = std::make_shared<const report::Definition>(report::readDefinition(file));
    if (!logon_) {
        logonRefused("OpenReport before LogOnServer");
    }
    return std::make_shared<EngineReport>(context_, *logon_, file, std::move(definition));
}

void ReportControl::LogOnServer(std::string_view driver, std::string_view server,
                                std::string_view database, std::string_view user,
                                std::string_view password) {
    engine_.LogOnServer(driver, server, database, user, password);
}

void ReportControl::Action(int action) {
    if (action != 1) {
        throw vb::Error::standard(vb::err::InvalidProcedureCall, std::string(CreationName));
    }
    std::shared_ptr<EngineReport> report = engine_.OpenReport(ReportFileName);
    report->RecordSelectionFormula = SelectionFormula;
    auto options = report->PrintWindowOptions();
    options->setProperty(PrintWindowOptions::HasPrintButton, WindowShowPrintBtn);
    options->setProperty(PrintWindowOptions::HasExportButton, WindowShowExportBtn);
    report->Preview(WindowTitle, 0, 0, 0, 0, 0);
}

} // namespace services
