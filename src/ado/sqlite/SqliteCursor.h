// The rows of a translated select, read from SQLite one at a time.
#pragma once

#include "ado/Provider.h"
#include "ado/sqlite/ColumnType.h"
#include "ado/sqlite/NativeStatement.h"
#include "ado/sqlite/Translator.h"

#include <string>
#include <vector>

namespace ado::sqlite {

/// A prepared select and the way to read its rows: values typed by the
/// declared types of their columns, the rowid split off when the translator
/// added it. Fields of the base table know their column, for writing.
class SqliteCursor : public Cursor {
public:
    SqliteCursor(NativeStatement statement, const Translation &translation, int timeoutSeconds);

    const std::vector<FieldInfo> &fields() const override { return fields_; }
    const std::string &baseTable() const override { return baseTable_; }
    bool rowsIdentified() const override { return rowid_; }
    bool next(Row &row) override;
    void restart() override { statement_.reset(); }

private:
    NativeStatement statement_;
    std::vector<FieldInfo> fields_;
    std::vector<ColumnKind> kinds_;
    std::string baseTable_;
    bool rowid_;
    int timeoutSeconds_;
};

} // namespace ado::sqlite
