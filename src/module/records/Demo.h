// The demo company: master data, items, stock, ledgers and entries (docs/database.md).
#pragma once

#include "module/records/DemoOptions.h"

namespace ado {
class Connection;
}

namespace records {

class DemoDb;

/// Loads the demo company into a database that holds the empty schema (createSchema), in
/// one transaction: nothing is left behind when it fails. `progress` hears of each
/// thousand items.
void loadDemo(const ado::Connection &connection, const DemoOptions &options = {},
              const DemoProgress &progress = {});

/// Loads the demo company through `db`, inside whatever transaction the caller holds there.
void loadDemo(DemoDb &db, const DemoOptions &options, const DemoProgress &progress = {});

} // namespace records
