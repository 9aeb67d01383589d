// The .sql files of the database (schema, views, stored procedures), built into the program.
#pragma once

#include <span>
#include <string_view>

namespace records {

struct EmbeddedSqlFile {
    std::string_view name; // path below src/module/records/sql, e.g. "procedures/x.sql"
    std::string_view text;
};

/// Every embedded file, in the order of their names.
std::span<const EmbeddedSqlFile> embeddedSqlFiles();

/// The text of one embedded file; raises a vb::Error when there is none of that name.
std::string_view embeddedSql(std::string_view name);

} // namespace records
