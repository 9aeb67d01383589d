// ado::Recordset: rows of a statement with a current row, as ADODB.Recordset was.
#pragma once

#include "ado/Constants.h"
#include "ado/Field.h"
#include "ado/Fields.h"

#include <memory>
#include <string>
#include <string_view>

namespace ado {

class Connection;
class Cursor;
struct RecordsetState;

/// A cursor over the rows of a statement. Copying a Recordset shares it, as
/// object references did. Naming rules in Constants.h (Eof/Bof for EOF/BOF).
///
/// Recordsets are lazy: opening reads no row, so that opening "select * from
/// T" only to AddNew costs the same whatever the size of T. Every cursor type
/// reads the rows of its statement as far as it is moved: a grid that shows
/// the first 500 rows of 100,000 reads 501. MoveLast reads them all.
/// RecordCount is known for keyset and static cursors and -1 for
/// forward-only and dynamic ones; the provider counts the rows not yet read
/// where it can, within the same read as the rows themselves, so the count
/// and the rows agree. The rows of a keyset cursor are those of the first
/// look at a row; rows the recordset adds come after them.
///
/// Rows can be added (AddNew, set fields, Update) and changed (set fields of
/// the current row, Update) when the lock type is not read-only and the
/// statement reads one table; a changed row is found again by its rowid.
/// Moving off a row being edited, or AddNew again, saves it first, as ADO
/// did. With adLockBatchOptimistic, Update keeps rows until UpdateBatch.
class Recordset {
public:
    /// A new, closed recordset.
    Recordset();

    /// Opens a statement on a connection. `cursorType` 0-3 (adOpen...),
    /// `lockType` 1-4 (adLock...); -1 takes the default (forward-only,
    /// read-only). Out of range raises 3001; an open recordset raises 3705.
    /// A statement that returns no rows (an update) runs at once and the
    /// recordset stays closed, as it did.
    void Open(std::string_view source, const Connection &connection,
              int cursorType = adOpenForwardOnly, int lockType = adLockReadOnly, int options = -1);
    /// Closes it; an edit in progress raises 3219 (Update or CancelUpdate first).
    void Close();
    /// adStateOpen (1) or adStateClosed (0).
    int State() const;

    bool Eof() const;
    bool Bof() const;
    /// Moves raise 3021 past either end; MoveFirst and MoveLast on no rows too.
    /// MovePrevious and MoveLast on a forward-only recordset raise -2147217884.
    void MoveFirst();
    void MoveNext();
    void MovePrevious();
    void MoveLast();
    long RecordCount() const;
    /// The current row's place from 1; adPosBOF, adPosEOF, or adPosUnknown
    /// for a forward-only cursor, an empty recordset or a row being added.
    long AbsolutePosition() const;

    void AddNew();
    void Update();
    void UpdateBatch();
    void CancelUpdate();
    /// adEditNone, adEditInProgress or adEditAdd.
    int EditMode() const;

    ado::Fields Fields() const;
    /// A field by position from 0, or by name ignoring letter case; a field
    /// that is not there raises 3265.
    Field Fields(int index) const;
    Field Fields(std::string_view name) const;
    Field Fields(const char *name) const { return Fields(std::string_view(name)); }

    const std::string &Source() const;
    int CursorType() const;
    int LockType() const;

    /// The same recordset (not only equal rows).
    friend bool operator==(const Recordset &a, const Recordset &b) { return a.state_ == b.state_; }

private:
    friend class Connection;
    /// Wraps the rows of Connection::Execute: forward-only and read-only.
    void adopt(const Connection &connection, std::string source, std::unique_ptr<Cursor> cursor);

    std::shared_ptr<RecordsetState> state_;
};

} // namespace ado
