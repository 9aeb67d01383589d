#include "module/records/ServerDatabase.h"

#include "ado/postgresql/WrittenNames.h"
#include "module/records/Demo.h"
#include "module/records/EmbeddedSql.h"
#include "module/records/PostgresDatabase.h"
#include "module/records/PostgresDemoDb.h"
#include "vb/Error.h"

namespace records {

namespace {
constexpr std::string_view procedureFolder = "postgresql/procedures/";
} // namespace

std::string schemaNameComments() {
    return ado::postgresql::writtenNameComments(
        std::string(embeddedSql("postgresql/tables.sql")) + ";\n" +
        std::string(embeddedSql("postgresql/views.sql")));
}

void createServerSchema(PostgresDatabase &database) {
    database.execute(embeddedSql("postgresql/tables.sql"));
    database.execute(embeddedSql("postgresql/clock.sql"));
    database.execute(embeddedSql("postgresql/views.sql"));
    // The server folds unquoted names to lower case; results name the columns as written.
    database.execute(schemaNameComments());
    for (const auto &file : embeddedSqlFiles())
        if (file.name.starts_with(procedureFolder))
            database.execute(file.text);
}

void createServerDatabase(const std::string &connectionString,
                          const std::optional<DemoOptions> &demo, const DemoProgress &progress) {
    PostgresDatabase database(connectionString);
    // A second init-db on the same database must not stack a demo on the clerks' entries.
    if (database.value("SELECT to_regclass('loistockverificationheader')::text"))
        throw vb::Error(schemaExists, "records",
                        "The database " + connectionString +
                            " holds the stock verification tables already");
    // On a failure the connection closes with the transaction open, and the server rolls
    // it back: the database is left as it was found.
    database.execute("BEGIN");
    createServerSchema(database);
    if (demo) {
        PostgresDemoDb db(database);
        loadDemo(db, *demo, progress);
    }
    database.execute("COMMIT");
}

} // namespace records
