// A module with its register loaded and the entry form opened for a new entry, as New opens it.
#pragma once

#include "frame/ModuleSession.h"

#include "module/entry/frmStockVerification.h"

#include <string>
#include <vector>

namespace tqsv2731::test {

/// The entry form of a new entry, loaded after the register (which makes the
/// shared services), with the header the register gives it.
class EntrySession {
public:
    /// `setupSql` runs on the database before the entry form loads.
    explicit EntrySession(const SessionValues &values = {}, const std::string &setupSql = "");

    /// The entry form, loaded afresh by this touch if it was unloaded.
    frmStockVerification &entry() { return s.m.frmStockVerification(); }
    /// Whether the entry form is loaded, without touching it.
    bool entryLoaded() {
        return s.m.slotOf<frmStockVerification>(s.m.frmStockVerification_).loaded();
    }

    /// Appends a row as the detail form does: the running number, then
    /// sub-items 1 to 13. `cells` gives sub-items 3 to 8 (description, the
    /// four quantities, item id); the rest are the location 1, shipment 1,
    /// cost 14.5 and unit "PCS" of a plain row.
    void addRow(const std::vector<std::string> &cells);

    /// Rows of a query, each value as text (Null as "NULL").
    std::vector<std::vector<std::string>> rows(const std::string &sql);
    /// The one value of a query, as text.
    std::string value(const std::string &sql);

    ModuleSession s;
};

} // namespace tqsv2731::test
