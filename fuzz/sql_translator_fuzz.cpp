// The SQL translator on any text: it translates or refuses with a vb::Error, and never
// crashes, hangs or reads past what it was given.
#include "ado/sql/Catalog.h"
#include "ado/sqlite/SqliteDialect.h"
#include "vb/Error.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

/// The module's own tables and a view, with the column kinds the translator looks at.
const ado::sql::Catalog &catalog() {
    static const ado::sql::Catalog tables = [] {
        ado::sql::Catalog c;
        c.add("loiStockVerificationHeader", false,
              {{"svhid", "int"},
               {"svhno", "varchar(20)"},
               {"svhdate", "datetime"},
               {"svhremarks", "varchar(250)"},
               {"svhVerificationby", "varchar(50)"},
               {"svhGodownid", "int"},
               {"svhFutureVc", "varchar(7)"},
               {"svhcancelled", "bit"},
               {"svhposted", "int"},
               {"svhcreatedtime", "varchar(8)"}});
        c.add("loiStockVerificationDetail", false,
              {{"svdid", "int"},
               {"svdGodownID", "int"},
               {"svdItemID", "int"},
               {"svdAvailStock", "numeric(18,3)"},
               {"svdVerifiedStock", "numeric(18,3)"},
               {"svdCostPrice", "money"}});
        c.add("aItem", false,
              {{"ItemId", "int"}, {"itemcode", "varchar(20)"}, {"itemrate", "float"}});
        c.add("moigodownstock", false,
              {{"gsGodownId", "int"}, {"gsItemId", "int"}, {"gsStock", "numeric(18,3)"}});
        c.add("vwgodownstockverification", true,
              {{"svhid", "int"}, {"svhNo", "varchar(20)"}, {"svhDate", "datetime"}});
        return c;
    }();
    return tables;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char *>(data), size);
    for (bool addRowid : {false, true}) {
        try {
            ado::sqlite::translate(text, catalog(), {addRowid});
        } catch (const vb::Error &) {
            // A refusal with the data layer's number is the answer to bad text.
        }
    }
    return 0;
}
