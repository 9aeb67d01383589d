// The state behind a Command and its Parameters collection.
#pragma once

#include "ado/Connection.h"
#include "ado/Constants.h"
#include "ado/Parameter.h"

#include <string>
#include <vector>

namespace ado {

struct CommandState {
    Connection connection;
    int type = adCmdText;
    std::string text;
    int timeout = 30;
    std::vector<Parameter> parameters;
    bool described = false; // the parameters came from the provider or were appended

    /// Reads the parameters of the stored procedure `text` from the provider.
    void refresh();
    /// Touching a parameter of a stored procedure that was never described
    /// describes it first, as ADO's implicit Refresh did.
    void describeIfNeeded();
};

} // namespace ado
