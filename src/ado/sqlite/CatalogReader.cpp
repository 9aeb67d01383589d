#include "ado/sqlite/CatalogReader.h"

#include "ado/sqlite/Database.h"
#include "ado/sqlite/NativeStatement.h"

namespace ado::sqlite {

sql::Catalog readCatalog(Database &db) {
    sql::Catalog catalog;
    NativeStatement list(db, "select name, type from sqlite_schema where type in ('table', "
                             "'view') and name not like 'sqlite\\_%' escape '\\'");
    NativeStatement info(db, "select name, type from pragma_table_info(?1)");
    while (list.step()) {
        std::string name = list.text(0);
        bool isView = list.text(1) == "view";
        std::vector<std::pair<std::string, std::string>> columns;
        info.reset();
        info.bindText(1, name);
        while (info.step())
            columns.emplace_back(info.text(0), info.text(1));
        catalog.add(name, isView, columns);
    }
    return catalog;
}

} // namespace ado::sqlite
