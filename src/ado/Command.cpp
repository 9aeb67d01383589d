#include "ado/Command.h"

#include "ado/CommandState.h"
#include "ado/Errors.h"
#include "ado/Session.h"
#include "vb/Conversion.h"

#include <cctype>

namespace ado {

namespace {

constexpr std::string_view source = "ADODB.Command";

bool sameName(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (std::tolower(static_cast<unsigned char>(a[i])) !=
            std::tolower(static_cast<unsigned char>(b[i])))
            return false;
    return true;
}

// exec name @a=5, @b='F': what the call sent, for the trace.
std::string callText(const CommandState &c) {
    std::string out = "exec " + c.text;
    bool first = true;
    for (const auto &p : c.parameters) {
        if (p.Direction() == adParamReturnValue)
            continue;
        out += first ? " " : ", ";
        first = false;
        const vb::Variant &v = p.Value();
        out += p.Name() + "=" +
               (v.isNull() || v.isEmpty() ? "NULL"
                : v.isString()            ? "'" + v.asString() + "'"
                                          : vb::CStr(v));
    }
    return out;
}

} // namespace

void CommandState::refresh() {
    Session &s = connection.session();
    parameters.clear();
    for (auto &info : s.provider().procedureParameters(text))
        parameters.emplace_back(info.name, info.type, info.direction);
    described = true;
}

void CommandState::describeIfNeeded() {
    if (!described && type == adCmdStoredProc && connection.State() == adStateOpen)
        refresh();
}

// ---- Parameters -------------------------------------------------------------

int Parameters::Count() const {
    command_->describeIfNeeded();
    return static_cast<int>(command_->parameters.size());
}

void Parameters::Refresh() const {
    command_->refresh();
}

void Parameters::Append(Parameter parameter) const {
    command_->parameters.push_back(std::move(parameter));
    command_->described = true;
}

Parameter &Parameters::Item(int index) const {
    command_->describeIfNeeded();
    auto &all = command_->parameters;
    if (index < 0 || index >= static_cast<int>(all.size()))
        throw adoError(errnum::ItemNotFound, source);
    return all[static_cast<std::size_t>(index)];
}

Parameter &Parameters::Item(std::string_view name) const {
    command_->describeIfNeeded();
    for (auto &p : command_->parameters)
        if (sameName(p.Name(), name))
            return p;
    throw adoError(errnum::ItemNotFound, source,
                   adoErrorText(errnum::ItemNotFound) + " (parameter '" + std::string(name) + "')");
}

// ---- Command ----------------------------------------------------------------

Command::Command() : state_(std::make_shared<CommandState>()) {}

void Command::ActiveConnection(const Connection &connection) const {
    state_->connection = connection;
}

const Connection &Command::ActiveConnection() const {
    return state_->connection;
}

void Command::CommandType(int type) const {
    if (type != adCmdUnspecified && type != adCmdText && type != adCmdTable &&
        type != adCmdStoredProc && type != adCmdUnknown)
        throw adoError(errnum::InvalidArgument, source);
    state_->type = type;
    state_->described = false;
}

int Command::CommandType() const {
    return state_->type;
}

void Command::CommandText(std::string_view text) const {
    state_->text = text;
    state_->described = false;
}

const std::string &Command::CommandText() const {
    return state_->text;
}

void Command::CommandTimeout(int seconds) const {
    if (seconds < 0)
        throw adoError(errnum::InvalidArgument, source);
    state_->timeout = seconds;
}

int Command::CommandTimeout() const {
    return state_->timeout;
}

ado::Parameters Command::Parameters() const {
    return ado::Parameters(state_);
}

Parameter &Command::Parameters(int index) const {
    return ado::Parameters(state_).Item(index);
}

Parameter &Command::Parameters(std::string_view name) const {
    return ado::Parameters(state_).Item(name);
}

Recordset Command::Execute(long *recordsAffected) const {
    CommandState &c = *state_;
    Session &s = c.connection.session();
    if (c.type != adCmdStoredProc) {
        std::string sql = c.type == adCmdTable ? "select * from " + c.text : c.text;
        int before = s.commandTimeout();
        s.setCommandTimeout(c.timeout);
        try {
            Recordset rs = c.connection.Execute(sql, recordsAffected);
            s.setCommandTimeout(before);
            return rs;
        } catch (const vb::Error &) {
            s.setCommandTimeout(before);
            throw;
        }
    }
    c.describeIfNeeded();
    std::vector<vb::Variant> arguments;
    for (const auto &p : c.parameters)
        if (p.Direction() != adParamReturnValue)
            arguments.push_back(p.Value());
    long changed =
        s.call(Operation::Procedure, "procedure " + c.text, callText(c), [&](StatementLog &log) {
            s.provider().setCommandTimeout(c.timeout);
            s.provider().runProcedure(c.text, arguments, log);
            return log.rows;
        });
    for (auto &p : c.parameters)
        if (p.Direction() == adParamReturnValue)
            p.Value(vb::Variant(std::int32_t{0}));
    if (recordsAffected)
        *recordsAffected = changed;
    return Recordset();
}

} // namespace ado
