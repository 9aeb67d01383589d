// The state behind a Recordset and its Field handles: rows, position and the row being edited.
#pragma once

#include "ado/Connection.h"
#include "ado/Constants.h"
#include "ado/Provider.h"

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ado {

/// Shared by the copies of a Recordset and by the Field handles taken from it.
/// Recordset.cpp holds its behaviour; the members are plain so that the
/// rules read in one place.
struct RecordsetState {
    ~RecordsetState();

    /// Back to a closed recordset with no rows, ready to open again.
    void reset();
    void requireOpen() const;
    bool scrollable() const { return cursorType != adOpenForwardOnly; }

    // Reading rows.
    void readAllRows();
    bool readStatementRow();
    void readUpTo(long index);
    long rowCount();
    bool readNextRow();
    void startReading();
    bool eof();
    bool bof();
    Row &currentRow();
    void refresh(Row &row);

    // Fields.
    int indexOf(std::string_view name) const;
    void checkIndex(int index) const;
    vb::Variant value(int index);
    void setValue(int index, const vb::Variant &value);

    // Writing rows.
    void beginEdit();
    void addNew();
    void save();
    void placeAdded(Row row, bool stored);
    void writeAdded(Row &row, const std::vector<vb::Variant> &values,
                    const std::vector<bool> &changed);
    void writeChanged(Row &row, const std::vector<vb::Variant> &values,
                      const std::vector<bool> &changed);
    void saveBatch();
    void leaveRow();

    void close();
    void traceClosed();

    bool open = false;
    Connection connection;
    std::string source;
    int cursorType = adOpenForwardOnly;
    int lockType = adLockReadOnly;
    long sequence = 0; // the trace number of the open, 0 for rows of Connection.Execute

    std::unique_ptr<Cursor> cursor; // until every row is read
    std::vector<FieldInfo> fields;
    std::vector<std::string> foldedNames; // field names in lower case, for finding fields
    mutable std::size_t lastFound = 0;    // fields are mostly set in order: look after it first
    std::string baseTable;
    bool identified = false; // rows carry their rowid

    // Scrollable cursors: the rows of the statement read so far (the first
    // `fromStatement`), then the rows added; the current one at `position`
    // (-1 before the first, rows.size() after the last). The statement's
    // rows are read as far as the cursor moves; the added rows stand after
    // all of them, so that reaching an added row from a row of the statement
    // reads the rest of the statement first.
    // Forward-only: the current row alone, at position 0.
    std::deque<Row> rows;    // grows at the end without moving the rows it holds
    std::vector<bool> stale; // the row was written: read its values again before use
    long position = 0;
    long fromStatement = 0;
    long counted = -1; // rows of the statement as the provider counted them, -1 unknown
    bool allRead = false;
    bool started = false; // the first row has been asked for
    bool atEnd = false;   // forward-only: past the last row

    int editMode = adEditNone;
    std::vector<vb::Variant> buffer;
    std::vector<bool> changed;
    std::vector<ColumnValue> written; // the fields of the row being written

    struct Pending {
        std::size_t row;
        bool add;
        std::vector<vb::Variant> values;
        std::vector<bool> changed;
    };
    std::vector<Pending> batch; // adLockBatchOptimistic: rows waiting for UpdateBatch

    long rowsRead = 0, rowsAdded = 0, rowsChanged = 0;
};

} // namespace ado
