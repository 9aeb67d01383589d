#include "ado/sqlite/SqliteCursor.h"

#include "ado/sqlite/Catalog.h"
#include "ado/sqlite/Database.h"

namespace ado::sqlite {

SqliteCursor::SqliteCursor(NativeStatement statement, const Translation &translation,
                           int timeoutSeconds)
    : statement_(std::move(statement)), baseTable_(translation.baseTable),
      rowid_(translation.rowidAdded), timeoutSeconds_(timeoutSeconds) {
    int columns = statement_.columnCount() - (rowid_ ? 1 : 0);
    std::string base = lowerCase(baseTable_);
    for (int i = 0; i < columns; ++i) {
        FieldInfo field{statement_.columnName(i), ""};
        if (!base.empty() && lowerCase(statement_.originTable(i)) == base)
            field.baseColumn = statement_.originColumn(i);
        fields_.push_back(std::move(field));
        kinds_.push_back(columnTypeOf(statement_.declaredType(i)).kind);
    }
}

bool SqliteCursor::next(Row &row) {
    Database::TimeLimit limit(statement_.database(), timeoutSeconds_);
    if (!statement_.step())
        return false;
    row.values.resize(fields_.size());
    for (std::size_t i = 0; i < fields_.size(); ++i)
        row.values[i] = readBack(statement_.stored(static_cast<int>(i)), kinds_[i]);
    row.rowid = rowid_ ? statement_.integer(static_cast<int>(fields_.size())) : 0;
    return true;
}

} // namespace ado::sqlite
