// The kinds of call a connection makes to its database, as the trace and the fault hook count them.
#pragma once

#include <string_view>

namespace ado {

enum class Operation {
    Any,       // matches every kind (for the fault hook)
    Open,      // a recordset opened
    Execute,   // a statement run by Connection.Execute or a text command
    Update,    // one row added or changed through a recordset
    Procedure, // a stored procedure run
    BeginTrans,
    CommitTrans,
    RollbackTrans,
};

/// "open", "execute", "update", "procedure", "begin transaction", ...
std::string_view operationName(Operation op);

} // namespace ado
