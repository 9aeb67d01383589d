// frmPrint's "Windows Print": the entry as a report of the print engine.
#include "module/printing/frmPrint.h"

#include "module/frame/Module.h"
#include "module/frame/TrackError.h"
#include "module/register/frmMaster.h"
#include "services/CreateObject.h"
#include "services/PrintEngine.h"
#include "services/clsBaseData.h"
#include "vb/Conversion.h"

#include <string>

namespace tqsv2731 {

namespace {

// The report server's logon, the same for every report of the module.
constexpr std::string_view reportDriver = "pdsodbc.dll";
constexpr std::string_view reportServer = "admindsnv2";
constexpr std::string_view reportDatabase = "adminv2";
constexpr std::string_view reportUser = "admin";
constexpr std::string_view reportPassword = "quenbarro471";

} // namespace

void frmPrint::WIndowsprint() {
    try {
        auto objBaseData = services::CreateObject<BaseServices::clsBaseData>(
            "BaseServices.clsBaseData", m_.context());
        objBaseData->adocon = m_.adocon;
        // The table name carries the condition: the service splices it in
        // behind its FROM.
        objBaseData->strTableName = "lousers where userid=" + std::to_string(m_.intUserID);
        const vb::Variant userName = objBaseData->fnReturnField("username");
        const std::string path =
            m_.AppPath + "\\reports\\rptGodownStockVerification.rpt";

        objCrystalApp = services::CreateObject<services::PrintEngine>("Crystal.CRPE.Application",
                                                                      m_.context());
        objCrystalApp->LogOnServer(reportDriver, reportServer, reportDatabase, reportUser,
                                   reportPassword);
        objCrystalReport = objCrystalApp->OpenReport(path);
        objPrintWindowOptions = objCrystalReport->PrintWindowOptions();
        objParameterFields = objCrystalReport->ParameterFields();

        frmMaster &master = m_.frmMaster();
        objParameterField = (*objParameterFields)(1);
        objParameterField->SetCurrentValue(vb::Variant(m_.intGodownID));
        objParameterField = (*objParameterFields)(2);
        objParameterField->SetCurrentValue(
            vb::Variant(vb::Val(master.flexMaster.TextMatrix(master.flexMaster.Row(), 0))));
        objParameterField = (*objParameterFields)(3);
        objParameterField->SetCurrentValue(vb::Variant(std::string("Stock Verification ")));
        objParameterField = (*objParameterFields)(4);
        objParameterField->SetCurrentValue(userName);

        objBaseData->strTableName = "agodown a,adepartmentmaster b where godownid=" +
                                    std::to_string(m_.intGodownID) +
                                    " and  a.departmentid=b.departmentid";
        objParameterField = (*objParameterFields)(5);
        objParameterField->SetCurrentValue(objBaseData->fnReturnField("Departmentname"));

        // Export, print, close, cancel and page navigation, by dispatch number.
        for (int dispatchId : {8, 7, 14, 12, 10}) {
            objPrintWindowOptions->setProperty(dispatchId, true);
        }
        // A maximised overlapped window with its usual frame and buttons.
        objCrystalReport->Preview("Stock Verification", 0, 0, 0, 0, 30343168);
    } catch (const vb::Error &e) {
        TrackError(m_, FormName, "WIndowsprint", e);
    }
}

} // namespace tqsv2731
