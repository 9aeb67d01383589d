// The embedded provider: the module's SQL Server text run on an SQLite file.
#pragma once

#include "ado/Provider.h"
#include "ado/sql/Catalog.h"
#include "ado/sqlite/Database.h"
#include "ado/sqlite/NativeStatement.h"
#include "ado/sqlite/ValueConversion.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace ado::sqlite {

using sql::Catalog;

/// Runs statements through the translator (Translator.h) on one database
/// file. Rows written through recordsets go in by prepared statements kept
/// for each table and set of columns, with SQL Server's conversions
/// (ValueConversion.h). Stored procedures are the bodies of the table
/// sv_procedure (StoredProcedures.h).
class SqliteProvider : public Provider {
public:
    SqliteProvider(std::string_view path, Database::Mode mode);

    Database &database() { return *db_; }
    /// The tables and views, read again whenever the schema has changed.
    const Catalog &catalog();

    std::unique_ptr<Cursor> open(std::string_view sql, bool updatable, StatementLog &log) override;
    std::unique_ptr<Cursor> execute(std::string_view sql, long &rowsAffected,
                                    StatementLog &log) override;
    std::int64_t insertRow(std::string_view table, const std::vector<ColumnValue> &values,
                           StatementLog &log) override;
    std::int64_t updateRow(std::string_view table, std::int64_t rowid,
                           const std::vector<ColumnValue> &values, StatementLog &log) override;
    std::vector<vb::Variant> readRow(std::string_view table, std::int64_t rowid,
                                     const std::vector<std::string> &columns) override;
    std::vector<ParameterInfo> procedureParameters(std::string_view name) override;
    long runProcedure(std::string_view name, const std::vector<vb::Variant> &arguments,
                      StatementLog &log) override;
    void beginTransaction() override;
    void commitTransaction() override;
    void rollbackTransaction() override;
    void setCommandTimeout(int seconds) override { timeout_ = seconds; }

private:
    struct Prepared {
        NativeStatement statement;
        std::vector<ColumnType> types;
        std::string table;
        std::vector<std::string> columns;
        bool sameWrite(std::string_view table, const std::vector<ColumnValue> &values) const;
    };
    Prepared &prepared(const std::string &key, const std::string &sql, std::string_view table,
                       const std::vector<ColumnValue> &values);
    void bindValues(Prepared &p, const std::vector<ColumnValue> &values);

    std::shared_ptr<Database> db_;
    Catalog catalog_;
    std::int64_t schemaVersion_ = -1;
    std::unique_ptr<NativeStatement> schemaVersionQuery_;
    std::map<std::string, Prepared> writes_;
    Prepared *lastInsert_ = nullptr; // a save adds rows of one shape: no lookup for the next

    int timeout_ = 30;
};

} // namespace ado::sqlite
