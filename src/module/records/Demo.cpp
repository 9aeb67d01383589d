#include "module/records/Demo.h"

#include "ado/Connection.h"
#include "module/records/DemoBuilder.h"

namespace records {

void loadDemo(const ado::Connection &connection, const DemoOptions &options,
              const DemoProgress &progress) {
    DemoBuilder builder(connection, options, progress);
    connection.BeginTrans();
    try {
        builder.build();
    } catch (const vb::Error &) {
        connection.RollbackTrans();
        throw;
    }
    connection.CommitTrans();
}

} // namespace records
