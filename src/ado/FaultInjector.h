// The fault hook of a connection: a chosen call from now fails with a chosen error.
#pragma once

#include "ado/Operation.h"
#include "vb/Error.h"

#include <optional>
#include <string>
#include <string_view>
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
    /// The `nth` statement from now (a recordset opened, a statement run, a
    /// procedure called) whose text begins with `firstWords` raises `error`;
    /// "" matches every statement. Letter case, blanks before the text and
    /// how many blanks stand between two words do not count, so that a test
    /// can name "update loiX set" however the module spaced it.
    void failStatement(int nth, std::string_view firstWords, vb::Error error);
    /// Forgets every waiting fault.
    void clear();
    /// Faults still waiting.
    std::size_t pending() const { return armed_.size(); }

    /// Counts a call about to be made (`sent` is its text, "" for calls that
    /// have none); raises the error of a fault whose turn has come.
    void beforeCall(Operation op, std::string_view sent = {});
    /// Calls counted since the connection opened.
    long calls() const { return calls_; }

private:
    struct Armed {
        Operation kind;
        std::optional<std::string> firstWords; // set: statements only, by their text
        int remaining;
        vb::Error error;
    };
    static bool matches(const Armed &armed, Operation op, std::string_view sent);

    std::vector<Armed> armed_;
    long calls_ = 0;
};

/// A statement's text for matching its first words: lower case, blanks at the
/// start dropped, every run of blanks, tabs and line breaks one blank.
std::string statementWords(std::string_view text);

} // namespace ado
