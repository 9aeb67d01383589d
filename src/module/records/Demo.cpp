#include "module/records/Demo.h"

#include "ado/Connection.h"
#include "module/records/DemoBuilder.h"
#include "module/records/SqliteDemoDb.h"

namespace records {

void loadDemo(const ado::Connection &connection, const DemoOptions &options,
              const DemoProgress &progress) {
    SqliteDemoDb db(connection);
    connection.BeginTrans();
    try {
        loadDemo(db, options, progress);
    } catch (const vb::Error &) {
        connection.RollbackTrans();
        throw;
    }
    connection.CommitTrans();
}

void loadDemo(DemoDb &db, const DemoOptions &options, const DemoProgress &progress) {
    DemoBuilder(db, options, progress).build();
}

} // namespace records
