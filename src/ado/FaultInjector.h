// The fault hook of a connection: the Nth call from now fails with a chosen error.
#pragma once

#include "ado/Operation.h"
#include "vb/Error.h"

#include <vector>

namespace ado {

/// Makes chosen calls of a connection fail, so that tests can walk every
/// failure path of a save or a delete. A failing call does nothing else: it
/// raises the error before the database sees it, exactly as if the database
/// had refused it.
class FaultInjector {
public:
    /// The `nth` call of `kind` from now (1 is the very next) raises `error`
    /// instead of running. Several faults may wait at once; each fires once.
    void failNth(int nth, vb::Error error, Operation kind = Operation::Any);
    /// Forgets every waiting fault.
    void clear();
    /// Faults still waiting.
    std::size_t pending() const { return armed_.size(); }

    /// Counts a call about to be made; raises the error of a fault whose turn has come.
    void beforeCall(Operation op);
    /// Calls counted since the connection opened.
    long calls() const { return calls_; }

private:
    struct Armed {
        Operation kind;
        int remaining;
        vb::Error error;
    };
    std::vector<Armed> armed_;
    long calls_ = 0;
};

} // namespace ado
