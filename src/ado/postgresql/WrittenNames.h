// The names of columns as the schema's text writes them, which the server folds to lower case.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ado::postgresql {

/// A column of a table or view, named as its CREATE statement writes it.
struct WrittenName {
    std::string relation;
    std::string column;
};

/// The columns of the tables and views that `ddl` creates (CREATE TABLE and
/// CREATE VIEW statements; others are passed over) whose written names hold
/// capitals: a table's column definitions, a view's column list or else the
/// names its first select gives (an alias, or the last part of a column).
/// Delimited names are kept by the server as written and are not listed.
std::vector<WrittenName> writtenNames(std::string_view ddl);

/// COMMENT ON COLUMN statements that keep the written names in the database,
/// where the provider's catalog reads them back (PgCatalog.h): a result then
/// names a view's or a table's column as the module knows it ("ItemId"), not
/// as the server folded it ("itemid").
std::string writtenNameComments(std::string_view ddl);

} // namespace ado::postgresql
