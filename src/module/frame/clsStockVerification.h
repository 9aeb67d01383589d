// clsStockVerification: the module's one public class, which a host fills in and shows.
#pragma once

#include "ado/Connection.h"
#include "services/Context.h"
#include "services/ServiceObject.h"
#include "vb/Date.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tqsv2731 {

class Module;

/// The godown stock verification module as a host sees it: fill in the
/// connection and the session values, then Show. Show opens the register
/// modally and returns when the user has closed it; failures inside the
/// forms are reported by the fault desk and never reach the host.
///
/// The old component was an in-process server that the host's runtime found
/// through its four exported entry points (register, unregister, get class
/// object, can unload now). Here the creation name stands for all of them:
/// registerClsStockVerification() enters "tqsv2731.clsStockVerification"
/// with CreateObject, which then hands out instances by that name, and the
/// instance lives as long as the host holds it.
///
/// The values are copied into the module's globals by Show; they outlive the
/// instance's use, and a second Show overwrites them and loads a fresh
/// register while the other globals keep what they held.
class clsStockVerification : public services::ServiceObject {
public:
    static constexpr std::string_view CreationName = "tqsv2731.clsStockVerification";

    /// A class with a module of its own, on the host's screen.
    explicit clsStockVerification(const services::Context &context);
    /// A class that shows an existing module (its globals and forms).
    explicit clsStockVerification(std::shared_ptr<Module> module);
    ~clsStockVerification() override;
    std::string_view creationName() const override { return CreationName; }

    // The public members, in their order.

    /// The host's open connection. One never assigned is an empty connection,
    /// and Show goes on with it: the register's first statement then fails.
    ado::Connection adocon;
    std::string strMsgboxCaption;
    std::int32_t intCompanyID = 0;
    std::int32_t intUserID = 0;
    /// The working date of the session; it is not the clock.
    vb::Date dtProcessDate;
    /// 1005 "Stock Verification", 1013 "Total Stock Verification".
    std::int32_t intInterfaceID = 0;
    std::int32_t intGodownID = 0;

    /// Copies the values into the module and opens the register modally;
    /// returns when it is closed. There is no failure handler here: a failure
    /// before the register exists, or one that its handlers cannot report,
    /// goes to the host.
    void Show();

    /// The module behind the class, for hosts and tests that look at the forms.
    Module &module() const { return *module_; }

private:
    std::shared_ptr<Module> module_;
};

/// Enters the creation name "tqsv2731.clsStockVerification" with CreateObject.
/// Calling it again does nothing more.
void registerClsStockVerification();

} // namespace tqsv2731
