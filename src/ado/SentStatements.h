// The record of what the module sent to its database, for tests that check it statement by statement.
#pragma once

#include "ado/Operation.h"

#include <string>
#include <string_view>
#include <vector>

namespace ado {

/// While recording, keeps the text of every statement a connection sends (a
/// recordset opened, a statement run, a procedure called as "exec NAME
/// @p=v, ...") and a line for each transaction call ("BeginTrans",
/// "CommitTrans", "RollbackTrans"), in order, failed ones too: the module did
/// send them. Rows written through a recordset are no statements and are
/// not kept. Off unless a test turns it on, so that a long save keeps nothing.
class SentStatements {
public:
    void setRecording(bool on);
    bool recording() const { return recording_; }

    void record(Operation op, std::string_view sent);
    /// What was kept since the last take (or since recording began), oldest
    /// first; the record starts empty again.
    std::vector<std::string> take();

private:
    bool recording_ = false;
    std::vector<std::string> sent_;
};

} // namespace ado
