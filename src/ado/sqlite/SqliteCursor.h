// The rows of a translated select, read from SQLite one at a time.
#pragma once

#include "ado/Provider.h"
#include "ado/sql/ColumnType.h"
#include "ado/sql/Translator.h"
#include "ado/sqlite/Database.h"
#include "ado/sqlite/NativeStatement.h"
#include "ado/sqlite/StatementCache.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ado::sqlite {

using sql::Translation;

/// A prepared select and the way to read its rows: values typed by the
/// declared types of their columns, the rowid split off when the translator
/// added it. Fields of the base table know their column, for writing.
/// Asked to detach (Database::Reader) while half read, it reads the rest of
/// its rows into memory and serves them from there. It counts the rows it
/// has yet to give with a count of the same statement inside the same read,
/// started first if need be, so that the count and the rows agree.
/// A statement taken from the provider's StatementCache goes back there when
/// the cursor closes, if the cache still lives.
class SqliteCursor : public Cursor, private Database::Reader {
public:
    /// Where the statement goes back to: the cache, the text it is kept
    /// under and the generation of the cache it was prepared in.
    struct Return {
        std::weak_ptr<StatementCache> cache;
        std::string sql;
        std::uint64_t generation = 0;
    };

    SqliteCursor(NativeStatement statement, const Translation &translation, int timeoutSeconds,
                 std::optional<Return> giveBack = std::nullopt);
    ~SqliteCursor();
    SqliteCursor(const SqliteCursor &) = delete;
    SqliteCursor &operator=(const SqliteCursor &) = delete;

    const std::vector<FieldInfo> &fields() const override { return fields_; }
    const std::string &baseTable() const override { return baseTable_; }
    bool rowsIdentified() const override { return rowid_; }
    bool next(Row &row) override;
    void restart() override;
    std::optional<long> remaining() override;

private:
    void detach() override;
    bool readRow(Row &row);

    NativeStatement statement_;
    std::optional<Return> giveBack_;
    std::deque<Row> buffered_;               // read ahead: to start the read, or when detached
    std::optional<vb::Error> detachedError_; // met while reading the rest, raised in its place
    bool detached_ = false;
    bool finished_ = false; // the statement has given its last row
    long delivered_ = 0;    // rows given by `next` since the start
    std::vector<FieldInfo> fields_;
    std::vector<ColumnKind> kinds_;
    std::string baseTable_;
    bool rowid_;
    int timeoutSeconds_;
};

} // namespace ado::sqlite
