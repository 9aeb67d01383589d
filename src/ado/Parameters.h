// ado::Parameters: the parameters of a command, as the ADODB.Parameters collection was.
#pragma once

#include "ado/Parameter.h"

#include <memory>
#include <string_view>

namespace ado {

struct CommandState;

/// The parameters of a command, by position from 0 or by name (letter case
/// ignored). For a stored procedure they are read from the provider the
/// first time one is touched (ADO's implicit Refresh): position 0 is the
/// return value, 1... the procedure's arguments in order. A parameter that
/// is not there raises 3265.
class Parameters {
public:
    int Count() const;
    /// Reads the parameters of the command's stored procedure from the provider.
    void Refresh() const;
    void Append(Parameter parameter) const;
    Parameter &Item(int index) const;
    Parameter &Item(std::string_view name) const;
    Parameter &operator()(int index) const { return Item(index); }
    Parameter &operator()(std::string_view name) const { return Item(name); }
    Parameter &operator()(const char *name) const { return Item(std::string_view(name)); }

private:
    friend class Command;
    explicit Parameters(std::shared_ptr<CommandState> command) : command_(std::move(command)) {}

    std::shared_ptr<CommandState> command_;
};

} // namespace ado
