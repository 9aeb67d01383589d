#include "module/frame/Module.h"

#include "module/register/frmMaster.h"

#include <memory>

namespace tqsv2731 {

Module::Module(const services::Context &context)
    : context_(context),
      frmMaster_([this] { return std::make_unique<tqsv2731::frmMaster>(*this); }) {}

Module::~Module() = default;

services::Context &Module::context() {
    // Services made by name see the session as it stands now, also after a
    // service handed back another connection.
    context_.connection = adocon;
    context_.companyId = intCompanyID;
    return context_;
}

tqsv2731::frmMaster &Module::frmMaster() {
    return frmMaster_.get();
}

} // namespace tqsv2731
