// Module: the globals of tqsv2731, its session values and the one instance of each form.
#pragma once

#include "ado/Connection.h"
#include "forms/FormSlot.h"
#include "services/Context.h"
#include "vb/Date.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace forms {
class Screen;
}
namespace ScreenPalette {
class clsScreenPalette;
}
namespace StockActivityTrail {
class clsActivityTrail;
}

namespace tqsv2731 {

class frmMaster;
class frmStockVerification;
class frmStockVerificationDetail;
class frmscanBc;
class FrmFetch;
class frmPrint;
class frmcancelreason;
class frmUnProcessedItems;

/// What the old module kept in global variables, gathered in one object so
/// that a process (or a test) can run as many modules as it likes. Every form
/// holds a reference to its Module; the public class copies the session
/// values in before it opens the register.
///
/// The fields keep the names and the widths of the old globals: the "int"
/// ids are 32-bit in spite of their prefix, and calls that narrow them to 16
/// bits do so with vb::CInt where the old code did.
///
/// Forms load on first touch: `m.frmMaster()` makes and loads the register
/// when it is not loaded (running Form_Load), as touching a form did. An
/// unloaded form comes back fresh on the next touch. A new form gets a slot
/// member and a touch function here, defined in Module.cpp, where the form's
/// header is included.
class Module {
public:
    /// `context` is the host's: its screen shows the forms, message boxes and
    /// dialogs, and the services made by name get a copy of it.
    explicit Module(const services::Context &context);
    ~Module();
    Module(const Module &) = delete;
    Module &operator=(const Module &) = delete;

    forms::Screen &screen() const { return context_.screen(); }
    /// What the services get when the module creates one by name: the host's
    /// screen and state folder, with the session's connection and company.
    services::Context &context();

    // ---- session values, copied in by clsStockVerification::Show --------------

    /// The host's open connection; the module never opens or closes it. A
    /// service that takes it by reference may hand back another handle.
    ado::Connection adocon;
    std::int32_t intCompanyID = 0;
    std::int32_t intUserID = 0;
    std::int32_t intGodownID = 0;
    /// 1005 "Stock Verification", 1013 "Total Stock Verification".
    std::int32_t intInterfaceID = 0;
    /// Title of the module's message boxes.
    std::string strMsgboxCaption;
    /// The working date of the session, not the clock.
    vb::Date dtProcessDate;
    /// The folder of the program file (the old App.Path), set by the host.
    std::string AppPath;

    // ---- written by the register ----------------------------------------------

    /// The register's list statement, kept so that a saved or deleted entry's
    /// row can be read again with the same columns (UpdateEditedRow).
    std::string strRegisterSql;
    /// Entries dated after this day are listed; older ones are out of reach.
    vb::Date dtListFloorDate;
    /// `username` of the current user at this godown.
    std::string strUserName;
    /// The user's function letters ("N", "E", "D", "P"), upper-cased and
    /// trimmed at each test; keeps its text when the user has no rights row.
    std::string strFunctionRights;
    /// "N" a new entry, "E" an existing one; empty until the first command.
    /// Every failure report carries it.
    std::string strTransactionMode;
    /// `svhid` of the entry in hand.
    std::int32_t lngVerificationId = 0;
    /// Reason typed for the deletion in hand.
    std::string strCancelReason;
    /// The audit and colour services, one for the module, made by the
    /// register's Form_Load; empty before it.
    std::shared_ptr<StockActivityTrail::clsActivityTrail> objActivityTrail;
    std::shared_ptr<ScreenPalette::clsScreenPalette> objScreenPalette;
    bool blnIntegerQuantity = false;
    bool blnAliasEnabled = false;
    std::string strAliasOne;
    std::string strAliasTwo;

    // ---- shared by the entry, detail and fetch forms --------------------------

    /// "N" or "E": how the detail form works on the entry's list.
    std::string strDetailMode;
    /// A row was accepted by the detail form since the entry form loaded.
    bool blnEntryChanged = false;
    /// The rate list: currency ids each followed by ":", then "-", then the
    /// selling rates each followed by ":".
    std::string strExchangeRates;
    /// Code of the item last taken in the fetch dialog.
    std::string strFetchedItemCode;
    /// The inventory and stock transfer control accounts of the company and
    /// the godown's department, read by the entry form at load.
    std::int32_t lngInventoryAccountId = 0;
    std::int32_t lngStockTransferAccountId = 0;
    std::int32_t lngDepartmentId = 0;
    /// The item last chosen in the detail form has stock in a location.
    bool blnItemHasLocation = false;
    /// Set with blnItemHasLocation and never read.
    bool blnItemHasLocationSeen = false;
    /// Working arrays of the rate routines: the two halves of the rate list,
    /// and its ids and rates.
    std::vector<std::string> strRatePairs;
    std::vector<std::string> strCurrencyIds;
    std::vector<std::string> strSellingRates;

    // ---- the forms ------------------------------------------------------------

    /// The register, loaded by this touch if it is not loaded.
    tqsv2731::frmMaster &frmMaster();
    /// The register's slot, to look at the form without touching it.
    forms::FormSlot<tqsv2731::frmMaster> &frmMasterSlot() { return frmMaster_; }

    // The other forms: each touch is defined in the form's own .cpp as
    //     frmX &Module::frmX() { return slotOf<tqsv2731::frmX>(frmX_).get(); }
    // so that the module links without a form until something touches it.
    tqsv2731::frmStockVerification &frmStockVerification();
    tqsv2731::frmStockVerificationDetail &frmStockVerificationDetail();
    tqsv2731::frmscanBc &frmscanBc();
    tqsv2731::FrmFetch &FrmFetch();
    tqsv2731::frmPrint &frmPrint();
    tqsv2731::frmcancelreason &frmcancelreason();
    tqsv2731::frmUnProcessedItems &frmUnProcessedItems();

    /// The slot kept in `holder`, made on first use. A form's own .cpp calls
    /// it, where the form's class is complete; `slotOf<T>(holder).peek()`
    /// looks at the form without touching it.
    template <class Form> forms::FormSlot<Form> &slotOf(std::shared_ptr<void> &holder) {
        if (!holder) {
            holder = std::make_shared<forms::FormSlot<Form>>(
                [this] { return std::make_unique<Form>(*this); });
        }
        return *static_cast<forms::FormSlot<Form> *>(holder.get());
    }

    // Slots of the forms above, by slotOf.
    std::shared_ptr<void> frmStockVerification_;
    std::shared_ptr<void> frmStockVerificationDetail_;
    std::shared_ptr<void> frmscanBc_;
    std::shared_ptr<void> FrmFetch_;
    std::shared_ptr<void> frmPrint_;
    std::shared_ptr<void> frmcancelreason_;
    std::shared_ptr<void> frmUnProcessedItems_;

private:
    services::Context context_;
    forms::FormSlot<tqsv2731::frmMaster> frmMaster_;
};

} // namespace tqsv2731
