#include "ado/sqlite/SqliteCursor.h"

#include "ado/sql/Catalog.h"
#include "ado/sqlite/Database.h"

#include <cctype>

namespace ado::sqlite {

using sql::lowerCase;

SqliteCursor::SqliteCursor(NativeStatement statement, const Translation &translation,
                           int timeoutSeconds, std::optional<Return> giveBack)
    : statement_(std::move(statement)), giveBack_(std::move(giveBack)),
      baseTable_(translation.baseTable), rowid_(translation.rowidAdded),
      timeoutSeconds_(timeoutSeconds) {
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
    if (!giveBack_)
        return;
    if (auto cache = giveBack_->cache.lock())
        cache->give(giveBack_->sql, std::move(statement_), giveBack_->generation);
}

bool SqliteCursor::next(Row &row) {
    if (!buffered_.empty()) {
        row = std::move(buffered_.front());
        buffered_.pop_front();
        ++delivered_;
        return true;
    }
    if (detached_) {
        if (detachedError_) {
            vb::Error error = std::move(*detachedError_);
            detachedError_.reset();
            throw error;
        }
        return false;
    }
    Database::TimeLimit limit(statement_.database(), timeoutSeconds_);
    if (!readRow(row))
        return false;
    ++delivered_;
    return true;
}

void SqliteCursor::restart() {
    detached_ = finished_ = false;
    delivered_ = 0;
    buffered_.clear();
    detachedError_.reset();
    statement_.reset();
}

std::optional<long> SqliteCursor::remaining() {
    if (detached_ || finished_)
        return detachedError_ ? std::nullopt
                              : std::optional<long>(static_cast<long>(buffered_.size()));
    Database::TimeLimit limit(statement_.database(), timeoutSeconds_);
    // The count must read what the rows are read from: a statement not yet
    // started takes its first row now, which opens the read the count joins.
    if (!statement_.busy()) {
        Row row;
        if (!readRow(row))
            return 0;
        buffered_.push_back(std::move(row));
    }
    std::string inner = statement_.sql();
    while (!inner.empty() &&
           (std::isspace(static_cast<unsigned char>(inner.back())) || inner.back() == ';'))
        inner.pop_back();
    // The line break ends a comment the statement may close with.
    NativeStatement count(statement_.database(), "SELECT count(*) FROM (" + inner + "\n)");
    count.step();
    return static_cast<long>(count.integer(0)) - delivered_;
}

// Runs inside the time limit of the statement that asked.
void SqliteCursor::detach() {
    if (detached_ || !statement_.busy())
        return;
    detached_ = true;
    Row row;
    try {
        while (readRow(row))
            buffered_.push_back(std::move(row));
    } catch (const vb::Error &e) {
        // The rows before it still count; the reader meets the error where it stood.
        detachedError_ = e;
        statement_.reset();
    }
}

bool SqliteCursor::readRow(Row &row) {
    if (finished_)
        return false;
    if (!statement_.step()) {
        finished_ = true;
        return false;
    }
    row.values.resize(fields_.size());
    for (std::size_t i = 0; i < fields_.size(); ++i)
        row.values[i] = readBack(statement_.stored(static_cast<int>(i)), kinds_[i]);
    row.rowid = rowid_ ? statement_.integer(static_cast<int>(fields_.size())) : 0;
    return true;
}

} // namespace ado::sqlite
