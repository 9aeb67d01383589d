#include "ado/sqlite/SqliteCursor.h"

#include "ado/sql/Catalog.h"
#include "ado/sqlite/Database.h"

namespace ado::sqlite {

using sql::lowerCase;

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
    statement_.database().addReader(this);
}

SqliteCursor::~SqliteCursor() {
    statement_.database().removeReader(this);
}

bool SqliteCursor::next(Row &row) {
    if (detached_) {
        if (!detachedRows_.empty()) {
            row = std::move(detachedRows_.front());
            detachedRows_.pop_front();
            return true;
        }
        if (detachedError_) {
            vb::Error error = std::move(*detachedError_);
            detachedError_.reset();
            throw error;
        }
        return false;
    }
    Database::TimeLimit limit(statement_.database(), timeoutSeconds_);
    return readRow(row);
}

void SqliteCursor::restart() {
    detached_ = false;
    detachedRows_.clear();
    detachedError_.reset();
    statement_.reset();
}

// Runs inside the time limit of the statement that asked.
void SqliteCursor::detach() {
    if (detached_ || !statement_.busy())
        return;
    detached_ = true;
    Row row;
    try {
        while (readRow(row))
            detachedRows_.push_back(std::move(row));
    } catch (const vb::Error &e) {
        // The rows before it still count; the reader meets the error where it stood.
        detachedError_ = e;
        statement_.reset();
    }
}

bool SqliteCursor::readRow(Row &row) {
    if (!statement_.step())
        return false;
    row.values.resize(fields_.size());
    for (std::size_t i = 0; i < fields_.size(); ++i)
        row.values[i] = readBack(statement_.stored(static_cast<int>(i)), kinds_[i]);
    row.rowid = rowid_ ? statement_.integer(static_cast<int>(fields_.size())) : 0;
    return true;
}

} // namespace ado::sqlite
