// The rows of a translated select, read from SQLite one at a time.
#pragma once

#include "ado/Provider.h"
#include "ado/sql/ColumnType.h"
#include "ado/sql/Translator.h"
#include "ado/sqlite/Database.h"
#include "ado/sqlite/NativeStatement.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace ado::sqlite {

using sql::Translation;

/// A prepared select and the way to read its rows: values typed by the
/// declared types of their columns, the rowid split off when the translator
/// added it. Fields of the base table know their column, for writing.
/// Asked to detach (Database::Reader) while half read, it reads the rest of
/// its rows into memory and serves them from there.
class SqliteCursor : public Cursor, private Database::Reader {
public:
    SqliteCursor(NativeStatement statement, const Translation &translation, int timeoutSeconds);
    ~SqliteCursor();
    SqliteCursor(const SqliteCursor &) = delete;
    SqliteCursor &operator=(const SqliteCursor &) = delete;

    const std::vector<FieldInfo> &fields() const override { return fields_; }
    const std::string &baseTable() const override { return baseTable_; }
    bool rowsIdentified() const override { return rowid_; }
    bool next(Row &row) override;
    void restart() override;

private:
    void detach() override;
    bool readRow(Row &row);

    NativeStatement statement_;
    std::deque<Row> detachedRows_;
    std::optional<vb::Error> detachedError_; // met while reading the rest, raised in its place
    bool detached_ = false;
    std::vector<FieldInfo> fields_;
    std::vector<ColumnKind> kinds_;
    std::string baseTable_;
    bool rowid_;
    int timeoutSeconds_;
};

} // namespace ado::sqlite
