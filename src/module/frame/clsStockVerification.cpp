#include "module/frame/clsStockVerification.h"

#include "forms/Form.h"
#include "module/frame/Module.h"
#include "module/register/frmMaster.h"
#include "services/CreateObject.h"

namespace tqsv2731 {

clsStockVerification::clsStockVerification(const services::Context &context)
    : module_(std::make_shared<Module>(context)) {}

clsStockVerification::clsStockVerification(std::shared_ptr<Module> module)
    : module_(std::move(module)) {}

clsStockVerification::~clsStockVerification() = default;

void clsStockVerification::Show() {
    Module &m = *module_;
    m.adocon = adocon;
    m.intCompanyID = intCompanyID;
    m.intUserID = intUserID;
    m.intGodownID = intGodownID;
    m.intInterfaceID = intInterfaceID;
    m.strMsgboxCaption = strMsgboxCaption;
    m.dtProcessDate = dtProcessDate;

    m.frmMaster().Show(forms::vbModal);
}

} // namespace tqsv2731

namespace tqsv2731 {

void registerClsStockVerification() {
    services::registerCreatable(clsStockVerification::CreationName,
                                [](const services::Context &context) {
                                    return std::make_shared<clsStockVerification>(context);
                                });
}

} // namespace tqsv2731
