// A database of its own on a PostgreSQL server, for one test program or one scenario.
#pragma once

#include "module/records/DemoOptions.h"

#include <optional>
#include <string>

namespace records {

/// Made as a copy of a template database that holds the schema (and the demo, when asked),
/// so that a fresh database costs a file copy on the server rather than a demo load; dropped
/// again with the object. The template of each demo shape is built once per server and kept,
/// under a name that says its shape, for every later run.
class ScratchServerDatabase {
public:
    /// `serverUri` names a database of the server that the user may connect to and create
    /// databases from (the test cluster's own); the scratch database takes its place in
    /// `uri()`. `demo` empty: the schema alone.
    ScratchServerDatabase(const std::string &serverUri, const std::optional<DemoOptions> &demo);
    ~ScratchServerDatabase();
    ScratchServerDatabase(const ScratchServerDatabase &) = delete;
    ScratchServerDatabase &operator=(const ScratchServerDatabase &) = delete;

    const std::string &uri() const { return uri_; }
    const std::string &name() const { return name_; }

private:
    std::string serverUri_;
    std::string name_;
    std::string uri_;
};

/// A database of the shape `demo` asks for, kept on the server under the name `use` followed
/// by its shape and a mark of the schema ("sv_template_demo_200_20261122_1a2b3c4d"), built the first time any run asks for it
/// and left for every later one; returns its name. Scratch databases copy the "sv_template"
/// ones; tests that roll back all they do may share one of their own.
std::string keptServerDatabase(const std::string &serverUri, const std::optional<DemoOptions> &demo,
                               const std::string &use = "sv_template");

} // namespace records
