#include "ado/Recordset.h"

#include "ado/Errors.h"
#include "ado/RecordsetState.h"
#include "ado/Session.h"

#include <set>

namespace ado {

namespace {

constexpr std::string_view source = "ADODB.Recordset";

std::string_view cursorName(int type) {
    switch (type) {
    case adOpenKeyset:
        return "keyset";
    case adOpenDynamic:
        return "dynamic";
    case adOpenStatic:
        return "static";
    default:
        return "forward-only";
    }
}

std::string_view lockName(int type) {
    switch (type) {
    case adLockPessimistic:
        return "pessimistic";
    case adLockOptimistic:
        return "optimistic";
    case adLockBatchOptimistic:
        return "batch-optimistic";
    default:
        return "read-only";
    }
}

// Names compare ignoring ASCII letter case, as the old objects found fields.
char folded(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

// The changed fields as the provider writes them, into a list kept between rows.
void columnValues(const std::vector<FieldInfo> &fields, const std::vector<vb::Variant> &values,
                  const std::vector<bool> &changed, std::vector<ColumnValue> &out) {
    out.clear();
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (changed[i])
            out.push_back({&fields[i].baseColumn, &values[i]});
}

vb::Error insufficientBaseTable(const std::string &sql) {
    return adoError(errnum::Unspecified, source,
                    "Insufficient base table information for updating or refreshing. (\"" + sql +
                        "\" does not read exactly one table.)");
}

} // namespace

// ---- reading rows ----------------------------------------------------------

RecordsetState::~RecordsetState() {
    if (open)
        traceClosed();
}

void RecordsetState::reset() {
    cursor.reset();
    fields.clear();
    baseTable.clear();
    identified = false;
    rows.clear();
    stale.clear();
    position = 0;
    fromStatement = 0;
    counted = -1;
    allRead = started = atEnd = false;
    editMode = adEditNone;
    buffer.clear();
    changed.clear();
    batch.clear();
    rowsRead = rowsAdded = rowsChanged = 0;
}

void RecordsetState::requireOpen() const {
    if (!open)
        throw adoError(errnum::ObjectClosed, source);
}

// The rest of the statement's rows. Rows added before that move behind them
// (the statement may already see them: they are not taken twice), and the
// position and the rows waiting for UpdateBatch move with them.
void RecordsetState::readAllRows() {
    if (allRead)
        return;
    connection.session(); // a closed connection stops here with 3709
    const long firstAdded = fromStatement;
    std::deque<Row> added(std::make_move_iterator(rows.begin() + firstAdded),
                          std::make_move_iterator(rows.end()));
    std::vector<bool> addedStale(stale.begin() + firstAdded, stale.end());
    rows.erase(rows.begin() + firstAdded, rows.end());
    stale.resize(static_cast<std::size_t>(firstAdded));
    std::set<std::int64_t> addedIds;
    for (const auto &r : added)
        addedIds.insert(r.rowid);
    Row row;
    while (cursor && cursor->next(row)) {
        ++rowsRead;
        if (identified && addedIds.count(row.rowid))
            continue;
        rows.push_back(std::move(row));
        stale.push_back(false);
    }
    fromStatement = static_cast<long>(rows.size());
    const long moved = fromStatement - firstAdded;
    rows.insert(rows.end(), std::make_move_iterator(added.begin()),
                std::make_move_iterator(added.end()));
    stale.insert(stale.end(), addedStale.begin(), addedStale.end());
    if (position >= firstAdded)
        position += moved;
    for (auto &p : batch)
        if (static_cast<long>(p.row) >= firstAdded)
            p.row += static_cast<std::size_t>(moved);
    cursor.reset();
    allRead = true;
}

// One more row of the statement, while no row has been added behind them.
bool RecordsetState::readStatementRow() {
    connection.session();
    Row row;
    if (cursor && cursor->next(row)) {
        ++rowsRead;
        rows.push_back(std::move(row));
        stale.push_back(false);
        ++fromStatement;
        return true;
    }
    cursor.reset();
    allRead = true;
    return false;
}

// Reads the statement's rows up to the one at `index`, where it has one. An
// added row stands after every row of the statement, so that with rows
// added the whole statement is read.
void RecordsetState::readUpTo(long index) {
    while (!allRead && index >= fromStatement) {
        if (static_cast<long>(rows.size()) > fromStatement) {
            readAllRows();
            return;
        }
        readStatementRow();
    }
}

// The rows of a keyset or static cursor: counted by the provider while none
// has been added and it can count them, read otherwise. The count stays as
// first given: the rows are those of one read.
long RecordsetState::rowCount() {
    connection.session();
    if (!allRead && counted < 0 && static_cast<long>(rows.size()) == fromStatement && cursor)
        if (auto left = cursor->remaining())
            counted = fromStatement + *left;
    if (!allRead && counted < 0)
        readAllRows();
    if (allRead)
        return static_cast<long>(rows.size());
    return counted + static_cast<long>(rows.size()) - fromStatement;
}

// Forward-only: the next row of the statement becomes the current one.
bool RecordsetState::readNextRow() {
    started = true;
    rows.resize(1);
    stale.assign(1, false);
    position = 0;
    connection.session();
    if (cursor && cursor->next(rows[0])) {
        ++rowsRead;
        atEnd = false;
        return true;
    }
    rows.clear();
    stale.clear();
    atEnd = true;
    return false;
}

// The first look at a row reads the first row of the statement, unless the
// recordset stands on a row it added.
void RecordsetState::startReading() {
    if (started)
        return;
    if (!scrollable()) {
        readNextRow();
        return;
    }
    started = true;
    if (rows.empty())
        readUpTo(0);
}

bool RecordsetState::eof() {
    requireOpen();
    if (editMode == adEditAdd)
        return false;
    startReading();
    if (!scrollable())
        return atEnd;
    return rows.empty() || position >= static_cast<long>(rows.size());
}

bool RecordsetState::bof() {
    requireOpen();
    if (editMode == adEditAdd)
        return false;
    startReading();
    if (!scrollable())
        return atEnd && rowsRead == 0 && rowsAdded == 0;
    return rows.empty() || position < 0;
}

Row &RecordsetState::currentRow() {
    if (eof() || bof())
        throw vb::Error::standard(errnum::NoCurrentRecord, std::string(source));
    Row &row = rows[static_cast<std::size_t>(position)];
    if (stale[static_cast<std::size_t>(position)]) {
        refresh(row);
        stale[static_cast<std::size_t>(position)] = false;
    }
    return row;
}

// Values of a written row as the database now holds them (defaults included).
void RecordsetState::refresh(Row &row) {
    std::vector<std::string> columns;
    std::vector<std::size_t> at;
    for (std::size_t i = 0; i < fields.size(); ++i)
        if (!fields[i].baseColumn.empty()) {
            columns.push_back(fields[i].baseColumn);
            at.push_back(i);
        }
    auto values = connection.session().provider().readRow(baseTable, row.rowid, columns);
    // A written row may hold no values yet: they come from the database.
    row.values.resize(fields.size(), vb::Variant::null());
    for (std::size_t i = 0; i < at.size() && i < values.size(); ++i)
        row.values[at[i]] = std::move(values[i]);
}

// ---- fields ------------------------------------------------------------------

int RecordsetState::indexOf(std::string_view name) const {
    requireOpen();
    // A save finds a field by name for every value it writes, mostly in the
    // order of the columns: look first after the field found last.
    auto matches = [&](std::size_t i) {
        const std::string &candidate = foldedNames[i];
        if (candidate.size() != name.size())
            return false;
        if (fields[i].name == name) // the spelling of the statement, the usual case
            return true;
        for (std::size_t j = 0; j < name.size(); ++j)
            if (folded(name[j]) != candidate[j])
                return false;
        return true;
    };
    const std::size_t n = foldedNames.size();
    std::size_t i = lastFound + 1 >= n ? 0 : lastFound + 1;
    for (std::size_t k = 0; k < n; ++k) {
        if (matches(i)) {
            lastFound = i;
            return static_cast<int>(i);
        }
        i = i + 1 == n ? 0 : i + 1;
    }
    throw adoError(errnum::ItemNotFound, source,
                   adoErrorText(errnum::ItemNotFound) + " (field '" + std::string(name) + "')");
}

void RecordsetState::checkIndex(int index) const {
    requireOpen();
    if (index < 0 || index >= static_cast<int>(fields.size()))
        throw adoError(errnum::ItemNotFound, source);
}

vb::Variant RecordsetState::value(int index) {
    checkIndex(index);
    if (editMode == adEditAdd && !changed[static_cast<std::size_t>(index)])
        return vb::Variant::null(); // a new row holds nothing until a value is set
    if (editMode != adEditNone)
        return buffer[static_cast<std::size_t>(index)];
    return currentRow().values[static_cast<std::size_t>(index)];
}

void RecordsetState::setValue(int index, const vb::Variant &value) {
    checkIndex(index);
    if (lockType == adLockReadOnly)
        throw adoError(errnum::NotUpdatable, source);
    const auto &field = fields[static_cast<std::size_t>(index)];
    if (field.baseColumn.empty())
        throw adoError(errnum::MultipleStep, source,
                       adoErrorText(errnum::MultipleStep) + " (field '" + field.name +
                           "' is not a column of the table " + baseTable + ")");
    if (editMode == adEditNone)
        beginEdit();
    buffer[static_cast<std::size_t>(index)] = value;
    changed[static_cast<std::size_t>(index)] = true;
}

// ---- writing rows ----------------------------------------------------------

void RecordsetState::beginEdit() {
    Row &row = currentRow();
    if (!identified)
        throw insufficientBaseTable(source);
    buffer = row.values;
    changed.assign(fields.size(), false);
    editMode = adEditInProgress;
}

void RecordsetState::addNew() {
    requireOpen();
    if (lockType == adLockReadOnly)
        throw adoError(errnum::NotUpdatable, source);
    if (baseTable.empty())
        throw insufficientBaseTable(source);
    if (editMode != adEditNone)
        save();
    // The buffer keeps its old values: only the fields marked changed count.
    buffer.resize(fields.size());
    changed.assign(fields.size(), false);
    editMode = adEditAdd;
}

void RecordsetState::save() {
    requireOpen();
    if (editMode == adEditNone)
        return;
    if (lockType == adLockBatchOptimistic) {
        if (editMode == adEditAdd) {
            for (std::size_t i = 0; i < buffer.size(); ++i)
                if (!changed[i])
                    buffer[i] = vb::Variant::null();
            placeAdded(Row{buffer, 0}, false);
        }
        rows[static_cast<std::size_t>(position)].values = buffer;
        batch.push_back({static_cast<std::size_t>(position), editMode == adEditAdd,
                         std::move(buffer), std::move(changed)});
    } else if (editMode == adEditAdd) {
        // A failed write leaves the row in the edit buffer, as ADO kept a
        // failed AddNew pending. The row keeps no values of its own: they are
        // read back when asked for, so that adding many rows costs no copies.
        Row row;
        writeAdded(row, buffer, changed);
        placeAdded(std::move(row), true);
    } else {
        writeChanged(rows[static_cast<std::size_t>(position)], buffer, changed);
        stale[static_cast<std::size_t>(position)] = true;
    }
    editMode = adEditNone;
}

// An added row becomes the current row.
void RecordsetState::placeAdded(Row row, bool stored) {
    if (!scrollable()) {
        rows.clear();
        stale.clear();
        started = true;
        atEnd = false;
    }
    rows.push_back(std::move(row));
    stale.push_back(stored);
    position = static_cast<long>(rows.size()) - 1;
}

void RecordsetState::writeAdded(Row &row, const std::vector<vb::Variant> &values,
                                const std::vector<bool> &changedFields) {
    Session &s = connection.session();
    columnValues(fields, values, changedFields, written);
    std::string what;
    if (s.trace().active())
        what = "insert into " + baseTable + " (recordset #" + std::to_string(sequence) + ")";
    row.rowid = s.call(Operation::Update, what, "", [&](StatementLog &log) {
        return s.provider().insertRow(baseTable, written, log);
    });
    ++rowsAdded;
}

void RecordsetState::writeChanged(Row &row, const std::vector<vb::Variant> &values,
                                  const std::vector<bool> &changedFields) {
    Session &s = connection.session();
    columnValues(fields, values, changedFields, written);
    std::string what;
    if (s.trace().active())
        what = "update " + baseTable + " rowid " + std::to_string(row.rowid) + " (recordset #" +
               std::to_string(sequence) + ")";
    // A row the engine moves when it changes is known by where it stands now.
    row.rowid = s.call(Operation::Update, what, "", [&](StatementLog &log) {
        return s.provider().updateRow(baseTable, row.rowid, written, log);
    });
    row.values = values;
    ++rowsChanged;
}

void RecordsetState::saveBatch() {
    requireOpen();
    if (editMode != adEditNone)
        save();
    while (!batch.empty()) {
        Pending &p = batch.front();
        Row &row = rows[p.row];
        if (p.add)
            writeAdded(row, p.values, p.changed);
        else
            writeChanged(row, p.values, p.changed);
        stale[p.row] = true;
        batch.erase(batch.begin());
    }
}

// Moving off a row being edited saves it first.
void RecordsetState::leaveRow() {
    requireOpen();
    if (editMode != adEditNone)
        save();
}

void RecordsetState::traceClosed() {
    if (sequence == 0 || connection.State() != adStateOpen)
        return;
    connection.session().trace().writeClosed(sequence, rowsRead, rowsAdded, rowsChanged);
}

void RecordsetState::close() {
    requireOpen();
    if (editMode != adEditNone)
        throw adoError(errnum::IllegalOperation, source);
    traceClosed();
    open = false;
    cursor.reset();
    rows.clear();
    stale.clear();
    batch.clear();
}

} // namespace ado

namespace ado {

// ---- the Recordset handle ----------------------------------------------------

Recordset::Recordset() : state_(std::make_shared<RecordsetState>()) {}

void Recordset::Open(std::string_view sql, const Connection &connection, int cursorType,
                     int lockType, int) {
    RecordsetState &rs = *state_;
    if (rs.open)
        throw adoError(errnum::ObjectOpen, source);
    if (cursorType == adOpenUnspecified)
        cursorType = adOpenForwardOnly;
    if (lockType == adLockUnspecified)
        lockType = adLockReadOnly;
    if (cursorType < adOpenForwardOnly || cursorType > adOpenStatic || lockType < adLockReadOnly ||
        lockType > adLockBatchOptimistic)
        throw adoError(errnum::InvalidArgument, source);
    Session &s = connection.session();
    long sequence = s.nextSequence();
    std::string what =
        "open " + std::string(cursorName(cursorType)) + " " + std::string(lockName(lockType));
    bool updatable = lockType != adLockReadOnly;
    auto cursor = s.call(
        Operation::Open, what, sql,
        [&](StatementLog &log) {
            s.provider().setCommandTimeout(s.commandTimeout());
            return s.provider().open(sql, updatable, log);
        },
        sequence);
    rs.reset();
    if (cursor->fields().empty())
        return; // a statement that returns no rows has run; the recordset stays closed
    rs.sequence = sequence;
    rs.cursorType = cursorType;
    rs.lockType = lockType;
    adopt(connection, std::string(sql), std::move(cursor));
}

void Recordset::adopt(const Connection &connection, std::string sql,
                      std::unique_ptr<Cursor> cursor) {
    RecordsetState &rs = *state_;
    rs.connection = connection;
    rs.source = std::move(sql);
    rs.fields = cursor->fields();
    rs.foldedNames.clear();
    for (const auto &f : rs.fields) {
        rs.foldedNames.push_back(f.name);
        for (auto &ch : rs.foldedNames.back())
            ch = folded(ch);
    }
    rs.baseTable = cursor->baseTable();
    rs.identified = cursor->rowsIdentified();
    rs.cursor = std::move(cursor);
    rs.open = true;
}

void Recordset::Close() {
    state_->close();
}

int Recordset::State() const {
    return state_->open ? adStateOpen : adStateClosed;
}

bool Recordset::Eof() const {
    return state_->eof();
}

bool Recordset::Bof() const {
    return state_->bof();
}

void Recordset::MoveFirst() {
    RecordsetState &rs = *state_;
    rs.leaveRow();
    if (!rs.scrollable()) {
        // Forward-only: the statement runs again from its first row.
        if (rs.started && rs.cursor && !(rs.rowsRead == 1 && !rs.atEnd)) {
            rs.cursor->restart();
            rs.rowsRead = 0;
            rs.readNextRow();
        }
    } else {
        rs.started = true;
        rs.readUpTo(0);
        rs.position = 0;
    }
    if (rs.eof())
        throw vb::Error::standard(errnum::NoCurrentRecord, std::string(source));
}

void Recordset::MoveNext() {
    RecordsetState &rs = *state_;
    rs.leaveRow();
    if (rs.eof())
        throw vb::Error::standard(errnum::NoCurrentRecord, std::string(source));
    if (rs.scrollable()) {
        // Leaving the last row read of the statement: its next row first.
        if (rs.position < rs.fromStatement)
            rs.readUpTo(rs.position + 1);
        ++rs.position;
    } else {
        rs.readNextRow();
    }
}

void Recordset::MovePrevious() {
    RecordsetState &rs = *state_;
    rs.leaveRow();
    if (!rs.scrollable())
        throw adoError(errnum::NoBackwardFetch, source);
    if (rs.bof())
        throw vb::Error::standard(errnum::NoCurrentRecord, std::string(source));
    // Back from the first added row: the row before it is the statement's last.
    if (rs.position == rs.fromStatement && !rs.allRead)
        rs.readAllRows();
    --rs.position;
}

void Recordset::MoveLast() {
    RecordsetState &rs = *state_;
    rs.leaveRow();
    if (!rs.scrollable())
        throw adoError(errnum::NoBackwardFetch, source);
    rs.readAllRows();
    if (rs.rows.empty())
        throw vb::Error::standard(errnum::NoCurrentRecord, std::string(source));
    rs.position = static_cast<long>(rs.rows.size()) - 1;
}

long Recordset::RecordCount() const {
    RecordsetState &rs = *state_;
    rs.requireOpen();
    if (rs.cursorType == adOpenForwardOnly || rs.cursorType == adOpenDynamic)
        return -1;
    return rs.rowCount();
}

long Recordset::AbsolutePosition() const {
    RecordsetState &rs = *state_;
    rs.requireOpen();
    if (!rs.scrollable() || rs.editMode == adEditAdd)
        return adPosUnknown;
    if (rs.bof() && rs.eof())
        return adPosUnknown;
    if (rs.bof())
        return adPosBOF;
    if (rs.eof())
        return adPosEOF;
    // An added row's place counts every row of the statement before it.
    if (rs.position >= rs.fromStatement)
        rs.readAllRows();
    return rs.position + 1;
}

void Recordset::AddNew() {
    state_->addNew();
}

void Recordset::Update() {
    state_->save();
}

void Recordset::UpdateBatch() {
    state_->saveBatch();
}

void Recordset::CancelUpdate() {
    state_->requireOpen();
    state_->editMode = adEditNone;
}

int Recordset::EditMode() const {
    state_->requireOpen();
    return state_->editMode;
}

ado::Fields Recordset::Fields() const {
    state_->requireOpen();
    return ado::Fields(state_);
}

Field Recordset::Fields(int index) const {
    state_->checkIndex(index);
    return Field(state_, index);
}

Field Recordset::Fields(std::string_view name) const {
    return Field(state_, state_->indexOf(name));
}

const std::string &Recordset::Source() const {
    return state_->source;
}

int Recordset::CursorType() const {
    return state_->cursorType;
}

int Recordset::LockType() const {
    return state_->lockType;
}

} // namespace ado
