// ado::Command: a statement or stored procedure with parameters, as ADODB.Command was.
#pragma once

#include "ado/Connection.h"
#include "ado/Constants.h"
#include "ado/Parameters.h"
#include "ado/Recordset.h"

#include <memory>
#include <string>
#include <string_view>

namespace ado {

struct CommandState;

/// A command on a connection. With CommandType adCmdStoredProc (4) the
/// text names a stored procedure, called with its parameters by position:
///
///     ado::Command cmd;
///     cmd.ActiveConnection(adocon);
///     cmd.CommandType(ado::adCmdStoredProc);
///     cmd.CommandText("spupdateGodownVerification");
///     cmd.Parameters(1) = lngVerificationId;
///     cmd.Parameters(2) = intGodownID;
///     cmd.Parameters(3) = "F";
///     cmd.Execute();
///
/// The procedure runs inside the connection's open transaction, if any.
/// Copying a Command shares it, as object references did.
class Command {
public:
    Command();

    void ActiveConnection(const Connection &connection) const;
    const Connection &ActiveConnection() const;
    /// adCmdText (1, the default), adCmdTable (2) or adCmdStoredProc (4).
    void CommandType(int type) const;
    int CommandType() const;
    void CommandText(std::string_view text) const;
    const std::string &CommandText() const;
    /// Seconds the command may run (default 30, 0 = no limit).
    void CommandTimeout(int seconds) const;
    int CommandTimeout() const;

    ado::Parameters Parameters() const;
    Parameter &Parameters(int index) const;
    Parameter &Parameters(std::string_view name) const;
    Parameter &Parameters(const char *name) const { return Parameters(std::string_view(name)); }

    /// Runs the command. A text command that returns rows gives them as a
    /// forward-only, read-only Recordset; otherwise the Recordset is closed.
    /// Without an active connection raises 3709.
    Recordset Execute(long *recordsAffected = nullptr) const;

private:
    std::shared_ptr<CommandState> state_;
};

} // namespace ado
