// The print engine's automation objects: application, report, parameters, window options.
#pragma once

#include "services/Context.h"
#include "services/ServiceObject.h"
#include "vb/Variant.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace report {
struct Definition;
}

namespace services {

/// One parameter of an opened report. SetCurrentValue gives it the value the
/// report runs with, so that the engine prompts for nothing.
class ParameterFieldDefinition {
public:
    explicit ParameterFieldDefinition(std::string name) : name_(std::move(name)) {}
    const std::string &ParameterFieldName() const { return name_; }
    void SetCurrentValue(const vb::Variant &value) { value_ = value; }
    const vb::Variant &CurrentValue() const { return value_; }

private:
    std::string name_;
    vb::Variant value_;
};

/// The parameters of an opened report, by position from 1.
class ParameterFieldDefinitions {
public:
    explicit ParameterFieldDefinitions(std::vector<std::shared_ptr<ParameterFieldDefinition>> all)
        : all_(std::move(all)) {}
    /// The default member: the parameter at `position`; raises 9 ("Subscript
    /// out of range") outside 1 to Count.
    std::shared_ptr<ParameterFieldDefinition> Item(std::int16_t position) const;
    std::shared_ptr<ParameterFieldDefinition> operator()(std::int16_t position) const {
        return Item(position);
    }
    std::int16_t Count() const { return static_cast<std::int16_t>(all_.size()); }
    /// The current values in order (Empty where none was set).
    std::vector<vb::Variant> values() const;

private:
    std::vector<std::shared_ptr<ParameterFieldDefinition>> all_;
};

/// The switches of the preview window, set late-bound by their dispatch
/// numbers as the module does. The preview honours two of them: 7 offers
/// printing, 8 offers the export to a PDF file; 10 (page navigation), 12
/// (the cancel button) and 14 (the close button) are kept and always
/// available in this preview.
class PrintWindowOptions {
public:
    static constexpr int HasPrintButton = 7;
    static constexpr int HasExportButton = 8;
    static constexpr int HasNavigationControls = 10;
    static constexpr int HasCancelButton = 12;
    static constexpr int HasCloseButton = 14;

    /// Sets a switch by dispatch number; a number the options do not have
    /// raises 438 ("Object doesn't support this property or method").
    void setProperty(int dispatchId, bool value);
    bool property(int dispatchId) const;

private:
    bool print_ = false;
    bool export_ = false;
    bool navigation_ = false;
    bool cancel_ = false;
    bool close_ = false;
};

/// A report opened by the application: its definition, its parameters and
/// its window options. Preview runs the report's statement on the logon's
/// connection and hands the laid-out pages to the host's preview.
class EngineReport {
public:
    EngineReport(const Context &context, ado::Connection connection, std::filesystem::path file,
                 std::shared_ptr<const report::Definition> definition);

    std::shared_ptr<services::PrintWindowOptions> PrintWindowOptions() const { return options_; }
    std::shared_ptr<ParameterFieldDefinitions> ParameterFields() const { return parameters_; }
    /// Keeps the rows the formula lets through (report::applySelectionFormula);
    /// empty keeps them all.
    std::string RecordSelectionFormula;
    /// Opens the preview and returns without waiting for it. The window's
    /// place and style are the host's; the title is shown. Raises vb::Error
    /// for a parameter without a value, a statement the database refuses,
    /// or a host that cannot preview.
    void Preview(std::string_view title, std::int32_t left, std::int32_t top,
                 std::int32_t width, std::int32_t height, std::int32_t style);

private:
    Context context_;
    ado::Connection connection_;
    std::filesystem::path file_;
    std::shared_ptr<const report::Definition> definition_;
    std::shared_ptr<services::PrintWindowOptions> options_;
    std::shared_ptr<ParameterFieldDefinitions> parameters_;
};

/// The print engine's application object, made by CreateObject under
/// "Crystal.CRPE.Application". LogOnServer picks the connection of a data
/// source name; OpenReport reads a report file.
class PrintEngine : public ServiceObject {
public:
    static constexpr std::string_view CreationName = "Crystal.CRPE.Application";

    explicit PrintEngine(const Context &context) : context_(context) {}
    std::string_view creationName() const override { return CreationName; }

    /// Logs on to the report server: `driver` must be the ODBC driver library
    /// "pdsodbc.dll" (letter case ignored); `server`, a data source name, is
    /// looked up in the context's data sources and its connection opened,
    /// else the session's connection serves. Database, user and password
    /// belong to the old server and are not checked. Another driver, or no
    /// connection to use, raises 5 with the engine's words for a refused
    /// logon; a data source whose database cannot be opened raises what the
    /// data layer raises.
    void LogOnServer(std::string_view driver, std::string_view server, std::string_view database,
                     std::string_view user, std::string_view password);
    /// Opens a report file (the path's letter case does not count). Raises
    /// "Invalid file name." for a file that is not there, and what
    /// report::readDefinition raises for one that is no report.
    std::shared_ptr<EngineReport> OpenReport(std::string_view path);

private:
    Context context_;
    std::optional<ado::Connection> logon_;
};

/// The report control that a form carries ("Crystal.CrystalReport"): set
/// the file, the logon, the window and the selection formula, then set
/// Action to 1 to run the report into a preview window.
class ReportControl : public ServiceObject {
public:
    static constexpr std::string_view CreationName = "Crystal.CrystalReport";

    explicit ReportControl(const Context &context) : engine_(context) {}
    std::string_view creationName() const override { return CreationName; }

    std::string ReportFileName;
    std::string WindowTitle;
    /// 0 normal, 1 minimised, 2 maximised: the host's to honour.
    int WindowState = 0;
    std::string SelectionFormula;
    // The window's buttons and controls; printing and export are honoured.
    bool WindowShowPrintBtn = false;
    bool WindowShowExportBtn = false;
    bool WindowShowNavigationCtls = false;
    bool WindowShowCancelBtn = false;
    bool WindowShowCloseBtn = false;
    bool WindowShowSearchBtn = false;

    /// As PrintEngine::LogOnServer.
    void LogOnServer(std::string_view driver, std::string_view server, std::string_view database,
                     std::string_view user, std::string_view password);
    /// Action 1 opens the report in its preview window and returns; other
    /// actions raise 5. Failures are PrintEngine's and EngineReport's.
    void Action(int action);

private:
    PrintEngine engine_;
};

} // namespace services
